// A picture box: a ground colour, a picture at its top left, and what the
// program draws over them, kept as the box's persistent image in the
// screen's pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/visual.h"

namespace quillet {

class PictureBox : public Visual {
 public:
  // `twips_per_pixel` is the screen's: the image has one pixel per screen pixel.
  PictureBox(std::string name, TwipsRect bounds, double twips_per_pixel, bool visible = true);

  Colour BackColor() const { return back_; }
  // A new ground erases what was drawn, as Cls does.
  void SetBackColor(Colour colour);
  const PicturePtr& Picture() const { return picture_; }
  // The picture stands at its own size, `twips_per_pixel` of it to the
  // pixel; what was drawn goes. A null picture is the empty one.
  void SetPicture(PicturePtr picture, double twips_per_pixel = 15.0);
  // Erases what was drawn: ground and picture stay.
  void Cls();

  // The persistent image, the box's size in screen pixels.
  const quillet::Picture& Image() const { return *image_; }
  PicturePtr ImagePtr() const { return image_; }
  double TwipsPerPixel() const { return twips_per_pixel_; }
  // Draws straight-alpha 0xAARRGGBB pixels, `width` to a row, with their top
  // left at pixel (x, y) of the image; what falls outside is cut off.
  void DrawPixels(int x, int y, int width, const std::vector<std::uint32_t>& pixels);

  void Paint(Painter& painter) const override;

 protected:
  void Resized() override;

 private:
  void Redraw();

  double twips_per_pixel_;
  Colour back_ = Rgb(255, 255, 255);
  PicturePtr picture_;
  double picture_twips_per_pixel_ = 15.0;
  std::shared_ptr<quillet::Picture> image_;
};

}  // namespace quillet
