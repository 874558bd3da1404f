// The GDI painter on a memory bitmap whose pixels the test reads back.
#include <gtest/gtest.h>

#include <set>

#include "platform/win32/handles.h"
#include "ui/win32/gdi_painter.h"

namespace quillet::win32 {
namespace {

constexpr COLORREF kKey = RGB(0xC0, 0, 0xC0);

// A 32-bit top-down surface of w x h pixels, and a painter on it at 96 DPI.
struct Canvas {
  Canvas(int w, int h) : width(w) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap.reset(::CreateDIBSection(dc.get(), &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits), nullptr, 0));
    select.emplace(dc.get(), bitmap.get());
  }
  // As COLORREF: red in the low byte.
  COLORREF At(int x, int y) const {
    ::GdiFlush();
    const std::uint32_t p = bits[y * width + x];
    return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
  }
  void Expect(std::initializer_list<std::tuple<int, int, COLORREF>> pixels) const {
    for (const auto& [x, y, colour] : pixels) EXPECT_EQ(At(x, y), colour) << "pixel " << x << ", " << y;
  }

  int width;
  std::uint32_t* bits = nullptr;
  UniqueDc dc{::CreateCompatibleDC(nullptr)};
  UniqueBitmap bitmap;
  std::optional<ScopedSelectObject> select;
  FontCache fonts;
  GdiPainter painter{dc.get(), PixelScale(96), fonts};
};

TEST(GdiPainterTest, FillRectCoversItsTwipsInPixels) {
  Canvas canvas(40, 20);
  canvas.painter.FillRect({0, 0, 600, 300}, kKeyColour);
  canvas.painter.FillRect({150, 75, 300, 150}, Rgb(10, 20, 30));  // pixels 10..29 x 5..14
  const COLORREF fill = RGB(10, 20, 30);
  canvas.Expect({{10, 5, fill}, {29, 14, fill}, {9, 5, kKey}, {30, 14, kKey}, {10, 15, kKey}});
}

TEST(GdiPainterTest, TextOnTheKeyColourHasNoBlendedFringe) {
  Canvas canvas(160, 24);
  canvas.painter.FillRect({0, 0, 2400, 360}, kKeyColour);
  canvas.painter.DrawText({0, 0, 2400, 360}, "0 days, 1 hours, 23 minutes", Font{"Tahoma", 9.0, true},
                          Rgb(255, 255, 255), TextAlign::kLeft);
  std::set<COLORREF> colours;
  for (int y = 0; y < 24; ++y)
    for (int x = 0; x < 160; ++x) colours.insert(canvas.At(x, y));
  EXPECT_TRUE(colours.count(RGB(255, 255, 255))) << "the text was drawn";
  EXPECT_EQ(colours.size(), 2u) << "only the key colour and the text colour";
}

TEST(GdiPainterTest, PictureAlphaZeroLeavesWhatIsUnderIt) {
  Canvas canvas(8, 4);
  canvas.painter.FillRect({0, 0, 120, 60}, kKeyColour);
  Picture picture{2, 1, {0xFF0080FFu, 0x00FFFFFFu}};    // opaque blue-ish, then see-through
  canvas.painter.DrawPicture(picture, {0, 0, 60, 15});  // 4 x 1 pixels: each source pixel twice
  const COLORREF blue = RGB(0x00, 0x80, 0xFF);
  canvas.Expect({{0, 0, blue}, {1, 0, blue}, {2, 0, kKey}, {3, 0, kKey}, {0, 1, kKey}});
}

}  // namespace
}  // namespace quillet::win32
