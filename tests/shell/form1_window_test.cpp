#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "headless/recording_painter.h"
#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

using Form1Window = Form1Scenario;

// Caption1 sits at 60, 330 and Image5 at 2340, 720 in the form.
constexpr int kCaptionX = 100, kCaptionY = 400;
constexpr int kHandleX = 2345, kHandleY = 900;

TEST_F(Form1Window, DraggingTheUptimeLabelMovesTheBarAndHoveringSavesIt) {
  Form1& f = Start();
  Mouse(MouseEventKind::kMove, 0, kCaptionX, kCaptionY);  // grab point 40, 70 in the label
  // Only the left button alone drags.
  Mouse(MouseEventKind::kMove, kRightButton, kCaptionX + 500, kCaptionY + 500);
  Mouse(MouseEventKind::kMove, kLeftButton | kRightButton, kCaptionX + 500, kCaptionY + 500);
  EXPECT_EQ(std::pair(f.Left(), f.Top()), std::pair(1320, 5655));
  EXPECT_EQ(Setting("frmTop"), "5655");
  EXPECT_EQ(Setting("frmLeft"), "1320");
  Mouse(MouseEventKind::kDown, kLeftButton, kCaptionX, kCaptionY);
  // The window follows the pointer: the host reports positions in the moved window.
  Mouse(MouseEventKind::kMove, kLeftButton, kCaptionX + 300, kCaptionY - 150);
  EXPECT_EQ(f.Left(), 1620);
  EXPECT_EQ(f.Top(), 5505);
  Mouse(MouseEventKind::kMove, kLeftButton, kCaptionX + 15, kCaptionY);
  EXPECT_EQ(f.Left(), 1635);
  Mouse(MouseEventKind::kUp, kLeftButton, kCaptionX, kCaptionY);
  // A drag alone saves nothing; the next move without a button does.
  EXPECT_EQ(Setting("frmLeft"), "1320");
  Mouse(MouseEventKind::kMove, 0, kCaptionX, kCaptionY);
  EXPECT_EQ(Setting("frmLeft"), "1635");
  EXPECT_EQ(Setting("frmTop"), "5505");
}

TEST_F(Form1Window, EachHandleKeepsItsOwnGrabPoint) {
  Store("pt", "2");  // wide, so the handle strip shows
  Form1& f = Start();
  Mouse(MouseEventKind::kMove, 0, kHandleX, kHandleY);     // Image5 grab: 5, 180
  Mouse(MouseEventKind::kMove, 0, kCaptionX, kCaptionY);   // Caption1 grab: 40, 70
  Mouse(MouseEventKind::kDown, kLeftButton, kHandleX, kHandleY);
  Mouse(MouseEventKind::kMove, kLeftButton, kHandleX + 60, kHandleY + 30);
  EXPECT_EQ(f.Left(), 1380);
  EXPECT_EQ(f.Top(), 5685);
}

TEST_F(Form1Window, DoubleClickOnTheHandleHidesTheBarAndClosingThenKeepsThePosition) {
  Store("pt", "2");
  Store("frmTop", "3000");
  Store("frmLeft", "400");
  Form1& f = Start();
  f.Move({900, 1200, f.Width(), f.Height()});
  Mouse(MouseEventKind::kDblClick, kLeftButton, kHandleX, kHandleY);
  EXPECT_EQ(f.GetWindowState(), kMinimized);
  EXPECT_FALSE(f.Visible());
  EXPECT_TRUE(f.InTray());
  f.RequestClose();
  EXPECT_TRUE(ui.Ended());
  EXPECT_FALSE(f.Loaded());
  EXPECT_EQ(Setting("frmTop"), "3000");
  EXPECT_EQ(Setting("frmLeft"), "400");
}

