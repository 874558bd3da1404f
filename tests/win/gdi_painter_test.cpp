// The GDI painter on a memory bitmap whose pixels the test reads back.
#include <gtest/gtest.h>

#include <set>

#include "platform/win32/handles.h"
#include "ui/win32/gdi_painter.h"

namespace quillet::win32 {
namespace {

// A 32-bit top-down surface of w x h pixels.
class Surface {
 public:
  Surface(int width, int height) : width_(width) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    dc_.reset(::CreateCompatibleDC(nullptr));
    bitmap_.reset(::CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits_), nullptr, 0));
    select_.emplace(dc_.get(), bitmap_.get());
  }
  HDC dc() const { return dc_.get(); }
  // As COLORREF: red in the low byte.
  COLORREF At(int x, int y) const {
    ::GdiFlush();
    const std::uint32_t p = bits_[y * width_ + x];
    return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
  }

 private:
  int width_;
  std::uint32_t* bits_ = nullptr;
  UniqueDc dc_;
  UniqueBitmap bitmap_;
  std::optional<ScopedSelectObject> select_;
};

TEST(GdiPainterTest, FillRectCoversItsTwipsInPixels) {
  Surface surface(40, 20);
  FontCache fonts;
  GdiPainter painter(surface.dc(), PixelScale(96), fonts);
  painter.FillRect({0, 0, 600, 300}, kKeyColour);
  painter.FillRect({150, 75, 300, 150}, Rgb(10, 20, 30));  // pixels 10..29 x 5..14
  EXPECT_EQ(surface.At(10, 5), RGB(10, 20, 30));
  EXPECT_EQ(surface.At(29, 14), RGB(10, 20, 30));
  EXPECT_EQ(surface.At(9, 5), RGB(0xC0, 0, 0xC0));
  EXPECT_EQ(surface.At(30, 14), RGB(0xC0, 0, 0xC0));
  EXPECT_EQ(surface.At(10, 15), RGB(0xC0, 0, 0xC0));
}

TEST(GdiPainterTest, TextOnTheKeyColourHasNoBlendedFringe) {
  Surface surface(160, 24);
  FontCache fonts;
  GdiPainter painter(surface.dc(), PixelScale(96), fonts);
  painter.FillRect({0, 0, 2400, 360}, kKeyColour);
  painter.DrawText({0, 0, 2400, 360}, "0 days, 1 hours, 23 minutes", Font{"Tahoma", 9.0, true}, Rgb(255, 255, 255),
                   TextAlign::kLeft);
  std::set<COLORREF> colours;
  for (int y = 0; y < 24; ++y)
    for (int x = 0; x < 160; ++x) colours.insert(surface.At(x, y));
  EXPECT_TRUE(colours.count(RGB(255, 255, 255))) << "the text was drawn";
  EXPECT_EQ(colours.size(), 2u) << "only the key colour and the text colour";
}

TEST(GdiPainterTest, PictureAlphaZeroLeavesWhatIsUnderIt) {
  Surface surface(8, 4);
  FontCache fonts;
  GdiPainter painter(surface.dc(), PixelScale(96), fonts);
  painter.FillRect({0, 0, 120, 60}, kKeyColour);
  Picture picture{2, 1, {0xFF0080FFu, 0x00FFFFFFu}};  // opaque blue-ish, then see-through
  painter.DrawPicture(picture, {0, 0, 60, 15});         // 4 x 1 pixels: each source pixel twice
  EXPECT_EQ(surface.At(0, 0), RGB(0x00, 0x80, 0xFF));
  EXPECT_EQ(surface.At(1, 0), RGB(0x00, 0x80, 0xFF));
  EXPECT_EQ(surface.At(2, 0), RGB(0xC0, 0, 0xC0));
  EXPECT_EQ(surface.At(3, 0), RGB(0xC0, 0, 0xC0));
  EXPECT_EQ(surface.At(0, 1), RGB(0xC0, 0, 0xC0));
}

}  // namespace
}  // namespace quillet::win32
