#include "widgets/button_paint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "core/value.h"
#include "widgets/button_styles.h"

namespace quillet {

// ---- colours ---------------------------------------------------------------

Colour TranslateColor(Colour colour, const Painter& painter) {
  if ((colour & 0xFF000000u) == 0) return colour;
  if ((colour & 0xFF000000u) == 0x80000000u && (colour & 0x00FFFFFFu) <= 30) return painter.Resolve(colour);
  return kUntranslatable;
}

Colour ShiftColor(Colour colour, float amount) {
  // The step is a single-precision product; a double one would truncate
  // differently where amount x 255 is a whole number (0.2, 0.4).
  const float step = amount * 255.0f;
  const auto shift = [&](int channel) {
    const int v = static_cast<int>(std::trunc(channel + double(step)));
    return amount <= 0 ? std::max(v, 0) : std::min(v, 255);
  };
  return Colour(shift(RedOf(colour))) + Colour(shift(GreenOf(colour))) * 256 +
         Colour(shift(BlueOf(colour))) * 65536;
}

Colour BlendColors(Colour a, Colour b) {
  // Halves go to the even neighbour, as an integer argument is rounded.
  const auto mean = [](int x, int y) { return int(ToInt16((x + y) / 2.0).value_or(0)); };
  return Rgb(mean(RedOf(a), RedOf(b)), mean(GreenOf(a), GreenOf(b)), mean(BlueOf(a), BlueOf(b)));
}

int LightenByte(int v) { return std::min(v * 293 / 255, 255); }

// ---- schemes and regions ----------------------------------------------------

namespace {

// BackColor of a style under schemes 0, 1 and 2; nothing where the scheme leaves it alone.
std::optional<Colour> SchemeColour(int style, int scheme) {
  if (scheme < 0 || scheme > 2) return std::nullopt;
  switch (style) {
    case 2: return std::array<Colour, 3>{0xE7EBEC, 0xDBEEF3, 0xFCF1F0}[scheme];
    case 3: return std::array<Colour, 3>{0xFDECE0, 0xDEEDE8, ShiftColor(0xD4D4D4, 0.06f)}[scheme];
    case 5: return std::array<Colour, 3>{0xFCE1CA, 0xBAD6D4, ShiftColor(0xBA9EA0, 0.15f)}[scheme];
    case 8:
    case 10: return std::array<Colour, 3>{0xFFD1AD, 0xBAD6D4, 0xE3DFE0}[scheme];
    case 9: return std::array<Colour, 3>{0xFFD1AD, 0xBAD6D4, 0xE1D6D5}[scheme];
    default: return std::nullopt;
  }
}

}  // namespace

Colour SchemeBackColor(int button_style, int color_scheme, Colour current, Colour button_face) {
  switch (button_style) {
    case 0: case 1: case 4: case 6: case 7: case 11: case 12: return button_face;
    default: return SchemeColour(button_style, color_scheme).value_or(current);
  }
}

bool SchemeShowsFocusRect(int button_style) {
  return button_style == 0 || button_style == 1 || button_style == 9;
}

int RegionCorner(int button_style) {
  switch (button_style) {
    case 2: case 3: case 7: case 9: return 3;
    case 6: case 10: return 4;
    default: return 0;
  }
}

std::vector<PixelPoint> RegionCutouts(int corner, int width, int height) {
  // A rounded region with a corner 3 or 4 pixels across leaves out just the
  // outermost pixel of each corner.
  if (corner < 3 || width < 2 || height < 2) return {};
  return {{0, 0}, {width - 1, 0}, {0, height - 1}, {width - 1, height - 1}};
}

// ---- the canvas -------------------------------------------------------------

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000u;

std::uint32_t ToArgb(Colour c) {
  return kOpaque | (std::uint32_t(RedOf(c)) << 16) | (std::uint32_t(GreenOf(c)) << 8) | std::uint32_t(BlueOf(c));
}

// One channel of the way from `from` to `to`, at step i of n.
int Between(int from, int to, int i, int n) { return n > 1 ? from + (to - from) * i / (n - 1) : from; }

Colour ColourAt(Colour from, Colour to, int i, int n) {
  return Rgb(Between(RedOf(from), RedOf(to), i, n), Between(GreenOf(from), GreenOf(to), i, n),
             Between(BlueOf(from), BlueOf(to), i, n));
}

Picture Crop(const Picture& picture, int x, int y, int w, int h) {
  Picture out{w, h, {}};
  out.pixels.reserve(std::size_t(w) * std::size_t(h));
  for (int row = y; row < y + h; ++row) {
    const auto first = picture.pixels.begin() + std::ptrdiff_t(row) * picture.width + x;
    out.pixels.insert(out.pixels.end(), first, first + w);
  }
  return out;
}

}  // namespace

