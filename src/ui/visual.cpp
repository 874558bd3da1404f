#include "ui/visual.h"

#include <cmath>
#include <utility>

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

void Visual::SetToolTipText(std::string text) {
  if (text == tool_tip_) return;
  tool_tip_ = std::move(text);
  if (form_ != nullptr) form_->ToolTipTextChanged(*this);
}

void Visual::MouseInput(MouseEventKind kind, const MouseArgs& args) {
  switch (kind) {
    case MouseEventKind::kDown:
      pressed_ = true;
      if (on_mouse_down) on_mouse_down(args);
      break;
    case MouseEventKind::kMove:
      if (on_mouse_move) on_mouse_move(args);
      break;
    case MouseEventKind::kUp: {
      const bool was_pressed = std::exchange(pressed_, false);
      const bool inside = args.x >= 0 && args.y >= 0 && args.x < Width() && args.y < Height();
      if (on_mouse_up) on_mouse_up(args);
      if (was_pressed && inside && (args.button & kLeftButton) && on_click) on_click();
      break;
    }
    case MouseEventKind::kDblClick:
      if (on_dbl_click) on_dbl_click();
      break;
  }
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
