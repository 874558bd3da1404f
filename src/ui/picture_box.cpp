#include "ui/picture_box.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/system_colours.h"
#include "ui/resample.h"

namespace quillet {
namespace {

std::uint32_t Opaque(Colour colour) {
  const Colour c = ResolveColour(colour);
  return 0xFF000000u | (static_cast<std::uint32_t>(RedOf(c)) << 16) | (static_cast<std::uint32_t>(GreenOf(c)) << 8) |
         static_cast<std::uint32_t>(BlueOf(c));
}

// `over` with straight alpha on an opaque pixel.
std::uint32_t Blend(std::uint32_t under, std::uint32_t over) {
  const std::uint32_t a = over >> 24;
  if (a == 255) return over;
  if (a == 0) return under;
  std::uint32_t out = 0xFF000000u;
  for (int shift = 0; shift < 24; shift += 8) {
    const std::uint32_t o = (over >> shift) & 0xFF, u = (under >> shift) & 0xFF;
    out |= ((o * a + u * (255 - a) + 127) / 255) << shift;
  }
  return out;
}

int Pixels(int twips, double twips_per_pixel) {
  return std::max(0, static_cast<int>(std::lround(twips / twips_per_pixel)));
}

}  // namespace

PictureBox::PictureBox(std::string name, TwipsRect bounds, double twips_per_pixel, bool visible)
    : Visual(std::move(name), bounds, visible), twips_per_pixel_(twips_per_pixel > 0 ? twips_per_pixel : 15.0) {
  Redraw();
}

void PictureBox::SetBackColor(Colour colour) {
  back_ = colour;
  Redraw();
}

void PictureBox::SetPicture(PicturePtr picture, double twips_per_pixel) {
  picture_ = std::move(picture);
  picture_twips_per_pixel_ = twips_per_pixel;
  Redraw();
}

void PictureBox::Cls() { Redraw(); }

void PictureBox::Resized() { Redraw(); }

void PictureBox::Redraw() {
  auto image = std::make_shared<quillet::Picture>();
  image->width = Pixels(Width(), twips_per_pixel_);
  image->height = Pixels(Height(), twips_per_pixel_);
  image->pixels.assign(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height),
                       Opaque(back_));
  image_ = std::move(image);
  if (picture_ && picture_->width > 0 && picture_->height > 0) {
    // The picture keeps its size in twips: at another screen it is scaled.
    const double scale = picture_twips_per_pixel_ / twips_per_pixel_;
    const int w = std::max(1, static_cast<int>(std::lround(picture_->width * scale)));
    const int h = std::max(1, static_cast<int>(std::lround(picture_->height * scale)));
    const quillet::Picture scaled = ResamplePicture(*picture_, w, h);
    DrawPixels(0, 0, scaled.width, scaled.pixels);
  } else {
    Changed();
  }
}

void PictureBox::DrawPixels(int x, int y, int width, const std::vector<std::uint32_t>& pixels) {
  if (width <= 0) return;
  // Someone may hold the image as a picture of their own.
  if (image_.use_count() > 1) image_ = std::make_shared<quillet::Picture>(*image_);
  const int height = static_cast<int>(pixels.size() / static_cast<std::size_t>(width));
  for (int row = std::max(0, -y); row < height && y + row < image_->height; ++row)
    for (int col = std::max(0, -x); col < width && x + col < image_->width; ++col) {
      std::uint32_t& under = image_->pixels[static_cast<std::size_t>(y + row) * static_cast<std::size_t>(image_->width) +
                                            static_cast<std::size_t>(x + col)];
      under = Blend(under, pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                                  static_cast<std::size_t>(col)]);
    }
  Changed();
}

void PictureBox::Paint(Painter& painter) const {
  if (image_->width > 0 && image_->height > 0) painter.DrawPicture(*image_, Bounds());
}

}  // namespace quillet
