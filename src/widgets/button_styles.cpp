#include "widgets/button_styles.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quillet {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr int kAcross = 0;  // gradient directions
constexpr int kDown = 1;

Colour Shift(Colour colour, float amount) { return ShiftColor(colour, amount); }

Colour SystemColour(PixelCanvas& canvas, int index) {
  return TranslateColor(0x80000000u | Colour(index), canvas.painter());
}

void Band(PixelCanvas& c, int x, int y, int w, int h, Colour from, Colour to) {
  c.GradientBar(x, y, w, h, from, to, kDown);
}

void Halves(PixelCanvas& c, const ButtonFace& f, Colour upper_from, Colour upper_to, Colour lower_from,
            Colour lower_to) {
  Band(c, 0, 0, f.width, f.height / 2, upper_from, upper_to);
  Band(c, 0, f.height / 2, f.width, f.height / 2, lower_from, lower_to);
}

// Strips 5 wide at both sides fading from `edge` into `inner`, the right one mirrored.
void SideStrips(PixelCanvas& c, const ButtonFace& f, int y, int h, Colour edge, Colour inner) {
  c.GradientBar(1, y, 5, h, edge, inner, kAcross);
  c.GradientBar(f.width - 6, y, 5, h, inner, edge, kAcross);
}

// The pixels just inside the cut corners of the rounded looks.
void CornerPixels(PixelCanvas& c, const ButtonFace& f, Colour colour) {
  const int right = f.width - 2, bottom = f.height - 2;
  c.SetPixel(1, 1, colour);
  c.SetPixel(right, 1, colour);
  c.SetPixel(1, bottom, colour);
  c.SetPixel(right, bottom, colour);
}

bool ShowsFocus(const ButtonFace& f) { return f.enabled && f.focused && f.show_focus_rect; }

// ---- style 3 ----

void Style3Normal(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const Colour base = f.base;
  Halves(c, f, Shift(base, 0.05f), base, Shift(base, -0.02f), Shift(base, -0.15f));
  content();
  c.Frame(0, 0, f.width, f.height, f.focused ? 0xA77532 : 0x707070);
  c.Frame(1, 1, f.width - 2, f.height - 2, f.focused ? 0xFBD848 : kWhite);
}

void Style3Hot(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const int half = f.height / 2;
  Halves(c, f, 0xFFF7E4, 0xFFF3DA, 0xFFE9C1, 0xFDE1AE);
  SideStrips(c, f, 3, half - 3, 0xFFEECD, 0xFFF7E4);
  SideStrips(c, f, half, half - 3, 0xFAD68F, Shift(0xFDE1AC, 0.01f));
  content();
  c.Frame(0, 0, f.width, f.height, 0xA77532);
  c.Frame(1, 1, f.width - 2, f.height - 2, kWhite);
}

void Style3Down(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const int w = f.width, h = f.height, half = h / 2;
  Halves(c, f, 0xF6E4C2, 0xF6E4C2, 0xF0D29A, 0xF0D29A);
  SideStrips(c, f, 0, half, Shift(0xE6C891, 0.02f), Shift(0xF6E4C2, -0.01f));
  SideStrips(c, f, half, half, Shift(0xDCAB4E, 0.02f), Shift(0xF0D29A, -0.01f));
  content();
  c.Frame(0, 0, w, h, 0x5C411D);
  constexpr std::array<Colour, 3> kAcrossTop = {0xB39C71, 0xD6C6A9, 0xECD9B9};
  for (int i = 0; i < 3; ++i) c.Line(1, 1 + i, w - 1, 1 + i, kAcrossTop[std::size_t(i)]);
  c.Line(1, 1, 1, half, 0xCFB073);
  c.Line(1, half, 1, h - 1, 0xC5912B);
}

// ---- styles 0, 1, 11, 12 ----

// One border of DrawEdge: light along the top and left, dark along the bottom and right.
void Bevel(PixelCanvas& c, const ButtonFace& f, int inset, Colour light, Colour dark) {
  const int w = f.width - 2 * inset, h = f.height - 2 * inset;
  if (w <= 0 || h <= 0) return;
  c.Fill(inset, inset, w - 1, 1, light);
  c.Fill(inset, inset, 1, h - 1, light);
  c.Fill(inset + w - 1, inset, 1, h, dark);
  c.Fill(inset, inset + h - 1, w, 1, dark);
}

