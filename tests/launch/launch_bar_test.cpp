// The launch bar: slots filled by a drop, started, emptied, added, removed,
// repainted, and the window beside the side bar.
#include <gtest/gtest.h>

#include "launch/Form11.h"
#include "shell/form1_scenario.h"
#include "ui/bitmap_file.h"

namespace quillet::testing {
namespace {

using Paths = std::vector<std::string>;
constexpr const char* kFolder = "C:\\Program Files\\Quillet\\Launch Bar";
constexpr const char* kNotepad = "C:\\Windows\\notepad.exe";
constexpr std::uint32_t kGrey = 0xFF626262, kBlue = 0xFF0000FF, kGreen = 0xFF00FF00, kRed = 0xFFFF0000;
constexpr const char* kNoIcon = "Unable to extract the Associated Icon.";

std::string Bitmap(int i) { return std::string(kFolder) + "\\" + std::to_string(i) + ".bmp"; }

class LaunchBar : public Form1Scenario {
 protected:
  LaunchBar() {
    fake.shell.icons[kNotepad] = {kBlue, ""};
    fake.shell.icons["C:\\Tools\\calc.exe"] = {kGreen, ""};
  }
  Form11& Bar() { return form->Form11(); }
  void DropOn(int i, const Paths& paths) {
    const Visual& box = Bar().p(i);
    ASSERT_TRUE(Bar().DispatchDrop(paths, box.Left() + 30, box.Top() + 30));
  }
  void PressOn(int i, int button, int shift) {
    const Visual& box = Bar().p(i);
    Bar().DispatchMouse(MouseEventKind::kDown, {button, shift, box.Left() + 30, box.Top() + 30});
    Bar().DispatchMouse(MouseEventKind::kUp, {button, shift, box.Left() + 30, box.Top() + 30});
  }
  // Two pixels of a slot's image: its top left, where the icon is see-through, and its middle.
  std::pair<std::uint32_t, std::uint32_t> Shown(int i) {
    const Picture& image = Bar().p(i).Image();
    return {image.pixels.front(), image.pixels[image.pixels.size() / 2]};
  }
  std::optional<Picture> SavedBitmap(int i) {
    const auto it = fake.files.files.find(Bitmap(i));
    if (it == fake.files.files.end()) return std::nullopt;
    return DecodeBitmapFile(it->second);
  }
  std::vector<int> Tops() {
    std::vector<int> tops;
    for (int i = 1; i <= Bar().p.Count(); ++i) tops.push_back(Bar().p(i).Top());
    return tops;
  }
  // Starts again on what the last run left behind.
  void Restart() {
    form.reset();
    Start();
  }
  void ClickButton(Image& button) {
    Bar().DispatchMouse(MouseEventKind::kDown, {kLeftButton, 0, button.Left() + 30, button.Top() + 30});
    Bar().DispatchMouse(MouseEventKind::kUp, {kLeftButton, 0, button.Left() + 30, button.Top() + 30});
  }
};

TEST_F(LaunchBar, AFirstRunMakesTheFolderAndShowsOneBlankSlotBesideTheBar) {
  Start();
  EXPECT_TRUE(fake.files.FolderExists(kFolder));
  EXPECT_EQ(Setting("LB"), "E");
  EXPECT_EQ(Setting("launch"), "1");
  ASSERT_TRUE(Bar().Visible());
  EXPECT_EQ(Bar().Bounds(), (TwipsRect{3670, 6180, 480, 1125}));
  EXPECT_EQ(Bar().p.Count(), 1);
  EXPECT_EQ(Shown(1), std::make_pair(kGrey, kGrey));
  // Nothing to repaint: the routine ends at the first slot, saying nothing.
  form->Text4.SetText("255");
  fake.settings.log.clear();
  form->QL_Replace();
  EXPECT_TRUE(fake.dialogs.shown.empty());
  EXPECT_TRUE(fake.settings.log.empty());
  EXPECT_FALSE(fake.files.files.count(Bitmap(1)));
}

TEST_F(LaunchBar, ItStandsWhereItWasMovedToOrLeftOfABarOnTheRightOrNotAtAll) {
  Store("frmTop", "2000", "Form11");
  Store("frmLeft", "700", "Form11");
  Start();
  EXPECT_EQ(std::make_pair(Bar().Left(), Bar().Top()), std::make_pair(700, 2000));
  // A plain move over the strip saves; a drag moves without saving until the next plain move.
  Bar().DispatchMouse(MouseEventKind::kMove, {0, 0, 100, 50});
  Bar().DispatchMouse(MouseEventKind::kMove, {kLeftButton, 0, 400, 20});
  EXPECT_EQ(std::make_pair(Bar().Left(), Bar().Top()), std::make_pair(1000, 1970));
  EXPECT_EQ(fake.Setting("frmLeft", "Form11"), "700");
  Bar().DispatchMouse(MouseEventKind::kMove, {0, 0, 100, 50});
  EXPECT_EQ(fake.Setting("frmLeft", "Form11"), "1000");
  EXPECT_EQ(fake.Setting("frmTop", "Form11"), "1970");

  form.reset();
  fake.settings.DeleteSetting("Quillet", "Form11", "frmTop");
  Store("frmLeft", "15000");
  Store("frmTop", "300");
  Start();
  EXPECT_EQ(std::make_pair(Bar().Left(), Bar().Top()), std::make_pair(15000 - 480, 300 + form->ImageD(1).Top()));
  form.reset();
  Store("LB", "D");
  Start();
  EXPECT_FALSE(Bar().Loaded());
}

TEST_F(LaunchBar, ADroppedProgramIsDrawnSavedStartedShownInTheShellAndEmptied) {
  Start();
  DropOn(1, {kNotepad, "C:\\Tools\\calc.exe"});
  EXPECT_EQ(Setting("1Lanuch"), kNotepad);
  EXPECT_EQ(Shown(1), std::make_pair(kGrey, kBlue));
  const auto saved = SavedBitmap(1);
  ASSERT_TRUE(saved);
  EXPECT_EQ(std::make_pair(saved->width, saved->height), std::make_pair(29, 29));
  EXPECT_EQ(saved->pixels, Bar().p(1).Image().pixels);

  Bar().DispatchMouse(MouseEventKind::kMove, {0, 0, 60, 400});
  EXPECT_EQ(Bar().p(1).ToolTipText(), " notepad.exe ");
  const FakeShell::Call start{"", kNotepad, "", "", kShow};
  for (const int shift : {0, int{kShiftMask}, int{kAltMask}, kCtrlMask | kShiftMask}) PressOn(1, kLeftButton, shift);
  EXPECT_EQ(fake.shell.calls, std::vector<FakeShell::Call>(4, start));
  PressOn(1, kRightButton, 0);
  EXPECT_EQ(fake.shell.runs, (std::vector<FakeShell::Run>{{"Explorer /select,C:\\Windows\\notepad.exe", 1}}));

  PressOn(1, kLeftButton, kCtrlMask);
  EXPECT_EQ(Setting("1Lanuch"), "<missing>");
  EXPECT_FALSE(fake.files.files.count(Bitmap(1)));
  EXPECT_EQ(Bar().p(1).Picture(), form->ps.ImagePtr());
  // Emptying an empty slot is no fault; starting one gives no message.
  PressOn(1, kLeftButton, kCtrlMask);
  PressOn(1, kLeftButton, 0);
  EXPECT_TRUE(fake.dialogs.shown.empty());
  EXPECT_TRUE(ui.errors.empty());
}

TEST_F(LaunchBar, WhatADropStoresDependsOnTheFile) {
  fake.shell.icons["C:\\docs\\plan.txt"] = {kRed, kNotepad};
  fake.shell.icons["C:\\Users\\me\\Calc.LNK"] = {kRed, ""};
  fake.shell.shortcuts["C:\\Users\\me\\calc.lnk"] = "C:\\Tools\\calc.exe";
  fake.shell.shortcuts["C:\\Users\\me\\Calc.LNK"] = "C:\\Tools\\calc.exe";
  Start();
  const struct {
    const char* dropped;
    const char* stored;
    std::uint32_t shown;
  } cases[] = {
      {"C:\\docs\\plan.txt", kNotepad, kRed},                       // the program that opens it
      {"C:\\Users\\me\\calc.lnk", "C:\\Tools\\calc.exe", kGreen},    // where the shortcut points
      {"C:\\Users\\me\\Calc.LNK", "C:\\Users\\me\\Calc.LNK", kRed},  // the test is case-sensitive
  };
  for (const auto& c : cases) {
    DropOn(1, {c.dropped});
    EXPECT_EQ(Setting("1Lanuch"), c.stored) << c.dropped;
    EXPECT_EQ(Shown(1).second, c.shown) << c.dropped;
  }
  // A drive root is too short for the test: the host reports it, the bar lives on.
  DropOn(1, {"C:\\"});
  EXPECT_EQ(ui.errors.size(), 1u);
  EXPECT_EQ(Setting("1Lanuch"), "C:\\Users\\me\\Calc.LNK");
  EXPECT_TRUE(Bar().Visible());
}

TEST_F(LaunchBar, AnIconThatFailsSaysSoWritesNothingAndTheOldPictureIsBackAfterARestart) {
  Start();
  form->Text4.SetText(DecimalText(0x0000FF));  // red, as a colour is stored
  DropOn(1, {kNotepad});
  const auto before = fake.files.files.at(Bitmap(1));
  fake.shell.icons.erase(kNotepad);  // the program has gone since
  DropOn(1, {kNotepad});
  ASSERT_EQ(fake.dialogs.shown.size(), 1u);
  EXPECT_EQ(fake.dialogs.shown[0].text, kNoIcon);
  EXPECT_EQ(fake.dialogs.shown[0].style, kOkOnly | kInformation);
  EXPECT_EQ(Shown(1), std::make_pair(kRed, kRed));
  EXPECT_EQ(fake.files.files.at(Bitmap(1)), before);
  EXPECT_EQ(Setting("1Lanuch"), kNotepad);
  Restart();
  EXPECT_EQ(Shown(1), std::make_pair(kRed, kBlue));
}

TEST_F(LaunchBar, SlotsAreAddedAndRemovedAtTheEndAndTheHeightLagsAsItDoes) {
  Start();
  ClickButton(Bar().Image14);  // one slot: nothing to remove
  EXPECT_EQ(Bar().p.Count(), 1);
  ClickButton(Bar().Image13);
  ClickButton(Bar().Image13);
  EXPECT_EQ(Setting("launch"), "3");
  EXPECT_EQ(Tops(), (std::vector<int>{285, 735, 1185}));
  EXPECT_EQ(Bar().Height(), 4 * 435 + 300);
  EXPECT_EQ(Bar().p(3).Picture(), form->ps.ImagePtr());
  DropOn(3, {kNotepad});
  ClickButton(Bar().Image14);
  EXPECT_EQ(Bar().p.Count(), 2);
  EXPECT_EQ(Setting("launch"), "2");
  EXPECT_EQ(Setting("3Lanuch"), "<missing>");
  EXPECT_FALSE(fake.files.files.count(Bitmap(3)));
  EXPECT_EQ(Bar().Height(), 4 * 435 + 300);  // still a slot too tall
  ClickButton(Bar().Image13);
  EXPECT_EQ(Bar().Height(), 4 * 435 + 300);
  ClickButton(Bar().Image14);
  Restart();
  EXPECT_EQ(Bar().Height(), 3 * 435 + 255);
}

TEST_F(LaunchBar, MissingOrBrokenBitmapsLoadAsEmptySlots) {
  Store("launch", "4");
  Store("1Lanuch", kNotepad);
  Store("3Lanuch", kNotepad);
  fake.files.files[Bitmap(2)] = EncodeBitmapFile(Picture{2, 1, {kGreen, kGreen}});
  fake.files.files[Bitmap(3)] = {'B', 'M', 0, 0};
  Start();
  ASSERT_EQ(Bar().p.Count(), 4);
  EXPECT_EQ(Shown(1), std::make_pair(kGrey, kGrey));  // slot 1 stays blank
  EXPECT_EQ(Shown(2).first, kGreen);
  EXPECT_EQ(Bar().p(3).Picture(), form->ps.ImagePtr());
  EXPECT_EQ(Bar().p(4).Picture(), form->ps.ImagePtr());
  // The key stands without its picture, and still starts the program.
  PressOn(1, kLeftButton, 0);
  EXPECT_EQ(fake.shell.calls.at(0).file, kNotepad);
  EXPECT_EQ(Setting("1Lanuch"), kNotepad);
}

TEST_F(LaunchBar, RepaintingAllSlotsLetsAGapCostTheNextSlotItsTarget) {
  Store("launch", "4");
  Store("1Lanuch", kNotepad);
  Store("3Lanuch", "C:\\Tools\\calc.exe");
  Store("LB", "D");  // closed: the repaint loads it without showing it
  Start();
  form->Text4.SetText(DecimalText(0x0000FF));
  form->QL_Replace();
  ASSERT_TRUE(Bar().Loaded());
  EXPECT_FALSE(Bar().Visible());
  EXPECT_EQ(Shown(1), std::make_pair(kRed, kBlue));
  EXPECT_EQ(Bar().p(2).Picture(), form->ps.ImagePtr());  // not touched
  // Slot 3 is asked for the icon of nothing and keeps its own target.
  ASSERT_EQ(fake.dialogs.shown.size(), 1u);
  EXPECT_EQ(fake.dialogs.shown[0].text, kNoIcon);
  EXPECT_EQ(Shown(3), std::make_pair(kRed, kRed));
  EXPECT_EQ(Setting("3Lanuch"), "C:\\Tools\\calc.exe");
  // Slot 4 is empty and the last: the routine ends there without a word.
  EXPECT_EQ(Bar().p(4).Picture(), form->ps.ImagePtr());

  // Where the system has an icon for nothing, that slot takes it, key and all.
  fake.shell.icons[""] = {kGreen, ""};
  form->QL_Replace();
  EXPECT_EQ(Shown(3).second, kGreen);
  EXPECT_EQ(Setting("3Lanuch"), "");
}

TEST_F(LaunchBar, TheTrayMenuShowsOrClosesTheBarAndResetPutsItBesideTheBarAtTheLeft) {
  Start();
  const auto choose = [&](int item) {
    ui.on_popup = [item](const PopupMenu&) { return item; };
    fake.tray.Press(516);
    ui.timers.Advance(15);
  };
  choose(Menu::kQL);
  EXPECT_FALSE(Bar().Loaded());
  choose(Menu::kQL);
  EXPECT_TRUE(Bar().Visible());
  EXPECT_EQ(Setting("LB"), "E");
  ClickButton(Bar().Image1);
  EXPECT_EQ(Setting("LB"), "D");
  EXPECT_FALSE(Bar().Loaded());
  // Reset loads the closed bar and places it; the menu's walk then shows and closes it.
  fake.dialogs.answers = {kAnswerYes};
  choose(Menu::kReset);
  EXPECT_TRUE(Bar().Loaded());
  EXPECT_FALSE(Bar().Visible());
  EXPECT_EQ(std::make_pair(Bar().Left(), Bar().Top()), std::make_pair(2350 + 480, form->ImageD(1).Top()));
  choose(Menu::kQL);
  EXPECT_FALSE(Bar().Loaded());
  Restart();
  EXPECT_FALSE(Bar().Loaded());
}

TEST_F(LaunchBar, AtOneAndAHalfTimesTheSlotsAreDrawnInTheScreensOwnPixels) {
  ui.screen.twips_per_pixel = 10;
  Start();
  DropOn(1, {kNotepad});
  ClickButton(Bar().Image13);
  const auto saved = SavedBitmap(1);
  ASSERT_TRUE(saved);
  EXPECT_EQ(std::make_pair(saved->width, saved->height), std::make_pair(44, 44));
  const Picture& empty = Bar().p(2).Image();
  EXPECT_EQ(std::make_pair(empty.width, empty.height), std::make_pair(44, 44));
  EXPECT_EQ(form->ps.Image().width, 41);  // 405 twips: the empty picture scales with the screen
}

}  // namespace
}  // namespace quillet::testing
