#include "widgets/lumbutton.h"

#include <cctype>
#include <cmath>

#include "ui/form.h"
#include "widgets/art.h"
#include "widgets/button_paint.h"

namespace quillet {
namespace {

// Pixels cut out of a rounded region: they take this colour and the layer leaves them out.
constexpr Colour kRegionHole = Rgb(1, 2, 3);
constexpr int kThemedNormal = 1, kThemedHot = 2, kThemedPressed = 3, kThemedDisabled = 4;

int ByteOf(std::int64_t v) { return v < 0 ? 0 : v > 255 ? 255 : static_cast<int>(v); }

// The letter after a single "&" of a caption, upper case; 0 when there is none.
int AccessKeyOf(std::string_view caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] == '&') {
      ++i;
      continue;
    }
    return std::toupper(static_cast<unsigned char>(caption[i + 1]));
  }
  return 0;
}

}  // namespace

lumbutton::lumbutton(std::string name, TwipsRect bounds, Ui& ui, bool visible)
    : Visual(std::move(name), bounds, visible), ui_(ui), twips_per_pixel_(ui.Screen().twips_per_pixel) {
  InitProperties();
}

// ---- Stored properties ----------------------------------------------------------

void lumbutton::InitProperties() {
  PropertyBag defaults;
  defaults.WriteProperty("Caption", Name());
  ReadProperties(defaults);
}

void lumbutton::ReadProperties(const PropertyBag& bag) {
  const auto colour = [&bag](std::string_view key, Colour fallback) {
    return static_cast<Colour>(bag.ReadNumber(key, fallback));
  };
  const auto number = [&bag](std::string_view key, int fallback) {
    return static_cast<int>(bag.ReadNumber(key, fallback));
  };
  back_ = colour("BackColor", kSystemButtonFace);
  style_ = number("ButtonStyle", 2);
  caption_ = bag.ReadProperty("Caption", Name());
  caption_align_ = number("CaptionAlign", 2);
  drop_down_symbol_ = number("DropDownSymbol", 0);
  drop_down_separator_ = bag.ReadFlag("DropDownSeparator", false);
  disabled_picture_mode_ = number("DisabledPictureMode", 0);
  enabled_ = bag.ReadFlag("Enabled", true);
  font_ = FontFromProperty(bag.ReadProperty("Font", ""), quillet::Font{"Tahoma", 8.25, false});
  fore_ = colour("ForeColor", 0x80000012);
  fore_hover_ = colour("ForeColorHover", 0x80000012);
  hand_pointer_ = bag.ReadFlag("HandPointer", false);
  mask_ = colour("MaskColor", 0xE0E0E0);
  mode_ = number("Mode", kPushButton);
  mouse_pointer_ = number("MousePointer", 0);
  const char* picture_keys[] = {"PictureNormal", "PictureHot", "PictureDown"};
  for (int i = 0; i < 3; ++i) {
    auto gif = bag.ReadBytes(picture_keys[i]);
    pictures_[i] = {gif.empty() ? nullptr : PictureFromGif(gif), std::move(gif)};
  }
  picture_align_ = number("PictureAlign", 1);
  picture_shadow_ = bag.ReadFlag("PictureShadow", false);
  effect_over_ = number("PictureEffectOnOver", 1);
  effect_down_ = number("PictureEffectOnDown", 2);
  push_on_hover_ = bag.ReadFlag("PicturePushOnHover", false);
  opacity_ = ByteOf(bag.ReadNumber("PictureOpacity", 255));
  opacity_over_ = ByteOf(bag.ReadNumber("PictureOpacityOnOver", 255));
  right_to_left_ = bag.ReadFlag("RightToLeft", false);
  caption_effects_ = number("CaptionEffects", 0);
  show_focus_rect_ = bag.ReadFlag("ShowFocusRect", false);
  use_mask_ = bag.ReadFlag("UseMaskColor", true);
  checked_ = bag.ReadFlag("Value", false);
  tip_title_ = bag.ReadProperty("TooltipTitle", "");
  tip_text_ = bag.ReadProperty("ToolTip", "");
  tip_back_ = colour("TooltipBackColor", 0x80000018);
  tip_icon_ = number("TooltipIcon", 0);
  tip_type_ = number("TooltipType", 0);
  scheme_ = number("ColorScheme", 0);
  SettleThemedStyle();
  Changed();
}