// DrawEdge with all four sides; `kind` holds the raised/sunken outer (1, 2) and inner (4, 8) bits.
void DrawEdge(PixelCanvas& c, const ButtonFace& f, int kind) {
  const Colour shadow = SystemColour(c, 16), highlight = SystemColour(c, 20), dark = SystemColour(c, 21),
               light = SystemColour(c, 22);
  if (kind & 1) Bevel(c, f, 0, light, dark);
  if (kind & 2) Bevel(c, f, 0, shadow, highlight);
  const int inner = (kind & 3) ? 1 : 0;
  if (kind & 4) Bevel(c, f, inner, highlight, shadow);
  if (kind & 8) Bevel(c, f, inner, dark, light);
}

// ---- the tabled styles ----

// A tone: a colour, BackColor or the system's shadow, shifted by an amount.
constexpr Colour kBase = 0x01000000, kShade = 0x02000000, kNone = 0x03000000;
struct Tone {
  Colour colour = kNone;
  float shift = 0;
};
constexpr Tone B(float shift = 0) { return {kBase, shift}; }
constexpr Tone C(Colour colour, float shift = 0) { return {colour, shift}; }
constexpr Tone kShadeTone{kShade, 0};
constexpr Tone kNoTone{};

struct Look {
  Tone upper_from, upper_to, lower_from, lower_to;
  Tone outer, inner;  // frames (0, 0, w, h) and (1, 1, w - 2, h - 2)
};
struct Recipe {
  int style;
  std::array<Look, 3> looks;  // normal, hot, down
};

constexpr Recipe kRecipes[] = {
    // Silver, with a white inner line that warms when hot.
    {2,
     {{{B(0.1f), B(0.08f), B(0.01f), B(0.05f), kShadeTone, C(kWhite)},
       {B(0.3f), B(0.22f), B(0.07f), B(0.1f), kShadeTone, C(0xCFF0FF)},
       {B(0.04f), B(0.01f), B(), B(0.04f), kShadeTone, kNoTone}}}},
    // Flat until the pointer comes.
    {4,
     {{{B(), B(), B(), B(), kNoTone, kNoTone},
       {B(0.03f), B(), B(), B(), kShadeTone, kNoTone},
       {B(), B(), B(), B(0.03f), kShadeTone, kNoTone}}}},
    // White.
    {6,
     {{{C(kWhite), C(0xFEFEFE), B(0.02f), B(), kShadeTone, kNoTone},
       {C(kWhite), B(0.02f), B(0.02f), B(0.02f), kShadeTone, C(kWhite)},
       {B(), B(0.02f), B(0.02f), C(0xFEFEFE), kShadeTone, kNoTone}}}},
    // Pearl.
    {7,
     {{{C(kWhite), C(0xFDF9F1), C(0xFDF9F1), B(), kShadeTone, C(kWhite)},
       {C(kWhite), B(0.3f), B(0.3f), B(), kShadeTone, C(kWhite)},
       {B(), B(), B(), C(0xFDF9F1), kShadeTone, kNoTone}}}},
    // Tool bar with an orange highlight.
    {8,
     {{{B(0.09f), B(0.07f), B(0.03f), B(), kNoTone, kNoTone},
       {C(0x5FD3FF, 0.09f), C(0x5FD3FF, 0.03f), C(0x5FD3FF), C(0x51AFFF), C(0x468FFF), kNoTone},
       {C(0x468FFF), C(0x51AFFF), C(0x51AFFF), C(0x5FD3FF), C(0x468FFF), kNoTone}}}},
    // Blue.
    {10,
     {{{C(kWhite), B(0.1f), B(0.05f), B(), kShadeTone, kNoTone},
       {C(kWhite), B(0.2f), B(0.15f), B(0.08f), kShadeTone, C(kWhite)},
       {B(), B(0.05f), B(0.05f), B(0.1f), kShadeTone, kNoTone}}}},
};

const Recipe& RecipeOf(int style) {
  for (const Recipe& recipe : kRecipes)
    if (recipe.style == style) return recipe;
  return kRecipes[0];
}

}  // namespace

