#include "ui/form.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "headless/headless_ui.h"
#include "headless/recording_painter.h"
#include "ui/control_array.h"

namespace quillet::testing {
namespace {

class TestForm : public Form {
 public:
  explicit TestForm(Ui& ui) : Form(ui, FormArgs{"TestForm", {0, 0, 3000, 3000}}) {
    AddVisual(back);
    AddVisual(front);
  }
  ~TestForm() override {
    RemoveVisual(back);
    RemoveVisual(front);
  }
  Label back{"back", {0, 0, 1000, 1000}, "back"};
  Label front{"front", {500, 500, 1000, 1000}, "front"};
  std::vector<std::string> events;
  int loads = 0, unloads = 0;

 protected:
  void Form_Load() override { ++loads; }
  void Form_Unload() override { ++unloads; }
};

TEST(Form, HitTestsFromTheFrontAndSkipsHiddenControls) {
  HeadlessUi ui;
  TestForm f(ui);
  EXPECT_EQ(f.HitTest(700, 700), &f.front);
  EXPECT_EQ(f.HitTest(100, 100), &f.back);
  EXPECT_EQ(f.HitTest(2000, 2000), nullptr);
  f.BringToFront(f.back);
  EXPECT_EQ(f.HitTest(700, 700), &f.back);
  f.back.SetVisible(false);
  EXPECT_EQ(f.HitTest(700, 700), &f.front);
}

TEST(Form, PaintsBackgroundThenVisibleControlsBackToFront) {
  HeadlessUi ui;
  TestForm f(ui);
  RecordingPainter r;
  f.Paint(r);
  ASSERT_FALSE(r.ops.empty());
  EXPECT_EQ(r.ops[0].kind, RecordingPainter::Op::kFill);
  EXPECT_EQ(r.ops[0].colour, f.BackColor());
  EXPECT_EQ(r.ops[0].rect.width, 3000);
  EXPECT_EQ(r.Texts(), (std::vector<std::string>{"back", "front"}));
  f.front.SetVisible(false);
  r.ops.clear();
  f.Paint(r);
  EXPECT_EQ(r.Texts(), (std::vector<std::string>{"back"}));
}

TEST(Form, MouseGoesToTheControlInItsOwnCoordinatesAndStaysWhileHeld) {
  HeadlessUi ui;
  TestForm f(ui);
  std::vector<std::string> seen;
  f.back.on_mouse_move = [&](const MouseArgs& a) { seen.push_back("back " + std::to_string(a.x)); };
  f.front.on_mouse_move = [&](const MouseArgs& a) { seen.push_back("front " + std::to_string(a.x)); };
  int clicks = 0;
  f.back.on_click = [&] { ++clicks; };
  f.DispatchMouse(MouseEventKind::kMove, {0, 0, 100, 100});
  f.DispatchMouse(MouseEventKind::kDown, {kLeftButton, 0, 100, 100});
  f.DispatchMouse(MouseEventKind::kMove, {kLeftButton, 0, 700, 700});  // over front, but captured
  f.DispatchMouse(MouseEventKind::kUp, {kLeftButton, 0, 200, 200});
  f.DispatchMouse(MouseEventKind::kMove, {0, 0, 700, 700});
  EXPECT_EQ(seen, (std::vector<std::string>{"back 100", "back 700", "front 200"}));
  EXPECT_EQ(clicks, 1);
  // A right-button release is no click.
  f.DispatchMouse(MouseEventKind::kDown, {kRightButton, 0, 100, 100});
  f.DispatchMouse(MouseEventKind::kUp, {kRightButton, 0, 100, 100});
  EXPECT_EQ(clicks, 1);
}

TEST(Form, AnErrorInAHandlerIsReportedAndTheFormGoesOn) {
  HeadlessUi ui;
  TestForm f(ui);
  f.back.on_click = [] { throw std::runtime_error("Disk not ready"); };
  int moves = 0;
  f.back.on_mouse_move = [&](const MouseArgs&) { ++moves; };
  f.DispatchMouse(MouseEventKind::kDown, {kLeftButton, 0, 10, 10});
  f.DispatchMouse(MouseEventKind::kUp, {kLeftButton, 0, 10, 10});
  f.DispatchMouse(MouseEventKind::kMove, {0, 0, 10, 10});
  EXPECT_EQ(ui.errors, (std::vector<std::string>{"Disk not ready"}));
  EXPECT_EQ(moves, 1);
}

TEST(Form, LoadShowUnloadAndEndingTheProgram) {
  HeadlessUi ui;
  TestForm a(ui), b(ui);
  a.Show();
  EXPECT_EQ(a.loads, 1);
  EXPECT_TRUE(a.Visible());
  a.Show();
  EXPECT_EQ(a.loads, 1);
  b.Load();
  EXPECT_FALSE(b.Visible());
  EXPECT_EQ(ui.OpenForms().size(), 2u);
  ui.EndProgram();
  EXPECT_EQ(a.unloads, 1);
  EXPECT_EQ(b.unloads, 1);
  EXPECT_TRUE(ui.OpenForms().empty());
  EXPECT_TRUE(ui.loop_quit);
}

TEST(Form, MinimisingReportsAResize) {
  HeadlessUi ui;
  struct Resized : TestForm {
    using TestForm::TestForm;
    int resizes = 0;
    void Form_Resize() override { ++resizes; }
  } f(ui);
  f.Show();
  f.SetWindowState(kMinimized);
  f.SetWindowState(kMinimized);
  EXPECT_EQ(f.resizes, 1);
}

TEST(ControlArray, LoadsCopiesOfTheTemplateHiddenAndRefusesDuplicates) {
  HeadlessUi ui;
  TestForm f(ui);
  auto templ = std::make_unique<Label>("CaptionL", TwipsRect{510, -195, 1815, 720}, "x", false);
  templ->SetFont(Font{"Arial", 10, true});
  ControlArray<Label> labels(
      std::move(templ),
      [](const Label& t, int) {
        auto l = std::make_unique<Label>(t.Name(), t.Bounds(), t.Caption());
        l->SetFont(t.Font());
        return l;
      },
      [&](Label& l) { f.AddVisual(l); }, [&](Label& l) { f.RemoveVisual(l); });
  EXPECT_EQ(labels.Count(), 1);
  EXPECT_TRUE(labels.Load(1));
  EXPECT_FALSE(labels.Load(1));
  EXPECT_FALSE(labels.Load(0));
  EXPECT_FALSE(labels(1).Visible());
  EXPECT_EQ(labels(1).Font().name, "Arial");
  EXPECT_EQ(labels(1).Left(), 510);
  EXPECT_EQ(f.Visuals().size(), 4u);
  EXPECT_TRUE(labels.Unload(1));
  EXPECT_FALSE(labels.Unload(1));
  EXPECT_FALSE(labels.Unload(0));
  EXPECT_EQ(f.Visuals().size(), 3u);
  EXPECT_THROW(labels(1), std::out_of_range);
}

}  // namespace
}  // namespace quillet::testing
