// Painter on a GDI device context: twips in, pixels out.
#pragma once

#include <map>
#include <string>
#include <tuple>

#include "platform/win32/handles.h"
#include "ui/painter.h"
#include "ui/win32/pixel_scale.h"

namespace quillet::win32 {

// Fonts live as long as the window that draws with them, not one paint.
class FontCache {
 public:
  [[nodiscard]] HFONT Get(const Font& font, int dpi);

 private:
  std::map<std::tuple<std::string, double, bool, int>, UniqueFont> fonts_;
};

class GdiPainter : public Painter {
 public:
  GdiPainter(HDC dc, PixelScale scale, FontCache& fonts) noexcept : dc_(dc), scale_(scale), fonts_(fonts) {}

  void FillRect(const TwipsRect& rect, Colour colour) override;
  void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                TextAlign align) override;
  void DrawPicture(const Picture& picture, const TwipsRect& dest) override;

 private:
  HDC dc_;
  PixelScale scale_;
  FontCache& fonts_;
};

}  // namespace quillet::win32
