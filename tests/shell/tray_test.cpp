// The tray icon and its menu.
#include <gtest/gtest.h>

#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

constexpr int kLeftPress = 513, kRightPress = 516;

class Tray : public Form1Scenario {
 protected:
  // Right press on the icon; `user` plays the open menu and gives the item chosen.
  void OpenMenu(std::function<int()> user) {
    ui.on_popup = [user](const PopupMenu&) { return user(); };
    fake.tray.Press(kRightPress);
  }
};

TEST_F(Tray, OneIconStandsFromTheStartAndGoesWithEitherExit) {
  Start();
  ASSERT_EQ(fake.tray.icons.size(), 1u);
  EXPECT_EQ(fake.tray.icons[0], (NotifyIconRecord{1, 7, 512, " Quillet "}));
  form->SysTray1.Show(true);
  EXPECT_EQ(fake.tray.sent, (std::vector<int>{kNotifyAdd, kNotifyModify}));
  form->SysTray1.SetSysTrayToolTip("");
  EXPECT_EQ(fake.tray.icons[0].tip, "");
  // Minimised by a double click on the strip: out and in again, still one.
  Mouse(MouseEventKind::kDblClick, kLeftButton, 2370, 1420);
  EXPECT_EQ(fake.tray.icons.size(), 1u);
  EXPECT_FALSE(form->Visible());
  OpenMenu([] { return Menu::kExit; });
  EXPECT_TRUE(fake.tray.icons.empty());
  EXPECT_TRUE(ui.Ended());
}

TEST_F(Tray, PressesWithinFifteenMillisecondsOfTheLastHandlerMakeOneEvent) {
  Start();
  form->SetWindowState(kMinimized);
  fake.tray.Press(kLeftPress);
  EXPECT_TRUE(form->Visible());
  form->SetWindowState(kMinimized);
  fake.tray.Press(kLeftPress);
  EXPECT_FALSE(form->Visible());
  ui.timers.Advance(15);
  fake.tray.Press(515);  // a double click message is no press
  fake.tray.Press(kLeftPress);
  EXPECT_TRUE(form->Visible());
  EXPECT_EQ(form->GetWindowState(), kNormal);
}

TEST_F(Tray, MenuItemsHideAndShowResetOnlyOnYesAndCloseWhenTheUserIsIdle) {
  Start();
  const int top = form->Top(), left = form->Left();
  fake.dialogs.answers = {kAnswerNo, kAnswerYes};
  OpenMenu([] { return Menu::kReset; });
  EXPECT_EQ(fake.dialogs.shown.at(0).text, "Are You Sure ?");
  EXPECT_EQ(fake.dialogs.shown.at(0).title, "reset position");
  EXPECT_EQ(fake.dialogs.shown.at(0).style, kYesNo);
  EXPECT_EQ(std::make_pair(form->Top(), form->Left()), std::make_pair(top, left));
  ui.timers.Advance(15);
  OpenMenu([] { return Menu::kReset; });
  EXPECT_EQ(std::make_pair(form->Top(), form->Left()), std::make_pair(0, 0));

  for (const bool visible : {false, true}) {
    ui.timers.Advance(15);
    OpenMenu([] { return Menu::kHide; });
    EXPECT_EQ(form->Visible(), visible);
  }

  // Left open with no input: the first tick of the menu's timer closes it.
  form->Menu.Unload();
  ui.timers.Advance(15);
  fake.clock.last_input = fake.clock.ticks = 10000;
  int ended_before = 0;
  OpenMenu([&] {
    ended_before = ui.menus_ended;
    fake.clock.ticks += 400;
    ui.timers.Advance(3000);  // input 400 ms ago: it stays
    EXPECT_TRUE(form->Menu.Loaded());
    fake.clock.ticks += 3000;
    ui.timers.Advance(3000);
    return ui.menus_ended > ended_before ? 0 : Menu::kHide;
  });
  EXPECT_FALSE(form->Menu.Loaded());
  EXPECT_TRUE(form->Visible());
}

TEST_F(Tray, ExitWhileMinimisedKeepsTheStoredPosition) {
  Store("frmTop", "900");
  Store("frmLeft", "800");
  Start();
  form->SetWindowState(kMinimized);
  form->Move({10, 20, form->Width(), form->Height()});
  OpenMenu([] { return Menu::kExit; });
  EXPECT_EQ(Setting("frmTop"), "900");
  EXPECT_EQ(Setting("frmLeft"), "800");
}

}  // namespace
}  // namespace quillet::testing
