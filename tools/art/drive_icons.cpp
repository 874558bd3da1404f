#include "drive_icons.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace quillet::art {
namespace {

constexpr int kWidth = 38;
constexpr int kHeight = 47;
// The drawing's area: the card's rim lies above and left of it, the text
// column to its right and the meter groove below.
constexpr int kLeft = 2, kTop = 2, kRight = 34, kBottom = 33;
const Rgb kBlack{};
const Rgb kWhite{1, 1, 1};
const Rgb kOutline = Hex(0x15181C);
const Rgb kLed = Hex(0x53E07A);

// A soft shadow as opaque rings darkening the card's own colour, so it
// survives the hard alpha of the file: the outer ring is the card itself.
void Shadow(Canvas& canvas, const Shape& shape, const Paint& card, double darkness, double spread) {
  constexpr int kRings = 4;
  for (int i = 0; i < kRings; ++i) {
    const double k = darkness * (i + 1) / kRings;
    canvas.Fill(Grow(shape, spread * (1 - double(i) / kRings)),
                [card, k](double x, double y) { return Mix(card(x, y), kBlack, k); });
  }
}

// The picture as it is, once no pixel lies outside the drawing's area.
Picture Within(Picture picture) {
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x) {
      const bool drawn = picture.pixels[static_cast<std::size_t>(y * picture.width + x)] >> 24 != 0;
      if (drawn && (x < kLeft || y < kTop || x >= kRight || y >= kBottom))
        throw std::runtime_error("a drive icon strays out of its area");
    }
  return picture;
}

// A disk in three-quarter view: a silver lid over a darker front with a light.
void DiskBody(Canvas& canvas, const Paint& card) {
  const Shape lid = Polygon({{8, 9}, {28.5, 9}, {32.5, 18.5}, {3.5, 18.5}});
  const Shape front = Box(3.5, 18, 32.5, 27.5, 2);
  const Shape body = Union(Grow(lid, 0.5), front);
  Shadow(canvas, Offset(Box(4.5, 21, 31.5, 28, 3), 0, 1.2), card, 0.55, 2);
  canvas.Fill(Grow(body, 0.9), Solid(kOutline));
  canvas.Fill(Grow(lid, 0.5), Vertical({{9, Hex(0xAEB6C0)}, {18, Hex(0xEEF1F4)}}));
  canvas.Fill(Polygon({{10, 11.5}, {26.8, 11.5}, {28.2, 15.5}, {8.6, 15.5}}),
              Vertical({{11.5, Hex(0x9DA6B1)}, {15.5, Hex(0xD0D6DC)}}), 0.8);
  canvas.Fill(front, Vertical({{18.5, Hex(0x9AA3AE)}, {20, Hex(0x7E8793)}, {27.5, Hex(0x4E555F)}}));
  canvas.Fill(Box(3.5, 18, 32.5, 19), Solid(kWhite), 0.75);
  for (int i = 0; i < 4; ++i) {
    const double x = 7 + 2 * i;
    canvas.Fill(Box(x, 21, x + 1, 25, 0.4), Solid(Hex(0x2E333A)));
  }
  canvas.Fill(Circle(28.5, 23, 2.4), Solid(kLed), 0.25);
  canvas.Fill(Circle(28.5, 23, 1.4), Solid(kLed));
  canvas.Fill(Circle(28.2, 22.6, 0.6), Solid(Lighter(kLed, 0.7)));
}

// A small house on a blue badge: the disk the system runs from.
void HomeBadge(Canvas& canvas, double x, double y) {
  const double s = 12;
  canvas.Fill(Box(x - 1, y - 1, x + s + 1, y + s + 1, 3.5), Solid(kOutline));
  canvas.Fill(Box(x, y, x + s, y + s, 2.5), Vertical({{y, Hex(0x5CC2F2)}, {y + s, Hex(0x1668B8)}}));
  const Shape upper_half = Intersect(Box(x, y, x + s, y + s / 2), Box(x + 0.5, y + 0.5, x + s - 0.5, y + s, 2));
  canvas.Fill(upper_half, Solid(kWhite), 0.18);
  const double cx = x + s / 2;
  const Shape roof = Polygon({{cx, y + 2.2}, {cx + 4.4, y + 6.3}, {cx - 4.4, y + 6.3}});
  const Shape walls = Box(cx - 2.9, y + 5.5, cx + 2.9, y + 9.8);
  const Shape house = Subtract(Union(roof, walls), Box(cx - 0.8, y + 7.2, cx + 0.8, y + 9.8));
  canvas.Fill(Offset(house, 0, 0.6), Solid(Hex(0x0B3F78)), 0.5);
  canvas.Fill(house, Solid(kWhite));
}

}  // namespace

