#include "widgets/lumbutton.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "headless/headless_ui.h"
#include "ui/form.h"

namespace quillet {
namespace {

using testing::HeadlessUi;

// Three buttons side by side on a form; each writes its events into one log.
class ButtonTest : public ::testing::Test {
 protected:
  ButtonTest() : form(ui, FormArgs{"Test", {0, 0, 3000, 1000}}) {
    for (int i = 0; i < 3; ++i) {
      auto b = std::make_unique<lumbutton>("b" + std::to_string(i), TwipsRect{i * 600, 0, 450, 300}, ui);
      const std::string n = std::to_string(i);
      b->on_click = [this, n] { log.push_back("Click" + n); };
      b->on_dbl_click = [this, n] { log.push_back("DblClick" + n); };
      b->on_mouse_down = [this, n](const MouseArgs& a) { log.push_back("MouseDown" + n + ":" + std::to_string(a.button)); };
      b->on_mouse_up = [this, n](const MouseArgs& a) { log.push_back("MouseUp" + n + ":" + std::to_string(a.button)); };
      b->on_mouse_enter = [this, n] { log.push_back("MouseEnter" + n); };
      b->on_mouse_leave = [this, n] { log.push_back("MouseLeave" + n); };
      b->on_key_down = [this, n](int key, int) { log.push_back("KeyDown" + n + ":" + std::to_string(key)); };
      b->on_key_up = [this, n](int key, int) { log.push_back("KeyUp" + n + ":" + std::to_string(key)); };
      form.AddVisual(*b);
      buttons.push_back(std::move(b));
    }
    form.Show();
  }
  ~ButtonTest() override {
    for (auto& b : buttons) form.RemoveVisual(*b);
  }

  lumbutton& B(int i) { return *buttons[static_cast<std::size_t>(i)]; }
  // The pointer at a form point; the host's pointer follows it.
  void Mouse(MouseEventKind kind, int button, int x, int y) {
    ui.pointer = {x, y};
    form.DispatchMouse(kind, {button, 0, x, y});
  }
  void Key(KeyEventKind kind, int key, int shift = 0) { form.DispatchKey(kind, key, shift); }
  std::vector<std::string> Take() { return std::exchange(log, {}); }

  HeadlessUi ui;
  Form form;
  std::vector<std::unique_ptr<lumbutton>> buttons;
  std::vector<std::string> log;
};

TEST_F(ButtonTest, MouseClickNeedsTheReleaseOnTheButton) {
  Mouse(MouseEventKind::kMove, 0, 100, 100);
  EXPECT_EQ(B(0).ButtonState(), 1);
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  EXPECT_EQ(B(0).ButtonState(), 2);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 100);
  EXPECT_EQ(Take(), (std::vector<std::string>{"MouseEnter0", "MouseDown0:1", "Click0", "MouseUp0:1"}));

  // Pressed, dragged off and released outside: no click, the look back to normal.
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  Mouse(MouseEventKind::kMove, kLeftButton, 100, 700);
  EXPECT_EQ(B(0).ButtonState(), 0);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 700);
  EXPECT_EQ(Take(), (std::vector<std::string>{"MouseDown0:1", "MouseLeave0", "MouseUp0:1"}));
  EXPECT_EQ(B(0).ButtonState(), 0);

  // The right button: its events, no click.
  Mouse(MouseEventKind::kDown, kRightButton, 100, 100);
  Mouse(MouseEventKind::kUp, kRightButton, 100, 100);
  EXPECT_EQ(Take(), (std::vector<std::string>{"MouseDown0:2", "MouseUp0:2"}));
  EXPECT_EQ(B(0).ButtonState(), 0);
}

TEST_F(ButtonTest, SpaceClicksOnReleaseWhereverThePointerIsAndOtherKeysCancelIt) {
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 100);
  ASSERT_EQ(form.Focused(), &B(0));
  Take();
  // Space held while the pointer leaves: still a click on release, the look stays down till then.
  Key(KeyEventKind::kDown, kVkSpace);
  Key(KeyEventKind::kDown, kVkSpace);  // the key repeats while held
  Mouse(MouseEventKind::kMove, 0, 100, 700);
  EXPECT_EQ(B(0).ButtonState(), 2);
  Key(KeyEventKind::kUp, kVkSpace);
  EXPECT_EQ(B(0).ButtonState(), 0);
  EXPECT_EQ(Take(), (std::vector<std::string>{"KeyDown0:32", "KeyDown0:32", "MouseLeave0", "Click0", "KeyUp0:32"}));

  // Space, then another key: the press is cancelled.
  Key(KeyEventKind::kDown, kVkSpace);
  Key(KeyEventKind::kDown, 'A');
  EXPECT_EQ(B(0).ButtonState(), 0);
  Key(KeyEventKind::kUp, kVkSpace);
  EXPECT_EQ(Take(), (std::vector<std::string>{"KeyDown0:32", "KeyDown0:65", "KeyUp0:32"}));
  // Alt and space is the system menu's.
  Key(KeyEventKind::kDown, kVkSpace, kAltMask);
  EXPECT_EQ(B(0).ButtonState(), 0);
}

TEST_F(ButtonTest, EnterClicksAtOnceWithoutFlippingACheckButton) {
  B(0).SetMode(lumbutton::kCheckButton);
  form.SetFocus(&B(0));
  Key(KeyEventKind::kDown, kVkReturn);
  EXPECT_EQ(Take(), (std::vector<std::string>{"Click0", "KeyDown0:13"}));
  EXPECT_FALSE(B(0).Value());
  // A click and the space bar flip it.
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 100);
  EXPECT_TRUE(B(0).Value());
  Key(KeyEventKind::kDown, kVkSpace);
  Key(KeyEventKind::kUp, kVkSpace);
  EXPECT_FALSE(B(0).Value());
}

