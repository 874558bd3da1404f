// The button's drawing: colour helpers, schemes and regions, and what the
// faces and their content put on a form, read back pixel by pixel.
#include "widgets/button_paint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "headless/headless_ui.h"
#include "headless/recording_painter.h"

namespace quillet::testing {
namespace {

using Op = DisplayList::Op;
constexpr int kLeft = 300, kTop = 150, kScale = 15, kW = 40, kH = 20;
constexpr Colour kBase = 0x80A0C0, kMarker = 0x123456, kWhite = 0xFFFFFF, kBlack = 0;

using Pixels = std::vector<std::uint32_t>;

Colour S(Colour c, float amount) { return ShiftColor(c, amount); }
Colour FromArgb(std::uint32_t p) { return Rgb(int(p >> 16) & 0xFF, int(p >> 8) & 0xFF, int(p) & 0xFF); }

TEST(ButtonPaintColours, ShiftBlendLighten) {
  const struct { Colour colour; float amount; Colour expected; } shifts[] = {
      {0x123456, 0.0f, 0x123456}, {0xFFFFFF, 0.1f, 0xFFFFFF}, {0x000000, -0.1f, 0x000000},  // identity, limits
      {0x00FF05, 0.1f, Rgb(30, 255, 25)},  // a dark channel rises, a full one stays at 255
      {0xFF0000, -0.1f, Rgb(0, 0, 229)},   // 255 - 25.5 truncated; empty channels stay at 0
      {0x0A0A0A, 0.05f, 0x161616}, {0x646464, -0.02f, 0x5E5E5E},  // 10 + 12.75; 100 - 5.1 = 94.9
      {0x646464, -0.2f, 0x313131},                                 // 0.2 x 255 is 51 in single precision
  };
  for (const auto& s : shifts) EXPECT_EQ(ShiftColor(s.colour, s.amount), s.expected) << std::hex << s.colour;
  // Halves go to the even neighbour (127.5 to 128, 2.5 to 2, 1.5 to 2), channel by channel.
  const struct { Colour a, b, expected; } blends[] = {
      {0xFFFFFF, 0x000000, 0x808080}, {0x020202, 0x030303, 0x020202}, {0x010101, 0x020202, 0x020202},
      {0x0000FF, 0xFF0100, 0x800080}};
  for (const auto& b : blends) EXPECT_EQ(BlendColors(b.a, b.b), b.expected) << std::hex << b.a;
  const std::map<int, int> lighten = {{0, 0}, {100, 114}, {221, 253}, {222, 255}, {255, 255}};
  for (const auto& [v, expected] : lighten) EXPECT_EQ(LightenByte(v), expected) << v;
}

TEST(ButtonPaintColours, TranslateColorThroughThePainter) {
  struct : DisplayList {
    Colour Resolve(Colour c) const override { return c == 0x8000000F ? 0xABCDEF : 0x111111; }  // a host's own colours
  } painter;
  const std::map<Colour, Colour> cases = {{0x123456, 0x123456},          {0x8000000F, 0xABCDEF},
                                          {0x8000001E, 0x111111},        {0x8000001F, kUntranslatable},
                                          {0x40000000, kUntranslatable}, {0x80010005, kUntranslatable}};
  for (const auto& [c, expected] : cases) EXPECT_EQ(TranslateColor(c, painter), expected) << std::hex << c;
}

TEST(ButtonPaintStyle, BackColorFocusFlagAndRegion) {
  constexpr Colour F = 0xF0F0F0, U = 0x010203;  // the button face; "unchanged" keeps the current colour
  const struct { std::vector<int> styles; std::array<Colour, 4> by_scheme; } rows[] = {
      {{0, 1, 4, 6, 7, 11, 12}, {F, F, F, F}},
      {{2}, {0xE7EBEC, 0xDBEEF3, 0xFCF1F0, U}},
      {{3}, {0xFDECE0, 0xDEEDE8, 0xE3E3E3, U}},  // 0xD4 + 15.3
      {{5}, {0xFCE1CA, 0xBAD6D4, 0xE0C4C6, U}},  // each channel + 38.25
      {{8, 10}, {0xFFD1AD, 0xBAD6D4, 0xE3DFE0, U}},
      {{9}, {0xFFD1AD, 0xBAD6D4, 0xE1D6D5, U}},
      {{13}, {U, U, U, U}},
  };
  for (const auto& row : rows)
    for (int style : row.styles)
      for (int scheme : {0, 1, 2, 3, 7, -1})  // 3, 7 and -1 are "any other scheme"
        EXPECT_EQ(SchemeBackColor(style, scheme, U, F), row.by_scheme[scheme < 0 ? 3 : std::min<std::size_t>(scheme, 3)])
            << style << "/" << scheme;
  const std::map<int, int> rounded = {{2, 3}, {3, 3}, {7, 3}, {9, 3}, {6, 4}, {10, 4}};
  for (int style = 0; style <= 13; ++style) {
    EXPECT_EQ(SchemeShowsFocusRect(style), style == 0 || style == 1 || style == 9) << style;
    EXPECT_EQ(RegionCorner(style), rounded.contains(style) ? rounded.at(style) : 0) << style;
  }
  const std::vector<PixelPoint> corners = {{0, 0}, {9, 0}, {0, 5}, {9, 5}};
  EXPECT_EQ(RegionCutouts(3, 10, 6), corners);
  EXPECT_EQ(RegionCutouts(4, 10, 6), corners);
  EXPECT_TRUE(RegionCutouts(0, 10, 6).empty());
}

TEST(ButtonPaintCanvas, PixelsMeetWithoutGapsAtAnyScale) {
  DisplayList list;
  const PixelCanvas canvas(list, 7, 3, 1440.0 / 110);  // 13.09 twips a pixel
  for (int x = 0; x < 11; ++x) EXPECT_EQ(canvas.ToTwips(x, x, 1, 1).right(), canvas.ToTwips(x + 1, 0, 1, 1).left) << x;
  EXPECT_EQ(canvas.ToTwips(0, 0, 11, 11), (TwipsRect{7, 3, 144, 144}));
}

// The recorded drawing as the button's pixels; whatever lands outside the button fails.
std::vector<Colour> Raster(const DisplayList& list) {
  std::vector<Colour> pixels(kW * kH, 0xFF000000);
  const auto set = [&pixels](int x, int y, Colour c) {
    if (x < 0 || y < 0 || x >= kW || y >= kH) return ADD_FAILURE() << "drawn outside at " << x << "," << y;
    pixels[std::size_t(y * kW + x)] = c;
  };
  for (const Op& op : list.ops) {
    const int x = (op.rect.left - kLeft) / kScale, y = (op.rect.top - kTop) / kScale, w = op.rect.width / kScale;
    for (int i = 0; op.kind == Op::kFill && i < w * op.rect.height / kScale; ++i) set(x + i % w, y + i / w, op.colour);
    for (int i = 0; op.kind == Op::kPicture && i < op.picture->width * op.picture->height; ++i)
      if (const auto p = op.picture->pixels[std::size_t(i)]; p >> 24 == 0xFF)
        set(x + i % op.picture->width, y + i / op.picture->width, FromArgb(p));
    for (int px = (op.x1 - kLeft) / kScale, py = (op.y1 - kTop) / kScale;
         op.kind == Op::kLine && (px != (op.x2 - kLeft) / kScale || py != (op.y2 - kTop) / kScale);
         op.y1 == op.y2 ? ++px : ++py)
      set(px, py, op.colour);
  }
  return pixels;
}

// A gradient picture: where it stands, its colours at the start and the end, and whether they run across or down.
struct Bar { int x, y, w, h; Colour first, last; bool across = false; bool operator==(const Bar&) const = default; };
std::vector<Bar> Bars(const DisplayList& list) {
  std::vector<Bar> bars;
  for (const Op& op : list.ops) {
    const Picture* p = op.picture.get();
    if (!p || !std::ranges::all_of(p->pixels, [](auto px) { return px >> 24 == 0xFF; })) continue;  // focus dots
    const auto at = [p](int x, int y) { return FromArgb(p->pixels[std::size_t(y * p->width + x)]); };
    const bool across = at(0, 0) != at(p->width - 1, 0);
    bars.push_back({(op.rect.left - kLeft) / kScale, (op.rect.top - kTop) / kScale, p->width, p->height, at(0, 0),
                    across ? at(p->width - 1, 0) : at(0, p->height - 1), across});
  }
  return bars;
}

struct Dot { int x, y; Colour colour; };
// The outer and inner frames at the middle of each side, the corner pixels, and the content in the middle.
std::vector<Dot> Framed(Colour outer, Colour inner, Colour corner, std::vector<Dot> more = {}) {
  std::vector<Dot> dots = {{20, 0, outer},  {0, 9, outer},   {39, 9, outer},  {1, 19, outer},  {20, 1, inner},
                           {1, 9, inner},   {38, 9, inner},  {1, 1, corner},  {38, 1, corner}, {1, 18, corner},
                           {38, 18, corner}, {20, 9, kMarker}};
  dots.insert(dots.end(), more.begin(), more.end());
  return dots;
}

struct FaceCase { const char* name; ButtonFace face; std::vector<Bar> bars; std::vector<Dot> dots; };

void CheckFaces(const std::vector<FaceCase>& cases) {
  for (FaceCase c : cases) {
    SCOPED_TRACE(c.name);
    DisplayList list;
    PixelCanvas canvas(list, kLeft, kTop, kScale);
    c.face.base = kBase, c.face.width = kW, c.face.height = kH;
    // The content: a stripe across the middle, over the bands and under the frames.
    DrawButtonFace(canvas, c.face, [&] { canvas.Fill(0, 8, kW, 4, kMarker); });
    EXPECT_EQ(Bars(list), c.bars);
    const std::vector<Colour> pixels = Raster(list);
    for (const Dot& d : c.dots) EXPECT_EQ(pixels[std::size_t(d.y * kW + d.x)], d.colour) << d.x << "," << d.y;
  }
}

TEST(ButtonPaintFace, Style3GlassByState) {
  const Colour kOuter = 0x707070, kCorner = 0xBE965F, kEdgeLow = S(0xFDE1AC, 0.01f);
  const Colour kUpEdge = S(0xE6C891, 0.02f), kUpFace = S(0xF6E4C2, -0.01f), kLowEdge = S(0xDCAB4E, 0.02f),
               kLowFace = S(0xF0D29A, -0.01f);
  const std::vector<Bar> normal = {{0, 0, 40, 10, S(kBase, 0.05f), kBase},
                                   {0, 10, 40, 10, S(kBase, -0.02f), S(kBase, -0.15f)}};
  CheckFaces({
      {"normal", {.style = 3}, normal, Framed(kOuter, kWhite, kCorner)},
      {"focused", {.style = 3, .focused = true}, normal, Framed(0xA77532, 0xFBD848, kCorner)},
      {"focus rectangle from (1, 1) up to (38, 18)", {.style = 3, .focused = true, .show_focus_rect = true}, normal,
       {{1, 1, kBlack}, {2, 1, 0xFBD848}, {1, 9, kBlack}, {37, 9, kBlack}, {37, 10, kMarker}, {38, 9, 0xFBD848}}},
      {"hot", {.style = 3, .state = 1},
       {{0, 0, 40, 10, 0xFFF7E4, 0xFFF3DA}, {0, 10, 40, 10, 0xFFE9C1, 0xFDE1AE},
        {1, 3, 5, 7, 0xFFEECD, 0xFFF7E4, true}, {34, 3, 5, 7, 0xFFF7E4, 0xFFEECD, true},
        {1, 10, 5, 7, 0xFAD68F, kEdgeLow, true}, {34, 10, 5, 7, kEdgeLow, 0xFAD68F, true}},
       Framed(0xA77532, kWhite, kCorner)},
      {"down", {.style = 3, .state = 2},
       {{0, 0, 40, 10, 0xF6E4C2, 0xF6E4C2}, {0, 10, 40, 10, 0xF0D29A, 0xF0D29A},
        {1, 0, 5, 10, kUpEdge, kUpFace, true}, {34, 0, 5, 10, kUpFace, kUpEdge, true},
        {1, 10, 5, 10, kLowEdge, kLowFace, true}, {34, 10, 5, 10, kLowFace, kLowEdge, true}},
       {{20, 0, 0x5C411D}, {39, 9, 0x5C411D}, {20, 19, 0x5C411D}, {20, 1, 0xB39C71}, {20, 2, 0xD6C6A9},
        {20, 3, 0xECD9B9}, {1, 5, 0xCFB073}, {1, 9, 0xCFB073}, {1, 10, 0xC5912B}, {1, 17, 0xC5912B},
        {1, 1, kCorner}, {38, 18, kCorner}, {38, 9, kMarker}}},
      {"disabled has its own look", {.style = 3, .state = 1, .enabled = false}, {},
       Framed(S(kBase, -0.25f), S(kBase, 0.25f), S(kBase, -0.03f), {{20, 5, S(kBase, 0.03f)}})},
  });
}

TEST(ButtonPaintFace, Style5ToolBarByState) {
  const Colour light = S(kBase, 0.08f), F = 0x800000;  // one band over the face inside a dark blue frame
  const std::vector<Dot> lit = {{20, 0, F}, {0, 9, F}, {39, 9, F}, {20, 19, F}, {20, 9, kMarker}};
  CheckFaces({
      {"hot", {.style = 5, .state = 1}, {{0, 0, 40, 20, 0xCCF4FF, 0x91D0FF}}, lit},
      {"down", {.style = 5, .state = 2}, {{0, 0, 40, 20, 0x4E91FE, 0x8ED3FF}}, lit},
      {"checked", {.style = 5, .state = 2, .checked = true}, {{0, 0, 40, 20, 0x8CD5FF, 0x55ADFF}}, lit},
      {"checked under the pointer", {.style = 5, .state = 2, .checked = true, .pointer_inside = true},
       {{0, 0, 40, 20, 0x4E91FE, 0x8ED3FF}}, lit},
      {"normal: two bands, no frame", {.style = 5},
       {{0, 0, 40, 10, BlendColors(kWhite, light), light}, {0, 10, 40, 10, kBase, S(kBase, -0.15f)}},
       {{0, 9, kMarker}, {20, 0, BlendColors(kWhite, light)}, {20, 19, S(kBase, -0.15f)}}},
  });
}

TEST(ButtonPaintFace, Style9SoftByState) {
  const std::vector<Bar> flat = {{0, 0, 40, 10, kWhite, kBase}, {0, 10, 40, 10, kBase, kBase}};
  // The inner frame reaches below the button; the outer frame and the line along the bottom cover its last row.
  const auto dots = [](Colour outer, Colour line, Colour corner) {
    return Framed(outer, kWhite, corner, {{2, 19, line}, {20, 19, line}, {37, 19, line}, {38, 19, outer}});
  };
  const auto normal = dots(S(kBase, -0.2f), S(kBase, -0.25f), S(kBase, 0.05f));
  CheckFaces({
      {"normal", {.style = 9}, flat, normal},
      {"disabled draws as normal", {.style = 9, .state = 1, .enabled = false}, flat, normal},
      {"hot: dark corners", {.style = 9, .state = 1}, flat,
       dots(S(kBase, -0.2f), S(kBase, -0.25f), S(kBase, -0.25f))},
      {"down", {.style = 9, .state = 2},
       {{0, 0, 40, 10, kWhite, S(kBase, -0.1f)}, {0, 10, 40, 10, S(kBase, -0.1f), S(kBase, -0.05f)}},
       dots(S(kBase, -0.23f), S(kBase, -0.4f), S(kBase, -0.1f))},
      {"focus rectangle from (3, 3) up to (37, 17)", {.style = 9, .focused = true, .show_focus_rect = true}, flat,
       {{3, 3, kBlack}, {3, 9, kBlack}, {3, 10, kMarker}, {36, 10, kBlack}, {36, 9, kMarker}, {37, 10, kMarker}}},
  });
}

TEST(ButtonPaintContent, PicturePlacesCaptionMovesAndThePressedPush) {
  // An 8 x 6 picture on the 40 x 20 face; "AB" measures 200 x 240 twips, 13 x 16 pixels: centred at (13, 2).
  const struct { int style, state, align, x, y, caption_x, caption_y; } cases[] = {
      {3, 0, 0, 16, 7, 13, 2},   // centre
      {3, 0, 1, 4, 7, 13, 2},    // left, 4 from the edge
      {3, 0, 3, 28, 10, -3, 2},  // right bottom; a centred caption moves 16 left
      {3, 0, 5, 16, 4, 13, 5},   // top; the caption moves down by half the picture
      {3, 0, 8, 4, 10, 13, -1},  // bottom left; the caption moves up by half
      {0, 2, 1, 5, 8, 14, 3},    // style 0 down: both pushed by (1, 1)
      {3, 2, 1, 4, 7, 13, 2},    // style 3 down: not pushed
  };
  HeadlessTextMetrics metrics;
  ButtonContent content{.caption = "AB", .font = {"Plain", 10, false}, .fore = 0x0000FF,
                        .picture = std::make_shared<const Picture>(Picture{8, 6, Pixels(48, 0xFF00FF00)})};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "style " << c.style << " state " << c.state << " align " << c.align);
    DisplayList list;
    PixelCanvas canvas(list, kLeft, kTop, kScale);
    content.picture_align = c.align;
    PaintContent(canvas, metrics, {.style = c.style, .state = c.state, .base = kBase, .width = kW, .height = kH},
                 content);
    ASSERT_EQ(list.ops.size(), 2u);
    EXPECT_EQ(list.ops[0].rect, (TwipsRect{kLeft + c.x * kScale, kTop + c.y * kScale, 8 * kScale, 6 * kScale}));
    EXPECT_EQ(std::tuple(list.ops[1].kind, list.ops[1].x1, list.ops[1].y1, list.ops[1].colour),
              std::tuple(Op::kTextAt, kLeft + c.caption_x * kScale, kTop + c.caption_y * kScale, Colour{0x0000FF}));
  }
}

TEST(ButtonPaintContent, TreatPictureMasksFadesAndGreys) {
  // Red (the mask colour, red in its low byte), blue, and a half see-through colour.
  const Picture picture{3, 1, {0xFFFF0000, 0xFF0000FF, 0x80102030}};
  ButtonContent content;
  content.mask_color = 0x0000FF;
  content.opacity = 102;  // 0.4
  EXPECT_EQ(TreatPicture(picture, content, true).pixels, (Pixels{0x00FF0000, 0x660000FF, 0x33102030}));
  content.use_mask_color = false;
  EXPECT_EQ(TreatPicture(picture, content, true).pixels[0], 0x66FF0000u);
  content.opacity = 255;
  const Picture grey = TreatPicture(picture, content, false);  // disabled: grey, alpha kept
  for (std::size_t i = 0; i < 3; ++i) {
    const Colour c = FromArgb(grey.pixels[i]);
    EXPECT_EQ(std::tuple(grey.pixels[i] >> 24, RedOf(c), GreenOf(c)),
              std::tuple(picture.pixels[i] >> 24, BlueOf(c), BlueOf(c))) << i;
  }
}

}  // namespace
}  // namespace quillet::testing