void lumbutton::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty("BackColor", std::int64_t{back_});
  bag.WriteProperty("ButtonStyle", std::int64_t{style_});
  bag.WriteProperty("Caption", caption_);
  bag.WriteProperty("CaptionAlign", std::int64_t{caption_align_});
  bag.WriteProperty("DropDownSymbol", std::int64_t{drop_down_symbol_});
  bag.WriteFlag("DropDownSeparator", drop_down_separator_);
  bag.WriteProperty("DisabledPictureMode", std::int64_t{disabled_picture_mode_});
  bag.WriteFlag("Enabled", enabled_);
  bag.WriteProperty("Font", FontProperty(font_));
  bag.WriteProperty("ForeColor", std::int64_t{fore_});
  bag.WriteProperty("ForeColorHover", std::int64_t{fore_hover_});
  bag.WriteFlag("HandPointer", hand_pointer_);
  bag.WriteProperty("MaskColor", std::int64_t{mask_});
  bag.WriteProperty("Mode", std::int64_t{mode_});
  bag.WriteProperty("MousePointer", std::int64_t{mouse_pointer_});
  const char* picture_keys[] = {"PictureNormal", "PictureHot", "PictureDown"};
  for (int i = 0; i < 3; ++i)
    if (!pictures_[i].gif.empty()) bag.WriteBytes(picture_keys[i], pictures_[i].gif);
  bag.WriteProperty("PictureAlign", std::int64_t{picture_align_});
  bag.WriteFlag("PictureShadow", picture_shadow_);
  bag.WriteProperty("PictureEffectOnOver", std::int64_t{effect_over_});
  bag.WriteProperty("PictureEffectOnDown", std::int64_t{effect_down_});
  bag.WriteFlag("PicturePushOnHover", push_on_hover_);
  bag.WriteProperty("PictureOpacity", std::int64_t{opacity_});
  bag.WriteProperty("PictureOpacityOnOver", std::int64_t{opacity_over_});
  bag.WriteFlag("RightToLeft", right_to_left_);
  bag.WriteProperty("CaptionEffects", std::int64_t{caption_effects_});
  bag.WriteFlag("ShowFocusRect", show_focus_rect_);
  bag.WriteFlag("UseMaskColor", use_mask_);
  bag.WriteFlag("Value", checked_);
  bag.WriteProperty("TooltipTitle", tip_title_);
  bag.WriteProperty("ToolTip", tip_text_);
  bag.WriteProperty("TooltipBackColor", std::int64_t{tip_back_});
  bag.WriteProperty("TooltipIcon", std::int64_t{tip_icon_});
  bag.WriteProperty("TooltipType", std::int64_t{tip_type_});
  bag.WriteProperty("ColorScheme", std::int64_t{scheme_});
}

// ---- Setters ----------------------------------------------------------------------

void lumbutton::SetBackColor(Colour colour) { back_ = colour; Changed(); }
void lumbutton::SetButtonStyle(int style) {
  style_ = style;
  SettleThemedStyle();
  Changed();
}
void lumbutton::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  Changed();
}
void lumbutton::SetCaptionAlign(int align) { caption_align_ = align; Changed(); }
void lumbutton::SetCaptionEffects(int effects) { caption_effects_ = effects; Changed(); }
void lumbutton::SetDropDownSymbol(int symbol) { drop_down_symbol_ = symbol; Changed(); }
void lumbutton::SetDropDownSeparator(bool on) { drop_down_separator_ = on; Changed(); }
void lumbutton::SetDisabledPictureMode(int mode) { disabled_picture_mode_ = mode; Changed(); }
void lumbutton::SetEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  // A disabled control loses the focus and hears no more input.
  if (!on && HostForm() != nullptr && HostForm()->Focused() == this) HostForm()->SetFocus(nullptr);
  Changed();
}
void lumbutton::SetFont(quillet::Font font) { font_ = std::move(font); Changed(); }
void lumbutton::SetForeColor(Colour colour) { fore_ = colour; Changed(); }
void lumbutton::SetForeColorHover(Colour colour) { fore_hover_ = colour; Changed(); }
void lumbutton::SetMaskColor(Colour colour) { mask_ = colour; Changed(); }
void lumbutton::SetMode(int mode) { mode_ = mode; Changed(); }
void lumbutton::SetPictureNormal(PicturePtr picture, std::vector<std::uint8_t> gif) {
  pictures_[0] = {std::move(picture), std::move(gif)};
  Changed();
}
void lumbutton::SetPictureHot(PicturePtr picture, std::vector<std::uint8_t> gif) {
  pictures_[1] = {std::move(picture), std::move(gif)};
  Changed();
}
void lumbutton::SetPictureDown(PicturePtr picture, std::vector<std::uint8_t> gif) {
  pictures_[2] = {std::move(picture), std::move(gif)};
  Changed();
}
void lumbutton::SetPictureAlign(int align) { picture_align_ = align; Changed(); }
void lumbutton::SetPictureShadow(bool on) { picture_shadow_ = on; Changed(); }
void lumbutton::SetPicturePushOnHover(bool on) { push_on_hover_ = on; Changed(); }
void lumbutton::SetPictureOpacity(int opacity) { opacity_ = ByteOf(opacity); Changed(); }
void lumbutton::SetPictureOpacityOnOver(int opacity) { opacity_over_ = ByteOf(opacity); Changed(); }
void lumbutton::SetRightToLeft(bool on) { right_to_left_ = on; Changed(); }
void lumbutton::SetShowFocusRect(bool on) { show_focus_rect_ = on; Changed(); }
void lumbutton::SetUseMaskColor(bool on) { use_mask_ = on; Changed(); }
void lumbutton::SetValue(bool on) {
  if (on == checked_) return;
  checked_ = on;
  Changed();
}

