#include "ui/visual.h"

#include <cmath>

#include "ui/form.h"

namespace quillet {

Visual::Visual(std::string name, TwipsRect bounds, bool visible)
    : name_(std::move(name)), bounds_(bounds), visible_(visible) {}

void Visual::SetLeft(int twips) { Move({twips, bounds_.top, bounds_.width, bounds_.height}); }
void Visual::SetTop(int twips) { Move({bounds_.left, twips, bounds_.width, bounds_.height}); }
void Visual::SetWidth(int twips) { Move({bounds_.left, bounds_.top, twips, bounds_.height}); }
void Visual::SetHeight(int twips) { Move({bounds_.left, bounds_.top, bounds_.width, twips}); }
void Visual::Move(TwipsRect bounds) {
  // An unchanged control costs the window no repaint.
  if (bounds == bounds_) return;
  const bool resized = bounds.width != bounds_.width || bounds.height != bounds_.height;
  bounds_ = bounds;
  if (resized) Resized();
  Changed();
}

void Visual::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed();
}

void Visual::Changed() {
  if (form_ != nullptr) form_->Invalidate();
}

Image::Image(std::string name, TwipsRect bounds, bool stretch, bool visible)
    : Visual(std::move(name), bounds, visible), stretch_(stretch) {}

void Image::SetPicture(PicturePtr picture, double twips_per_pixel) {
  const bool same = picture == picture_;
  picture_ = std::move(picture);
  if (!stretch_ && picture_) {
    SetWidth(static_cast<int>(std::lround(picture_->width * twips_per_pixel)));
    SetHeight(static_cast<int>(std::lround(picture_->height * twips_per_pixel)));
  }
  if (!same) Changed();
}

void Image::Paint(Painter& painter) const {
  if (picture_) painter.DrawPicture(*picture_, Bounds());
}

Label::Label(std::string name, TwipsRect bounds, std::string caption, bool visible)
    : Visual(std::move(name), bounds, visible), caption_(std::move(caption)) {}

void Label::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  Changed();
}

void Label::SetFont(quillet::Font font) { font_ = std::move(font); Changed(); }
void Label::SetForeColor(Colour colour) { fore_ = colour; Changed(); }
void Label::SetAlignment(TextAlign align) { align_ = align; Changed(); }

void Label::SetBackStyle(int style) { back_style_ = style; Changed(); }
void Label::SetBackColor(Colour colour) { back_ = colour; Changed(); }

void Label::Paint(Painter& painter) const {
  if (back_style_ != 0) painter.FillRect(Bounds(), back_);
  painter.DrawText(Bounds(), caption_, font_, fore_, align_);
}

}  // namespace quillet
