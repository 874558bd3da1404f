// Painter on a GDI device context: twips in, pixels out.
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "platform/win32/handles.h"
#include "ui/painter.h"
#include "ui/text_metrics.h"
#include "ui/win32/pixel_scale.h"
#include "ui/win32/theme.h"

namespace quillet::win32 {

// Fonts live as long as the window that draws with them, not one paint.
class FontCache {
 public:
  [[nodiscard]] HFONT Get(const Font& font, int dpi);

 private:
  std::map<std::tuple<std::string, double, bool, int>, UniqueFont> fonts_;
};

// The colour GDI draws for a colour that may name a system colour.
[[nodiscard]] COLORREF HostColour(Colour colour) noexcept;

class GdiPainter : public Painter {
 public:
  GdiPainter(HDC dc, PixelScale scale, FontCache& fonts, ThemeLibrary* theme = nullptr) noexcept
      : dc_(dc), scale_(scale), fonts_(fonts), theme_(theme) {}
  ~GdiPainter() override;
  GdiPainter(const GdiPainter&) = delete;
  GdiPainter& operator=(const GdiPainter&) = delete;

  void FillRect(const TwipsRect& rect, Colour colour) override;
  void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                TextAlign align) override;
  void DrawTextAt(int x, int y, std::string_view text, const Font& font, Colour colour) override;
  void DrawLine(int x1, int y1, int x2, int y2, Colour colour) override;
  void DrawPicture(const Picture& picture, const TwipsRect& dest) override;
  // At natural size from the picture's own bitmap (ui/win32/retained_bitmaps.h);
  // scaled, as a picture, for the resampling of DrawPicture.
  void DrawIndexed(const IndexedPicture& picture, const PictureRect& source, const Palette& colours, int transparent,
                   const TwipsRect& dest) override;
  void DrawSurface(const ArgbSurface& surface, const PictureRect& source, const TwipsRect& dest) override;
  void PushLayer(const TwipsRect& rect, Colour fill) override;
  void PopLayer(std::optional<Colour> key) override;
  bool DrawThemedButton(const TwipsRect& rect, int state) override;
  Colour Resolve(Colour colour) const override { return HostColour(colour); }

 private:
  // A layer draws into a bitmap of its own whose origin is moved, so the
  // drawing keeps the form's coordinates.
  struct Layer {
    HDC outer;
    RECT rect;
    UniqueDc dc;
    UniqueBitmap bitmap;
    HGDIOBJ old_bitmap;
  };

  HDC dc_;
  PixelScale scale_;
  FontCache& fonts_;
  ThemeLibrary* theme_;
  std::vector<Layer> layers_;
};

// Text measured with the screen's fonts at the host's DPI.
class GdiTextMetrics final : public TextMetrics {
 public:
  explicit GdiTextMetrics(PixelScale scale) noexcept : scale_(scale) {}
  [[nodiscard]] TwipsSize Measure(const Font& font, std::string_view text) override;

 private:
  PixelScale scale_;
  FontCache fonts_;
  // One memory DC like the screen's for every measure: the cards measure
  // their texts often, and each screen DC is a trip to the display server.
  UniqueDc dc_;
};

}  // namespace quillet::win32
