#include <gtest/gtest.h>

#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

using Form1Startup = Form1Scenario;

TEST_F(Form1Startup, FirstRunWritesItsDefaultsAndStandsAtItsDesignPlace) {
  Form1& f = Start();
  EXPECT_EQ(Setting("Timer"), "30");
  EXPECT_EQ(f.Timer1.Interval(), 30000u);
  EXPECT_TRUE(f.Timer1.Enabled());
  EXPECT_EQ(Setting("THEME"), "NORMAL");
  EXPECT_EQ(Setting("launch"), "1");
  EXPECT_EQ(Setting("LB"), "E");
  EXPECT_EQ(Setting("HH"), "");
  EXPECT_EQ(Setting("COLOR"), "");
  EXPECT_EQ(f.Left(), 1320);
  EXPECT_EQ(f.Top(), 5655);
  EXPECT_EQ(f.Width(), 2350);
  EXPECT_EQ(f.BackColor(), kKeyColour);
  EXPECT_TRUE(f.Visible());
  EXPECT_FALSE(f.Args().border);
  EXPECT_FALSE(f.Args().show_in_taskbar);
  EXPECT_TRUE(fake.dialogs.shown.empty());
  // The period goes through "0" before the floor lifts it.
  EXPECT_EQ(TimerSaves(fake), (std::vector<std::string>{"0", "30"}));
}

TEST_F(Form1Startup, StoredPeriodsBelowTheFloorRevertToThirtySeconds) {
  const struct {
    const char* stored;
    const char* text;
    std::uint32_t interval;
    std::vector<std::string> saves;
  } cases[] = {
      {"5", "30", 30000, {"5", "30"}},
      {"14", "30", 30000, {"14", "30"}},
      {"15", "15", 15000, {"15"}},
      {"20", "20", 20000, {"20"}},
      {"20abc", "20", 20000, {"20"}},
      {"junk", "30", 30000, {"0", "30"}},
      {"-40", "30", 30000, {"-40", "30"}},
      {"90.5", "90.5", 90500, {"90.5"}},
  };
  for (const auto& c : cases) {
    const auto run = StartWith({{"Timer", c.stored}});
    EXPECT_EQ(run->form->Text2.Text(), c.text) << c.stored;
    EXPECT_EQ(run->form->Timer1.Interval(), c.interval) << c.stored;
    EXPECT_EQ(TimerSaves(run->fake), c.saves) << c.stored;
  }
}

TEST_F(Form1Startup, FirstRefreshSetsTheRebuildFlagAgainstTheTitleCount) {
  Form1& f = Start();
  EXPECT_EQ(f.Caption(), "0");  // the count before the scan
  EXPECT_EQ(f.Text_ND.Text(), "2");
  EXPECT_EQ(f.Check2.Value(), 1);
  // The count is compared as text: "02" differs from "2".
  f.SetCaption("2");
  f.Text_ND.SetText("02");
  EXPECT_EQ(f.Check2.Value(), 1);
  f.Text_ND.SetText("2");
  EXPECT_EQ(f.Check2.Value(), 0);
  f.Text_ND.SetText("");
  EXPECT_EQ(f.Check2.Value(), 0);  // empty text changes nothing
}

TEST_F(Form1Startup, AFailedDriveListGivesNoDrives) {
  fake.drives.list_fails = true;
  Form1& f = Start();
  EXPECT_EQ(f.Text_ND.Text(), "0");
  EXPECT_EQ(f.Text1.Text(), "");
  EXPECT_EQ(f.Check2.Value(), 0);
}

TEST_F(Form1Startup, StoredPositionIsKeptAsItIs) {
  const struct {
    const char* top;
    const char* left;
    int want_top, want_left;
  } cases[] = {
      {"0", "0", 0, 0},
      {"-30000", "90000", -30000, 90000},  // off screen: not corrected
      {"2000.5", "700", 2000, 700},         // half to even
      {"junk", "", 0, 0},                   // junk and empty read as 0
  };
  for (const auto& c : cases) {
    const auto run = StartWith({{"frmTop", c.top}, {"frmLeft", c.left}});
    EXPECT_EQ(run->form->Top(), c.want_top) << c.top;
    EXPECT_EQ(run->form->Left(), c.want_left) << c.left;
  }
}

