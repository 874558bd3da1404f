// A small vector canvas for the bar's art: shapes are signed distance
// functions, filled with 4 x 4 samples a pixel and composed in premultiplied
// colour, so every edge inside a picture is smooth. Only the outline against
// the desktop must stay hard (GIF has one see-through index): Finish blends
// partly covered outline pixels with a mid-tone matte and drops those less
// than half covered.
#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

#include "ui/painter.h"

namespace quillet::art {

// Straight colour, channels 0 to 1.
struct Rgb {
  double r = 0, g = 0, b = 0;
};

Rgb Hex(std::uint32_t rrggbb);
Rgb Mix(Rgb a, Rgb b, double t);  // t = 0 gives a
Rgb Lighter(Rgb c, double t);     // towards white
Rgb Darker(Rgb c, double t);      // towards black

// Negative inside, in pixels; pixel (x, y) covers [x, x + 1) x [y, y + 1).
using Shape = std::function<double(double x, double y)>;
using Paint = std::function<Rgb(double x, double y)>;

Shape Box(double x0, double y0, double x1, double y1, double radius = 0);
Shape Circle(double cx, double cy, double radius);
Shape Ellipse(double cx, double cy, double rx, double ry);  // sign is right, distance only near
Shape Segment(double x0, double y0, double x1, double y1, double half_width);
Shape Union(Shape a, Shape b);
Shape Intersect(Shape a, Shape b);
Shape Subtract(Shape a, Shape b);
Shape Grow(Shape s, double by);               // negative shrinks
Shape Rim(Shape s, double width);             // the inner band of `width` along the edge
Shape Offset(Shape s, double dx, double dy);  // moved by (dx, dy)
// Corners in order, either way round.
Shape Polygon(std::vector<std::pair<double, double>> corners);

Paint Solid(Rgb c);
// Colour stops along y (or x), linear between them and flat past the ends.
Paint Vertical(std::vector<std::pair<double, Rgb>> stops);
Paint Horizontal(std::vector<std::pair<double, Rgb>> stops);
// Stops from 0 at (x0, y0) to 1 at (x1, y1), along that direction.
Paint Linear(double x0, double y0, double x1, double y1, std::vector<std::pair<double, Rgb>> stops);
// From `inner` at the centre to `outer` at `radius` and beyond.
Paint Radial(double cx, double cy, double radius, Rgb inner, Rgb outer);

// A shape or a paint turned by `degrees` about (cx, cy), clockwise on screen.
template <class F>
auto Rotate(F f, double cx, double cy, double degrees) {
  const double a = degrees * std::numbers::pi / 180, c = std::cos(a), s = std::sin(a);
  return [f = std::move(f), cx, cy, c, s](double x, double y) {
    const double dx = x - cx, dy = y - cy;
    return f(cx + dx * c + dy * s, cy - dx * s + dy * c);
  };
}

class Canvas {
 public:
  Canvas(int width, int height);
  int Width() const { return width_; }
  int Height() const { return height_; }
  void Fill(const Shape& shape, const Paint& paint, double opacity = 1.0);
  // The pixels with hard alpha, see above.
  Picture Finish(Rgb matte) const;
  // The same with the matte taken pixel by pixel: for a picture drawn over
  // a known background, its outline then blends with that background.
  Picture Finish(const Paint& matte) const;
  // The pixels with their own alpha, for formats that keep it (icons, cursors).
  Picture Soft() const;

 private:
  struct Pixel {
    double r = 0, g = 0, b = 0, a = 0;  // premultiplied
  };
  int width_;
  int height_;
  std::vector<Pixel> pixels_;
};

}  // namespace quillet::art