PixelCanvas PixelCanvas::ClippedTo(int width, int height) const {
  PixelCanvas clipped = *this;
  clipped.clip_width_ = clip_width_ < 0 ? width : std::min(width, clip_width_);
  clipped.clip_height_ = clip_height_ < 0 ? height : std::min(height, clip_height_);
  return clipped;
}

int PixelCanvas::EdgeX(int x) const { return left_ + int(std::lround(x * scale_)); }
int PixelCanvas::EdgeY(int y) const { return top_ + int(std::lround(y * scale_)); }

TwipsRect PixelCanvas::ToTwips(int x, int y, int w, int h) const {
  const int left = EdgeX(x), top = EdgeY(y);
  return {left, top, EdgeX(x + w) - left, EdgeY(y + h) - top};
}

bool PixelCanvas::Clip(int& x, int& y, int& w, int& h) const {
  if (clip_width_ >= 0) {
    const int right = std::min(x + w, clip_width_), bottom = std::min(y + h, clip_height_);
    x = std::max(x, 0);
    y = std::max(y, 0);
    w = right - x;
    h = bottom - y;
  }
  return w > 0 && h > 0;
}

void PixelCanvas::Fill(int x, int y, int w, int h, Colour colour) {
  if (Clip(x, y, w, h)) painter_.FillRect(ToTwips(x, y, w, h), colour);
}

void PixelCanvas::Line(int x1, int y1, int x2, int y2, Colour colour) {
  if (clip_width_ >= 0 && (x1 == x2 || y1 == y2)) {
    // Straight lines are a run of pixels; cut the run as a rectangle.
    const bool across = y1 == y2;
    int a = across ? x1 : y1, b = across ? x2 : y2;
    if (a > b) {  // the start is drawn, the end isn't
      std::swap(a, b);
      ++a;
      ++b;
    }
    int x = across ? a : x1, y = across ? y1 : a, w = across ? b - a : 1, h = across ? 1 : b - a;
    if (!Clip(x, y, w, h)) return;
    x1 = x;
    y1 = y;
    x2 = across ? x + w : x;
    y2 = across ? y : y + h;
  }
  painter_.DrawLine(EdgeX(x1), EdgeY(y1), EdgeX(x2), EdgeY(y2), colour);
}

void PixelCanvas::Frame(int x, int y, int w, int h, Colour colour) {
  if (w <= 0 || h <= 0) return;
  Fill(x, y, w, 1, colour);
  if (h > 1) Fill(x, y + h - 1, w, 1, colour);
  if (h > 2) {
    Fill(x, y + 1, 1, h - 2, colour);
    if (w > 1) Fill(x + w - 1, y + 1, 1, h - 2, colour);
  }
}

void PixelCanvas::SetPixel(int x, int y, Colour colour) { Fill(x, y, 1, 1, colour); }

void PixelCanvas::GradientBar(int x, int y, int w, int h, Colour from, Colour to, int direction) {
  if (w <= 0 || h <= 0) return;
  const bool across = direction == 0 || direction == 2;  // colour changes along x
  const bool reversed = direction == 2 || direction == 3;
  const int n = across ? w : h;
  std::vector<std::uint32_t> steps(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) steps[std::size_t(reversed ? n - 1 - i : i)] = ToArgb(ColourAt(from, to, i, n));
  Picture bar{w, h, std::vector<std::uint32_t>(std::size_t(w) * std::size_t(h))};
  for (int row = 0; row < h; ++row)
    for (int col = 0; col < w; ++col)
      bar.pixels[std::size_t(row) * std::size_t(w) + std::size_t(col)] = steps[std::size_t(across ? col : row)];
  DrawPicture(bar, x, y);
}

void PixelCanvas::FocusRect(int x, int y, int w, int h) {
  if (w <= 0 || h <= 0) return;
  // Every other pixel black, counted from the rectangle's top left; the rest left alone.
  const auto side = [&](int sx, int sy, int sw, int sh) {
    if (sw <= 0 || sh <= 0) return;
    Picture dots{sw, sh, std::vector<std::uint32_t>(std::size_t(sw) * std::size_t(sh))};
    for (int row = 0; row < sh; ++row)
      for (int col = 0; col < sw; ++col)
        if ((sx - x + col + sy - y + row) % 2 == 0) dots.pixels[std::size_t(row * sw + col)] = kOpaque;
    DrawPicture(dots, sx, sy);
  };
  side(x, y, w, 1);
  if (h > 1) side(x, y + h - 1, w, 1);
  side(x, y + 1, 1, h - 2);
  if (w > 1) side(x + w - 1, y + 1, 1, h - 2);
}