// Silver with a rainbow sheen that turns with the angle, as a pressed disc shows.
Paint DiscSurface(double cx, double cy, double radius) {
  return [=](double x, double y) {
    const double a = std::atan2(y - cy, x - cx);
    const double r = std::hypot(x - cx, y - cy) / radius;
    const double sheen = 0.5 + 0.5 * std::cos(2 * (a + std::numbers::pi / 4));
    const Rgb tint{0.5 + 0.5 * std::cos(3 * a), 0.5 + 0.5 * std::cos(3 * a - 2.1), 0.5 + 0.5 * std::cos(3 * a + 2.1)};
    const Rgb silver = Mix(Hex(0x9AA3AE), Hex(0xF4F6F8), 0.25 + 0.75 * sheen * (0.6 + 0.4 * r));
    return Mix(silver, tint, 0.22);
  };
}


Picture HardDisk(const Paint& card) {
  Canvas canvas(kWidth, kHeight);
  DiskBody(canvas, card);
  return Within(canvas.Finish(card));
}

Picture SystemDisk(const Paint& card) {
  Canvas canvas(kWidth, kHeight);
  DiskBody(canvas, card);
  HomeBadge(canvas, 3, 3);
  return Within(canvas.Finish(card));
}

Picture OpticalDisc(const Paint& card) {
  Canvas canvas(kWidth, kHeight);
  const double cx = 17.5, cy = 16.5, r = 13;
  const Shape hole = Circle(cx, cy, 2.2);
  Shadow(canvas, Offset(Circle(cx, cy, r), 0, 1.3), card, 0.5, 1.5);
  canvas.Fill(Circle(cx, cy, r + 0.9), Solid(kOutline));
  canvas.Fill(Circle(cx, cy, r), DiscSurface(cx, cy, r));
  canvas.Fill(Rim(Circle(cx, cy, r), 0.8), Solid(Hex(0xE8ECF0)), 0.6);
  canvas.Fill(Circle(cx, cy, 5.6), Solid(Hex(0xC9CFD6)));
  canvas.Fill(Rim(Circle(cx, cy, 5.6), 0.7), Solid(Hex(0x8E97A2)));
  canvas.Fill(Circle(cx, cy, 3.4), Solid(Hex(0xE4E8EC)));
  canvas.Fill(Grow(hole, 0.8), Solid(kOutline));
  canvas.Fill(hole, card);
  return Within(canvas.Finish(card));
}

Picture RemovableDisk(const Paint& card) {
  Canvas canvas(kWidth, kHeight);
  // Drawn lying along x about the centre, then turned to point up and right.
  const double cx = 17.5, cy = 17.5, turn = -38;
  const auto fill = [&](const Shape& shape, const Paint& paint, double opacity = 1.0) {
    canvas.Fill(Rotate(shape, cx, cy, turn), Rotate(paint, cx, cy, turn), opacity);
  };
  const Shape plug = Box(cx + 5, cy - 4.3, cx + 13.5, cy + 4.3, 0.8);
  const Shape body = Box(cx - 13.5, cy - 6, cx + 6, cy + 6, 2.6);
  const Shape stick = Rotate(Union(plug, body), cx, cy, turn);
  Shadow(canvas, Offset(stick, 0.5, 1.8), card, 0.55, 2.0);
  canvas.Fill(Grow(stick, 0.9), Solid(kOutline));
  fill(plug, Vertical({{cy - 4.3, Hex(0xF3F5F7)}, {cy - 1, Hex(0xC3CAD2)}, {cy + 4.3, Hex(0x7E8792)}}));
  for (double top : {cy - 2, cy + 1}) fill(Box(cx + 8.5, top, cx + 11, top + 1.6), Solid(Hex(0x3A4048)));
  fill(body, Vertical({{cy - 6, Hex(0x4FA8F0)}, {cy, Hex(0x1F78D0)}, {cy + 6, Hex(0x134E94)}}));
  fill(Box(cx - 13.5, cy - 6, cx - 6.5, cy + 6, 2.6), Vertical({{cy - 6, Hex(0xF4F6F8)}, {cy + 6, Hex(0xA8B0BA)}}));
  fill(Box(cx - 5, cy - 5.2, cx + 5.2, cy - 3.6, 0.8), Solid(kWhite), 0.35);
  fill(Circle(cx - 9.5, cy, 1.2), Solid(kLed));
  return Within(canvas.Finish(card));
}

}  // namespace quillet::art
