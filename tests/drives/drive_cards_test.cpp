// The drive cards on the side bar, kept current by the refresh, with fake drives.
#include <gtest/gtest.h>

#include <algorithm>

#include "drives/drive_cards.h"
#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

constexpr std::uint64_t kGiB = 1024ull * 1024 * 1024;

class DriveCards : public Form1Scenario {
 protected:
  static FakeDrive Gib(double total, double free, int type = kDriveFixed, std::string label = "") {
    FakeDrive d = FakeDrives::Sized(static_cast<std::uint64_t>(total * kGiB), static_cast<std::uint64_t>(free * kGiB),
                                    type);
    d.label = std::move(label);
    return d;
  }
  void Tick() { ui.timers.Advance(30000); }
  int Cards() { return form->CaptionL.Count() - 1; }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (int i = 1; i <= Cards(); ++i) texts.push_back(form->CaptionL(i).CaptionText());
    return texts;
  }
  // Position of a control in the paint order, back to front.
  std::size_t ZOf(const Visual& v) {
    const auto& all = form->Visuals();
    return static_cast<std::size_t>(std::find(all.begin(), all.end(), &v) - all.begin());
  }
};

TEST(DriveCardText, NamesTheDriveInCharactersTwoAndThree) {
  const std::string text = CardText("C:", "SYSTEM", "12.34", "931.32");
  EXPECT_EQ(text, "[C:] SYSTEM\r\n12.34GB free of 931.32GB");
  EXPECT_EQ(CardDrive(text), "C:");
  EXPECT_EQ(CardText("E:", "", "0.00", "0.00"), "[E:] \r\n0.00GB free of 0.00GB");
}

TEST(DriveCardBar, ColourByFreeShareWithTheGapAtTwentyFiveAndLengthByUsedShare) {
  const struct {
    const char *free, *total;
    int pct;
    BarPicture picture;
    float width;
  } cases[] = {
      {"3.00", "100.00", 3, BarPicture::kCritical, 2197.05f},
      {"25.00", "100.00", 25, BarPicture::kKeep, 1698.75f},
      {"8.00", "100.00", 8, BarPicture::kLow, 2083.8f},
      {"5.00", "100.00", 5, BarPicture::kCritical, 2151.75f},
      {"6.00", "100.00", 6, BarPicture::kLow, 2129.1f},
      {"26.00", "100.00", 26, BarPicture::kPlenty, 1676.1f},
      {"100.00", "100.00", 100, BarPicture::kPlenty, 0.0f},
      {"0.50", "2.00", 25, BarPicture::kKeep, 1698.75f},
      {"0.25", "10.00", 2, BarPicture::kCritical, 2208.375f},  // 2.5 rounds to even
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FreePercent(c.free, c.total), c.pct) << c.free;
    EXPECT_EQ(BarPictureFor(c.pct), c.picture) << c.free;
    EXPECT_FLOAT_EQ(BarWidth(c.free, c.total), c.width) << c.free;
  }
  EXPECT_EQ(FreePercent("1.00", "0.00"), std::nullopt);
  EXPECT_EQ(FreePercent("999.00", "0.01"), std::nullopt);  // beyond 16 bits
}

