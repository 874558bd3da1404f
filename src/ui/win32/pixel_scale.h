// Twips to pixels, the one place where the host converts. The process is
// system-DPI aware by its manifest, so one scale serves every window.
#pragma once

#include "core/units.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {

class PixelScale {
 public:
  explicit PixelScale(int dpi) noexcept : dpi_(dpi > 0 ? dpi : 96) {}
  // LOGPIXELSX of the screen.
  [[nodiscard]] static PixelScale FromScreen() noexcept;

  [[nodiscard]] int Dpi() const noexcept { return dpi_; }
  [[nodiscard]] double TwipsPerPixel() const noexcept { return quillet::TwipsPerPixel(dpi_); }
  [[nodiscard]] int ToPixels(int twips) const noexcept;
  [[nodiscard]] int ToTwips(int pixels) const noexcept;
  // Edges rounded one by one, so rectangles that touch in twips touch in pixels.
  [[nodiscard]] RECT ToPixelEdges(const TwipsRect& rect) const noexcept;
  // A window's place: position and size rounded on their own, so a window
  // keeps its pixel size wherever it is moved.
  [[nodiscard]] RECT ToWindowRect(const TwipsRect& rect) const noexcept;

 private:
  int dpi_;
};

}  // namespace quillet::win32
