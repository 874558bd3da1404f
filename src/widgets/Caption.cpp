#include "widgets/Caption.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cmath>

#include "core/value.h"
#include "widgets/art.h"

namespace quillet {
namespace {

constexpr Colour kGreyText = 0x808080;      // shadow, and the outline when disabled
constexpr Colour kDisabledLetters = 0xE0E0E0;
constexpr int kShadowOffset = 45;
constexpr int kOutlineStep = 15;
constexpr int kLineStep = 15;  // one line per pixel at 15 twips a pixel; not scaled

// 3-D tones of the system, by their low byte.
constexpr Colour System(int index) { return 0x80000000u | static_cast<Colour>(index); }
constexpr Colour kShadow = System(0x10), kHighlight = System(0x14), kDarkShadow = System(0x15),
                 kLight = System(0x16);

struct BorderRecipe {
  int inset;
  std::vector<Colour> top_left;  // layers from outer to inner
  std::vector<Colour> right, bottom;
};

const BorderRecipe& RecipeFor(int style) {
  static const BorderRecipe recipes[] = {
      {0, {}, {}, {}},
      {30, {kShadow, kDarkShadow}, {kHighlight, kLight}, {kHighlight, kLight}},
      {30, {kHighlight, kDarkShadow}, {kHighlight, kDarkShadow}, {kDarkShadow, kHighlight}},
      {45, {kHighlight, kShadow, kDarkShadow}, {kDarkShadow, kShadow, kHighlight}, {kDarkShadow, kShadow, kHighlight}},
      {60, {kHighlight, kLight, kShadow, kDarkShadow}, {kDarkShadow, kShadow, kLight, kHighlight},
       {kDarkShadow, kShadow, kLight, kHighlight}},
      {15, {kDarkShadow}, {kDarkShadow}, {kDarkShadow}},
      {45, {kDarkShadow, kShadow, kLight}, {kDarkShadow, kShadow, kLight}, {kDarkShadow, kShadow, kLight}},
      {60, {kDarkShadow, kShadow, kLight, kHighlight}, {kDarkShadow, kShadow, kLight, kHighlight},
       {kDarkShadow, kShadow, kLight, kHighlight}},
  };
  return style >= 0 && style <= 7 ? recipes[style] : recipes[0];
}

// The integer part, as the drawing code takes it: rounded down.
double IntPart(double v) { return std::floor(v); }

// Truncated to a 16-bit integer, as a colour channel of the gradient is.
int Channel(double v) { return std::clamp(static_cast<int>(std::trunc(v)), -32768, 32767); }

// Letters of a text: bytes, as the program's texts are single-byte.
std::vector<std::string> Letters(std::string_view text) {
  std::vector<std::string> letters;
  for (const char c : text) letters.emplace_back(1, c);
  return letters;
}

}  // namespace

Caption::Caption(std::string name, TwipsRect bounds, TextMetrics& metrics, bool visible)
    : Visual(std::move(name), bounds, visible), metrics_(metrics) {}

void Caption::InitProperties(std::string_view display_name, const quillet::Font& container_font) {
  PropertyBag defaults;
  defaults.WriteProperty("Caption", std::string(display_name));
  ReadProperties(defaults, container_font);
}

void Caption::ReadProperties(const PropertyBag& bag, const quillet::Font& container_font) {
  const auto flag = [&bag](std::string_view key, bool fallback) { return bag.ReadNumber(key, fallback ? -1 : 0) != 0; };
  const auto colour = [&bag](std::string_view key, Colour fallback) {
    return static_cast<Colour>(bag.ReadNumber(key, fallback));
  };
  const auto number = [&bag](std::string_view key) {
    return static_cast<int>(std::clamp<std::int64_t>(bag.ReadNumber(key, 0), std::int64_t{INT32_MIN}, std::int64_t{INT32_MAX}));
  };
  caption_ = bag.ReadProperty("Caption", "0");
  border_style_ = number("Borders");
  masked_back_ = flag("Transparent", true);
  auto_size_ = flag("AutoSize", false);
  font_ = FontFromProperty(bag.ReadProperty("Font", ""), container_font);
  inner_ = colour("CaptionINColor", 0xFFFFFF);
  outer_ = colour("CaptionOUTColor", 0);
  hollow_ = flag("CaptionTransparent", false);
  outline_ = flag("CaptionOutlined", true);
  back_ = colour("BackColor", 0x8000000F);
  vertical_ = flag("DisplayVertikal", false);
  letter_order_ = number("DisplayType");
  mouse_pointer_ = number("MousePointer");
  gradient_start_ = colour("CaptionGradientStart", 0xFFFFFF);
  gradient_end_ = colour("CaptionGradientEnds", 0x404040);
  gradient_swap_ = flag("CaptionGradientchangeColor", false);
  gradient_kind_ = number("CaptionGradientTyp");
  enabled_ = flag("Enabled", true);
  align_ = number("CaptionAligmend");
  shadow_ = flag("CaptionShadowed", true);
  picture_bytes_ = bag.ReadBytes("CaptionPicture");
  picture_ = picture_bytes_.empty() ? nullptr : PictureFromGif(picture_bytes_);
  outline_extra_ = outline_ ? 30 : 0;
  FitToText();
  RedrawCaption();
}

void Caption::WriteProperties(PropertyBag& bag) const {
  const auto flag = [](bool on) { return std::int64_t{on ? -1 : 0}; };
  bag.WriteProperty("Caption", caption_);
  bag.WriteProperty("Borders", std::int64_t{border_style_});
  bag.WriteProperty("Transparent", flag(masked_back_));
  bag.WriteProperty("AutoSize", flag(auto_size_));
  bag.WriteProperty("Font", FontProperty(font_));
  bag.WriteProperty("CaptionINColor", std::int64_t{inner_});
  bag.WriteProperty("CaptionOUTColor", std::int64_t{outer_});
  bag.WriteProperty("CaptionTransparent", flag(hollow_));
  bag.WriteProperty("CaptionOutlined", flag(outline_));
  bag.WriteProperty("BackColor", std::int64_t{back_});
  bag.WriteProperty("DisplayVertikal", flag(vertical_));
  bag.WriteProperty("DisplayType", std::int64_t{letter_order_});
  bag.WriteProperty("MousePointer", std::int64_t{mouse_pointer_});
  bag.WriteProperty("CaptionGradientStart", std::int64_t{gradient_start_});
  bag.WriteProperty("CaptionGradientEnds", std::int64_t{gradient_end_});
  bag.WriteProperty("CaptionGradientchangeColor", flag(gradient_swap_));
  bag.WriteProperty("CaptionGradientTyp", std::int64_t{gradient_kind_});
  bag.WriteProperty("Enabled", flag(enabled_));
  bag.WriteProperty("CaptionAligmend", std::int64_t{align_});
  bag.WriteProperty("CaptionShadowed", flag(shadow_));
  if (!picture_bytes_.empty()) bag.WriteBytes("CaptionPicture", picture_bytes_);
}

void Caption::CopyPropertiesFrom(const Caption& other) {
  PropertyBag bag;
  other.WriteProperties(bag);
  ReadProperties(bag, other.font_);
}

// ---- Setters -----------------------------------------------------------------

void Caption::PropertySet(std::string_view key, bool fit_first) {
  if (on_property_changed) on_property_changed(key);
  if (fit_first) FitToText();
  RedrawCaption();
}

void Caption::SetCaption(std::string text) {
  caption_ = std::move(text);
  PropertySet("Caption", true);
}

void Caption::SetBorders(int style) {
  border_style_ = style;
  PropertySet("Borders", true);
}

void Caption::SetTransparent(bool on) {
  masked_back_ = on;
  PropertySet("Transparent", false);
}

void Caption::SetAutoSize(bool on) {
  auto_size_ = on;
  PropertySet("AutoSize", true);
}

void Caption::SetFont(quillet::Font font) {
  font_ = std::move(font);
  PropertySet("Font", true);
}

void Caption::SetCaptionINColor(Colour colour) {
  inner_ = colour;
  PropertySet("CaptionINColor", false);
}

void Caption::SetCaptionOUTColor(Colour colour) {
  outer_ = colour;
  PropertySet("CaptionOUTColor", false);
}

void Caption::SetCaptionTransparent(bool on) {
  hollow_ = on;
  PropertySet("CaptionTransparent", false);
}

void Caption::SetCaptionOutlined(bool on) {
  outline_ = on;
  outline_extra_ = on ? 30 : 0;
  PropertySet("CaptionOutlined", false);
}

void Caption::SetBackColor(Colour colour) {
  back_ = colour;
  PropertySet("BackColor", false);
}

void Caption::SetDisplayVertikal(bool on) {
  vertical_ = on;
  max_char_width_ = total_height_ = 0;
  if (!on && letter_order_ >= 2 && letter_order_ <= 3) letter_order_ -= 2;
  if (on && letter_order_ >= 0 && letter_order_ <= 1) letter_order_ += 2;
  PropertySet("DisplayVertikal", true);
}

void Caption::SetDisplayType(int order) {
  letter_order_ = order;
  max_char_width_ = total_height_ = 0;
  if ((order == 0 || order == 1) && vertical_) vertical_ = false;
  if ((order == 2 || order == 3) && !vertical_) vertical_ = true;
  PropertySet("DisplayType", true);
}

void Caption::SetCaptionGradientStart(Colour colour) {
  gradient_start_ = colour;
  PropertySet("CaptionGradientStart", false);
}

void Caption::SetCaptionGradientEnds(Colour colour) {
  gradient_end_ = colour;
  PropertySet("CaptionGradientEnds", false);
}

void Caption::SetCaptionGradientchangeColor(bool on) {
  gradient_swap_ = on;
  PropertySet("CaptionGradientchangeColor", false);
}

void Caption::SetCaptionGradientTyp(int kind) {
  gradient_kind_ = kind;
  PropertySet("CaptionGradientTyp", false);
}

void Caption::SetEnabled(bool on) {
  enabled_ = on;
  PropertySet("Enabled", false);
}

void Caption::SetCaptionAligmend(int align) {
  align_ = align;
  PropertySet("CaptionAligmend", false);
}

void Caption::SetCaptionShadowed(bool on) {
  shadow_ = on;
  PropertySet("CaptionShadowed", false);
}

void Caption::SetCaptionPicture(PicturePtr picture, std::vector<std::uint8_t> gif_bytes) {
  picture_ = std::move(picture);
  picture_bytes_ = std::move(gif_bytes);
  PropertySet("CaptionPicture", true);
}

void Caption::SetMousePointer(int pointer) {
  mouse_pointer_ = pointer;
  PropertySet("MousePointer", false);
}

// ---- Measures ----------------------------------------------------------------

int Caption::TextHeight(std::string_view text) const { return Measure(text).height + outline_extra_; }
int Caption::TextWidth(std::string_view text) const { return Measure(text).width + outline_extra_; }

int Caption::PictureWidth() const {
  return picture_ ? static_cast<int>(std::lround(picture_->width * twips_per_pixel_)) : 0;
}
int Caption::PictureHeight() const {
  return picture_ ? static_cast<int>(std::lround(picture_->height * twips_per_pixel_)) : 0;
}

void Caption::FitToText() {
  if (vertical_) {
    total_height_ = max_char_width_ = 0;
    for (const std::string& letter : Letters(caption_)) {
      const TwipsSize size = Measure(letter);
      total_height_ += size.height;
      max_char_width_ = std::max<double>(max_char_width_, size.width);
    }
  }
  if (!auto_size_) return;
  sizing_now_ = true;
  const TwipsSize text = Measure(caption_);
  const int pw = PictureWidth(), ph = PictureHeight();
  double dw = 0, dh = 0;
  if (picture_) {
    dw = pw - text.width;
    dh = ph - text.height + (shadow_ ? kShadowOffset : 0);
  }
  double width = 0, height = 0;
  if (!vertical_) {
    width = text.width + outline_extra_ + inset_left_ + inset_right_ + pw;
    height = text.height + outline_extra_ + inset_top_ + inset_bottom_ + dh;
  } else {
    width = max_char_width_ + 2.0 * outline_extra_ + inset_left_ + inset_right_ + dw;
    height = total_height_ + outline_extra_ + inset_top_ + inset_bottom_ + ph;
  }
  Move({Left(), Top(), static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height))});
  sizing_now_ = false;
}