TEST_F(DriveCards, EachDriveGetsACardWithTextBarAndIconInLetterOrder) {
  fake.drives.drives = {{'C', Gib(100, 3, kDriveFixed, "SYSTEM")},
                        {'D', Gib(100, 8)},
                        {'E', Gib(100, 100, kDriveRemovable, "STICK")},
                        {'F', Gib(100, 50, kDriveRemote)}};
  Form1& f = Start();
  ASSERT_TRUE(f.Image3.Picture() && f.Image2.Picture() && f.Image1.Picture());
  EXPECT_EQ(Texts(), (std::vector<std::string>{"[C:] SYSTEM\r\n3.00GB free of 100.00GB",
                                                "[D:] \r\n8.00GB free of 100.00GB",
                                                "[E:] STICK\r\n100.00GB free of 100.00GB",
                                                "[F:] \r\n50.00GB free of 100.00GB"}));
  EXPECT_EQ(f.Imagebar(1).Picture(), f.Image3.Picture());
  EXPECT_EQ(f.Imagebar(1).Width(), 2197);
  EXPECT_EQ(f.Imagebar(2).Picture(), f.Image2.Picture());
  EXPECT_EQ(f.Imagebar(3).Picture(), f.Image1.Picture());
  EXPECT_EQ(f.Imagebar(3).Width(), 0);
  EXPECT_EQ(f.DRIVEICON(1).Picture(), f.DC.Picture());
  EXPECT_EQ(f.DRIVEICON(2).Picture(), f.DD.Picture());
  EXPECT_EQ(f.DRIVEICON(3).Picture(), f.DR.Picture());
  EXPECT_EQ(f.DRIVEICON(4).Picture(), nullptr);  // a remote drive has no icon of its own
  for (int i = 1; i <= 4; ++i) {
    EXPECT_EQ(f.ImageD(i).Top(), -120 + 645 * i) << i;
    EXPECT_EQ(f.DRIVEICON(i).Top(), f.ImageD(i).Top()) << i;
    EXPECT_EQ(f.CaptionL(i).Top(), -195 + 645 * i) << i;
    EXPECT_EQ(f.Imagebar(i).Top(), 390 + 645 * i) << i;
    EXPECT_TRUE(f.ImageD(i).Visible() && f.CaptionL(i).Visible() && f.DRIVEICON(i).Visible()) << i;
    // Background, text, icon, bar: back to front.
    EXPECT_LT(ZOf(f.ImageD(i)), ZOf(f.CaptionL(i))) << i;
    EXPECT_LT(ZOf(f.CaptionL(i)), ZOf(f.DRIVEICON(i))) << i;
    EXPECT_LT(ZOf(f.DRIVEICON(i)), ZOf(f.Imagebar(i))) << i;
  }
  EXPECT_EQ(f.Height(), 3180);  // 600 + 645 * 4
  EXPECT_EQ(f.Top(), 5655);     // the first building moves nothing
  EXPECT_EQ(f.Text1.Text(), "");
}

TEST_F(DriveCards, TheStoredThinSetGivesTheBarsTheirPictures) {
  fake.drives.drives = {{'C', Gib(100, 3)}, {'D', Gib(100, 8)}, {'E', Gib(100, 50)}};
  Store("meterbar", "0");
  Form1& f = Start();
  EXPECT_EQ(f.Imagebar(1).Picture(), f.Image22.Picture());
  EXPECT_EQ(f.Imagebar(2).Picture(), f.Image21.Picture());
  EXPECT_EQ(f.Imagebar(3).Picture(), f.Image20.Picture());
  EXPECT_NE(f.Image20.Picture(), f.Image6.Picture());
}

TEST_F(DriveCards, AnEmptyOpticalDriveShowsNoBarAndTheDiscIconThenItsDiscAtTheNextTick) {
  FakeDrive cd = Gib(0.7, 0, kDriveCdRom);
  cd.ready = false;
  fake.drives.drives['E'] = cd;
  Form1& f = Start();
  ASSERT_EQ(Cards(), 3);
  EXPECT_EQ(f.CaptionL(3).CaptionText(), "[E:] \r\n0.00GB free of 0.00GB");
  EXPECT_FALSE(f.Imagebar(3).Visible());
  EXPECT_EQ(f.DRIVEICON(3).Picture(), f.DCD.Picture());
  fake.drives.drives['E'].ready = true;
  fake.drives.drives['E'].label = "DISC";
  Tick();
  EXPECT_EQ(Cards(), 3);
  EXPECT_EQ(f.CaptionL(3).CaptionText(), "[E:] DISC\r\n0.00GB free of 0.70GB");
  EXPECT_TRUE(f.Imagebar(3).Visible());
  EXPECT_EQ(f.Imagebar(3).Width(), 2265);
}