TEST_F(Form1Startup, LaunchCountBelowOneIsReplacedByOne) {
  const struct {
    const char* stored;
    const char* want;
  } cases[] = {{"0", "1"}, {"x", "1"}, {"-2", "1"}, {"3", "3"}, {"17", "17"}};
  for (const auto& c : cases) {
    const auto run = StartWith({{"launch", c.stored}});
    EXPECT_EQ(run->form->Text6.Text(), c.want) << c.stored;
    EXPECT_EQ(run->fake.Setting("launch"), c.want) << c.stored;
  }
}

TEST_F(Form1Startup, ThemeColourAndFontComeFromTheStore) {
  Store("THEME", "BLUE");
  Store("COLOR", "255");
  Store("Font", "Verdana");
  Store("FontSize", "11");
  Store("FontBold", "Bold");
  Form1& f = Start();
  EXPECT_EQ(f.Text_THEME.Text(), "BLUE");
  EXPECT_EQ(f.Caption1.Transparent(), false);
  EXPECT_EQ(f.Caption1.BackColor(), 255u);
  EXPECT_EQ(f.CaptionL(0).Font(), (Font{"Verdana", 11, true}));
  f.Text4.SetText("T");
  EXPECT_EQ(f.Caption1.Transparent(), true);
  EXPECT_EQ(Setting("COLOR"), "T");
}

TEST_F(Form1Startup, UnknownFontTextsLeaveTheDesignFont) {
  Store("FontSize", "big");
  Store("FontBold", "bold");  // neither "Normal" nor "Bold"
  const Font design = Form1(ui, fake.platform).CaptionL(0).Font();
  Form1& f = Start();
  EXPECT_EQ(f.CaptionL(0).Font(), design);
}

TEST_F(Form1Startup, PinModeComesFromTheStore) {
  const struct {
    const char* stored;
    int mode;
    int width;
  } cases[] = {{"", 0, 2350}, {"1", 1, 2350}, {"2", 2, 2640}, {"7", 7, 2350}, {"abc", 0, 2350}, {"1.5", 2, 2640}};
  for (const auto& c : cases) {
    const auto run = *c.stored ? StartWith({{"pt", c.stored}}) : StartWith({});
    EXPECT_EQ(run->form->PinMode(), c.mode) << c.stored;
    EXPECT_EQ(run->form->Width(), c.width) << c.stored;
  }
}

TEST_F(Form1Startup, HotKeyPollRunsOnlyWhenSwitchedOn) {
  Store("Hotkey", "1");
  EXPECT_TRUE(Start().Timer6.Enabled());
  EXPECT_FALSE(StartWith({{"Hotkey", "yes"}})->form->Timer6.Enabled());
}

TEST_F(Form1Startup, UptimeLabelFollowsTheClock) {
  fake.clock.ticks = 90061001;
  Form1& f = Start();
  EXPECT_EQ(f.Caption1.CaptionText(), "1 days, 1 hours, 1 minutes");
  fake.clock.ticks += 3600000;
  ui.timers.Advance(60000);
  EXPECT_EQ(f.Caption1.CaptionText(), "1 days, 2 hours, 1 minutes");
}

TEST_F(Form1Startup, ASecondInstanceSaysSoAndTouchesNothing) {
  Store("frmTop", "100");
  fake.process.previous_instance = true;
  Form1& f = Start();
  ASSERT_EQ(fake.dialogs.shown.size(), 1u);
  EXPECT_EQ(fake.dialogs.shown[0].text, "Previous Instance Already Open");
  EXPECT_EQ(fake.dialogs.shown[0].title, "Information");
  EXPECT_EQ(fake.dialogs.shown[0].style, kOkOnly | kInformation);
  EXPECT_TRUE(ui.Ended());
  EXPECT_FALSE(f.Visible());
  EXPECT_TRUE(fake.settings.log.empty());
  EXPECT_TRUE(fake.drives.ready_queries.empty());
}

TEST_F(Form1Startup, ARenamedExecutableStartsAsAFirstRun) {
  Store("frmTop", "100");
  Store("Timer", "60");
  fake.process.exe_name = "Sidebar";
  Form1& f = Start();
  EXPECT_EQ(f.Top(), 5655);
  EXPECT_EQ(f.Timer1.Interval(), 30000u);
  EXPECT_EQ(fake.settings.Find("Sidebar", "Form1", "Timer"), "30");
  EXPECT_EQ(fake.settings.Find("Quillet", "Form1", "Timer"), "60");
}

}  // namespace
}  // namespace quillet::testing
