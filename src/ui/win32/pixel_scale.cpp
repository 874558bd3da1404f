#include "ui/win32/pixel_scale.h"

#include <cmath>

#include "platform/win32/handles.h"

namespace quillet::win32 {

PixelScale PixelScale::FromScreen() noexcept {
  const WindowDc screen(nullptr);
  return PixelScale(screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), LOGPIXELSX) : 96);
}

int PixelScale::ToPixels(int twips) const noexcept {
  return static_cast<int>(std::lround(twips / TwipsPerPixel()));
}

int PixelScale::ToTwips(int pixels) const noexcept {
  return static_cast<int>(std::lround(pixels * TwipsPerPixel()));
}

RECT PixelScale::ToPixelEdges(const TwipsRect& rect) const noexcept {
  return RECT{ToPixels(rect.left), ToPixels(rect.top), ToPixels(rect.right()), ToPixels(rect.bottom())};
}

RECT PixelScale::ToWindowRect(const TwipsRect& rect) const noexcept {
  const int left = ToPixels(rect.left), top = ToPixels(rect.top);
  return RECT{left, top, left + ToPixels(rect.width), top + ToPixels(rect.height)};
}

}  // namespace quillet::win32