TEST_F(Form1Window, TheExitButtonStopsTheRefreshSavesThePositionAndEnds) {
  Store("pt", "2");
  Form1& f = Start();
  f.Move({700, 800, f.Width(), f.Height()});
  Mouse(MouseEventKind::kDown, kLeftButton, 2400, 800);  // Image9
  Mouse(MouseEventKind::kUp, kLeftButton, 2400, 800);
  EXPECT_FALSE(f.Timer1.Enabled());
  EXPECT_TRUE(ui.Ended());
  EXPECT_TRUE(ui.loop_quit);
  EXPECT_TRUE(ui.OpenForms().empty());
  EXPECT_EQ(Setting("frmTop"), "800");
  EXPECT_EQ(Setting("frmLeft"), "700");
}

TEST_F(Form1Window, AClickThatLeavesTheExitButtonDoesNotEnd) {
  Store("pt", "2");
  Start();
  Mouse(MouseEventKind::kDown, kLeftButton, 2400, 800);
  Mouse(MouseEventKind::kUp, kLeftButton, 2400, 5000);
  EXPECT_FALSE(ui.Ended());
}

TEST_F(Form1Window, PaintsASeeThroughBarWithCardsAndTheUptimeStrip) {
  fake.clock.ticks = 3 * 3600000;
  Form1& f = Start();
  // The strip's ground as it shows: its layer's fill, unless that colour is keyed out.
  const auto strip_fill = [&](const RecordingPainter& p) -> std::optional<Colour> {
    using Op = RecordingPainter::Op;
    const auto layer = std::find_if(p.ops.begin(), p.ops.end(), [&](const Op& op) {
      return op.kind == Op::kPushLayer && op.rect.left == f.Caption1.Left() && op.rect.top == f.Caption1.Top();
    });
    if (layer == p.ops.end()) return std::nullopt;
    const auto pop = std::find_if(layer, p.ops.end(), [](const Op& op) { return op.kind == Op::kPopLayer; });
    if (pop == p.ops.end() || pop->key == layer->colour) return std::nullopt;
    return layer->colour;
  };
  RecordingPainter painter;
  f.Paint(painter);
  ASSERT_FALSE(painter.ops.empty());
  // The window's own ground is the key colour: only what stands on it shows.
  EXPECT_EQ(painter.ops[0].kind, RecordingPainter::Op::kFill);
  EXPECT_EQ(painter.ops[0].colour, kKeyColour);
  const auto texts = painter.Texts();
  EXPECT_NE(std::find(texts.begin(), texts.end(), "0 days, 3 hours, 0 minutes"), texts.end());
  EXPECT_NE(std::find(texts.begin(), texts.end(), "[C:] \r\n40.00GB free of 100.00GB"), texts.end());
  // No stored colour: the strip is opaque in its own design colour.
  ASSERT_TRUE(strip_fill(painter));
  EXPECT_NE(*strip_fill(painter), kKeyColour);
  // A stored colour, in any form a number takes, gives it that ground; "T" none.
  const struct {
    const char* text;
    std::optional<Colour> fill;
  } cases[] = {
      {"65280", Rgb(0, 255, 0)}, {"&H8080FF", 0x8080FFu}, {"&H8080FF&", 0x8080FFu}, {" 255 ", 255u},
      {"0x10", 255u},  // not a number here: the colour stays
      {"T", std::nullopt},
  };
  for (const auto& c : cases) {
    f.Text4.SetText(c.text);
    painter.Clear();
    f.Paint(painter);
    EXPECT_EQ(strip_fill(painter), c.fill) << c.text;
    EXPECT_EQ(Setting("COLOR"), c.text);
  }
}

TEST_F(Form1Window, ARightPressOnTheUptimeStripOpensTheComputerFolder) {
  Start();
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 400);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 400);
  EXPECT_TRUE(fake.shell.calls.empty());
  Mouse(MouseEventKind::kDown, kRightButton, 100, 400);
  EXPECT_EQ(fake.shell.calls,
            (std::vector<FakeShell::Call>{{"", "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}", "", "", 5}}));
}

}  // namespace
}  // namespace quillet::testing
