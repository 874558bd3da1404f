#include "tray_icons.h"

#include <cmath>
#include <stdexcept>

namespace quillet::art {
namespace {

const Rgb kEdge = Hex(0x111418);
const Rgb kWhite{1, 1, 1};

// Where the parts of a card lie, relative to its top left, in whole pixels.
struct CardLayout {
  double width, height, pitch, radius;
  double glyph;                                // side of the drive glyph; 0 for none
  double text_x, text_y, text_right, text_h;   // the label line; text_h 0 for none
  double meter_x, meter_y, meter_right, meter_h;
};

CardLayout LayoutFor(int size) {
  switch (size) {
    case 16: return {16, 6, 5, 1.5, 0, 0, 0, 0, 0, 2, 2, 14, 2};
    case 32: return {32, 12, 10, 2.5, 7, 11, 3, 23, 1.5, 11, 6, 30, 3};
    case 48: return {48, 18, 15, 3.5, 10, 17, 4, 37, 2, 17, 9, 45, 4};
    default: break;
  }
  throw std::runtime_error("no icon layout for this size");
}

struct Meter {
  double share;
  Rgb colour;
};

// The meter's gloss as on the bar art: lighter above the middle.
Paint MeterPaint(double top, double bottom, Rgb mid) {
  const double middle = (top + bottom) / 2;
  return Vertical({{top, Lighter(mid, 0.55)}, {middle - 0.01, Lighter(mid, 0.2)}, {middle, mid}, {bottom, Darker(mid, 0.25)}});
}

void HardDiskGlyph(Canvas& canvas, double x, double y, double side) {
  const double h = side * 0.75, top = y + (side - h) / 2;
  canvas.Fill(Box(x - 0.5, top - 0.5, x + side + 0.5, top + h + 0.5, 1.5), Solid(kEdge));
  canvas.Fill(Box(x, top, x + side, top + h, 1), Vertical({{top, Hex(0xEEF1F4)}, {top + h, Hex(0x7E8793)}}));
  const double led = side / 7;
  canvas.Fill(Box(x + side - 2.5 * led, top + h - 2.5 * led, x + side - led, top + h - led),
              Solid(Hex(0x53E07A)));
}

void DiscGlyph(Canvas& canvas, double x, double y, double side) {
  const double c = side / 2, cx = x + c, cy = y + c;
  canvas.Fill(Circle(cx, cy, c + 0.5), Solid(kEdge));
  canvas.Fill(Circle(cx, cy, c - 0.3), Linear(x, y, x + side, y + side, {{0.1, Hex(0xF4F6F8)}, {0.45, Hex(0xD6D0EA)}, {0.65, Hex(0xC6E6DE)}, {1, Hex(0x8A93A0)}}));
  canvas.Fill(Circle(cx, cy, side * 0.1 + 0.4), Solid(kEdge));
}

void MiniCard(Canvas& canvas, const CardLayout& l, double top, const Meter& meter, bool disc) {
  const Shape outline = Box(0, top, l.width, top + l.height, l.radius);
  const Shape face = Box(1, top + 1, l.width - 1, top + l.height - 1, l.radius - 1);
  canvas.Fill(outline, Solid(kEdge));
  canvas.Fill(face, Vertical({{top + 1, Hex(0x5C6572)}, {top + l.pitch * 0.45, Hex(0x464E5A)}, {top + l.pitch, Hex(0x2E333B)}}));
  canvas.Fill(Intersect(Rim(face, 1), Box(0, top, l.width, top + 2)), Solid(Hex(0x8A94A2)));
  if (l.glyph > 0) {
    const double gx = l.width <= 32 ? 2 : 3, gy = top + 1 + (l.pitch - 1 - l.glyph) / 2;
    if (disc) DiscGlyph(canvas, gx, gy, l.glyph);
    else HardDiskGlyph(canvas, gx, gy, l.glyph);
  }
  if (l.text_h > 0) canvas.Fill(Box(l.text_x, top + l.text_y, l.text_right, top + l.text_y + l.text_h, l.text_h / 2), Solid(Hex(0xC9D0D8)));
  const double my = top + l.meter_y, mb = my + l.meter_h;
  canvas.Fill(Box(l.meter_x, my, l.meter_right, mb), Solid(Hex(0x0D0F12)));
  const double fill_right = l.meter_x + (l.meter_right - l.meter_x) * meter.share;
  canvas.Fill(Box(l.meter_x, my, std::round(fill_right), mb), MeterPaint(my, mb, meter.colour));
}

}  // namespace

Picture AppIcon(int size) {
  const CardLayout l = LayoutFor(size);
  const Meter meters[] = {{0.55, Hex(0x2CA8D8)}, {0.8, Hex(0xFCB850)}, {0.35, Hex(0x2CA8D8)}};
  Canvas canvas(size, size);
  for (int i = 0; i < 3; ++i) MiniCard(canvas, l, l.pitch * i, meters[i], i == 2);
  return canvas.Soft();
}

Picture HandCursor() {
  Canvas canvas(32, 32);
  // Index finger up from a palm whose other fingers curl under; thumb to the left.
  const Shape finger = Box(6, 1.5, 11, 14, 2.5);
  const Shape curled = Union(Union(Box(10.5, 7, 14.5, 16, 1.8), Box(14, 8, 17.5, 16, 1.75)),
                             Box(17, 9.5, 20.25, 16, 1.6));
  const Shape palm = Union(Box(6, 11, 20.25, 20, 3), Box(7.5, 18, 18.5, 23.5, 1.5));
  const Shape thumb = Segment(7, 17, 2.8, 12.2, 1.7);
  const Shape hand = Union(Union(finger, curled), Union(palm, thumb));
  canvas.Fill(Grow(hand, 1), Solid(Hex(0x000000)));
  canvas.Fill(hand, Linear(6, 4, 20, 24, {{0, kWhite}, {1, Hex(0xDCE0E6)}}));
  // Short creases where the curled fingers part, on whole pixels so they stay crisp.
  const Shape creases = Union(Union(Box(11, 9.5, 12, 12.5), Box(14, 10, 15, 12.5)), Box(17, 11.5, 18, 13.5));
  canvas.Fill(creases, Solid(Hex(0x000000)));
  return canvas.Soft();
}

}  // namespace quillet::art
