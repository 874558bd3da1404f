// Decoding speed of the GIF reader against giflib's DGifSlurp, on animations made at run time: photo-like frames
// (gradients under noise, so the string table fills and is cleared again and again) in a small set of web-sized
// GIFs and a large set of 1024 x 768 ones. Speed is in megabytes (10^6) of decoded pixels per second; the best of
// several rounds counts.
#include <gif_lib.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <vector>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/lzw.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Frames = std::vector<Bytes>;

// A 256-colour table and a loop block, then frames of a smooth scene that drifts from frame to frame, plus
// sensor-like noise.
Bytes MakeAnimation(int width, int height, int frames, std::uint32_t random) {
  const auto lo = [](int v) { return static_cast<std::uint8_t>(v & 0xFF); };
  const auto hi = [](int v) { return static_cast<std::uint8_t>((v >> 8) & 0xFF); };
  Bytes out = {'G', 'I', 'F', '8', '9', 'a', lo(width), hi(width), lo(height), hi(height), 0xF7, 0, 0}, pixels;
  for (int i = 0; i < 256; ++i) out.insert(out.end(), {lo(i), lo(i / 2), lo(255 - i)});
  out.insert(out.end(), {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0});
  for (int f = 0; f < frames; ++f) {
    out.insert(out.end(), {0x21, 0xF9, 4, 0x04, 4, 0, 0, 0});  // graphic control, then the image descriptor
    out.insert(out.end(), {0x2C, 0, 0, 0, 0, lo(width), hi(width), lo(height), hi(height), 0});
    pixels.clear();
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        random = random * 1664525u + 1013904223u;
        const int value = (y * 160) / height + ((x + f * 7) * 90) / width + ((x / 23 + y / 17 + f) % 5) * 3 +
                          static_cast<int>((random >> 8) % 7) - 3;
        pixels.push_back(static_cast<std::uint8_t>(std::clamp(value, 0, 255)));
      }
    }
    quillet::LzwEncode(quillet::IndexImage{pixels.data(), width, height, width}, 8, out);
  }
  out.push_back(0x3B);
  return out;
}

// Pixels decoded, or 0 on failure; keeps the frames for a comparison when asked.
std::size_t DecodeWithGiflib(const Bytes& bytes, Frames* frames) {
  std::span<const std::uint8_t> rest = bytes;
  const auto read = [](GifFileType* gif, GifByteType* buffer, int length) {
    auto& source = *static_cast<std::span<const std::uint8_t>*>(gif->UserData);
    const std::size_t n = std::min(static_cast<std::size_t>(length), source.size());
    std::memcpy(buffer, source.data(), n);
    source = source.subspan(n);
    return static_cast<int>(n);
  };
  int error = 0;
  GifFileType* gif = DGifOpen(&rest, read, &error);
  if (gif == nullptr) return 0;
  std::size_t pixels = 0;
  const bool slurped = DGifSlurp(gif) == GIF_OK;
  for (int i = 0; slurped && i < gif->ImageCount; ++i) {
    const SavedImage& image = gif->SavedImages[i];
    const auto n = static_cast<std::size_t>(image.ImageDesc.Width) * static_cast<std::size_t>(image.ImageDesc.Height);
    pixels += n;
    if (frames) frames->emplace_back(image.RasterBits, image.RasterBits + n);
  }
  DGifCloseFile(gif, &error);
  return pixels;
}

std::size_t DecodeWithQuillet(const Bytes& bytes, Frames* frames) {
  quillet::GifReader reader;
  if (reader.LoadAllFrames(bytes) <= 0) return 0;
  const quillet::FrameStrip& strip = reader.Animation().Strip;
  std::size_t pixels = 0;
  for (const quillet::FrameRecord& f : reader.Animation().Frames) {
    pixels += static_cast<std::size_t>(f.Width) * static_cast<std::size_t>(f.Height);
    if (frames) frames->emplace_back();
    for (std::int32_t y = 0; frames && y < f.Height; ++y) {
      frames->back().insert(frames->back().end(), strip.Row(y) + f.StripX, strip.Row(y) + f.StripX + f.Width);
    }
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

}  // namespace

int main() {
  const struct {
    const char* name;
    int gifs, width, height, frames, rounds;
  } sets[] = {{"small", 48, 160, 120, 12, 5}, {"large", 3, 1024, 768, 24, 3}};
  int failures = 0;
  for (const auto& set : sets) {
    std::vector<Bytes> gifs;
    bool same = true;
    for (int i = 1; i <= set.gifs; ++i) {
      gifs.push_back(MakeAnimation(set.width, set.height, set.frames, static_cast<std::uint32_t>(i)));
      Frames ours, theirs;
      same = same && DecodeWithQuillet(gifs.back(), &ours) > 0 && DecodeWithGiflib(gifs.back(), &theirs) > 0 &&
             ours == theirs;
    }
    if (!same) {
      std::printf("%s: the two decoders disagree\n", set.name);
      ++failures;
      continue;
    }
    // Alternate the two so neither is favoured by the machine's state.
    double quillet = 0, giflib = 0;
    for (int pass = 0; pass < 2; ++pass) {
      quillet = std::max(quillet, BestMegabytesPerSecond(gifs, set.rounds, DecodeWithQuillet));
      giflib = std::max(giflib, BestMegabytesPerSecond(gifs, set.rounds, DecodeWithGiflib));
    }
    std::printf("%s: quillet %.1f MB/s, giflib %.1f MB/s, ratio %.2f\n", set.name, quillet, giflib, quillet / giflib);
  }
  return failures == 0 ? 0 : 1;
}