void Caption::Resized() {
  if (!sizing_now_) RedrawCaption();
}

// ---- Drawing -----------------------------------------------------------------

void Caption::RedrawCaption() {
  DisplayList before = std::move(surface_);
  surface_.Clear();
  if (gradient_kind_ != 0) DrawGradient();
  // The text goes inside the border drawn with it, from the first redraw on.
  inset_left_ = inset_top_ = inset_right_ = inset_bottom_ = RecipeFor(border_style_).inset;
  const double x = inset_left_, y = inset_top_;
  double y2 = inset_top_ + outline_extra_;
  switch (letter_order_) {
    case 0: DrawTextRun(caption_, x, y); break;
    case 1: DrawTextRun(std::string(caption_.rbegin(), caption_.rend()), x, y); break;
    case 2:
    case 3: {
      auto letters = Letters(caption_);
      if (letter_order_ == 3) std::reverse(letters.begin(), letters.end());
      for (const std::string& letter : letters) {
        DrawTextRun(letter, IntPart(Width() / 2.0 - TextWidth(letter) / 2.0), y2);
        y2 += Measure(letter).height;
      }
      break;
    }
    default: break;
  }
  // The next gradient starts from here: the first one of a bordered control at 0.
  gradient_x_ = inset_left_;
  gradient_y_ = inset_top_;
  gradient_w_ = Width() - 2 * inset_left_;
  gradient_h_ = Height() - 2 * inset_top_;
  // The same drawing again costs the window no repaint.
  if (surface_.ops != before.ops) Changed();
}