void PixelCanvas::DrawPicture(const Picture& picture, int x, int y) {
  int cx = x, cy = y, cw = picture.width, ch = picture.height;
  if (!Clip(cx, cy, cw, ch)) return;
  if (cw == picture.width && ch == picture.height) {
    painter_.DrawPicture(picture, ToTwips(x, y, cw, ch));
    return;
  }
  painter_.DrawPicture(Crop(picture, cx - x, cy - y, cw, ch), ToTwips(cx, cy, cw, ch));
}

void PixelCanvas::Text(int x, int y, std::string_view text, const Font& font, Colour colour) {
  painter_.DrawTextAt(EdgeX(x), EdgeY(y), text, font, colour);
}

// ---- the face ---------------------------------------------------------------

void DrawButtonFace(PixelCanvas& canvas, const ButtonFace& face, const std::function<void()>& content) {
  PixelCanvas clipped = canvas.ClippedTo(face.width, face.height);
  const std::function<void()> run = content ? content : [] {};
  // The window's ground in BackColor first: bands of an odd height leave the last row to it.
  clipped.Fill(0, 0, face.width, face.height, face.base);
  switch (face.style) {
    case 3: DrawStyle3(clipped, face, run); break;
    case 5: DrawStyle5(clipped, face, run); break;
    case 9: DrawStyle9(clipped, face, run); break;
    case 2: case 4: case 6: case 7: case 8: case 10: case 13: DrawTabledStyle(clipped, face, run); break;
    default: DrawEdged(clipped, face, run); break;
  }
}

// ---- picture and caption ----------------------------------------------------

namespace {

constexpr int kMargin = 4;          // from the edges, for what isn't centred
constexpr int kDropDownWidth = 16;  // the symbol's column at the right
constexpr Colour kGreyText = 0x80000011;

struct PixelRect {
  int x = 0, y = 0, w = 0, h = 0;
};

// Column and row of each PictureAlign: 0 near the start, 1 centred, 2 near the end.
constexpr std::array<std::array<int, 2>, 9> kPicturePlaces = {
    {{1, 1}, {0, 1}, {2, 0}, {2, 2}, {2, 1}, {1, 0}, {0, 0}, {1, 2}, {0, 2}}};

int Place(int where, int room, int size) {
  return where == 0 ? kMargin : where == 1 ? (room - size) / 2 : room - kMargin - size;
}

int ToPixels(int twips, double scale) { return int(std::lround(twips / scale)); }

bool PushesContent(const ButtonFace& face) {
  if (face.state != 2) return false;
  switch (face.style) {
    case 0: case 1: case 6: case 7: case 11: case 12: return true;
    default: return false;
  }
}

// The face, moved clear of the picture by PictureAlign and CaptionAlign.
PixelRect CaptionRect(const ButtonFace& face, const ButtonContent& content) {
  PixelRect r{0, 0, face.width, face.height};
  if (content.drop_down_symbol != 0) r.w -= kDropDownWidth;
  if (!content.picture) return r;
  const int align = content.picture_align, half = content.picture->height / 2;
  const bool at_right = align == 2 || align == 3 || align == 4;
  if (at_right && content.caption_align == 1) r.x -= align == 4 ? 16 : 12;
  else if (at_right && content.caption_align == 2) r.x -= 16;
  if (align == 5 || align == 6) r.y += half;
  if (align == 7 || align == 8) r.y -= half;
  return r;
}

// CaptionEffects: 1 engraved (a light copy below right), 2 a grey shadow, any other a light halo.
void DrawCaptionEffects(PixelCanvas& c, int x, int y, const ButtonFace& face, const ButtonContent& content) {
  const auto echo = [&](int dx, int dy, Colour colour) {
    c.Text(x + dx, y + dy, content.caption, content.font, colour);
  };
  if (content.caption_effects == 1) return echo(1, 1, ShiftColor(face.base, 0.1f));
  if (content.caption_effects == 2) return echo(1, 1, 0xC0C0C0);
  constexpr std::array<std::array<int, 2>, 4> kHalo = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};
  for (const auto& [dx, dy] : kHalo) echo(dx, dy, ShiftColor(face.base, 0.14f));
}

