#include "canvas.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillet::art {
namespace {

constexpr int kSamples = 4;  // per axis

Rgb Interpolate(const std::vector<std::pair<double, Rgb>>& stops, double at) {
  if (stops.empty()) return {};
  if (at <= stops.front().first) return stops.front().second;
  for (std::size_t i = 1; i < stops.size(); ++i)
    if (at <= stops[i].first) {
      const auto& [p0, c0] = stops[i - 1];
      const auto& [p1, c1] = stops[i];
      return Mix(c0, c1, p1 > p0 ? (at - p0) / (p1 - p0) : 1.0);
    }
  return stops.back().second;
}

std::uint32_t Byte(double v) { return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0)); }

}  // namespace

Rgb Hex(std::uint32_t rrggbb) {
  return {((rrggbb >> 16) & 0xFF) / 255.0, ((rrggbb >> 8) & 0xFF) / 255.0, (rrggbb & 0xFF) / 255.0};
}
Rgb Mix(Rgb a, Rgb b, double t) { return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t}; }
Rgb Lighter(Rgb c, double t) { return Mix(c, {1, 1, 1}, t); }
Rgb Darker(Rgb c, double t) { return Mix(c, {0, 0, 0}, t); }

Shape Box(double x0, double y0, double x1, double y1, double radius) {
  const double cx = (x0 + x1) / 2, cy = (y0 + y1) / 2;
  const double hx = (x1 - x0) / 2 - radius, hy = (y1 - y0) / 2 - radius;
  return [=](double x, double y) {
    const double qx = std::abs(x - cx) - hx, qy = std::abs(y - cy) - hy;
    const double outside = std::hypot(std::max(qx, 0.0), std::max(qy, 0.0));
    return outside + std::min(std::max(qx, qy), 0.0) - radius;
  };
}

Shape Circle(double cx, double cy, double radius) {
  return [=](double x, double y) { return std::hypot(x - cx, y - cy) - radius; };
}

Shape Ellipse(double cx, double cy, double rx, double ry) {
  return [=](double x, double y) { return (std::hypot((x - cx) / rx, (y - cy) / ry) - 1.0) * std::min(rx, ry); };
}

Shape Segment(double x0, double y0, double x1, double y1, double half_width) {
  return [=](double x, double y) {
    const double dx = x1 - x0, dy = y1 - y0;
    const double t = std::clamp(((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return std::hypot(x - (x0 + t * dx), y - (y0 + t * dy)) - half_width;
  };
}

Shape Union(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](double x, double y) { return std::min(a(x, y), b(x, y)); };
}
Shape Intersect(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](double x, double y) { return std::max(a(x, y), b(x, y)); };
}
Shape Subtract(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](double x, double y) { return std::max(a(x, y), -b(x, y)); };
}
Shape Grow(Shape s, double by) {
  return [s = std::move(s), by](double x, double y) { return s(x, y) - by; };
}
Shape Rim(Shape s, double width) {
  return [s = std::move(s), width](double x, double y) {
    const double d = s(x, y);
    return std::max(d, -(d + width));
  };
}
Shape Offset(Shape s, double dx, double dy) {
  return [s = std::move(s), dx, dy](double x, double y) { return s(x - dx, y - dy); };
}

Shape Polygon(std::vector<std::pair<double, double>> corners) {
  return [corners = std::move(corners)](double x, double y) {
    double d = std::numeric_limits<double>::max();
    bool inside = false;
    for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
      const auto [xi, yi] = corners[i];
      const auto [xj, yj] = corners[j];
      const double ex = xj - xi, ey = yj - yi, wx = x - xi, wy = y - yi;
      const double t = std::clamp((wx * ex + wy * ey) / (ex * ex + ey * ey), 0.0, 1.0);
      d = std::min(d, std::hypot(wx - ex * t, wy - ey * t));
      if ((yi > y) != (yj > y) && x < xi + (y - yi) * ex / ey) inside = !inside;
    }
    return inside ? -d : d;
  };
}

Paint Solid(Rgb c) {
  return [c](double, double) { return c; };
}
Paint Vertical(std::vector<std::pair<double, Rgb>> stops) {
  return [stops = std::move(stops)](double, double y) { return Interpolate(stops, y); };
}
Paint Horizontal(std::vector<std::pair<double, Rgb>> stops) {
  return [stops = std::move(stops)](double x, double) { return Interpolate(stops, x); };
}
Paint Linear(double x0, double y0, double x1, double y1, std::vector<std::pair<double, Rgb>> stops) {
  const double dx = x1 - x0, dy = y1 - y0, length2 = dx * dx + dy * dy;
  return [=, stops = std::move(stops)](double x, double y) {
    return Interpolate(stops, ((x - x0) * dx + (y - y0) * dy) / length2);
  };
}
Paint Radial(double cx, double cy, double radius, Rgb inner, Rgb outer) {
  return [=](double x, double y) { return Mix(inner, outer, std::min(std::hypot(x - cx, y - cy) / radius, 1.0)); };
}

Canvas::Canvas(int width, int height)
    : width_(width), height_(height), pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void Canvas::Fill(const Shape& shape, const Paint& paint, double opacity) {
  for (int y = 0; y < height_; ++y)
    for (int x = 0; x < width_; ++x) {
      int inside = 0;
      for (int sy = 0; sy < kSamples; ++sy)
        for (int sx = 0; sx < kSamples; ++sx)
          if (shape(x + (sx + 0.5) / kSamples, y + (sy + 0.5) / kSamples) < 0) ++inside;
      if (inside == 0) continue;
      const double k = opacity * inside / (kSamples * kSamples);
      const Rgb c = paint(x + 0.5, y + 0.5);
      Pixel& p = pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
      p = {c.r * k + p.r * (1 - k), c.g * k + p.g * (1 - k), c.b * k + p.b * (1 - k), k + p.a * (1 - k)};
    }
}

Picture Canvas::Finish(Rgb matte) const { return Finish(Solid(matte)); }

Picture Canvas::Finish(const Paint& backdrop) const {
  Picture out{width_, height_, std::vector<std::uint32_t>(pixels_.size(), 0)};
  for (std::size_t i = 0; i < pixels_.size(); ++i) {
    const Pixel& p = pixels_[i];
    if (p.a < 0.5) continue;
    const double rest = 1 - p.a;
    const Rgb matte = backdrop(static_cast<double>(i % static_cast<std::size_t>(width_)) + 0.5,
                               static_cast<double>(i / static_cast<std::size_t>(width_)) + 0.5);
    out.pixels[i] = 0xFF000000u | Byte(p.r + matte.r * rest) << 16 | Byte(p.g + matte.g * rest) << 8 |
                    Byte(p.b + matte.b * rest);
  }
  return out;
}

Picture Canvas::Soft() const {
  Picture out{width_, height_, std::vector<std::uint32_t>(pixels_.size(), 0)};
  for (std::size_t i = 0; i < pixels_.size(); ++i) {
    const Pixel& p = pixels_[i];
    const std::uint32_t alpha = Byte(p.a);
    if (alpha == 0) continue;
    out.pixels[i] = alpha << 24 | Byte(p.r / p.a) << 16 | Byte(p.g / p.a) << 8 | Byte(p.b / p.a);
  }
  return out;
}

}  // namespace quillet::art