void Caption::Print(std::string_view text, double x, double y, Colour colour) {
  surface_.DrawTextAt(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)), text, font_, colour);
}

void Caption::DrawTextRun(std::string_view text, double x, double y) {
  const double pw = PictureWidth();
  DrawBorder();
  double tx = 0, ty = 0;
  if (!vertical_) {
    const TwipsSize measure = Measure(text);
    const double sw = Width(), sh = Height(), tw = measure.width, th = measure.height;
    const double centred_y = IntPart(sh / 2 - th / 2) - y;
    switch (align_) {
      case 0: ty = centred_y; break;
      case 1:
        if (!shadow_) {
          tx = IntPart(sw / 2 - tw / 2) - pw / 2 - x;
          ty = centred_y;
        } else {
          tx = IntPart((sw - kShadowOffset) / 2 - tw / 2) - pw / 2 - x;
          ty = IntPart((sh - 30) / 2 - th / 2) - y;
        }
        break;
      case 2:
        tx = IntPart(sw - tw) - 2 * x - pw - (shadow_ ? kShadowOffset : 0);
        ty = centred_y - (shadow_ ? 30 : 0);
        break;
      default: break;
    }
  }
  double px = tx + x + pw, py = ty + y;
  const Colour outline_colour = enabled_ ? outer_ : kGreyText;
  if (enabled_ && shadow_) Print(text, px + kShadowOffset, py + kShadowOffset, kGreyText);
  if (outline_) {
    if (!vertical_) {
      px += kOutlineStep;
      py += kOutlineStep;
    }
    static constexpr int kRing[9][2] = {{-1, -1}, {-1, 0}, {0, -1}, {-1, 1}, {1, -1},
                                        {1, 0},   {1, 0},  {0, 1},  {1, 1}};
    for (const auto& [dx, dy] : kRing) Print(text, px + dx * kOutlineStep, py + dy * kOutlineStep, outline_colour);
  }
  const Colour letters = !enabled_ ? kDisabledLetters : hollow_ ? back_ : inner_;
  Print(text, px, py, letters);
  if (picture_) {
    const double top = inset_top_ + Height() / 2.0 - PictureHeight() / 2.0;
    surface_.DrawPicture(*picture_, {static_cast<int>(std::lround(inset_left_)), static_cast<int>(std::lround(top)),
                                     PictureWidth(), PictureHeight()});
  }
  DrawBorder();
}