TEST_F(ButtonTest, ArrowKeysMoveTheFocusNotTheValue) {
  for (int i = 0; i < 3; ++i) B(i).SetMode(lumbutton::kOptionButton);
  form.SetFocus(&B(0));
  const struct {
    int key;
    int focused;
  } steps[] = {{kVkRight, 1}, {kVkDown, 2}, {kVkDown, 0}, {kVkLeft, 2}, {kVkUp, 1}};
  for (const auto& step : steps) {
    Key(KeyEventKind::kDown, step.key);
    EXPECT_EQ(form.Focused(), &B(step.focused)) << step.key;
  }
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(B(i).Value());
  // Tab goes on from there; a disabled button is passed by.
  B(2).SetEnabled(false);
  Key(KeyEventKind::kDown, kVkTab);
  EXPECT_EQ(form.Focused(), &B(0));
}

TEST_F(ButtonTest, OptionButtonsOfOneContainerClearEachOther) {
  for (int i = 0; i < 3; ++i) B(i).SetMode(lumbutton::kOptionButton);
  B(2).SetContainer(&B(2));  // a container of its own
  B(2).SetValue(true);
  for (const int pick : {1, 0, 1}) {
    Mouse(MouseEventKind::kDown, kLeftButton, pick * 600 + 100, 100);
    Mouse(MouseEventKind::kUp, kLeftButton, pick * 600 + 100, 100);
    EXPECT_EQ(B(0).Value(), pick == 0);
    EXPECT_EQ(B(1).Value(), pick == 1);
    EXPECT_TRUE(B(2).Value());
  }
  // Space on the focused one picks it too.
  form.SetFocus(&B(0));
  Key(KeyEventKind::kDown, kVkSpace);
  EXPECT_TRUE(B(0).Value());
  EXPECT_FALSE(B(1).Value());
}

TEST_F(ButtonTest, AMenuDismissedOnTheButtonStaysClosed) {
  int opened = 0, chosen = 0;
  B(0).SetPopupMenu({{{7, "Seven"}}}, 0, 0, 0, [&](int id) { chosen = id; });
  // The user clicks the button itself to dismiss the menu.
  ui.on_popup = [&](const PopupMenu&) {
    ++opened;
    ui.pointer = {100, 100};
    return 0;
  };
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(B(0).ButtonState(), 0);
  // The dismissing click reaches the button: it opens nothing and raises no MouseDown.
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 100);
  EXPECT_EQ(opened, 1);
  // The next click opens it again; a choice reaches the owner.
  ui.on_popup = [&](const PopupMenu& menu) {
    ++opened;
    return menu.items.at(0).id;
  };
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(chosen, 7);
  EXPECT_EQ(Take(), (std::vector<std::string>{"MouseUp0:1"}));
}

TEST_F(ButtonTest, TipShowsOnEnterUnlessDownAndGoesOnLeave) {
  B(1).SetToolTip("Lock");
  B(1).SetToolTipType(1);
  B(1).SetTooltipTitle("Quick");
  Mouse(MouseEventKind::kMove, 0, 700, 100);
  ASSERT_TRUE(ui.tip.has_value());
  EXPECT_EQ(ui.tip->tip.text, "Lock");
  EXPECT_TRUE(ui.tip->tip.balloon);
  EXPECT_EQ(ui.tip->tip.title, "Quick");
  EXPECT_EQ(ui.tip->area, B(1).Bounds());
  Mouse(MouseEventKind::kMove, 0, 700, 700);
  EXPECT_FALSE(ui.tip.has_value());
  // Held down by the space bar as the pointer comes: no tip.
  B(0).SetToolTip("Zero");
  form.SetFocus(&B(0));
  Key(KeyEventKind::kDown, kVkSpace);
  Mouse(MouseEventKind::kMove, 0, 100, 100);
  EXPECT_FALSE(ui.tip.has_value());
}

TEST_F(ButtonTest, DisabledButtonHearsNothingAndCaptionAndPropertiesPersist) {
  B(0).SetEnabled(false);
  Mouse(MouseEventKind::kDown, kLeftButton, 100, 100);
  Mouse(MouseEventKind::kUp, kLeftButton, 100, 100);
  EXPECT_TRUE(Take().empty());
  EXPECT_EQ(form.Focused(), nullptr);

  EXPECT_EQ(B(1).Caption(), "b1");  // a new control shows its name
  B(1).SetCaption("&Mount");
  B(1).SetPictureOpacity(300);
  B(1).SetMode(lumbutton::kCheckButton);
  PropertyBag bag;
  B(1).WriteProperties(bag);
  EXPECT_EQ(bag.ReadProperty("PictureOpacity", ""), "255");
  EXPECT_EQ(bag.ReadProperty("Enabled", ""), "-1");
  lumbutton copy("copy", {}, ui);
  copy.ReadProperties(bag);
  EXPECT_EQ(copy.Caption(), "&Mount");
  EXPECT_EQ(copy.GetMode(), lumbutton::kCheckButton);
  // Alt and the marked letter: a keyboard click, flipping a check button.
  form.AddVisual(copy);
  EXPECT_TRUE(form.DispatchAccessKey('M'));
  EXPECT_TRUE(B(1).Value());
  EXPECT_FALSE(form.DispatchAccessKey('X'));
  form.RemoveVisual(copy);
}

}  // namespace
}  // namespace quillet
