#include "ui/form.h"

#include <algorithm>

namespace quillet {

Form::Form(Ui& ui, FormArgs args)
    : ui_(ui), args_(std::move(args)), bounds_(args_.bounds), back_color_(args_.back_color) {}

Form::~Form() {
  for (Visual* v : visuals_) v->form_ = nullptr;
  if (peer_) {
    auto& open = ui_.open_forms_;
    open.erase(std::remove(open.begin(), open.end(), this), open.end());
  }
}

void Form::Load() {
  if (peer_) return;
  peer_ = ui_.CreatePeer(*this);
  ui_.open_forms_.push_back(this);
  Form_Load();
}

void Form::Show() {
  Load();
  if (!peer_ || visible_) return;  // Form_Load may have unloaded it
  visible_ = true;
  peer_->VisibleChanged();
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  if (peer_) peer_->VisibleChanged();
}

void Form::Unload() {
  if (!peer_) return;
  Form_Unload();
  auto& open = ui_.open_forms_;
  open.erase(std::remove(open.begin(), open.end(), this), open.end());
  visible_ = false;
  captured_ = pressed_ = nullptr;
  peer_.reset();
}

void Form::SetLeft(int twips) { Move({twips, bounds_.top, bounds_.width, bounds_.height}); }
void Form::SetTop(int twips) { Move({bounds_.left, twips, bounds_.width, bounds_.height}); }
void Form::SetWidth(int twips) { Move({bounds_.left, bounds_.top, twips, bounds_.height}); }
void Form::SetHeight(int twips) { Move({bounds_.left, bounds_.top, bounds_.width, twips}); }
void Form::Move(TwipsRect bounds) {
  // The periodic refresh sets the same height again: the window need not hear of it.
  if (bounds == bounds_) return;
  bounds_ = bounds;
  BoundsChanged();
}

void Form::BoundsChanged() {
  if (peer_) peer_->BoundsChanged();
}

void Form::SetWindowState(int state) {
  if (state == window_state_) return;
  window_state_ = state;
  if (peer_) peer_->WindowStateChanged();
  Form_Resize();
}

void Form::SetBackColor(Colour colour) {
  back_color_ = colour;
  Invalidate();
}

void Form::SetColourKey(Colour key) {
  layering_ = {key, std::nullopt};
  if (peer_) peer_->LayeringChanged();
}

void Form::SetAlpha(int alpha) {
  layering_ = {std::nullopt, alpha < 0 ? 0 : alpha > 255 ? 255 : alpha};
  if (peer_) peer_->LayeringChanged();
}

void Form::AddVisual(Visual& visual) {
  visual.form_ = this;
  visuals_.push_back(&visual);
  Invalidate();
}

void Form::RemoveVisual(Visual& visual) {
  visuals_.erase(std::remove(visuals_.begin(), visuals_.end(), &visual), visuals_.end());
  if (captured_ == &visual) captured_ = nullptr;
  if (pressed_ == &visual) pressed_ = nullptr;
  visual.form_ = nullptr;
  Invalidate();
}

void Form::BringToFront(Visual& visual) {
  auto it = std::find(visuals_.begin(), visuals_.end(), &visual);
  if (it == visuals_.end()) return;
  visuals_.erase(it);
  visuals_.push_back(&visual);
  Invalidate();
}

void Form::Invalidate() {
  if (peer_) peer_->Invalidate();
}

void Form::Paint(Painter& painter) const {
  painter.FillRect({0, 0, bounds_.width, bounds_.height}, back_color_);
  for (const Visual* v : visuals_)
    if (v->Visible()) v->Paint(painter);
}

Visual* Form::HitTest(int x, int y) const {
  for (auto it = visuals_.rbegin(); it != visuals_.rend(); ++it)
    if ((*it)->Visible() && (*it)->Bounds().Contains(x, y)) return *it;
  return nullptr;
}

void Form::DispatchMouse(MouseEventKind kind, const MouseArgs& args) {
  // While a button is held the control that took the press keeps the mouse.
  Visual* target = captured_ != nullptr ? captured_ : HitTest(args.x, args.y);
  if (kind == MouseEventKind::kDown) captured_ = target;
  if (target != nullptr) {
    MouseArgs local = args;
    local.x -= target->Left();
    local.y -= target->Top();
    DispatchTo(*target, kind, local);
  }
  if (kind == MouseEventKind::kUp) captured_ = nullptr;
}

void Form::DispatchTo(Visual& visual, MouseEventKind kind, MouseArgs args) {
  ui_.Guard([&] {
    switch (kind) {
      case MouseEventKind::kDown:
        pressed_ = &visual;
        if (visual.on_mouse_down) visual.on_mouse_down(args);
        break;
      case MouseEventKind::kMove:
        if (visual.on_mouse_move) visual.on_mouse_move(args);
        break;
      case MouseEventKind::kUp: {
        if (visual.on_mouse_up) visual.on_mouse_up(args);
        const bool inside = args.x >= 0 && args.y >= 0 && args.x < visual.Width() && args.y < visual.Height();
        if (pressed_ == &visual && inside && (args.button & kLeftButton) && visual.on_click) visual.on_click();
        pressed_ = nullptr;
        break;
      }
      case MouseEventKind::kDblClick:
        if (visual.on_dbl_click) visual.on_dbl_click();
        break;
    }
  });
}

void Form::RequestClose() {
  ui_.Guard([&] { Form_Close(); });
}

}  // namespace quillet
