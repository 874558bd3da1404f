// An owner-drawn label: text with an outline, a drop shadow, a gradient
// ground, a 3-D border, a small picture, letters in vertical or reversed
// order, and a see-through ground. The control draws onto a surface of its
// own whenever a property changes; the form puts that surface on the window
// at every paint, leaving out every pixel of exactly BackColor when
// TRANSPARENT is on. Geometry is in twips, the control's own scale; its
// constants (15, 30, 45, 60) are literal twips.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/display_list.h"
#include "ui/property_bag.h"
#include "ui/text_metrics.h"
#include "ui/visual.h"

namespace quillet {

class Caption : public Visual {
 public:
  // Event numbers as the container sees them.
  enum Event : int { kMouseDown = 9, kMouseMove = 10, kMouseUp = 11, kClick = 12, kDblClick = 13 };

  Caption(std::string name, TwipsRect bounds, TextMetrics& metrics, bool visible = true);

  // A new control: the container's display name and font, defaults for the rest.
  void InitProperties(std::string_view display_name, const quillet::Font& container_font);
  // Stored properties, in the order of the members, with their defaults.
  void ReadProperties(const PropertyBag& bag, const quillet::Font& container_font);
  void WriteProperties(PropertyBag& bag) const;
  // A new element of a control array takes every stored property of its template.
  void CopyPropertiesFrom(const Caption& other);

  const std::string& Con_LinkKey() const { return link_key_; }
  void SetCon_LinkKey(std::string key) { link_key_ = std::move(key); }
  const std::string& CaptionText() const { return caption_; }
  void SetCaption(std::string text);
  int Borders() const { return border_style_; }
  void SetBorders(int style);
  // The property TRANSPARENT, stored as "Transparent"; the Windows headers take its own spelling as a macro.
  bool Transparent() const { return masked_back_; }
  void SetTransparent(bool on);
  bool AutoSize() const { return auto_size_; }
  void SetAutoSize(bool on);
  const quillet::Font& Font() const { return font_; }
  void SetFont(quillet::Font font);
  Colour CaptionINColor() const { return inner_; }
  void SetCaptionINColor(Colour colour);
  Colour CaptionOUTColor() const { return outer_; }
  void SetCaptionOUTColor(Colour colour);
  bool CaptionTransparent() const { return hollow_; }
  void SetCaptionTransparent(bool on);
  bool CaptionOutlined() const { return outline_; }
  void SetCaptionOutlined(bool on);
  Colour BackColor() const { return back_; }
  void SetBackColor(Colour colour);
  bool DisplayVertikal() const { return vertical_; }
  void SetDisplayVertikal(bool on);
  int DisplayType() const { return letter_order_; }
  void SetDisplayType(int order);
  Colour CaptionGradientStart() const { return gradient_start_; }
  void SetCaptionGradientStart(Colour colour);
  Colour CaptionGradientEnds() const { return gradient_end_; }
  void SetCaptionGradientEnds(Colour colour);
  bool CaptionGradientchangeColor() const { return gradient_swap_; }
  void SetCaptionGradientchangeColor(bool on);
  int CaptionGradientTyp() const { return gradient_kind_; }
  void SetCaptionGradientTyp(int kind);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on);
  int CaptionAligmend() const { return align_; }
  void SetCaptionAligmend(int align);
  bool CaptionShadowed() const { return shadow_; }
  void SetCaptionShadowed(bool on);
  // The small picture at the left, in its own size; stored as the GIF it came from.
  const PicturePtr& CaptionPicture() const { return picture_; }
  void SetCaptionPicture(PicturePtr picture, std::vector<std::uint8_t> gif_bytes = {});
  int MousePointer() const { return mouse_pointer_; }
  void SetMousePointer(int pointer);

  // The control's own measures of a text; an outlined control adds 30 to each.
  int TextHeight(std::string_view text) const;
  int TextWidth(std::string_view text) const;

  // Draws the control anew, as every setter does.
  void Refresh() { RedrawCaption(); }
  // What the control drew, in its own coordinates.
  const DisplayList& Surface() const { return surface_; }

  void Paint(Painter& painter) const override;

  // A property changed, by its key.
  std::function<void(std::string_view key)> on_property_changed;

 protected:
  void Resized() override;

 private:
  void RedrawCaption();
  void DrawTextRun(std::string_view text, double x, double y);
  void DrawBorder();
  void DrawGradient();
  void FitToText();
  void PropertySet(std::string_view key, bool fit_first);
  void Print(std::string_view text, double x, double y, Colour colour);
  TwipsSize Measure(std::string_view text) const { return metrics_.Measure(font_, text); }
  int PictureWidth() const;
  int PictureHeight() const;

  TextMetrics& metrics_;
  DisplayList surface_;
  double twips_per_pixel_ = 15.0;

  std::string link_key_;
  std::string caption_ = "0";
  int border_style_ = 0;
  bool masked_back_ = true;
  bool auto_size_ = false;
  quillet::Font font_;
  Colour inner_ = 0xFFFFFF;
  Colour outer_ = 0;
  bool hollow_ = false;
  bool outline_ = true;
  Colour back_ = 0x8000000F;
  bool vertical_ = false;
  int letter_order_ = 0;
  Colour gradient_start_ = 0xFFFFFF;
  Colour gradient_end_ = 0x404040;
  bool gradient_swap_ = false;
  int gradient_kind_ = 0;
  bool enabled_ = true;
  int align_ = 0;
  bool shadow_ = true;
  PicturePtr picture_;
  std::vector<std::uint8_t> picture_bytes_;
  int mouse_pointer_ = 0;

  std::int16_t outline_extra_ = 30;
  double inset_left_ = 0, inset_top_ = 0, inset_right_ = 0, inset_bottom_ = 0;
  double gradient_x_ = 0, gradient_y_ = 0, gradient_w_ = 0, gradient_h_ = 0;
  double max_char_width_ = 0, total_height_ = 0;
  bool sizing_now_ = false;
};

}  // namespace quillet
