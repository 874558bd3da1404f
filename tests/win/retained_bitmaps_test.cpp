// Retained pictures drawn by the GDI painter: what shows after a colour swap
// or a change of part of a surface, and the bitmaps held only while the
// picture lives, not one per draw.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/win32/handles.h"
#include "ui/retained_picture.h"
#include "ui/win32/gdi_painter.h"

namespace quillet::win32 {
namespace {

constexpr COLORREF kGround = RGB(10, 20, 30);

// A 4 x 2 pixel target filled with kGround before each draw.
struct Target {
  UniqueDc dc{::CreateCompatibleDC(nullptr)};
  UniqueBitmap bitmap;
  std::optional<ScopedSelectObject> selection;
  FontCache fonts;
  Target() {
    const WindowDc screen(nullptr);
    bitmap.reset(::CreateCompatibleBitmap(screen.get(), 4, 2));
    selection.emplace(dc.get(), bitmap.get());
  }
  std::vector<COLORREF> Draw(const std::function<void(GdiPainter&)>& draw) {
    const RECT all{0, 0, 4, 2};
    const UniqueGdi<HBRUSH> ground(::CreateSolidBrush(kGround));
    ::FillRect(dc.get(), &all, ground.get());
    {
      GdiPainter painter(dc.get(), PixelScale(96), fonts);
      draw(painter);
    }
    return {::GetPixel(dc.get(), 0, 0), ::GetPixel(dc.get(), 1, 0), ::GetPixel(dc.get(), 0, 1),
            ::GetPixel(dc.get(), 1, 1)};
  }
};

TEST(RetainedBitmapsTest, ColourSwapsAndSurfaceChangesShowWithTwoHandlesHeldThroughout) {
  Target target;
  const HandleCounts before = LiveHandles();
  const TwipsRect dest{0, 0, 30, 30};  // 2 x 2 pixels
  {
    const std::vector<std::uint8_t> bits = {0, 1, 0, 0, 2, 0, 0, 0};  // 2 x 2, rows 4 bytes apart
    IndexedPicture strip;
    strip.SetPixels(bits.data(), 2, 2, 4);
    Palette one{}, two{};
    one[0] = 0xFF0000, one[1] = 0x00FF00, one[2] = 0x0000FF;
    two[0] = 0x00FFFF, two[1] = 0x00FF00, two[2] = 0xFFFF00;
    const auto draw = [&](const Palette& colours, int transparent) {
      return target.Draw([&](GdiPainter& p) { p.DrawIndexed(strip, {0, 0, 2, 2}, colours, transparent, dest); });
    };
    EXPECT_EQ(draw(one, -1), (std::vector<COLORREF>{RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 0, 0)}));
    EXPECT_EQ(LiveHandles().gdi, before.gdi + 2) << "a DC and its bitmap";
    for (int i = 0; i < 50; ++i) (void)draw(i % 2 ? one : two, 1);
    EXPECT_EQ(draw(two, 1), (std::vector<COLORREF>{RGB(0, 255, 255), kGround, RGB(255, 255, 0), RGB(0, 255, 255)}));
    EXPECT_EQ(LiveHandles().gdi, before.gdi + 2);
  }
  EXPECT_EQ(LiveHandles(), before) << "the picture's bitmap goes with it";
  {
    ArgbSurface canvas(2, 2, false);
    canvas.Edit().pixels[0] = 0xFFFF0000u;
    const auto draw = [&] { return target.Draw([&](GdiPainter& p) { p.DrawSurface(canvas, {0, 0, 2, 2}, dest); }); };
    EXPECT_EQ(draw(), (std::vector<COLORREF>{RGB(255, 0, 0), kGround, kGround, kGround}));
    canvas.Edit().pixels[3] = 0xFF0000FFu;  // only this pixel is marked changed
    canvas.Touch({1, 1, 1, 1});
    EXPECT_EQ(draw(), (std::vector<COLORREF>{RGB(255, 0, 0), kGround, kGround, RGB(0, 0, 255)}));
    EXPECT_EQ(LiveHandles().gdi, before.gdi + 2);
  }
  EXPECT_EQ(LiveHandles(), before);
}

}  // namespace
}  // namespace quillet::win32