void lumbutton::SetColorScheme(int scheme) {
  scheme_ = scheme;
  ApplyColorScheme();
  Changed();
}

void lumbutton::ApplyColorScheme() {
  back_ = SchemeBackColor(style_, scheme_, back_, kSystemButtonFace);
  fore_ = 0x80000012;
  show_focus_rect_ = SchemeShowsFocusRect(style_);
}

// The themed style needs the system's visual styles; without them it is the plain rounded one.
void lumbutton::SettleThemedStyle() {
  if (style_ != 13 || ui_.AppThemed()) return;
  style_ = 2;
  scheme_ = 0;
  ApplyColorScheme();
}

// ---- Mouse ------------------------------------------------------------------------

void lumbutton::MouseInput(MouseEventKind kind, const MouseArgs& args) {
  if (!enabled_) return;  // as a disabled window, it hears nothing
  switch (kind) {
    case MouseEventKind::kDown: MouseDown(args); break;
    case MouseEventKind::kMove: MouseMove(args); break;
    case MouseEventKind::kUp: MouseUp(args); break;
    case MouseEventKind::kDblClick: DblClick(); break;
  }
}

void lumbutton::MouseDown(const MouseArgs& args) {
  last_down_ = args;
  // Only the left button presses: the release of any other would leave it down.
  if (args.button == kLeftButton) {
    mouse_held_ = true;
    if (button_state_ != 2) SetState(2);
  }
  if (!popup_armed_) {
    if (on_mouse_down) on_mouse_down(args);
  } else if (!popup_just_closed_) {
    OpenPopup();
  }
}

void lumbutton::MouseMove(const MouseArgs& args) {
  const bool inside = PointerOverMe(args);
  if (inside && !mouse_inside_) {
    mouse_inside_ = true;
    MakeToolTip();
    Raise(on_mouse_enter);
  }
  mouse_inside_ = inside;
  if (!space_held_) SetState(!inside ? 0 : mouse_held_ ? 2 : 1);
  if (on_mouse_move) on_mouse_move(args);
}

void lumbutton::MouseUp(const MouseArgs& args) {
  if (popup_armed_) {
    mouse_held_ = false;
    popup_just_closed_ = false;
    SetState(0);
  } else if (args.button == kLeftButton) {
    mouse_held_ = false;
    const bool within = args.x >= 0 && args.y >= 0 && args.x < Width() && args.y < Height();
    if (within) {
      if (mode_ == kCheckButton) checked_ = !checked_;
      if (mode_ == kOptionButton) {
        ClearOtherOptions();
        checked_ = true;
      }
      SetState(0);
      Changed();
      Raise(on_click);
    } else if (!space_held_) {
      SetState(0);
    }
  }
  if (on_mouse_up) on_mouse_up(args);
}

void lumbutton::DblClick() {
  if (last_down_.button != kLeftButton && last_down_.button != 0) return;
  SetState(2);
  if (!popup_armed_) Raise(on_dbl_click);
  else if (!popup_just_closed_) OpenPopup();
}

void lumbutton::MouseLeft() {
  mouse_inside_ = false;
  if (popup_open_) popup_just_closed_ = true;
  if (!space_held_ && button_state_ != 0) SetState(0);
  Raise(on_mouse_leave);
}

