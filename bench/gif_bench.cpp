// Decoding speed of the GIF reader against giflib's DGifSlurp, on animations
// made at run time: photo-like frames (gradients under noise, so the string
// table fills and is cleared again and again) in a small set of web-sized
// GIFs and a large set of 1024 x 768 ones. Speed is in megabytes (10^6) of
// decoded pixels per second; the best of several rounds counts.
#include <gif_lib.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/lzw.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct ImageSet {
  const char* name;
  int gifs;
  int width;
  int height;
  int frames;
  int rounds;
};

class Random {
 public:
  explicit Random(std::uint32_t seed) : state_(seed) {}
  int Next(int range) {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(range));
  }

 private:
  std::uint32_t state_;
};

// A smooth scene that drifts from frame to frame, plus sensor-like noise.
Bytes PhotoFrame(int width, int height, int frame, Random& random) {
  Bytes pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::size_t i = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int sky = (y * 160) / height;
      const int sweep = ((x + frame * 7) * 90) / width;
      const int ripple = ((x / 23 + y / 17 + frame) % 5) * 3;
      const int value = sky + sweep + ripple + random.Next(7) - 3;
      pixels[i++] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    }
  }
  return pixels;
}

void PutWord(Bytes& out, int value) {
  out.push_back(static_cast<std::uint8_t>(value & 0xFF));
  out.push_back(static_cast<std::uint8_t>((value >> 8) & 0xFF));
}

Bytes MakeAnimation(int width, int height, int frames, std::uint32_t seed) {
  Bytes out = {'G', 'I', 'F', '8', '9', 'a'};
  PutWord(out, width);
  PutWord(out, height);
  out.insert(out.end(), {0xF7, 0, 0});
  for (int i = 0; i < 256; ++i) out.insert(out.end(), {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i / 2), static_cast<std::uint8_t>(255 - i)});
  const Bytes loop = {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0};
  out.insert(out.end(), loop.begin(), loop.end());
  Random random(seed);
  for (int f = 0; f < frames; ++f) {
    out.insert(out.end(), {0x21, 0xF9, 4, 0x04, 4, 0, 0, 0});
    out.push_back(0x2C);
    PutWord(out, 0);
    PutWord(out, 0);
    PutWord(out, width);
    PutWord(out, height);
    out.push_back(0);
    const Bytes pixels = PhotoFrame(width, height, f, random);
    quillet::LzwEncode(quillet::IndexImage{pixels.data(), width, height, width}, 8, out);
  }
  out.push_back(0x3B);
  return out;
}

struct MemoryReader {
  const Bytes* bytes;
  std::size_t position;
};

int ReadFromMemory(GifFileType* gif, GifByteType* buffer, int length) {
  auto* source = static_cast<MemoryReader*>(gif->UserData);
  const std::size_t n = std::min(static_cast<std::size_t>(length), source->bytes->size() - source->position);
  std::memcpy(buffer, source->bytes->data() + source->position, n);
  source->position += n;
  return static_cast<int>(n);
}

// Pixels decoded, or 0 on failure; keeps the frames for a comparison.
std::size_t DecodeWithGiflib(const Bytes& bytes, std::vector<Bytes>* frames) {
  MemoryReader source{&bytes, 0};
  int error = 0;
  GifFileType* gif = DGifOpen(&source, ReadFromMemory, &error);
  if (gif == nullptr) return 0;
  std::size_t pixels = 0;
  if (DGifSlurp(gif) == GIF_OK) {
    for (int i = 0; i < gif->ImageCount; ++i) {
      const SavedImage& image = gif->SavedImages[i];
      const auto n = static_cast<std::size_t>(image.ImageDesc.Width) * static_cast<std::size_t>(image.ImageDesc.Height);
      pixels += n;
      if (frames) frames->emplace_back(image.RasterBits, image.RasterBits + n);
    }
  }
  DGifCloseFile(gif, &error);
  return pixels;
}

std::size_t DecodeWithQuillet(const Bytes& bytes, std::vector<Bytes>* frames) {
  quillet::GifReader reader;
  if (reader.LoadAllFrames(bytes) <= 0) return 0;
  const quillet::GifAnimation& gif = reader.Animation();
  std::size_t pixels = 0;
  for (const quillet::FrameRecord& f : gif.Frames) {
    pixels += static_cast<std::size_t>(f.Width) * static_cast<std::size_t>(f.Height);
    if (!frames) continue;
    Bytes frame;
    for (std::int32_t y = 0; y < f.Height; ++y) frame.insert(frame.end(), gif.Strip.Row(y) + f.StripX, gif.Strip.Row(y) + f.StripX + f.Width);
    frames->push_back(std::move(frame));
  }
  return pixels;
}

template <typename Decode>
double BestMegabytesPerSecond(const std::vector<Bytes>& gifs, int rounds, Decode decode) {
  double best = 0;
  for (int round = 0; round < rounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    std::size_t pixels = 0;
    for (const Bytes& gif : gifs) pixels += decode(gif, nullptr);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    best = std::max(best, static_cast<double>(pixels) / 1e6 / seconds.count());
  }
  return best;
}

bool SameFrames(const std::vector<Bytes>& gifs) {
  for (const Bytes& gif : gifs) {
    std::vector<Bytes> ours;
    std::vector<Bytes> theirs;
    if (DecodeWithQuillet(gif, &ours) == 0 || DecodeWithGiflib(gif, &theirs) == 0 || ours != theirs) return false;
  }
  return true;
}

int RunSet(const ImageSet& set) {
  std::vector<Bytes> gifs;
  for (int i = 0; i < set.gifs; ++i) {
    gifs.push_back(MakeAnimation(set.width, set.height, set.frames, static_cast<std::uint32_t>(i + 1)));
  }
  if (!SameFrames(gifs)) {
    std::printf("%s: the two decoders disagree\n", set.name);
    return 1;
  }
  // Alternate the two so neither is favoured by the machine's state.
  double quillet = 0;
  double giflib = 0;
  for (int pass = 0; pass < 2; ++pass) {
    quillet = std::max(quillet, BestMegabytesPerSecond(gifs, set.rounds, DecodeWithQuillet));
    giflib = std::max(giflib, BestMegabytesPerSecond(gifs, set.rounds, DecodeWithGiflib));
  }
  std::printf("%s: quillet %.1f MB/s, giflib %.1f MB/s, ratio %.2f\n", set.name, quillet, giflib, quillet / giflib);
  return 0;
}

}  // namespace

int main() {
  const ImageSet sets[] = {
      {"small", 48, 160, 120, 12, 5},
      {"large", 3, 1024, 768, 24, 3},
  };
  int failures = 0;
  for (const ImageSet& set : sets) failures += RunSet(set);
  return failures == 0 ? 0 : 1;
}
