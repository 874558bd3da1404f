#include <gtest/gtest.h>

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

TEST_F(Form1Window, OnlyTheLeftButtonDrags) {
  Form1& f = Start();
  Mouse(MouseEventKind::kMove, 0, kCaptionX, kCaptionY);
  Mouse(MouseEventKind::kMove, kRightButton, kCaptionX + 500, kCaptionY + 500);
  Mouse(MouseEventKind::kMove, kLeftButton | kRightButton, kCaptionX + 500, kCaptionY + 500);
  EXPECT_EQ(f.Left(), 1320);
  EXPECT_EQ(f.Top(), 5655);
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

TEST_F(Form1Window, ARefreshStartedInsideAScanLeavesConsistentResults) {
  Form1& f = Start();
  // A timer tick lands while the scan waits on a drive: the nested refresh runs to its end first.
  bool nested = false;
  ui.Post([&] {
    nested = true;
    f.Command1.Press();
  });
  fake.drives.drives['E'] = FakeDrives::Sized(8ull << 30, 1ull << 30, kDriveRemovable);
  f.Command1.Press();
  EXPECT_TRUE(nested);
  EXPECT_EQ(f.Text_ND.Text(), "3");
  EXPECT_EQ(f.Text1.Text(), "C:\\\r\nD:\\\r\nE:\\\r\n");
  EXPECT_TRUE(ui.errors.empty());
}

TEST_F(Form1Window, PaintsASeeThroughBarWithTheUptimeOnIt) {
  fake.clock.ticks = 3 * 3600000;
  Form1& f = Start();
  RecordingPainter painter;
  f.Paint(painter);
  ASSERT_FALSE(painter.ops.empty());
  EXPECT_EQ(painter.ops[0].kind, RecordingPainter::Op::kFill);
  EXPECT_EQ(painter.ops[0].colour, kKeyColour);
  EXPECT_EQ(painter.Texts(), (std::vector<std::string>{"0 days, 3 hours, 0 minutes"}));
  // No stored colour: the strip is opaque in its own design colour.
  ASSERT_EQ(painter.ops.size(), 3u);
  EXPECT_EQ(painter.ops[1].rect.left, 60);
  EXPECT_NE(painter.ops[1].colour, kKeyColour);
  // A stored colour gives the label an opaque background.
  f.Text4.SetText("65280");
  painter.ops.clear();
  f.Paint(painter);
  ASSERT_EQ(painter.ops.size(), 3u);
  EXPECT_EQ(painter.ops[1].colour, Rgb(0, 255, 0));
  // "T" makes it see-through.
  f.Text4.SetText("T");
  painter.ops.clear();
  f.Paint(painter);
  EXPECT_EQ(painter.ops.size(), 2u);
}

}  // namespace
}  // namespace quillet::testing