void DrawCaption(PixelCanvas& c, TextMetrics& metrics, const ButtonFace& face, const ButtonContent& content,
                 PixelRect r, Colour colour) {
  const TwipsSize size = metrics.Measure(content.font, content.caption);
  const int width = ToPixels(size.width, c.Scale()), height = ToPixels(size.height, c.Scale());
  int align = content.caption_align;
  if (content.right_to_left && (align == 0 || align == 1)) align = 1 - align;
  const int x = align == 0 ? r.x + kMargin : align == 1 ? r.x + r.w - kMargin - width : r.x + (r.w - width) / 2;
  const int y = r.y + (r.h - height) / 2;
  if (face.enabled && content.caption_effects != 0) DrawCaptionEffects(c, x, y, face, content);
  c.Text(x, y, content.caption, content.font, colour);
}

void DrawDropDown(PixelCanvas& c, TextMetrics& metrics, const ButtonFace& face, const ButtonContent& content,
                  int push, Colour colour) {
  const int left = face.width - kDropDownWidth;
  if (content.drop_down_separator) c.Line(left, 3, left, face.height - 3, ShiftColor(face.base, -0.25f));
  const Font marlett{"Marlett", content.font.size, false};
  const TwipsSize size = metrics.Measure(marlett, "6");  // Marlett's "6" is the arrow down
  const int x = left + (kDropDownWidth - ToPixels(size.width, c.Scale())) / 2;
  const int y = (face.height - ToPixels(size.height, c.Scale())) / 2;
  c.Text(x + push, y + push, "6", marlett, colour);
}

// A soft black copy of the picture's shape.
Picture ShadowOf(const Picture& picture) {
  Picture shadow = picture;
  for (std::uint32_t& p : shadow.pixels) p = ((p >> 24) / 3) << 24;
  return shadow;
}

void DrawButtonPicture(PixelCanvas& c, const ButtonFace& face, const ButtonContent& content, int push) {
  const Picture& picture = *content.picture;
  if (picture.pixels.size() != std::size_t(picture.width) * std::size_t(picture.height)) return;
  const int align = content.picture_align >= 0 && content.picture_align <= 8 ? content.picture_align : 1;
  const auto& place = kPicturePlaces[std::size_t(align)];
  int x = Place(place[0], face.width, picture.width);
  if (content.right_to_left) x = face.width - x - picture.width;
  x += push;
  const int y = Place(place[1], face.height, picture.height) + push;
  const Picture treated = TreatPicture(picture, content, face.enabled, face.base);
  if (content.picture_shadow && face.enabled) c.DrawPicture(ShadowOf(treated), x + 2, y + 2);
  c.DrawPicture(treated, x, y);
}

// One pixel of a disabled picture: mode 0 its luminance at 0.75, blended with
// the face; any other mode a flat shade of the face.
std::uint32_t DisabledPixel(std::uint32_t p, int mode, Colour face) {
  const std::uint32_t alpha = p & 0xFF000000u;
  if (mode != 0) return alpha | (ToArgb(ShiftColor(face, -0.3f)) & 0xFFFFFFu);
  const int r = int((p >> 16) & 0xFF), g = int((p >> 8) & 0xFF), b = int(p & 0xFF);
  const int grey = (r * 299 + g * 587 + b * 114) * 3 / 4000;
  return alpha | (ToArgb(BlendColors(Rgb(grey, grey, grey), face)) & 0xFFFFFFu);
}

}  // namespace

void PaintContent(PixelCanvas& canvas, TextMetrics& metrics, const ButtonFace& face, const ButtonContent& content) {
  PixelCanvas c = canvas.ClippedTo(face.width, face.height);
  const int push = PushesContent(face) ? 1 : 0;
  if (content.picture) DrawButtonPicture(c, face, content, push);
  const Colour text = face.enabled ? content.fore : TranslateColor(kGreyText, c.painter());
  if (content.drop_down_symbol != 0) DrawDropDown(c, metrics, face, content, push, text);
  if (content.caption.empty()) return;
  PixelRect r = CaptionRect(face, content);
  r.x += push;
  r.y += push;
  DrawCaption(c, metrics, face, content, r, text);
}

Picture TreatPicture(const Picture& picture, const ButtonContent& content, bool enabled, Colour face) {
  Picture out = picture;
  const std::uint32_t mask = ToArgb(content.mask_color) & 0xFFFFFFu;
  const auto opacity = std::uint32_t(std::clamp(content.opacity, 0, 255));
  for (std::uint32_t& p : out.pixels) {
    if (content.use_mask_color && (p & 0xFFFFFFu) == mask) {
      p &= 0xFFFFFFu;
      continue;
    }
    if (!enabled) p = DisabledPixel(p, content.disabled_picture_mode, face);
    p = (((p >> 24) * opacity / 255) << 24) | (p & 0xFFFFFFu);
  }
  return out;
}

}  // namespace quillet
