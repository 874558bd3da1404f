// Twips and colours: forms and models measure in twips and keep colours with
// red in the low byte, as they are stored in settings.
#pragma once

#include <cstdint>

namespace quillet {

constexpr int kTwipsPerInch = 1440;

// Twips per pixel at a screen's DPI; 15 at 96 DPI, 10 at 144.
constexpr double TwipsPerPixel(int dpi) { return dpi > 0 ? double(kTwipsPerInch) / dpi : 15.0; }

struct TwipsRect {
  int left = 0, top = 0, width = 0, height = 0;
  int right() const { return left + width; }
  int bottom() const { return top + height; }
  bool Contains(int x, int y) const { return x >= left && x < right() && y >= top && y < bottom(); }
  bool operator==(const TwipsRect&) const = default;
};

using Colour = std::uint32_t;  // 0x00BBGGRR

constexpr Colour Rgb(int r, int g, int b) {
  return Colour(r & 0xFF) | (Colour(g & 0xFF) << 8) | (Colour(b & 0xFF) << 16);
}
constexpr int RedOf(Colour c) { return int(c & 0xFF); }
constexpr int GreenOf(Colour c) { return int((c >> 8) & 0xFF); }
constexpr int BlueOf(Colour c) { return int((c >> 16) & 0xFF); }

// What shows this colour is see-through on the side bar.
constexpr Colour kKeyColour = 0xC000C0;

}  // namespace quillet
