// A window of the program as a portable object. The host makes it real
// through a FormPeer; the form paints and hit-tests its windowless controls.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/units.h"
#include "ui/mouse.h"
#include "ui/painter.h"
#include "ui/popups.h"
#include "ui/ui.h"
#include "ui/visual.h"

namespace quillet {

enum WindowState : int { kNormal = 0, kMinimized = 1, kMaximized = 2 };

struct FormArgs {
  std::string name;
  TwipsRect bounds;
  bool border = true;          // false: no title bar, no system menu
  bool show_in_taskbar = true;
  bool activate_on_show = true;  // false: showing leaves the active window as it is
  Colour back_color = Rgb(240, 240, 240);
};

// How a window is see-through: one colour of it, or all of it by an alpha.
// Each setting replaces the other, as the system's layered windows do.
struct Layering {
  std::optional<Colour> key;
  std::optional<int> alpha;  // 0 to 255
  bool Layered() const { return key.has_value() || alpha.has_value(); }
};

class Form {
 public:
  Form(Ui& ui, FormArgs args);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return args_.name; }
  const FormArgs& Args() const { return args_; }
  Ui& ui() { return ui_; }

  // Loading creates the window and runs Form_Load; showing loads first.
  void Load();
  void Show();
  void Hide();
  void Unload();
  bool Loaded() const { return peer_ != nullptr; }
  bool Visible() const { return visible_; }

  int Left() const { return bounds_.left; }
  int Top() const { return bounds_.top; }
  int Width() const { return bounds_.width; }
  int Height() const { return bounds_.height; }
  const TwipsRect& Bounds() const { return bounds_; }
  void SetLeft(int twips);
  void SetTop(int twips);
  void SetWidth(int twips);
  void SetHeight(int twips);
  // Sets all four at once; the host moves the window once.
  void Move(TwipsRect bounds);

  int GetWindowState() const { return window_state_; }
  void SetWindowState(int state);
  Colour BackColor() const { return back_color_; }
  void SetBackColor(Colour colour);
  const quillet::Layering& Layering() const { return layering_; }
  // Pixels of exactly `key` become see-through, and clicks pass through them.
  void SetColourKey(Colour key);
  // The whole window at `alpha` (0 to 255).
  void SetAlpha(int alpha);
  // The title text; forms without a title bar may keep a value in it.
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) {
    caption_ = std::move(caption);
    if (peer_) peer_->CaptionChanged();
  }

  // Controls in z-order, back to front.
  void AddVisual(Visual& visual);
  void RemoveVisual(Visual& visual);
  void BringToFront(Visual& visual);
  const std::vector<Visual*>& Visuals() const { return visuals_; }

  void Invalidate();
  void Paint(Painter& painter) const;
  // Mouse input from the host, at form client coordinates in twips.
  void DispatchMouse(MouseEventKind kind, const MouseArgs& args);
  // The pointer left the window.
  void DispatchMouseLeave();
  // A file list dragged over or dropped at a point (client twips) goes to the
  // control there, as the mouse would; true when that control takes drops.
  bool DispatchDragOver(int x, int y);
  bool DispatchDrop(const std::vector<std::string>& paths, int x, int y);
  // Whether the window takes dropped files at all; kept across loads.
  void AcceptFiles(bool accept);
  // Keys from the host go to the control with the focus; Tab moves the focus.
  void DispatchKey(KeyEventKind kind, int key, int shift);
  // Alt and a letter; true when a control took it.
  bool DispatchAccessKey(int key);
  // The topmost visible control at a point, or null.
  Visual* HitTest(int x, int y) const;
  // The control under the pointer, as the last mouse input left it.
  Visual* Hovered() const { return hovered_; }

  Visual* Focused() const { return focused_; }
  void SetFocus(Visual* visual);
  // To the next (or previous) visible control that takes the focus, in z-order.
  void MoveFocus(bool backwards);
  // Whether the window is the active one; the host tells.
  bool Active() const { return active_; }
  void SetActive(bool active);

  // A tip over `owner`'s area, until the pointer leaves it or another tip replaces it.
  void ShowToolTip(const Visual& owner, const ToolTip& tip);
  void HideToolTip();
  void ToolTipTextChanged(const Visual& visual);
  // Shows a pop-up menu at a screen point, kept clear of `exclude` (screen
  // twips), until the user chooses or dismisses it: the chosen id or 0.
  int TrackPopupMenu(const PopupMenu& menu, ScreenPoint at, int flags, const TwipsRect& exclude);
  // A point of the screen in the form's client coordinates, and back.
  ScreenPoint ScreenToClient(ScreenPoint screen) const;
  ScreenPoint ClientToScreen(int x, int y) const;
  // The host asks the form to close (the system menu, the session).
  void RequestClose();

 protected:
  virtual void Form_Load() {}
  virtual void Form_Unload() {}
  virtual void Form_Resize() {}
  // Closing a form by the system; the default unloads it.
  virtual void Form_Close() { Unload(); }

 private:
  void BoundsChanged();
  void DispatchTo(Visual& visual, MouseEventKind kind, MouseArgs args);
  void HoverOver(Visual* visual);
  void Forget(const Visual& visual);

  Ui& ui_;
  FormArgs args_;
  TwipsRect bounds_;
  bool visible_ = false;
  int window_state_ = kNormal;
  Colour back_color_;
  quillet::Layering layering_;
  std::string caption_;
  std::vector<Visual*> visuals_;
  Visual* captured_ = nullptr;
  Visual* hovered_ = nullptr;
  Visual* focused_ = nullptr;
  const Visual* tip_owner_ = nullptr;
  bool active_ = false;
  bool accept_files_ = false;
  std::unique_ptr<FormPeer> peer_;
};

}  // namespace quillet
