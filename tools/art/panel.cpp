#include "panel.h"

namespace quillet::art {
namespace {

// What the outline of a picture drawn straight on the desktop is blended with.
const Rgb kDesktop = Hex(0x5E636A);
const Rgb kEdge = Hex(0x111418);
const Rgb kBlack{};
const Rgb kWhite{1, 1, 1};

Paint StripFace() {
  return Horizontal({{0.5, Hex(0x3E4550)}, {6.5, Hex(0x545D6A)}, {13.5, Hex(0x434A55)}, {20.5, Hex(0x2A2F37)}});
}

// A dot pressed into the surface: a dark pit with light below and right.
void GripDot(Canvas& canvas, double x, double y) {
  canvas.Fill(Circle(x + 0.5, y + 0.5, 1.1), Solid(Hex(0x7A8492)), 0.8);
  canvas.Fill(Circle(x, y, 1.1), Solid(Hex(0x15181C)));
}

// The strip's face as seen from a picture laid over the strip at (x, y).
Paint StripFaceAt(double x, double y) {
  return [x, y, strip = StripFace()](double px, double py) { return strip(px + x, py + y); };
}

// The marks are drawn with the same shapes lit and unlit, so a lit picture
// laid over the strip covers the unlit mark to the last pixel; (x, y) is the
// lit picture's top left.
void ExitMark(Canvas& canvas, double x, double y, bool lit) {
  const double cx = x + 9.5, cy = y + 9.5, arm = 2.9;
  const Rgb face = lit ? Hex(0xEE5A52) : Hex(0x66707D);
  canvas.Fill(Circle(cx, cy + 0.6, 8.2), Solid(kBlack), 0.35);
  canvas.Fill(Circle(cx, cy, 7.8), Solid(lit ? Hex(0x3A0A0C) : kEdge));
  canvas.Fill(Circle(cx, cy, 6.9), Radial(cx - 2, cy - 3, 10, face, lit ? Hex(0x9A1218) : Hex(0x2E343C)));
  canvas.Fill(Intersect(Ellipse(cx, cy - 3.2, 5.2, 3.2), Circle(cx, cy, 6.4)),
              Vertical({{cy - 6.4, Lighter(face, lit ? 0.55 : 0.3)}, {cy - 0.5, Darker(face, 0.1)}}), lit ? 0.8 : 0.5);
  const Shape cross = Union(Segment(cx - arm, cy - arm, cx + arm, cy + arm, 1.05),
                            Segment(cx - arm, cy + arm, cx + arm, cy - arm, 1.05));
  canvas.Fill(Offset(cross, 0, 0.7), Solid(lit ? Hex(0x5A0C10) : kBlack), 0.6);
  canvas.Fill(cross, Solid(lit ? kWhite : Hex(0xB4BCC6)));
}

// Eight square teeth, those at the four sides on whole pixels.
Shape Gear(double cx, double cy) {
  Shape gear = Circle(cx, cy, 5.3);
  for (int i = 0; i < 8; ++i) gear = Union(gear, Rotate(Box(cx - 1.5, cy - 7, cx + 1.5, cy, 0.4), cx, cy, 45.0 * i));
  return Subtract(gear, Circle(cx, cy, 2.2));
}

void OptionsMark(Canvas& canvas, double x, double y, bool lit) {
  const double cx = x + 9.5, cy = y + 9.5;
  const Shape gear = Gear(cx, cy);
  canvas.Fill(Offset(Grow(gear, 1), 0, 0.7), Solid(kBlack), 0.35);
  canvas.Fill(Grow(gear, 0.9), Solid(lit ? Hex(0x0C2440) : kEdge));
  const Paint metal = lit ? Linear(cx - 5, cy - 6, cx + 5, cy + 6, {{0, kWhite}, {0.45, Hex(0xBFE3FF)}, {1, Hex(0x3A8EE0)}})
                          : Linear(cx - 5, cy - 6, cx + 5, cy + 6, {{0, Hex(0xAEB6C0)}, {1, Hex(0x59626E)}});
  canvas.Fill(gear, metal);
  canvas.Fill(Rim(Circle(cx, cy, 2.2 + 0.8), 0.8), Solid(lit ? Hex(0x1E5FA8) : Hex(0x3A414B)), 0.6);
}

}  // namespace

Rgb DesktopMatte() { return kDesktop; }

Paint CardFace() {
  return Vertical({{0.5, Hex(0x5C6572)},
                   {2.5, Hex(0x4E5663)},
                   {19.5, Hex(0x414853)},
                   {20.5, Hex(0x3A414B)},
                   {47.5, Hex(0x262A31)}});
}

Picture Card() {
  Canvas canvas(156, 48);
  const Shape face = Box(1, 1, 155, 47, 4);
  canvas.Fill(Box(0, 0, 156, 48, 5), Solid(kEdge));
  canvas.Fill(face, CardFace());
  canvas.Fill(Intersect(Rim(face, 1), Box(0, 0, 156, 4)), Solid(Hex(0x7D8795)));
  // The groove: dark walls and a lit lower lip, so an empty meter reads as sunk in.
  canvas.Fill(Box(2, 33, 155, 42, 1), Vertical({{33.5, Hex(0x0B0D10)}, {40.5, Hex(0x0F1215)}, {41.5, Hex(0x5F6976)}}));
  canvas.Fill(Box(3, 34, 154, 41), Vertical({{34.5, Hex(0x0D0F12)}, {35.5, Hex(0x16191E)}, {40.5, Hex(0x1F2329)}}));
  return canvas.Finish(kDesktop);
}

Picture HandleStrip() {
  Canvas canvas(21, 63);
  const Shape outline = Box(-8, 0, 21, 63, 6);
  const Shape face = Box(-8, 1, 20, 62, 5);
  canvas.Fill(outline, Solid(kEdge));
  canvas.Fill(face, StripFace());
  canvas.Fill(Intersect(Rim(face, 1), Box(0, 0, 21, 4)), Solid(Hex(0x7D8795)));
  ExitMark(canvas, 1, 1, false);
  OptionsMark(canvas, 1, 21, false);
  for (int row = 0; row < 5; ++row)
    for (int column = 0; column < 2; ++column) GripDot(canvas, 7.5 + 4 * column, 42.5 + 3.5 * row);
  return canvas.Finish(kDesktop);
}

Picture ExitLit() {
  Canvas canvas(19, 19);
  ExitMark(canvas, 0, 0, true);
  return canvas.Finish(StripFaceAt(1, 1));
}

Picture OptionsLit() {
  Canvas canvas(19, 20);
  OptionsMark(canvas, 0, 0, true);
  return canvas.Finish(StripFaceAt(1, 21));
}

}  // namespace quillet::art