TEST_F(DriveCards, ABarAtExactlyTwentyFivePercentKeepsWhatItHad) {
  fake.drives.drives = {{'C', Gib(100, 3)}};
  Form1& f = Start();
  EXPECT_EQ(f.Imagebar(1).Picture(), f.Image3.Picture());
  fake.drives.drives['C'] = Gib(100, 25);
  Tick();
  EXPECT_EQ(f.Imagebar(1).Picture(), f.Image3.Picture());
  EXPECT_EQ(f.Imagebar(1).Width(), 1699);
  // A new element at 25 keeps its design picture.
  fake.drives.drives['D'] = Gib(100, 25);
  Tick();
  EXPECT_EQ(f.Imagebar(2).Picture(), f.Imagebar(0).Picture());
}

TEST_F(DriveCards, AStickPluggedInAndPulledRebuildsTheCardsAndKeepsTheBottomEdge) {
  fake.drives.drives = {{'C', Gib(100, 40)}, {'F', Gib(100, 50)}};
  Form1& f = Start();
  const int top = f.Top();
  EXPECT_EQ(f.Height(), 1890);
  fake.drives.drives['E'] = Gib(16, 8, kDriveRemovable, "STICK");
  Tick();
  EXPECT_EQ(Cards(), 3);
  EXPECT_EQ(f.CaptionL(2).CaptionText(), "[E:] STICK\r\n8.00GB free of 16.00GB");
  EXPECT_EQ(CardDrive(f.CaptionL(3).CaptionText()), "F:");
  EXPECT_EQ(f.DRIVEICON(2).Picture(), f.DR.Picture());
  EXPECT_EQ(f.Top(), top - 720);
  EXPECT_EQ(f.Height(), 2535);
  fake.drives.drives.erase('E');
  Tick();
  EXPECT_EQ(Cards(), 2);
  EXPECT_EQ(CardDrive(f.CaptionL(2).CaptionText()), "F:");
  EXPECT_EQ(f.DRIVEICON(2).Picture(), f.DD.Picture());
  EXPECT_EQ(f.Top(), top);
  EXPECT_EQ(f.Height(), 1890);
  // The third icon outlives its card, below the window's edge.
  EXPECT_TRUE(f.DRIVEICON.Exists(3));
  EXPECT_FALSE(f.ImageD.Exists(3));
}

TEST_F(DriveCards, ADriveSwappedForAnotherBetweenTicksIsNotRebuiltAndKeepsTheOldIcon) {
  fake.drives.drives = {{'C', Gib(100, 40)}, {'D', Gib(100, 50)}};
  Form1& f = Start();
  const quillet::Caption* card = &f.CaptionL(2);
  fake.drives.drives.erase('D');
  fake.drives.drives['E'] = Gib(16, 1, kDriveRemovable, "STICK");
  Tick();
  EXPECT_EQ(&f.CaptionL(2), card);  // the same element, filled again
  EXPECT_EQ(f.CaptionL(2).CaptionText(), "[E:] STICK\r\n1.00GB free of 16.00GB");
  EXPECT_EQ(f.Imagebar(2).Picture(), f.Image2.Picture());
  EXPECT_EQ(f.DRIVEICON(2).Picture(), f.DD.Picture());
}

TEST_F(DriveCards, WithEveryDriveHiddenTheCardsGoAndTheHeightFollowsTheTemplate) {
  Form1& f = Start();
  const int top = f.Top();
  f.Text3.SetText("\r\nC:\\\r\nD:\\");
  Tick();
  EXPECT_EQ(Cards(), 0);
  EXPECT_EQ(f.Text_ND.Text(), "0");
  EXPECT_EQ(f.Height(), 600);
  EXPECT_EQ(f.Top(), top + 2 * 720);
}

