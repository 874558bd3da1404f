// The hover strip of the side bar, its pin and its buttons.
#include <gtest/gtest.h>

#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

class QuickButtons : public Form1Scenario {
 protected:
  bool ButtonsShown() {
    const lumbutton* all[] = {&form->lumbutton1, &form->lumbutton2, &form->lumbutton3, &form->lumbutton4,
                              &form->lumbutton5};
    int shown = 0;
    for (const lumbutton* b : all) shown += b->Visible() ? 1 : 0;
    EXPECT_TRUE(shown == 0 || shown == 5) << shown;
    return shown == 5 && form->Image26.Visible();
  }
  void Restart() {
    form.reset();
    ui.errors.clear();
    Start();
  }
};

TEST_F(QuickButtons, PinDecidesWhatStaysAfterTheHoverAndAcrossARestart) {
  const struct {
    const char* pt;
    int width_at_start;
    bool shown_at_start;
    int width_after_hover;
    bool shown_after_hover;
    const char* picture;  // of Image26
  } cases[] = {
      {"", 2350, false, 2350, false, "Image23"},
      {"0", 2350, false, 2350, false, "Image23"},
      {"1", 2350, true, 2350, true, "Image24"},
      {"2", 2640, true, 2640, true, "Image25"},
      {"7", 2350, false, 2350, true, "Image23"},  // kept, and only 0 hides the buttons
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.pt);
    Store("pt", c.pt);
    Restart();
    EXPECT_EQ(form->Width(), c.width_at_start);
    EXPECT_EQ(ButtonsShown(), c.shown_at_start);
    const Image* pins[] = {&form->Image23, &form->Image24, &form->Image25};
    const std::string picture = c.picture;
    EXPECT_EQ(form->Image26.Picture(), pins[picture.back() - '3']->Picture());
    MoveOver(form->Caption1);
    EXPECT_EQ(form->Width(), 2640);
    EXPECT_TRUE(ButtonsShown());
    ui.timers.Advance(2000);
    EXPECT_EQ(form->Width(), c.width_after_hover);
    EXPECT_EQ(ButtonsShown(), c.shown_after_hover);
  }
}

TEST_F(QuickButtons, PinClicksCycleTheModeSaveItAndTheRedPinWidens) {
  Start();
  MoveOver(form->Caption1);
  const char* saved[] = {"1", "2", "0"};
  const Image* pictures[] = {&form->Image24, &form->Image25, &form->Image23};
  for (int i = 0; i < 3; ++i) {
    ClickOn(form->Image26);
    EXPECT_EQ(Setting("pt"), saved[i]);
    EXPECT_EQ(form->Image26.Picture(), pictures[i]->Picture());
  }
  ClickOn(form->Image26);
  ClickOn(form->Image26);
  EXPECT_EQ(form->Width(), 2640);
  MoveOver(form->Image26);
  EXPECT_EQ(form->Image26.ToolTipText(), "Red Pin Lock all Icons");
  ASSERT_TRUE(ui.tip.has_value());
  EXPECT_EQ(ui.tip->tip.text, "Red Pin Lock all Icons");
  Restart();
  EXPECT_EQ(form->Width(), 2640);
  EXPECT_TRUE(ButtonsShown());
  EXPECT_TRUE(form->CMD_POWER.Visible());
  EXPECT_TRUE(form->Image12.Visible());
}

TEST_F(QuickButtons, HoverEndsTwoSecondsAfterItsStartUnlessTheStripRestartsIt) {
  Start();
  MoveOver(form->ImageD(1));
  ui.timers.Advance(1500);
  MoveOver(form->ImageD(1), 60, 60);  // over a card: the first deadline holds
  ui.timers.Advance(500);
  EXPECT_EQ(form->Width(), 2350);
  EXPECT_FALSE(ButtonsShown());

  MoveOver(form->ImageD(1));
  ui.timers.Advance(1500);
  MoveOver(form->Image5, 30, 700);  // over the strip: two seconds from now
  ui.timers.Advance(1900);
  EXPECT_EQ(form->Width(), 2640);
  // A minimised bar keeps the hover until it is back; then the next tick ends it.
  form->SetWindowState(kMinimized);
  ui.timers.Advance(4000);
  EXPECT_EQ(form->Width(), 2640);
  form->SetWindowState(kNormal);
  ui.timers.Advance(2000);
  EXPECT_EQ(form->Width(), 2350);
  // The pointer resting where it was starts nothing, though its messages repeat.
  MoveOver(form->Caption1);
  ui.timers.Advance(2000);
  MoveOver(form->Caption1);
  EXPECT_EQ(form->Width(), 2350);
}

