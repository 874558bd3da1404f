// Windowless controls: the form paints them in z-order and hit-tests them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/units.h"
#include "ui/mouse.h"
#include "ui/painter.h"

namespace quillet {

class Form;

class Visual {
 public:
  Visual(std::string name, TwipsRect bounds, bool visible = true);
  virtual ~Visual() = default;
  Visual(const Visual&) = delete;
  Visual& operator=(const Visual&) = delete;

  const std::string& Name() const { return name_; }
  const TwipsRect& Bounds() const { return bounds_; }
  int Left() const { return bounds_.left; }
  int Top() const { return bounds_.top; }
  int Width() const { return bounds_.width; }
  int Height() const { return bounds_.height; }
  void SetLeft(int twips);
  void SetTop(int twips);
  void SetWidth(int twips);
  void SetHeight(int twips);
  void Move(TwipsRect bounds);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  // The tip the host shows while the pointer rests on the control.
  const std::string& ToolTipText() const { return tool_tip_; }
  void SetToolTipText(std::string text);

  virtual void Paint(Painter& painter) const = 0;

  // Input from the form. A plain control raises the events below, and a
  // Click for a left press and release on it; a control with behaviour of
  // its own overrides these.
  virtual void MouseInput(MouseEventKind kind, const MouseArgs& args);
  // The pointer went off the control, or out of the window.
  virtual void MouseLeft() {}
  // Only controls that take the focus hear keys.
  virtual bool CanFocus() const { return false; }
  virtual void KeyInput(KeyEventKind /*kind*/, int /*key*/, int /*shift*/) {}
  virtual void FocusChanged(bool /*has_focus*/) {}
  // Alt and a letter; true when the control took it.
  virtual bool AccessKeyPress(int /*key*/) { return false; }
  // The window was activated or deactivated.
  virtual void ActivationChanged() {}
  // The hand cursor while the pointer is on the control.
  virtual bool HandCursor() const { return hand_cursor_; }
  void SetHandCursor(bool on) { hand_cursor_ = on; }

  std::function<void(const MouseArgs&)> on_mouse_down, on_mouse_move, on_mouse_up;
  std::function<void()> on_click, on_dbl_click;
  // A file list dragged over the control, and dropped on it (control twips).
  // A control without a drop handler refuses drops.
  std::function<void(int x, int y)> on_ole_drag_over;
  std::function<void(const std::vector<std::string>& paths, int x, int y)> on_ole_drag_drop;

 protected:
  void Changed();
  // The control's size changed (not its place); owner-drawn controls redraw here.
  virtual void Resized() {}
  // The form the control is on, or null.
  Form* HostForm() const { return form_; }

 private:
  friend class Form;
  std::string name_;
  TwipsRect bounds_;
  bool visible_;
  std::string tool_tip_;
  bool pressed_ = false;
  bool hand_cursor_ = false;
  Form* form_ = nullptr;
};

// An image: a picture, stretched to the control or setting its size.
class Image : public Visual {
 public:
  Image(std::string name, TwipsRect bounds, bool stretch, bool visible = true);
  const PicturePtr& Picture() const { return picture_; }
  // Without stretching the control takes the picture's size at `twips_per_pixel`.
  void SetPicture(PicturePtr picture, double twips_per_pixel = 15.0);
  void Paint(Painter& painter) const override;

 private:
  bool stretch_;
  PicturePtr picture_;
};

// A plain text label.
class Label : public Visual {
 public:
  Label(std::string name, TwipsRect bounds, std::string caption, bool visible = true);
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  const quillet::Font& Font() const { return font_; }
  void SetFont(quillet::Font font);
  Colour ForeColor() const { return fore_; }
  void SetForeColor(Colour colour);
  void SetAlignment(TextAlign align);
  // 0 transparent, 1 or more opaque in BackColor.
  int BackStyle() const { return back_style_; }
  void SetBackStyle(int style);
  Colour BackColor() const { return back_; }
  void SetBackColor(Colour colour);
  void Paint(Painter& painter) const override;

 private:
  std::string caption_;
  int back_style_ = 0;
  Colour back_ = Rgb(0, 0, 0);
  quillet::Font font_;
  Colour fore_ = Rgb(255, 255, 255);
  TextAlign align_ = TextAlign::kLeft;
};

}  // namespace quillet
