// Writes the copy splash's spinner: twelve dots on a ring, a bright head
// followed by a fading tail, looping for ever. Usage: make_spinner OUT.gif
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "widgets/gif/lzw.h"

namespace {

constexpr int kSize = 32;
constexpr int kDots = 12;
constexpr int kSteps = 4;  // supersampling per axis for round dots
constexpr double kPi = 3.14159265358979323846;

void Word(std::vector<std::uint8_t>& out, int v) {
  out.push_back(static_cast<std::uint8_t>(v & 0xFF));
  out.push_back(static_cast<std::uint8_t>((v >> 8) & 0xFF));
}

// Index 0 is see-through; 1 to 12 go from the faint tail to the bright head.
std::vector<std::uint8_t> Palette() {
  std::vector<std::uint8_t> rgb(16 * 3, 0);
  const int head[3] = {0x2C, 0x9E, 0xC4}, tail[3] = {0xC8, 0xDC, 0xE6};
  for (int i = 1; i <= kDots; ++i) {
    const double t = (i - 1) / double(kDots - 1);
    for (int c = 0; c < 3; ++c)
      rgb[static_cast<std::size_t>(i * 3 + c)] = static_cast<std::uint8_t>(std::lround(tail[c] + (head[c] - tail[c]) * t));
  }
  return rgb;
}

std::vector<std::uint8_t> Frame(int step) {
  std::vector<std::uint8_t> pixels(kSize * kSize, 0);
  const double centre = (kSize - 1) / 2.0, ring = 11.0;
  for (int d = 0; d < kDots; ++d) {
    // The dot `d` places behind the head gets shade kDots - d and shrinks a little.
    const int dot = (step - d + kDots) % kDots;
    const double angle = 2 * kPi * dot / kDots - kPi / 2;
    const double cx = centre + ring * std::cos(angle), cy = centre + ring * std::sin(angle);
    const double radius = 2.7 - 1.1 * d / double(kDots - 1);
    for (int y = 0; y < kSize; ++y)
      for (int x = 0; x < kSize; ++x) {
        int inside = 0;
        for (int sy = 0; sy < kSteps; ++sy)
          for (int sx = 0; sx < kSteps; ++sx) {
            const double px = x + (sx + 0.5) / kSteps - 0.5, py = y + (sy + 0.5) / kSteps - 0.5;
            if ((px - cx) * (px - cx) + (py - cy) * (py - cy) <= radius * radius) ++inside;
          }
        if (inside * 2 >= kSteps * kSteps) pixels[static_cast<std::size_t>(y * kSize + x)] = static_cast<std::uint8_t>(kDots - d);
      }
  }
  return pixels;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_spinner OUT.gif\n");
    return 2;
  }
  std::vector<std::uint8_t> gif{'G', 'I', 'F', '8', '9', 'a'};
  Word(gif, kSize);
  Word(gif, kSize);
  gif.push_back(0xF3);  // global table of 16 colours
  gif.push_back(0);
  gif.push_back(0);
  const auto palette = Palette();
  gif.insert(gif.end(), palette.begin(), palette.end());
  const std::string loop = "NETSCAPE2.0";
  gif.insert(gif.end(), {0x21, 0xFF, 11});
  gif.insert(gif.end(), loop.begin(), loop.end());
  gif.insert(gif.end(), {3, 1, 0, 0, 0});  // loop for ever
  const std::string comment = "Quillet copy spinner, made by tools/spinner/make_spinner";
  gif.insert(gif.end(), {0x21, 0xFE, static_cast<std::uint8_t>(comment.size())});
  gif.insert(gif.end(), comment.begin(), comment.end());
  gif.push_back(0);
  for (int step = 0; step < kDots; ++step) {
    gif.insert(gif.end(), {0x21, 0xF9, 4, (2 << 2) | 1});  // restore background, index 0 see-through
    Word(gif, 8);                                          // 80 ms
    gif.insert(gif.end(), {0, 0});
    gif.push_back(0x2C);
    Word(gif, 0);
    Word(gif, 0);
    Word(gif, kSize);
    Word(gif, kSize);
    gif.push_back(0);
    const auto pixels = Frame(step);
    quillet::LzwEncode({pixels.data(), kSize, kSize, kSize}, 4, gif);
  }
  gif.push_back(0x3B);
  std::ofstream out(argv[1], std::ios::binary);
  out.write(reinterpret_cast<const char*>(gif.data()), static_cast<std::streamsize>(gif.size()));
  return out ? 0 : 1;
}