void Caption::DrawBorder() {
  const BorderRecipe& recipe = RecipeFor(border_style_);
  inset_left_ = inset_top_ = inset_right_ = inset_bottom_ = recipe.inset;
  const int w = Width(), h = Height();
  for (std::size_t k = 0; k < recipe.top_left.size(); ++k) {
    const int at = 15 * static_cast<int>(k);
    surface_.DrawLine(0, at, w, at, recipe.top_left[k]);
    surface_.DrawLine(at, 0, at, h, recipe.top_left[k]);
  }
  for (std::size_t k = 0; k < recipe.right.size(); ++k) {
    const int x = w - 15 - 15 * static_cast<int>(k);
    surface_.DrawLine(x, 0, x, h, recipe.right[k]);
  }
  for (std::size_t k = 0; k < recipe.bottom.size(); ++k) {
    const int y = h - 15 - 15 * static_cast<int>(k);
    surface_.DrawLine(0, y, w, y, recipe.bottom[k]);
  }
}

void Caption::DrawGradient() {
  gradient_w_ = Width() - 2 * inset_left_;
  gradient_h_ = Height() - 2 * inset_top_;
  Colour start = gradient_start_, end = gradient_end_;
  if (gradient_swap_) std::swap(start, end);
  const auto split = [](Colour c) {
    return std::array<double, 3>{double(c & 0xFF), double((c >> 8) & 0xFF), double((c >> 16) & 0xFF)};
  };
  const auto from = split(start), to = split(end);
  const bool across = gradient_kind_ == 1;
  const double span = across ? gradient_w_ + gradient_x_ : gradient_h_ + gradient_y_;
  std::array<double, 3> step{};
  for (int c = 0; c < 3; ++c) {
    step[c] = span != 0 ? std::abs(to[c] - from[c]) / span : 0;
    if (from[c] > to[c]) step[c] = -step[c];
  }
  const double length = across ? gradient_w_ : gradient_h_;
  for (double i = 1; i <= length; i += kLineStep) {
    const Colour colour = Rgb(Channel(from[0] + i * step[0]), Channel(from[1] + i * step[1]),
                              Channel(from[2] + i * step[2]));
    const auto at = [](double v) { return static_cast<int>(std::lround(v)); };
    if (across)
      surface_.DrawLine(at(i + gradient_x_), at(gradient_y_), at(i + gradient_x_), at(gradient_y_ + gradient_h_),
                        colour);
    else
      surface_.DrawLine(at(gradient_x_), at(i + gradient_y_), at(gradient_x_ + gradient_w_), at(i + gradient_y_),
                        colour);
  }
}

void Caption::Paint(Painter& painter) const {
  // The ground is BackColor; with TRANSPARENT on, every pixel of exactly
  // that colour, in the letters or the picture too, shows what lies behind.
  painter.PushLayer(Bounds(), back_);
  surface_.Replay(painter, Left(), Top());
  painter.PopLayer(masked_back_ ? std::optional<Colour>(back_) : std::nullopt);
}

}  // namespace quillet