TEST_F(QuickButtons, SideButtonsLightUnderThePointerAndTheStripPutsThemOut) {
  Start();
  MoveOver(form->Image5, 30, 700);
  MoveOver(form->Image9, 20, 20);
  EXPECT_EQ(form->Image9.Picture(), form->Image4.Picture());
  EXPECT_EQ(form->Image11.Picture(), nullptr);
  MoveOver(form->Image11, 20, 20);
  EXPECT_EQ(form->Image9.Picture(), nullptr);
  EXPECT_EQ(form->Image11.Picture(), form->Image13.Picture());
  MoveOver(form->Image16, 120, 50);
  EXPECT_EQ(form->Image11.Picture(), nullptr);
  ClickOn(form->Image9, 20, 20);
  EXPECT_TRUE(ui.Ended());
}

TEST_F(QuickButtons, ButtonClicksStartWhatTheyName) {
  fake.process.environment["SystemRoot"] = "C:\\windows";
  Start();
  MoveOver(form->Caption1);
  ClickOn(form->lumbutton1);
  EXPECT_EQ(fake.session.locks, 1);
  ClickOn(form->lumbutton4);
  ClickOn(form->lumbutton5);
  MoveOver(form->Image5, 30, 700);
  ClickOn(form->Image10, 10, 10);
  EXPECT_EQ(fake.shell.calls, (std::vector<FakeShell::Call>{{"", "C:\\windows\\system32\\taskmgr.exe", "", "", 5}}));
  EXPECT_EQ(fake.shell.runs,
            (std::vector<FakeShell::Run>{{"explorer.exe shell:::{2559a1f3-21d7-11d4-bdaf-00c04f60b9f0}", 2},
                                         {"Explorer /n,C:\\windows", 1}}));
}

TEST_F(QuickButtons, RunExternalAppOpensTheStoredAddressOfTwoCharactersOrMore) {
  const struct {
    const char* url;
    std::vector<FakeShell::Call> calls;
  } cases[] = {
      {"", {}},
      {"a", {}},
      {"ab", {{"", "ab", "", "", 1}}},
      {"https://example.org", {{"Open", "https://example.org", "", "", -1}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.url);
    Store("url", c.url);
    fake.shell.calls.clear();
    Restart();
    MoveOver(form->Image5, 30, 700);
    ClickOn(form->Image12, 10, 10);
    EXPECT_EQ(fake.shell.calls, c.calls);
  }
}

TEST_F(QuickButtons, VirtualFolderButtonWantsAFolderThatIsThere) {
  const struct {
    const char* stored;
    bool message;
  } cases[] = {{"", true}, {"D:\\gone", true}, {"D:\\notes.txt", true}, {"D:\\Virtual", false}};
  fake.files.folders["D:\\Virtual"] = 16;
  fake.files.files["D:\\notes.txt"] = {};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.stored);
    Store("virtual", c.stored);
    fake.dialogs.shown.clear();
    Restart();
    MoveOver(form->Caption1);
    ClickOn(form->lumbutton3);
    ASSERT_EQ(fake.dialogs.shown.size(), c.message ? 1u : 0u);
    if (!c.message) continue;
    EXPECT_EQ(fake.dialogs.shown[0].text, "Set Virtual Folder First !\r\nInside OptionMenu [VP]");
    EXPECT_EQ(fake.dialogs.shown[0].title, "Virtual Folder Not Set !");
    EXPECT_EQ(fake.dialogs.shown[0].style, kCritical);
  }
}

}  // namespace
}  // namespace quillet::testing
