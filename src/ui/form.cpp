#include "ui/form.h"

#include <algorithm>

namespace quillet {
namespace {

ToolTip PlainTip(const std::string& text) {
  ToolTip tip;
  tip.text = text;
  return tip;
}

}  // namespace

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
  if (accept_files_) peer_->AcceptFiles(true);
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
  captured_ = hovered_ = focused_ = nullptr;
  tip_owner_ = nullptr;
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
  Forget(visual);
  visual.form_ = nullptr;
  Invalidate();
}

void Form::Forget(const Visual& visual) {
  if (captured_ == &visual) captured_ = nullptr;
  if (hovered_ == &visual) hovered_ = nullptr;
  if (focused_ == &visual) focused_ = nullptr;
  if (tip_owner_ == &visual) HideToolTip();
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
  HoverOver(HitTest(args.x, args.y));
  // While a button is held the control that took the press keeps the mouse.
  Visual* target = captured_ != nullptr ? captured_ : HitTest(args.x, args.y);
  if (kind == MouseEventKind::kDown || kind == MouseEventKind::kDblClick) {
    captured_ = target;
    if (target != nullptr && target->CanFocus()) SetFocus(target);
    if (captured_ != target) return;  // the focus change took the control away
  }
  if (target != nullptr) {
    MouseArgs local = args;
    local.x -= target->Left();
    local.y -= target->Top();
    DispatchTo(*target, kind, local);
  }
  if (kind == MouseEventKind::kUp) captured_ = nullptr;
}

void Form::DispatchMouseLeave() { HoverOver(nullptr); }

void Form::HoverOver(Visual* visual) {
  if (visual == hovered_) return;
  Visual* left = hovered_;
  hovered_ = visual;
  if (left != nullptr) {
    if (tip_owner_ == left) HideToolTip();
    ui_.Guard([&] { left->MouseLeft(); });
  }
  if (hovered_ != nullptr && !hovered_->ToolTipText().empty()) ShowToolTip(*hovered_, PlainTip(hovered_->ToolTipText()));
}

void Form::DispatchTo(Visual& visual, MouseEventKind kind, MouseArgs args) {
  ui_.Guard([&] { visual.MouseInput(kind, args); });
}

bool Form::DispatchDragOver(int x, int y) {
  Visual* target = HitTest(x, y);
  if (target == nullptr || !target->on_ole_drag_drop) return false;
  if (target->on_ole_drag_over) ui_.Guard([&] { target->on_ole_drag_over(x - target->Left(), y - target->Top()); });
  return true;
}

bool Form::DispatchDrop(const std::vector<std::string>& paths, int x, int y) {
  Visual* target = HitTest(x, y);
  if (target == nullptr || !target->on_ole_drag_drop) return false;
  // The handler may unload the control: it runs from a copy.
  const auto drop = target->on_ole_drag_drop;
  ui_.Guard([&] { drop(paths, x - target->Left(), y - target->Top()); });
  return true;
}

void Form::AcceptFiles(bool accept) {
  accept_files_ = accept;
  if (peer_) peer_->AcceptFiles(accept);
}

void Form::DispatchKey(KeyEventKind kind, int key, int shift) {
  if (kind == KeyEventKind::kDown && key == kVkTab && (shift & (kCtrlMask | kAltMask)) == 0) {
    MoveFocus((shift & kShiftMask) != 0);
    return;
  }
  if (kind == KeyEventKind::kPress && key == kVkTab) return;
  if (focused_ != nullptr && focused_->Visible()) ui_.Guard([&] { focused_->KeyInput(kind, key, shift); });
}

bool Form::DispatchAccessKey(int key) {
  bool taken = false;
  for (Visual* v : visuals_) {
    if (!v->Visible() || !v->CanFocus()) continue;
    ui_.Guard([&] { taken = v->AccessKeyPress(key); });
    if (taken) break;
  }
  return taken;
}

void Form::SetFocus(Visual* visual) {
  if (visual == focused_) return;
  Visual* lost = focused_;
  focused_ = visual;
  if (lost != nullptr) ui_.Guard([&] { lost->FocusChanged(false); });
  if (focused_ != nullptr && focused_ == visual) ui_.Guard([&] { visual->FocusChanged(true); });
}

void Form::MoveFocus(bool backwards) {
  std::vector<Visual*> order;
  for (Visual* v : visuals_)
    if (v->Visible() && v->CanFocus()) order.push_back(v);
  if (order.empty()) return;
  const auto at = std::find(order.begin(), order.end(), focused_);
  const auto n = static_cast<std::ptrdiff_t>(order.size());
  std::ptrdiff_t next = 0;
  if (at != order.end()) next = ((at - order.begin()) + (backwards ? n - 1 : 1)) % n;
  else if (backwards) next = n - 1;
  SetFocus(order[static_cast<std::size_t>(next)]);
}

void Form::SetActive(bool active) {
  if (active == active_) return;
  active_ = active;
  for (Visual* v : std::vector<Visual*>(visuals_)) ui_.Guard([&] { v->ActivationChanged(); });
}

void Form::ShowToolTip(const Visual& owner, const ToolTip& tip) {
  tip_owner_ = &owner;
  if (peer_) peer_->ShowToolTip(owner.Bounds(), tip);
}

void Form::HideToolTip() {
  if (tip_owner_ == nullptr) return;
  tip_owner_ = nullptr;
  if (peer_) peer_->HideToolTip();
}

void Form::ToolTipTextChanged(const Visual& visual) {
  if (&visual != hovered_) return;
  if (visual.ToolTipText().empty()) HideToolTip();
  else ShowToolTip(visual, PlainTip(visual.ToolTipText()));
}

int Form::TrackPopupMenu(const PopupMenu& menu, ScreenPoint at, int flags, const TwipsRect& exclude) {
  return peer_ ? peer_->TrackPopupMenu(menu, at, flags, exclude) : 0;
}

ScreenPoint Form::ClientToScreen(int x, int y) const {
  ScreenPoint origin{bounds_.left, bounds_.top};
  if (peer_) {
    if (const auto o = peer_->ClientOrigin()) origin = *o;
  }
  return {origin.x + x, origin.y + y};
}

ScreenPoint Form::ScreenToClient(ScreenPoint screen) const {
  const ScreenPoint origin = ClientToScreen(0, 0);
  return {screen.x - origin.x, screen.y - origin.y};
}

void Form::RequestClose() {
  ui_.Guard([&] { Form_Close(); });
}

}  // namespace quillet