bool lumbutton::PointerOverMe(const MouseArgs& args) const {
  const Form* form = HostForm();
  if (form == nullptr) return args.x >= 0 && args.y >= 0 && args.x < Width() && args.y < Height();
  return form->HitTest(Left() + args.x, Top() + args.y) == this;
}

bool lumbutton::PointerOverMe(ScreenPoint screen) const {
  const Form* form = HostForm();
  if (form == nullptr) return false;
  const ScreenPoint p = form->ScreenToClient(screen);
  return form->HitTest(p.x, p.y) == this;
}

// ---- Keyboard ---------------------------------------------------------------------

void lumbutton::KeyInput(KeyEventKind kind, int key, int shift) {
  if (!enabled_) return;
  switch (kind) {
    case KeyEventKind::kDown: KeyDown(key, shift); break;
    case KeyEventKind::kUp: KeyUp(key, shift); break;
    case KeyEventKind::kPress:
      if (on_key_press) on_key_press(key);
      break;
  }
}

void lumbutton::KeyDown(int key, int shift) {
  if (key == kVkReturn) {
    Raise(on_click);
  } else if (key == kVkSpace && (shift & kAltMask) == 0) {
    // A held space repeats its key-down; only the first one presses.
    if (!mouse_held_ && !space_held_) {
      space_held_ = true;
      if (mode_ == kCheckButton) checked_ = !checked_;
      if (mode_ == kOptionButton) {
        ClearOtherOptions();
        checked_ = true;
      }
      SetState(2);
      Changed();
    }
  } else if (key == kVkLeft || key == kVkUp || key == kVkRight || key == kVkDown) {
    if (Form* form = HostForm()) form->MoveFocus(key == kVkLeft || key == kVkUp);
  } else if (space_held_) {
    space_held_ = false;
    SetState(0);
  }
  if (on_key_down) on_key_down(key, shift);
}

void lumbutton::KeyUp(int key, int shift) {
  if (key == kVkSpace) {
    const bool click = !mouse_held_ && space_held_;
    if (!mouse_held_) SetState(mouse_inside_ ? 1 : 0);
    if (click) Raise(on_click);
    if (on_key_up) on_key_up(key, shift);
    space_held_ = false;
    return;
  }
  if (on_key_up) on_key_up(key, shift);
}

bool lumbutton::AccessKeyPress(int key) {
  if (!enabled_) return false;
  const int own = AccessKeyOf(caption_);
  if (own == 0 || own != std::toupper(key)) return false;
  if (mode_ != kPushButton && key != kVkReturn && key != kVkEscape) KeyboardClick();
  else Raise(on_click);
  return true;
}

// An access key acts as a press and release of the space bar.
void lumbutton::KeyboardClick() {
  if (mode_ == kCheckButton) checked_ = !checked_;
  if (mode_ == kOptionButton) {
    ClearOtherOptions();
    checked_ = true;
  }
  Changed();
  Raise(on_click);
}

void lumbutton::FocusChanged(bool has_focus) {
  has_focus_ = has_focus;
  if (!has_focus) {
    mouse_held_ = false;
    space_held_ = false;
    button_state_ = mouse_inside_ ? 1 : 0;
  }
  Changed();
}

void lumbutton::ClearOtherOptions() {
  const Form* form = HostForm();
  if (form == nullptr) return;
  for (Visual* v : form->Visuals()) {
    auto* other = dynamic_cast<lumbutton*>(v);
    if (other != nullptr && other != this && other->container_ == container_ && other->mode_ == kOptionButton)
      other->SetValue(false);
  }
}

// ---- Pop-up menu and tool tip ----------------------------------------------------

void lumbutton::SetPopupMenu(PopupMenu menu, int alignment, int flags, int default_item,
                             std::function<void(int)> on_choice) {
  menu_ = std::move(menu);
  if (default_item != 0) menu_.default_item = default_item;
  menu_alignment_ = alignment;
  menu_flags_ = flags;
  on_menu_choice_ = std::move(on_choice);
  popup_armed_ = true;
}

void lumbutton::UnsetPopupMenu() {
  menu_ = {};
  menu_alignment_ = menu_flags_ = 0;
  on_menu_choice_ = nullptr;
  popup_armed_ = false;
}

