#include "card_marks.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "drive_icons.h"
#include "panel.h"

namespace quillet::art {
namespace {

const Rgb kOutline = Hex(0x15181C);
const Rgb kBlack{};
const Rgb kWhite{1, 1, 1};

// The eject buttons' plate and the place of the drive on it.
constexpr double kPlateLeft = 1, kPlateTop = 3, kPlateRight = 38.5, kPlateBottom = 31;
constexpr double kDriveX = 12.5, kDriveY = 17;

// The picture as it is, once nothing is drawn right of `right`, where the
// window may end.
Picture Before(Picture picture, int right) {
  for (int y = 0; y < picture.height; ++y)
    for (int x = right; x < picture.width; ++x)
      if (picture.pixels[static_cast<std::size_t>(y * picture.width + x)] >> 24 != 0)
        throw std::runtime_error("an eject button strays past the card");
  return picture;
}

void Plate(Canvas& canvas) {
  const Shape outline = Box(kPlateLeft, kPlateTop, kPlateRight, kPlateBottom, 5);
  const Shape face = Grow(outline, -1);
  canvas.Fill(Offset(outline, 0, 1), Solid(kBlack), 0.3);
  canvas.Fill(outline, Solid(Hex(0x0E1114)));
  canvas.Fill(face, Vertical({{kPlateTop + 1, Hex(0x6C7684)}, {kPlateTop + 12, Hex(0x4A525E)}, {kPlateBottom - 1, Hex(0x30363F)}}));
  canvas.Fill(Intersect(Rim(face, 1), Box(0, 0, 64, kPlateTop + 4)), Solid(Hex(0x9AA4B2)));
}

// The eject sign, a triangle over a bar, centred on x = cx and from y0 down.
void EjectSign(Canvas& canvas, double cx, double y0) {
  const double half = 5.5, tip = y0, base = y0 + 6.5, bar = base + 2;
  const Shape sign = Union(Polygon({{cx, tip}, {cx + half, base}, {cx - half, base}}), Box(cx - half, bar, cx + half, bar + 2.5, 0.4));
  canvas.Fill(Offset(Grow(sign, 1), 0, 1), Solid(kBlack), 0.35);
  canvas.Fill(Grow(sign, 0.9), Solid(kOutline));
  canvas.Fill(sign, Vertical({{tip, kWhite}, {bar + 2.5, Hex(0xB8C2CE)}}));
}

void Disc(Canvas& canvas, double cx, double cy, double r) {
  canvas.Fill(Circle(cx, cy + 0.8, r + 1.2), Solid(kBlack), 0.3);
  canvas.Fill(Circle(cx, cy, r + 0.9), Solid(kOutline));
  canvas.Fill(Circle(cx, cy, r), DiscSurface(cx, cy, r));
  canvas.Fill(Rim(Circle(cx, cy, r), 0.7), Solid(Hex(0xE8ECF0)), 0.5);
  canvas.Fill(Circle(cx, cy, 3.8), Solid(Hex(0xC9CFD6)));
  canvas.Fill(Rim(Circle(cx, cy, 3.8), 0.6), Solid(Hex(0x8E97A2)));
  canvas.Fill(Circle(cx, cy, 2.3), Solid(kOutline));
  canvas.Fill(Circle(cx, cy, 1.5), Vertical({{cy - 1.5, Hex(0x30363F)}, {cy + 1.5, Hex(0x4A525E)}}));
}

void UsbStick(Canvas& canvas, double cx, double cy) {
  // Drawn lying along x about the centre, then turned to point up and right.
  const double turn = -38;
  const auto fill = [&](const Shape& shape, const Paint& paint, double opacity = 1.0) {
    canvas.Fill(Rotate(shape, cx, cy, turn), Rotate(paint, cx, cy, turn), opacity);
  };
  const Shape plug = Box(cx + 3, cy - 2.8, cx + 8.5, cy + 2.8, 0.6);
  const Shape body = Box(cx - 9, cy - 4.2, cx + 3.5, cy + 4.2, 1.8);
  const Shape stick = Rotate(Union(plug, body), cx, cy, turn);
  canvas.Fill(Offset(Grow(stick, 1.2), 0.3, 1), Solid(kBlack), 0.3);
  canvas.Fill(Grow(stick, 0.9), Solid(kOutline));
  fill(plug, Vertical({{cy - 2.8, Hex(0xF3F5F7)}, {cy - 0.5, Hex(0xC3CAD2)}, {cy + 2.8, Hex(0x7E8792)}}));
  for (double top : {cy - 1.5, cy + 0.5}) fill(Box(cx + 5, top, cx + 7, top + 1), Solid(Hex(0x3A4048)));
  fill(body, Vertical({{cy - 4.2, Hex(0x4FA8F0)}, {cy, Hex(0x1F78D0)}, {cy + 4.2, Hex(0x134E94)}}));
  fill(Box(cx - 9, cy - 4.2, cx - 4, cy + 4.2, 1.8), Vertical({{cy - 4.2, Hex(0xF4F6F8)}, {cy + 4.2, Hex(0xA8B0BA)}}));
  fill(Box(cx - 3, cy - 3.6, cx + 3, cy - 2.5, 0.5), Solid(kWhite), 0.35);
  fill(Circle(cx - 6.5, cy, 0.9), Solid(Hex(0x53E07A)));
}

}  // namespace

Picture DropMarker() {
  Canvas canvas(24, 24);
  // An in-tray whose rim dips in the middle; the arrow's tip goes in behind its front.
  const Shape tray = Polygon({{2.5, 13.5}, {7.5, 13.5}, {9, 16.5}, {15, 16.5}, {16.5, 13.5}, {21.5, 13.5}, {21.5, 22.5}, {2.5, 22.5}});
  const Shape arrow = Union(Box(9, 3, 15, 10, 0.8), Polygon({{4.5, 9.5}, {19.5, 9.5}, {12, 18.5}}));
  canvas.Fill(Offset(Grow(arrow, 1), 0, 1), Solid(kBlack), 0.35);
  canvas.Fill(Grow(arrow, 0.9), Solid(Hex(0x0B3A18)));
  canvas.Fill(arrow, Vertical({{3, Hex(0x9AF5B0)}, {10, Hex(0x3DD06A)}, {18, Hex(0x178A3A)}}));
  canvas.Fill(Intersect(Box(9.8, 3.8, 11.4, 10, 0.5), arrow), Solid(kWhite), 0.35);
  canvas.Fill(Offset(Grow(tray, 1), 0, 1), Solid(kBlack), 0.35);
  canvas.Fill(Grow(tray, 0.9), Solid(kOutline));
  canvas.Fill(tray, Vertical({{13.5, Hex(0xEEF1F4)}, {17, Hex(0xC3CAD2)}, {22.5, Hex(0x7E8793)}}));
  canvas.Fill(Intersect(Rim(tray, 1), Box(0, 13, 24, 17.5)), Solid(kWhite), 0.7);
  canvas.Fill(Intersect(tray, Box(0, 19.5, 24, 20.5)), Solid(Hex(0x59626E)), 0.6);
  return canvas.Finish(CardFace());
}

Picture EjectDisc() {
  Canvas canvas(64, 48);
  Plate(canvas);
  Disc(canvas, kDriveX, kDriveY, 8.5);
  EjectSign(canvas, 30, 11.5);
  return Before(canvas.Finish(CardFace()), 40);
}

Picture EjectUsb() {
  Canvas canvas(64, 48);
  Plate(canvas);
  UsbStick(canvas, kDriveX, kDriveY);
  EjectSign(canvas, 30, 11.5);
  return Before(canvas.Finish(CardFace()), 40);
}

}  // namespace quillet::art