TEST_F(DriveCards, WithTheStopFlagTheTimerNeverRefreshes) {
  Store("SS", "1");
  Form1& f = Start();
  EXPECT_FALSE(f.Timer1.Enabled());
  fake.drives.drives['E'] = Gib(16, 8, kDriveRemovable);
  ui.timers.Advance(120000);
  EXPECT_EQ(Cards(), 2);
  f.Command1.Press();
  EXPECT_EQ(Cards(), 3);
}

TEST_F(DriveCards, TheForcedRebuildMakesEveryCardAgainWithItsIcon) {
  Form1& f = Start();
  fake.drives.drives.erase('D');
  fake.drives.drives['G'] = Gib(16, 8, kDriveRemovable);
  f.Command2.Press();
  EXPECT_EQ(Cards(), 2);
  EXPECT_EQ(CardDrive(f.CaptionL(2).CaptionText()), "G:");
  EXPECT_EQ(f.DRIVEICON(2).Picture(), f.DR.Picture());
}

// A timer tick lands while the scan waits on a drive: the nested refresh runs to its end first.
TEST_F(DriveCards, ARefreshStartedInsideARunningOneDoesNotFail) {
  Form1& f = Start();
  fake.drives.drives['E'] = Gib(16, 8, kDriveRemovable);
  int nested = 0;
  ui.Post([&] {
    ++nested;
    f.Command1.Press();
  });
  ui.Post([&] { ui.timers.Advance(30000); });
  f.Command1.Press();
  EXPECT_EQ(nested, 1);
  EXPECT_TRUE(ui.errors.empty());
  Tick();
  EXPECT_EQ(Cards(), 3);
  EXPECT_EQ(Texts().size(), 3u);
  EXPECT_EQ(CardDrive(f.CaptionL(3).CaptionText()), "E:");
}

TEST_F(DriveCards, ADriveThatHangsNeitherFreezesTheBarNorLosesItsCard) {
  fake.drives.drives['E'] = Gib(16, 8, kDriveRemote, "SHARE");
  Form1& f = Start();
  ASSERT_EQ(Cards(), 3);
  // The share goes offline: its queries block.
  const auto gate = std::make_shared<Gate>();
  {
    const std::lock_guard lock(fake.drives.mutex);
    fake.drives.drives['E'].hang = gate;
    fake.drives.drives['C'] = Gib(100, 10);
  }
  int events = 0;
  ui.Post([&] { ++events; });
  Tick();
  EXPECT_GE(events, 1);  // the user interface ran while the share kept silent
  EXPECT_EQ(Cards(), 3);
  EXPECT_EQ(f.CaptionL(1).CaptionText(), "[C:] \r\n10.00GB free of 100.00GB");
  EXPECT_EQ(f.CaptionL(3).CaptionText(), "[E:] SHARE\r\n8.00GB free of 16.00GB");
  // A second pass does not stack another query on the hanging one.
  Tick();
  EXPECT_EQ(gate->Waiting(), 1);
  // Its late answer counts on the next pass.
  {
    const std::lock_guard lock(fake.drives.mutex);
    fake.drives.drives['E'] = Gib(16, 2, kDriveRemote, "SHARE");
    fake.drives.drives['E'].hang = gate;
  }
  gate->Open();
  Tick();
  Tick();
  EXPECT_EQ(f.CaptionL(3).CaptionText(), "[E:] SHARE\r\n2.00GB free of 16.00GB");
}

TEST_F(DriveCards, ADriveThatHangsFromTheStartIsNotReadyUntilItAnswers) {
  const auto gate = std::make_shared<Gate>();
  fake.drives.drives['E'] = Gib(16, 8, kDriveFixed);
  fake.drives.drives['E'].hang = gate;
  Start();
  EXPECT_EQ(Cards(), 2);
  gate->Open();
  Tick();
  Tick();
  EXPECT_EQ(Cards(), 3);
}

}  // namespace
}  // namespace quillet::testing
