// The owner-drawn label: what it draws, where, in which colour and order.
#include "widgets/Caption.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "headless/headless_ui.h"
#include "headless/recording_painter.h"

namespace quillet::testing {
namespace {

using Op = DisplayList::Op;

class CaptionTest : public ::testing::Test {
 protected:
  // A label 2000 x 600 with a plain font: letters 100 twips wide, lines 240 high.
  Caption& Make(std::string text = "AB") {
    caption_ = std::make_unique<Caption>("Caption1", TwipsRect{300, 150, 2000, 600}, metrics_);
    caption_->InitProperties("Caption1", Font{"Plain", 10, false});
    caption_->SetCaption(std::move(text));
    return *caption_;
  }
  // The texts printed, with where and in which colour.
  struct Print {
    int x, y;
    Colour colour;
    std::string text;
    bool operator==(const Print&) const = default;
  };
  std::vector<Print> Prints() const {
    std::vector<Print> prints;
    for (const Op& op : caption_->Surface().ops)
      if (op.kind == Op::kTextAt) prints.push_back({op.x1, op.y1, op.colour, op.text});
    return prints;
  }
  std::vector<Op> Lines() const {
    std::vector<Op> lines;
    for (const Op& op : caption_->Surface().ops)
      if (op.kind == Op::kLine) lines.push_back(op);
    return lines;
  }