void DrawStyle3(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const int w = f.width, h = f.height;
  if (!f.enabled) {
    c.Fill(0, 0, w, h, Shift(f.base, 0.03f));
    content();
    c.Frame(0, 0, w, h, Shift(f.base, -0.25f));
    c.Frame(1, 1, w - 2, h - 2, Shift(f.base, 0.25f));
    CornerPixels(c, f, Shift(f.base, -0.03f));
    return;
  }
  switch (f.state) {
    case 1: Style3Hot(c, f, content); break;
    case 2: Style3Down(c, f, content); break;
    default: Style3Normal(c, f, content); break;
  }
  CornerPixels(c, f, 0xBE965F);
  if (ShowsFocus(f)) c.FocusRect(1, 1, w - 3, h - 3);  // (1, 1) up to (w - 2, h - 2)
}

void DrawStyle5(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  struct Lit {
    Colour from, to;
  };
  std::optional<Lit> lit;
  if (f.checked) lit = f.pointer_inside ? Lit{0x4E91FE, 0x8ED3FF} : Lit{0x8CD5FF, 0x55ADFF};
  else if (f.enabled && f.state == 1) lit = Lit{0xCCF4FF, 0x91D0FF};
  else if (f.enabled && f.state == 2) lit = Lit{0x4E91FE, 0x8ED3FF};
  if (!lit) {
    // A glass step at the middle: the pale blend fades into the lightened face, then the face into the shade.
    const Colour light = Shift(f.base, 0.08f);
    Halves(c, f, BlendColors(kWhite, light), light, f.base, Shift(f.base, -0.15f));
    content();
    return;
  }
  Band(c, 0, 0, f.width, f.height, lit->from, lit->to);
  content();
  c.Frame(0, 0, f.width, f.height, 0x800000);
}

void DrawStyle9(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const int w = f.width, h = f.height, state = f.enabled ? f.state : 0;
  const Colour b = f.base;
  struct Look {
    Colour upper_to, lower_from, lower_to, outer, line, corner;
  };
  const Look look = state == 2 ? Look{Shift(b, -0.1f), Shift(b, -0.1f), Shift(b, -0.05f), Shift(b, -0.23f),
                                      Shift(b, -0.4f), Shift(b, -0.1f)}
                               : Look{b, b, b, Shift(b, -0.2f), Shift(b, -0.25f),
                                      state == 1 ? Shift(b, -0.25f) : Shift(b, 0.05f)};
  Halves(c, f, kWhite, look.upper_to, look.lower_from, look.lower_to);
  content();
  c.Frame(1, 1, w - 2, h, kWhite);  // its bottom side falls below the button
  c.Frame(0, 0, w, h, look.outer);
  c.Line(2, h - 1, w - 2, h - 1, look.line);
  CornerPixels(c, f, look.corner);
  if (ShowsFocus(f)) c.FocusRect(3, 3, w - 6, h - 6);  // (3, 3) up to (w - 3, h - 3)
}

void DrawEdged(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const int state = f.enabled ? std::clamp(f.state, 0, 2) : 0;
  c.Fill(0, 0, f.width, f.height, state == 1 ? Shift(f.base, 0.02f) : f.base);
  content();
  constexpr std::array<int, 3> kEdgeByState = {5, 4, 10};  // raised, raised inner only, sunken
  DrawEdge(c, f, kEdgeByState[std::size_t(state)]);
  if (state == 2 && (f.style == 0 || f.style == 1 || f.style == 12))
    c.Frame(0, 0, f.width, f.height, SystemColour(c, 6));  // the window frame round a pressed button
  if ((f.style == 0 || f.style == 11) && ShowsFocus(f)) c.FocusRect(3, 3, f.width - 6, f.height - 6);
}

void DrawTabledStyle(PixelCanvas& c, const ButtonFace& f, const FaceContent& content) {
  const Recipe& recipe = RecipeOf(f.style == 13 ? 2 : f.style);
  const Look& look = recipe.looks[std::size_t(f.enabled ? std::clamp(f.state, 0, 2) : 0)];
  const Colour shade = SystemColour(c, 16);
  const auto tone = [&](const Tone& t) {
    return Shift(t.colour == kBase ? f.base : t.colour == kShade ? shade : t.colour, t.shift);
  };
  Halves(c, f, tone(look.upper_from), tone(look.upper_to), tone(look.lower_from), tone(look.lower_to));
  content();
  if (look.outer.colour != kNone) c.Frame(0, 0, f.width, f.height, tone(look.outer));
  if (look.inner.colour != kNone) c.Frame(1, 1, f.width - 2, f.height - 2, tone(look.inner));
  if (RegionCorner(f.style) > 0 && look.outer.colour != kNone)
    CornerPixels(c, f, BlendColors(tone(look.outer), tone(look.upper_from)));
}

}  // namespace quillet
