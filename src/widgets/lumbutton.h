// The self-drawn button: push, check and option modes, up to three
// pictures, a pop-up menu, tool tips and hover tracking. The face is drawn
// in the button's own pixels at every paint (button_paint.h).
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/popups.h"
#include "ui/property_bag.h"
#include "ui/ui.h"
#include "ui/visual.h"

namespace quillet {

class lumbutton : public Visual {
 public:
  // Event numbers as the container sees them.
  enum Event : int {
    kClick = 9, kDblClick, kMouseEnter, kMouseLeave, kMouseMove, kMouseUp, kMouseDown, kKeyDown, kKeyUp, kKeyPress
  };
  enum Mode : int { kPushButton = 0, kCheckButton = 1, kOptionButton = 2 };

  lumbutton(std::string name, TwipsRect bounds, Ui& ui, bool visible = true);

  // A new control: its own name as caption, defaults for the rest.
  void InitProperties();
  // Stored properties, with their defaults.
  void ReadProperties(const PropertyBag& bag);
  void WriteProperties(PropertyBag& bag) const;

  Colour BackColor() const { return back_; }
  void SetBackColor(Colour colour);
  int ButtonStyle() const { return style_; }
  void SetButtonStyle(int style);
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  int CaptionAlign() const { return caption_align_; }
  void SetCaptionAlign(int align);
  int CaptionEffects() const { return caption_effects_; }
  void SetCaptionEffects(int effects);
  int DropDownSymbol() const { return drop_down_symbol_; }
  void SetDropDownSymbol(int symbol);
  bool DropDownSeparator() const { return drop_down_separator_; }
  void SetDropDownSeparator(bool on);
  int DisabledPictureMode() const { return disabled_picture_mode_; }
  void SetDisabledPictureMode(int mode);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on);
  const quillet::Font& Font() const { return font_; }
  void SetFont(quillet::Font font);
  Colour ForeColor() const { return fore_; }
  void SetForeColor(Colour colour);
  Colour ForeColorHover() const { return fore_hover_; }
  void SetForeColorHover(Colour colour);
  bool HandPointer() const { return hand_pointer_; }
  void SetHandPointer(bool on) { hand_pointer_ = on; }
  Colour MaskColor() const { return mask_; }
  void SetMaskColor(Colour colour);
  int GetMode() const { return mode_; }
  void SetMode(int mode);
  int MousePointer() const { return mouse_pointer_; }
  void SetMousePointer(int pointer) { mouse_pointer_ = pointer; }
  // Pictures come with the GIF bytes they were read from, which are what is stored.
  const PicturePtr& PictureNormal() const { return pictures_[0].picture; }
  const PicturePtr& PictureHot() const { return pictures_[1].picture; }
  const PicturePtr& PictureDown() const { return pictures_[2].picture; }
  void SetPictureNormal(PicturePtr picture, std::vector<std::uint8_t> gif = {});
  void SetPictureHot(PicturePtr picture, std::vector<std::uint8_t> gif = {});
  void SetPictureDown(PicturePtr picture, std::vector<std::uint8_t> gif = {});
  int PictureAlign() const { return picture_align_; }
  void SetPictureAlign(int align);
  bool PictureShadow() const { return picture_shadow_; }
  void SetPictureShadow(bool on);
  int PictureEffectOnOver() const { return effect_over_; }
  void SetPictureEffectOnOver(int effect) { effect_over_ = effect; }
  int PictureEffectOnDown() const { return effect_down_; }
  void SetPictureEffectOnDown(int effect) { effect_down_ = effect; }
  bool PicturePushOnHover() const { return push_on_hover_; }
  void SetPicturePushOnHover(bool on);
  int PictureOpacity() const { return opacity_; }
  void SetPictureOpacity(int opacity);
  int PictureOpacityOnOver() const { return opacity_over_; }
  void SetPictureOpacityOnOver(int opacity);
  bool RightToLeft() const { return right_to_left_; }
  void SetRightToLeft(bool on);
  bool ShowFocusRect() const { return show_focus_rect_; }
  void SetShowFocusRect(bool on);
  bool UseMaskColor() const { return use_mask_; }
  void SetUseMaskColor(bool on);
  bool Value() const { return checked_; }
  void SetValue(bool on);
  const std::string& TooltipTitle() const { return tip_title_; }
  void SetTooltipTitle(std::string title) { tip_title_ = std::move(title); }
  const std::string& ToolTip() const { return tip_text_; }
  void SetToolTip(std::string text) { tip_text_ = std::move(text); }
  Colour TooltipBackColor() const { return tip_back_; }
  void SetTooltipBackColor(Colour colour) { tip_back_ = colour; }
  int ToolTipIcon() const { return tip_icon_; }
  void SetToolTipIcon(int icon) { tip_icon_ = icon; }
  int ToolTipType() const { return tip_type_; }
  void SetToolTipType(int type) { tip_type_ = type; }
  int ColorScheme() const { return scheme_; }
  // Stores the scheme, applies it and repaints.
  void SetColorScheme(int scheme);