  HeadlessTextMetrics metrics_;
  std::unique_ptr<Caption> caption_;
};

TEST_F(CaptionTest, ShadowThenNineFoldOutlineThenLettersInTheirColours) {
  Caption& c = Make();
  c.SetCaptionOUTColor(0x102030);
  c.SetCaptionINColor(0x00FFFF);
  // Left aligned: x 0, y centred on the 600 twips (300 - 120); the outline moves it by 15, 15.
  const std::vector<Print> expected = {
      {45, 225, 0x808080, "AB"},                                                                     // shadow
      {0, 180, 0x102030, "AB"},  {0, 195, 0x102030, "AB"},  {15, 180, 0x102030, "AB"},
      {0, 210, 0x102030, "AB"},  {30, 180, 0x102030, "AB"}, {30, 195, 0x102030, "AB"},
      {30, 195, 0x102030, "AB"}, {15, 210, 0x102030, "AB"}, {30, 210, 0x102030, "AB"},  // outline
      {15, 195, 0x00FFFF, "AB"},                                                                     // letters
  };
  EXPECT_EQ(Prints(), expected);
}

// Nine prints of the outline, then the letters.
std::vector<Colour> Ring(Colour outline, Colour letters) {
  std::vector<Colour> colours(9, outline);
  colours.push_back(letters);
  return colours;
}

TEST_F(CaptionTest, LookOfTheLettersByTheirSwitches) {
  const struct {
    const char* name;
    bool enabled, shadow, outline, hollow;
    std::vector<Colour> colours;  // of every print, in order
  } cases[] = {
      {"plain", true, false, false, false, {0xFFFFFF}},
      {"hollow letters take the ground's colour", true, false, true, true, Ring(0, 0x8000000F)},
      {"disabled: no shadow, grey outline, pale letters", false, true, true, false, Ring(0x808080, 0xE0E0E0)},
  };
  for (const auto& t : cases) {
    Caption& c = Make();
    c.SetEnabled(t.enabled);
    c.SetCaptionShadowed(t.shadow);
    c.SetCaptionOutlined(t.outline);
    c.SetCaptionTransparent(t.hollow);
    std::vector<Colour> colours;
    for (const Print& p : Prints()) colours.push_back(p.colour);
    EXPECT_EQ(colours, t.colours) << t.name;
  }
}

TEST_F(CaptionTest, AlignmentPlacesTheTextWithAndWithoutShadow) {
  // Text "AB" is 200 x 240; the letters' position without the outline's move.
  const struct {
    int align;
    bool shadow;
    int x, y;
  } cases[] = {
      {0, false, 0, 180},   {1, false, 900, 180},  {1, true, 877, 165},
      {2, false, 1800, 180}, {2, true, 1755, 150}, {7, false, 0, 0},
  };
  for (const auto& t : cases) {
    Caption& c = Make();
    c.SetCaptionOutlined(false);
    c.SetCaptionShadowed(t.shadow);
    c.SetCaptionAligmend(t.align);
    const Print letters = Prints().back();
    EXPECT_EQ(std::pair(letters.x, letters.y), std::pair(t.x, t.y)) << t.align << " shadow " << t.shadow;
  }
}

TEST_F(CaptionTest, BordersDrawTheirLayersAndInsetTheText) {
  Caption& c = Make();
  c.SetCaptionOutlined(false);
  c.SetCaptionShadowed(false);
  const struct {
    int style, inset;
    std::size_t lines;  // each run draws its border twice
  } cases[] = {{0, 0, 0}, {1, 30, 16}, {3, 45, 24}, {4, 60, 32}, {5, 15, 8}, {7, 60, 32}, {9, 0, 0}};
  for (const auto& t : cases) {
    c.SetBorders(t.style);
    EXPECT_EQ(Lines().size(), t.lines) << t.style;
    EXPECT_EQ(Prints().back().x, t.inset) << t.style;
  }
  // Style 2, outer to inner: top and left in highlight then dark shadow;
  // right highlight then dark shadow, bottom the other way round.
  c.SetBorders(2);
  std::vector<std::tuple<int, int, int, int, Colour>> drawn;
  for (const Op& l : Lines()) drawn.emplace_back(l.x1, l.y1, l.x2, l.y2, l.colour);
  drawn.resize(8);  // the first of the two borders
  EXPECT_EQ(drawn, (decltype(drawn){{0, 0, 2000, 0, 0x80000014u},     {0, 0, 0, 600, 0x80000014u},
                                    {0, 15, 2000, 15, 0x80000015u},   {15, 0, 15, 600, 0x80000015u},
                                    {1985, 0, 1985, 600, 0x80000014u}, {1970, 0, 1970, 600, 0x80000015u},
                                    {0, 585, 2000, 585, 0x80000015u}, {0, 570, 2000, 570, 0x80000014u}}));
}

TEST_F(CaptionTest, AGradientStartsFromWhereTheLastRedrawLeftItsOrigin) {
  Caption& c = Make();
  c.SetBorders(3);  // inset 45
  c.SetCaptionGradientStart(Rgb(0, 0, 0));
  c.SetCaptionGradientEnds(Rgb(200, 100, 0));
  const auto first_line = [&] { return Lines().at(0); };
  // Turning the gradient on is the first redraw that draws one: its origin
  // is the inset the border left at the end of the redraw before.
  c.SetCaptionGradientTyp(1);
  Op line = first_line();
  EXPECT_EQ(std::tuple(line.x1, line.y1, line.y2), std::tuple(46, 45, 555));
  // Across: span = inner width + origin = 1910 + 45; colour at i = 1.
  EXPECT_EQ(line.colour, Rgb(0, 0, 0));
  const Op last = Lines().at(127);  // i = 1906, the last of 1 to 1910 step 15
  EXPECT_EQ(std::tuple(last.x1, last.colour), std::tuple(1951, Rgb(194, 97, 0)));

  // A control whose first redraw has the gradient on starts at 0.
  caption_ = std::make_unique<Caption>("Caption2", TwipsRect{0, 0, 2000, 600}, metrics_);
  PropertyBag bag;
  bag.WriteProperty("Borders", std::int64_t{3});
  bag.WriteProperty("CaptionGradientTyp", std::int64_t{2});
  caption_->ReadProperties(bag, Font{});
  line = first_line();
  EXPECT_EQ(std::tuple(line.x1, line.y1, line.x2), std::tuple(0, 1, 2000));  // origin and insets still 0
  EXPECT_EQ(line.colour, Rgb(254, 254, 254));
  caption_->Refresh();
  line = first_line();
  EXPECT_EQ(std::tuple(line.x1, line.y1, line.x2), std::tuple(45, 46, 1955));
  // Swapped: the end colour comes first.
  caption_->SetCaptionGradientchangeColor(true);
  EXPECT_EQ(first_line().colour, Rgb(64, 64, 64));
}

TEST_F(CaptionTest, VerticalAndReversedLetterOrdersStayConsistentWithEachOther) {
  Caption& c = Make("ABC");
  const struct {
    const char* step;
    std::function<void()> act;
    int type;
    bool vertical;
  } steps[] = {
      {"type 2 turns vertical on", [&] { c.SetDisplayType(2); }, 2, true},
      {"vertical off gives 0", [&] { c.SetDisplayVertikal(false); }, 0, false},
      {"type 1", [&] { c.SetDisplayType(1); }, 1, false},
      {"vertical on gives 3", [&] { c.SetDisplayVertikal(true); }, 3, true},
      {"type 0 turns vertical off", [&] { c.SetDisplayType(0); }, 0, false},
      {"type 3", [&] { c.SetDisplayType(3); }, 3, true},
      {"vertical off gives 1", [&] { c.SetDisplayVertikal(false); }, 1, false},
  };
  for (const auto& s : steps) {
    s.act();
    EXPECT_EQ(std::pair(c.DisplayType(), c.DisplayVertikal()), std::pair(s.type, s.vertical)) << s.step;
  }
  // The letters as drawn, by type: vertical ones one a line, centred, from y = 30.
  c.SetCaptionOutlined(false);
  c.SetCaptionShadowed(false);
  c.SetDisplayType(1);
  EXPECT_EQ(Prints().back().text, "CBA");
  c.SetDisplayType(3);
  EXPECT_EQ(Prints(), (std::vector<Print>{{950, 0, 0xFFFFFF, "C"}, {950, 240, 0xFFFFFF, "B"}, {950, 480, 0xFFFFFF, "A"}}));
  c.SetCaptionOutlined(true);  // the letters' line starts 30 lower; their width grows by 30
  c.SetDisplayType(2);
  EXPECT_EQ(Prints()[9], (Print{935, 30, 0xFFFFFF, "A"}));
}

TEST_F(CaptionTest, MeasuresAndAutoSizeCountTheOutline) {
  Caption& c = Make("ABCD");
  EXPECT_EQ(c.TextHeight("ABCD"), 270);
  EXPECT_EQ(c.TextWidth("ABCD"), 430);
  c.SetBorders(1);
  c.SetAutoSize(true);
  EXPECT_EQ(std::pair(c.Width(), c.Height()), std::pair(400 + 30 + 60, 240 + 30 + 60));
  c.SetCaptionOutlined(false);
  EXPECT_EQ(c.TextHeight("ABCD"), 240);
  c.SetDisplayVertikal(true);  // widest letter and the sum of the letters' heights
  EXPECT_EQ(std::pair(c.Width(), c.Height()), std::pair(100 + 60, 960 + 60));
}

TEST_F(CaptionTest, TheGroundIsSeeThroughOnlyWhereItIsExactlyBackColor) {
  Caption& c = Make();
  c.SetBackColor(0x123456);
  DisplayList window;
  c.Paint(window);
  ASSERT_GE(window.ops.size(), 2u);
  EXPECT_EQ(window.ops.front().kind, Op::kPushLayer);
  EXPECT_EQ(window.ops.front().colour, 0x123456u);
  EXPECT_EQ(window.ops.back().key, std::optional<Colour>(0x123456));
  // What was drawn lands at the control's place on the form.
  EXPECT_EQ(window.ops[1].x1, 300 + 45);
  c.SetTransparent(false);
  window.Clear();
  c.Paint(window);
  EXPECT_EQ(window.ops.back().kind, Op::kPopLayer);
  EXPECT_EQ(window.ops.back().key, std::nullopt);
}

TEST_F(CaptionTest, StoredPropertiesComeBackWithTheirDefaults) {
  Caption& c = Make("Drive");
  c.SetBorders(4);
  c.SetTransparent(false);
  c.SetCaptionINColor(0x00FF00);
  c.SetCaptionShadowed(false);
  c.SetFont(Font{"Verdana", 9, true});
  c.SetDisplayType(3);
  PropertyBag bag;
  c.WriteProperties(bag);
  Caption copy("copy", {}, metrics_);
  copy.ReadProperties(bag, Font{});
  EXPECT_EQ(copy.CaptionText(), "Drive");
  EXPECT_EQ(copy.Borders(), 4);
  EXPECT_FALSE(copy.Transparent());
  EXPECT_EQ(copy.CaptionINColor(), 0x00FF00u);
  EXPECT_FALSE(copy.CaptionShadowed());
  EXPECT_EQ(copy.Font(), (Font{"Verdana", 9, true}));
  EXPECT_EQ(std::pair(copy.DisplayType(), copy.DisplayVertikal()), std::pair(3, true));
  EXPECT_TRUE(bag.Has("Transparent"));  // the key's own case

  Caption empty("empty", {}, metrics_);
  empty.ReadProperties(PropertyBag{}, Font{"Container", 8, false});
  EXPECT_EQ(empty.CaptionText(), "0");
  EXPECT_EQ(empty.Font().name, "Container");
  EXPECT_TRUE(empty.Transparent() && empty.CaptionOutlined() && empty.CaptionShadowed() && empty.Enabled());
  EXPECT_EQ(std::tuple(empty.BackColor(), empty.CaptionGradientEnds(), empty.CaptionINColor()),
            std::tuple(0x8000000Fu, 0x404040u, 0xFFFFFFu));
}

}  // namespace
}  // namespace quillet::testing