void lumbutton::OpenPopup() {
  Form* form = HostForm();
  if (form == nullptr) return;
  const ScreenPoint corner = form->ClientToScreen(Left(), Top());
  const TwipsRect area{corner.x, corner.y, Width(), Height()};
  // Below the button by default; beside, above or right-aligned by the alignment.
  ScreenPoint at{area.left, area.bottom()};
  switch (menu_alignment_) {
    case 1: at = {area.right(), area.top}; break;
    case 2: at = {area.left, area.top}; break;
    case 3: at = {area.left, area.top}; break;
    case 4: at = {area.right(), area.bottom()}; break;
    default: break;
  }
  const int flags = (menu_alignment_ == 4 ? 40 : 32) | menu_flags_;
  popup_open_ = true;
  const int chosen = form->TrackPopupMenu(menu_, at, flags, area);
  popup_open_ = false;
  // The click that dismissed the menu on the button must not open it again.
  if (PointerOverMe(ui_.PointerPosition())) popup_just_closed_ = true;
  mouse_held_ = mouse_inside_ = space_held_ = false;
  button_state_ = 0;
  Changed();
  if (chosen != 0 && on_menu_choice_) on_menu_choice_(chosen);
}

void lumbutton::MakeToolTip() {
  Form* form = HostForm();
  if (form == nullptr || tip_text_.empty() || popup_open_ || button_state_ == 2) return;
  quillet::ToolTip tip;
  tip.text = tip_text_;
  tip.title = tip_title_;
  tip.icon = tip_icon_;
  tip.balloon = tip_type_ == 1;
  tip.right_to_left = right_to_left_;
  tip.back_color = tip_back_;
  form->ShowToolTip(*this, tip);
}

// ---- Painting ---------------------------------------------------------------------

void lumbutton::SetState(int state) {
  if (state == button_state_) return;
  button_state_ = state;
  Changed();
}

int lumbutton::PixelWidth() const { return static_cast<int>(std::lround(Width() / twips_per_pixel_)); }
int lumbutton::PixelHeight() const { return static_cast<int>(std::lround(Height() / twips_per_pixel_)); }

void lumbutton::Paint(Painter& painter) const {
  ButtonFace face;
  face.width = PixelWidth();
  face.height = PixelHeight();
  if (face.width <= 0 || face.height <= 0) return;
  face.style = style_;
  const bool checked = mode_ != kPushButton && checked_;
  face.state = checked && style_ != 0 && style_ != 6 ? 2 : button_state_;
  face.enabled = enabled_;
  face.focused = has_focus_ && (HostForm() == nullptr || HostForm()->Active());
  face.show_focus_rect = show_focus_rect_;
  face.checked = checked;
  face.pointer_inside = mouse_inside_;
  face.base = TranslateColor(back_, painter);

  ButtonContent content;
  content.caption = caption_;
  content.font = font_;
  content.fore = TranslateColor(face.state == 1 ? fore_hover_ : fore_, painter);
  content.caption_align = caption_align_;
  content.caption_effects = caption_effects_;
  const PicturePtr& hot = pictures_[1].picture ? pictures_[1].picture : pictures_[0].picture;
  content.picture = face.state == 2 && pictures_[2].picture ? pictures_[2].picture
                    : face.state >= 1                      ? hot
                                                           : pictures_[0].picture;
  content.picture_align = picture_align_;
  content.picture_shadow = picture_shadow_;
  content.opacity = face.state == 1 ? opacity_over_ : opacity_;
  content.disabled_picture_mode = disabled_picture_mode_;
  content.mask_color = mask_;
  content.use_mask_color = use_mask_;
  content.right_to_left = right_to_left_;
  content.drop_down_symbol = drop_down_symbol_;
  content.drop_down_separator = drop_down_separator_;

  PixelCanvas canvas(painter, Left(), Top(), twips_per_pixel_);
  const auto paint_content = [&] { PaintContent(canvas, ui_.Metrics(), face, content); };
  const int corner = RegionCorner(style_);
  if (corner != 0) painter.PushLayer(Bounds(), kRegionHole);
  const int themed_state = !enabled_ ? kThemedDisabled
                           : face.state == 2 ? kThemedPressed
                           : face.state == 1 ? kThemedHot
                                             : kThemedNormal;
  if (style_ == 13 && painter.DrawThemedButton(Bounds(), themed_state)) paint_content();
  else DrawButtonFace(canvas, face, paint_content);
  if (corner != 0) {
    for (const PixelPoint& p : RegionCutouts(corner, face.width, face.height)) canvas.SetPixel(p.x, p.y, kRegionHole);
    painter.PopLayer(kRegionHole);
  }
}

}  // namespace quillet
