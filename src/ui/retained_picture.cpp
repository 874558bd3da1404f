#include "ui/retained_picture.h"

namespace quillet {
namespace {

// `source` cut to the picture's own width x height.
PictureRect Inside(PictureRect source, int width, int height) {
  const int right = std::min(source.left + source.width, width), bottom = std::min(source.top + source.height, height);
  source.left = std::max(source.left, 0);
  source.top = std::max(source.top, 0);
  source.width = std::max(right - source.left, 0);
  source.height = std::max(bottom - source.top, 0);
  return source;
}

Picture Blank(const PictureRect& r) {
  Picture p;
  if (r.Empty()) return p;
  p.width = r.width;
  p.height = r.height;
  p.pixels.resize(static_cast<std::size_t>(r.width) * static_cast<std::size_t>(r.height));
  return p;
}

}  // namespace

Picture ToPicture(const IndexedPicture& picture, const PictureRect& source, const Palette& colours, int transparent) {
  const PictureRect r = Inside(source, picture.Bits() != nullptr ? picture.Width() : 0, picture.Height());
  Picture p = Blank(r);
  auto out = p.pixels.begin();
  for (int y = r.top; y < r.top + r.height; ++y) {
    const std::uint8_t* row = picture.Bits() + static_cast<std::ptrdiff_t>(y) * picture.Stride();
    for (int x = r.left; x < r.left + r.width; ++x) *out++ = row[x] == transparent ? 0u : 0xFF000000u | colours[row[x]];
  }
  return p;
}

Picture ToPicture(const ArgbSurface& surface, const PictureRect& source) {
  const Picture& pixels = surface.Pixels();
  const PictureRect r = Inside(source, pixels.width, pixels.height);
  Picture p = Blank(r);
  const std::uint32_t fill = surface.Opaque() ? 0xFF000000u : 0u;
  auto out = p.pixels.begin();
  for (int y = r.top; y < r.top + r.height; ++y) {
    const auto row = pixels.pixels.begin() + static_cast<std::ptrdiff_t>(y) * pixels.width;
    out = std::transform(row + r.left, row + r.left + r.width, out, [fill](std::uint32_t v) { return v | fill; });
  }
  return p;
}

void Painter::DrawIndexed(const IndexedPicture& picture, const PictureRect& source, const Palette& colours,
                          int transparent, const TwipsRect& dest) {
  const Picture p = ToPicture(picture, source, colours, transparent);
  if (p.width > 0) DrawPicture(p, dest);
}

void Painter::DrawSurface(const ArgbSurface& surface, const PictureRect& source, const TwipsRect& dest) {
  const Picture p = ToPicture(surface, source);
  if (p.width > 0) DrawPicture(p, dest);
}

}  // namespace quillet
