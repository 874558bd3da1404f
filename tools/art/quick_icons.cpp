#include "quick_icons.h"

#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "panel.h"

namespace quillet::art {
namespace {

const Rgb kOutline = Hex(0x15181C);
const Rgb kWhite{1, 1, 1};
// Shapes lie on whole pixels, so this edge fills the pixel row around them.
constexpr double kEdge = 0.9;

// The quick buttons' usual face as seen from an icon centred on it.
Paint ButtonFace() { return Vertical({{0, Hex(0x9CA3A8)}, {15, Hex(0x202A30)}}); }

Paint Shade(double y0, Rgb top, double y1, Rgb bottom) { return Vertical({{y0, top}, {y1, bottom}}); }

void Outlined(Canvas& canvas, const Shape& shape, const Paint& paint) {
  canvas.Fill(Grow(shape, kEdge), Solid(kOutline));
  canvas.Fill(shape, paint);
}

Shape Polyline(const std::vector<std::pair<double, double>>& points, double half_width) {
  Shape line = Segment(points[0].first, points[0].second, points[1].first, points[1].second, half_width);
  for (std::size_t i = 2; i < points.size(); ++i)
    line = Union(line, Segment(points[i - 1].first, points[i - 1].second, points[i].first, points[i].second, half_width));
  return line;
}

// A ring open by `gap` degrees at the top, with round ends: the power sign's arc.
Shape OpenRing(double cx, double cy, double radius, double half_width, double gap) {
  const double a = gap / 2 * std::numbers::pi / 180, ex = radius * std::sin(a), ey = -radius * std::cos(a);
  const double slope = std::tan(a);
  return [=](double x, double y) {
    const double dx = x - cx, dy = y - cy;
    if (dy < 0 && std::abs(dx) < -dy * slope) return std::hypot(std::abs(dx) - ex, dy - ey) - half_width;
    return std::abs(std::hypot(dx, dy) - radius) - half_width;
  };
}

Shape PowerSign(double cx, double cy, double radius, double half_width) {
  return Union(OpenRing(cx, cy, radius, half_width, 80),
               Segment(cx, cy - radius - 0.6, cx, cy - radius * 0.15, half_width));
}

// A manila folder on whole pixels from (x0, y0) to (x1, y1), its tab on the left.
void DrawFolder(Canvas& canvas, double x0, double y0, double x1, double y1) {
  const Shape back = Union(Box(x0, y0, x0 + 5, y0 + 3, 0.8), Box(x0, y0 + 1, x1, y1, 1));
  const Shape front = Box(x0, y0 + 4, x1, y1, 1);
  Outlined(canvas, back, Shade(y0, Hex(0xE9B44E), y1, Hex(0xA86C12)));
  Outlined(canvas, front, Shade(y0 + 4, Hex(0xFFE79A), y1, Hex(0xEDAA34)));
  canvas.Fill(Box(x0 + 1, y0 + 4, x1 - 1, y0 + 5), Solid(kWhite), 0.45);
}

// Light blue glass in a dark frame, the handle reaching down to the right.
void DrawLens(Canvas& canvas, double cx, double cy, double glass, double reach, double handle_width) {
  const double from = (glass + 0.6) / std::numbers::sqrt2;
  const Shape handle = Segment(cx + from, cy + from, cx + reach, cy + reach, handle_width);
  Outlined(canvas, handle, Linear(cx, cy, cx + reach, cy + reach, {{0.4, Hex(0x6A7480)}, {1, Hex(0x2A2F37)}}));
  canvas.Fill(Circle(cx, cy, glass + 1 + kEdge), Solid(kOutline));
  canvas.Fill(Circle(cx, cy, glass + 1), Linear(cx - glass, cy - glass, cx + glass, cy + glass,
                                                {{0, Hex(0x8E97A2)}, {1, Hex(0x3A414B)}}));
  canvas.Fill(Circle(cx, cy, glass), Linear(cx - glass, cy - glass, cx + glass, cy + glass,
                                            {{0, Hex(0xE6F5FF)}, {1, Hex(0x6DB8EA)}}));
  canvas.Fill(Intersect(Circle(cx, cy, glass), Circle(cx - glass * 0.55, cy - glass * 0.55, glass * 0.6)),
              Solid(kWhite), 0.6);
}

Rgb PinTone(PinColour colour) {
  switch (colour) {
    case PinColour::kBlue: return Hex(0x2F86E0);
    case PinColour::kRed: return Hex(0xE0443C);
    case PinColour::kGray: break;
  }
  return Hex(0x9AA3AE);
}

}  // namespace

Picture Lock() {
  Canvas canvas(15, 15);
  // The shackle's opening keeps only a thin edge, so it stays open at this size.
  const Shape opening = Union(Circle(7.5, 5.5, 1.5), Box(6, 5.5, 9, 8));
  const Shape shackle = Subtract(Union(Circle(7.5, 5.5, 3.5), Box(4, 5.5, 11, 8)), opening);
  const Shape body = Box(2, 7, 13, 13, 1);
  canvas.Fill(Subtract(Grow(shackle, kEdge), Grow(opening, -0.5)), Solid(kOutline));
  canvas.Fill(shackle, Horizontal({{4, Hex(0xF2F4F6)}, {11, Hex(0x7E8792)}}));
  Outlined(canvas, body, Shade(7, Hex(0xFFD86A), 13, Hex(0xC27E0E)));
  canvas.Fill(Box(3, 7, 12, 8), Solid(kWhite), 0.45);
  canvas.Fill(Union(Circle(7.5, 9.4, 1.1), Polygon({{7, 9.6}, {8, 9.6}, {8.4, 11.6}, {6.6, 11.6}})), Solid(Hex(0x3A2606)));
  return canvas.Finish(ButtonFace());
}

Picture Search() {
  Canvas canvas(15, 15);
  Outlined(canvas, Box(1, 1, 9, 13, 0.6), Shade(1, kWhite, 13, Hex(0xC9D0D8)));
  for (double y : {3.0, 5.0, 7.0}) canvas.Fill(Box(3, y, y < 7 ? 7 : 5, y + 1), Solid(Hex(0x6A7480)));
  DrawLens(canvas, 9, 9, 2.3, 4, 1.05);
  return canvas.Finish(ButtonFace());
}

Picture Folder() {
  Canvas canvas(15, 15);
  DrawFolder(canvas, 2, 2, 13, 13);
  return canvas.Finish(ButtonFace());
}

Picture TaskManager() {
  Canvas canvas(15, 15);
  Outlined(canvas, Union(Box(6.5, 9, 8.5, 12), Box(4.5, 11.5, 10.5, 13, 0.5)), Shade(10, Hex(0xB4BCC6), 13, Hex(0x59626E)));
  Outlined(canvas, Box(2, 2, 13, 10, 1), Shade(2, Hex(0xEEF1F4), 10, Hex(0x9AA3AE)));
  const Shape screen = Box(3, 3, 12, 9);
  canvas.Fill(screen, Shade(3, Hex(0x0C1A14), 9, Hex(0x16352A)));
  const Shape pulse = Polyline({{3, 6.5}, {5, 6.5}, {6, 4}, {7.4, 8.2}, {8.5, 5}, {9.4, 6.5}, {12, 6.5}}, 0.5);
  canvas.Fill(Intersect(pulse, screen), Solid(Hex(0x6CF08A)));
  return canvas.Finish(ButtonFace());
}

Picture Run() {
  Canvas canvas(15, 15);
  const Shape window = Box(2, 2, 13, 13, 1);
  Outlined(canvas, window, Shade(5, kWhite, 13, Hex(0xC9D0D8)));
  canvas.Fill(Intersect(window, Box(0, 0, 15, 5)), Shade(2, Hex(0x6CC0F5), 5, Hex(0x1F6FC4)));
  canvas.Fill(Box(2, 5, 13, 6), Solid(Hex(0x1A4F8A)), 0.6);
  const Shape play = Polygon({{5.5, 6.8}, {10.5, 9.5}, {5.5, 12.2}});
  canvas.Fill(Grow(play, 0.6), Solid(Hex(0x0E4A20)));
  canvas.Fill(play, Shade(6.8, Hex(0x7AE592), 12.2, Hex(0x1E9A44)));
  return canvas.Finish(ButtonFace());
}

Picture Pin(PinColour colour) {
  Canvas canvas(16, 16);
  // Drawn upright about the centre, then leant so the head points up and right.
  const double cx = 8, cy = 8, lean = 45;
  const Rgb tone = PinTone(colour);
  const Paint round = Horizontal({{cx - 2.5, Lighter(tone, 0.6)}, {cx - 0.5, tone}, {cx + 2.8, Darker(tone, 0.45)}});
  const auto fill = [&](const Shape& shape, const Paint& paint) {
    canvas.Fill(Rotate(shape, cx, cy, lean), Rotate(paint, cx, cy, lean));
  };
  const Shape needle = Polygon({{cx - 0.9, cy}, {cx + 0.9, cy}, {cx, cy + 7.4}});
  const Shape cap = Box(cx - 2.6, cy - 7.2, cx + 2.6, cy - 4.4, 1.1);
  const Shape waist = Box(cx - 1.4, cy - 5, cx + 1.4, cy - 1.4);
  const Shape flange = Box(cx - 3.3, cy - 1.8, cx + 3.3, cy - 0.2, 0.8);
  canvas.Fill(Rotate(Grow(Union(Union(cap, waist), Union(flange, needle)), kEdge), cx, cy, lean), Solid(kOutline));
  fill(needle, Horizontal({{cx - 0.6, Hex(0xF4F6F8)}, {cx + 0.8, Hex(0x7E8792)}}));
  fill(waist, Horizontal({{cx - 1.4, tone}, {cx + 1.4, Darker(tone, 0.6)}}));  // in the cap's shadow
  fill(cap, round);
  fill(flange, round);
  return canvas.Finish(DesktopMatte());
}

Picture Power() {
  Canvas canvas(13, 13);
  const Shape sign = PowerSign(6.5, 7, 4.2, 0.95);
  canvas.Fill(Grow(sign, kEdge), Solid(kOutline));
  canvas.Fill(sign, Shade(1.5, Hex(0xFF8C7C), 11.5, Hex(0xC4231C)));
  return canvas.Finish(DesktopMatte());
}

Picture WindowsFolder() {
  Canvas canvas(16, 16);
  DrawFolder(canvas, 2, 2, 14, 13);
  canvas.Fill(Box(8, 9, 15, 16, 0.8), Solid(kOutline));
  for (double y : {10.0, 13.0})
    for (double x : {9.0, 12.0})
      canvas.Fill(Box(x, y, x + 2, y + 2), Linear(9, 10, 14, 15, {{0, Hex(0x8AD2FF)}, {1, Hex(0x1F6FC4)}}));
  return canvas.Finish(DesktopMatte());
}

Picture AutoShutdown() {
  Canvas canvas(16, 16);
  const double cx = 6.5, cy = 6.5;
  canvas.Fill(Circle(cx, cy, 5.5 + kEdge), Solid(kOutline));
  canvas.Fill(Circle(cx, cy, 5.5), Linear(2, 1, 11, 12, {{0, Hex(0xEEF1F4)}, {1, Hex(0x7E8792)}}));
  canvas.Fill(Circle(cx, cy, 4.4), Radial(cx - 1.5, cy - 1.5, 6, kWhite, Hex(0xD0D6DC)));
  for (int i = 0; i < 4; ++i)
    canvas.Fill(Rotate(Box(cx - 0.5, cy - 4.2, cx + 0.5, cy - 3.1), cx, cy, 90.0 * i), Solid(Hex(0x59626E)));
  canvas.Fill(Union(Segment(cx, cy, cx, cy - 3, 0.55), Segment(cx, cy, cx + 2.2, cy + 0.9, 0.55)), Solid(kOutline));
  const double bx = 11.6, by = 11.6;
  canvas.Fill(Circle(bx, by, 3.5 + kEdge), Solid(kOutline));
  canvas.Fill(Circle(bx, by, 3.5), Shade(by - 3.5, Hex(0xFF7A6A), by + 3.5, Hex(0xB81E18)));
  canvas.Fill(PowerSign(bx, by + 0.2, 1.9, 0.55), Solid(kWhite));
  return canvas.Finish(DesktopMatte());
}

Picture Magnifier() {
  Canvas canvas(16, 16);
  DrawLens(canvas, 6.5, 6.5, 4.3, 7.5, 1.5);
  canvas.Fill(Union(Box(4.5, 6, 8.5, 7), Box(6, 4.5, 7, 8.5)), Solid(Hex(0x1A4F8A)));
  return canvas.Finish(DesktopMatte());
}

Picture RunExternal() {
  Canvas canvas(16, 16);
  Outlined(canvas, Box(2, 4, 12, 14, 1.2), Shade(4, kWhite, 14, Hex(0xB4BCC6)));
  const Shape arrow = Union(Segment(6.5, 9.5, 11.5, 4.5, 1), Polygon({{14.6, 1.4}, {14.6, 7.4}, {8.6, 1.4}}));
  Outlined(canvas, arrow, Linear(6, 10, 14, 2, {{0, Hex(0x1A62B8)}, {1, Hex(0x6CC4FA)}}));
  return canvas.Finish(DesktopMatte());
}

}  // namespace quillet::art