  // Option buttons clear each other within one container; null is the form.
  void SetContainer(const Visual* container) { container_ = container; }

  // A menu the button opens instead of raising MouseDown; `on_choice` hears the chosen id.
  void SetPopupMenu(PopupMenu menu, int alignment, int flags = 0, int default_item = 0,
                    std::function<void(int)> on_choice = {});
  void UnsetPopupMenu();

  // What the behaviour shows: 0 normal, 1 hot, 2 down.
  int ButtonState() const { return button_state_; }
  bool HasFocus() const { return has_focus_; }

  void Paint(Painter& painter) const override;
  void MouseInput(MouseEventKind kind, const MouseArgs& args) override;
  void MouseLeft() override;
  bool CanFocus() const override { return enabled_; }
  void KeyInput(KeyEventKind kind, int key, int shift) override;
  void FocusChanged(bool has_focus) override;
  bool AccessKeyPress(int key) override;
  void ActivationChanged() override { Changed(); }
  bool HandCursor() const override { return hand_pointer_ && enabled_; }

  // Click and DblClick are Visual's on_click and on_dbl_click; so are the mouse events.
  std::function<void()> on_mouse_enter, on_mouse_leave;
  std::function<void(int key, int shift)> on_key_down, on_key_up;
  std::function<void(int key_ascii)> on_key_press;

 private:
  struct StoredPicture {
    PicturePtr picture;
    std::vector<std::uint8_t> gif;
  };

  void MouseDown(const MouseArgs& args);
  void MouseMove(const MouseArgs& args);
  void MouseUp(const MouseArgs& args);
  void DblClick();
  void KeyDown(int key, int shift);
  void KeyUp(int key, int shift);
  void KeyboardClick();
  void ClearOtherOptions();
  void OpenPopup();
  void MakeToolTip();
  bool PointerOverMe(const MouseArgs& args) const;
  bool PointerOverMe(ScreenPoint screen) const;
  void SetState(int state);
  void ApplyColorScheme();
  void SettleThemedStyle();
  void Raise(const std::function<void()>& handler) const {
    if (handler) handler();
  }
  int PixelWidth() const;
  int PixelHeight() const;

  Ui& ui_;
  double twips_per_pixel_;

  // Behaviour.
  int button_state_ = 0;
  bool mouse_held_ = false;
  bool mouse_inside_ = false;
  bool space_held_ = false;
  bool checked_ = false;
  bool has_focus_ = false;
  bool popup_armed_ = false;
  bool popup_open_ = false;
  bool popup_just_closed_ = false;
  MouseArgs last_down_;

  // Pop-up menu.
  PopupMenu menu_;
  int menu_alignment_ = 0;
  int menu_flags_ = 0;
  std::function<void(int)> on_menu_choice_;

  // Properties.
  Colour back_ = 0x8000000F;
  int style_ = 0;
  std::string caption_;
  int caption_align_ = 2;
  int drop_down_symbol_ = 0;
  bool drop_down_separator_ = false;
  int disabled_picture_mode_ = 0;
  bool enabled_ = true;
  quillet::Font font_;
  Colour fore_ = 0x80000012;
  Colour fore_hover_ = 0x80000012;
  bool hand_pointer_ = false;
  Colour mask_ = 0xE0E0E0;
  int mode_ = kPushButton;
  int mouse_pointer_ = 0;
  StoredPicture pictures_[3];  // normal, hot, down
  int picture_align_ = 1;
  bool picture_shadow_ = false;
  int effect_over_ = 1;
  int effect_down_ = 2;
  bool push_on_hover_ = false;
  int opacity_ = 255;
  int opacity_over_ = 255;
  bool right_to_left_ = false;
  int caption_effects_ = 0;
  bool show_focus_rect_ = false;
  bool use_mask_ = true;
  std::string tip_title_, tip_text_;
  Colour tip_back_ = 0x80000018;  // info background
  int tip_icon_ = 0;
  int tip_type_ = 0;
  int scheme_ = 0;
  const Visual* container_ = nullptr;
};

}  // namespace quillet
