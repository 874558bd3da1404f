// A click and the pointer on the drive cards.
#include <gtest/gtest.h>

#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

class CardInteraction : public Form1Scenario {
 protected:
  CardInteraction() {
    fake.drives.drives.clear();
    fake.drives.drives['C'] = FakeDrives::Sized(100ull << 30, 40ull << 30);
    fake.drives.drives['E'] = FakeDrives::Sized(0, 0, kDriveCdRom);
    fake.drives.drives['E'].ready = false;
    fake.drives.drives['F'] = FakeDrives::Sized(4ull << 30, 1ull << 30, kDriveRemovable);
    fake.drives.drives['G'] = FakeDrives::Sized(700ull << 20, 0, kDriveCdRom);
  }
  // Card i's picture, text and bar, at points none of the others covers.
  const Visual& Picture(int i) { return form->ImageD(i); }
  const Visual& Text(int i) { return form->CaptionL(i); }
  const Visual& Bar(int i) { return form->Imagebar(i); }
};

TEST_F(CardInteraction, PictureTextAndBarOpenTheDriveAndAnEmptyDiscDriveOpensItsDoor) {
  Start();
  ASSERT_EQ(form->CaptionL(1).CaptionText().substr(0, 4), "[C:]");
  ClickOn(Picture(1), 2330, 30);
  ClickOn(Text(1), 900, 60);
  ClickOn(Bar(1), 30, 30);
  EXPECT_EQ(fake.shell.runs, (std::vector<FakeShell::Run>(3, {"explorer.exe C:", 1})));
  EXPECT_TRUE(fake.devices.commands.empty());
  fake.shell.runs.clear();
  ClickOn(Text(2), 900, 60);  // E:, no disc
  ClickOn(Text(4), 900, 60);  // G:, a disc
  EXPECT_EQ(fake.shell.runs, (std::vector<FakeShell::Run>{{"explorer.exe E:", 1}, {"explorer.exe G:", 1}}));
  EXPECT_EQ(fake.devices.commands,
            (std::vector<std::string>{"Open E:: Alias DriveE: Type CDAudio", "Set DriveE: Door Open"}));
}

TEST_F(CardInteraction, EjectButtonsComeOutOnRemovableAndLoadedDiscCardsAndDontJump) {
  Start();
  MoveOver(Text(1), 900, 60);  // a hard disk: the strip, no eject button
  EXPECT_EQ(form->Width(), 2640);
  MoveOver(Text(2), 900, 60);  // an empty disc drive
  EXPECT_FALSE(form->CMD_EJECT.Visible());
  EXPECT_FALSE(form->CMD_EJECT_USB.Visible());
  MoveOver(Text(3), 900, 60);
  ASSERT_TRUE(form->CMD_EJECT_USB.Visible());
  EXPECT_EQ(form->usb_drive_field, "F:");
  EXPECT_EQ(form->CMD_EJECT_USB.Top(), form->ImageD(3).Top());
  EXPECT_EQ(form->CMD_EJECT_USB.Left(), form->ImageD(3).Left() + form->ImageD(3).Width() - 620);
  EXPECT_EQ(form->HitTest(form->CMD_EJECT_USB.Left() + 10, form->CMD_EJECT_USB.Top() + 10), &form->CMD_EJECT_USB);
  // On to the disc: the button stays where it is until the hover ends.
  MoveOver(Text(4), 900, 60);
  EXPECT_FALSE(form->CMD_EJECT.Visible());
  EXPECT_EQ(form->CMD_EJECT_USB.Top(), form->ImageD(3).Top());
  ui.timers.Advance(2000);
  EXPECT_FALSE(form->CMD_EJECT_USB.Visible());
  MoveOver(Text(4), 900, 60);
  EXPECT_TRUE(form->CMD_EJECT.Visible());
  EXPECT_EQ(form->cd_drive_field, "G:");
  EXPECT_EQ(form->CMD_EJECT.Top(), form->ImageD(4).Top());
}

TEST_F(CardInteraction, EjectButtonsOpenTheDoorOrEjectTheStickOnTheirFamilysPath) {
  Start();
  MoveOver(Text(4), 900, 60);
  ClickOn(form->CMD_EJECT);
  EXPECT_EQ(fake.devices.commands,
            (std::vector<std::string>{"Open G:: Alias DriveG: Type CDAudio", "Set DriveG: Door Open"}));
  EXPECT_FALSE(form->CMD_EJECT.Visible());

  // NT: the storage driver ejects, the button and card stay till the hover ends.
  fake.devices.commands.clear();
  ui.timers.Advance(2000);
  MoveOver(Text(3), 900, 60);
  ClickOn(form->CMD_EJECT_USB);
  EXPECT_EQ(fake.devices.commands, (std::vector<std::string>{"eject F:"}));
  EXPECT_TRUE(form->CMD_EJECT_USB.Visible());
  // The 9x family: the block device request on drive 6, then hidden.
  fake.devices.nt = false;
  ClickOn(form->CMD_EJECT_USB);
  ASSERT_EQ(fake.devices.ioctls.size(), 1u);
  EXPECT_EQ(fake.devices.ioctls[0], (std::array<std::uint32_t, 7>{6, 0, 0x849, 0x440D, 0, 0, 0}));
  EXPECT_FALSE(form->CMD_EJECT_USB.Visible());

  // A field whose drive has changed its type since: nothing.
  fake.devices.commands.clear();
  form->usb_drive_field = "C:";
  form->cd_drive_field = "F:";
  form->CMD_EJECT_USB.SetVisible(true);
  ClickOn(form->CMD_EJECT_USB);
  form->CMD_EJECT.SetVisible(true);
  ClickOn(form->CMD_EJECT);
  EXPECT_TRUE(fake.devices.commands.empty());
  EXPECT_EQ(fake.devices.ioctls.size(), 1u);
}

TEST(CardInteractionLimit, CardsAfterTheTwentyFourthOpenNothing) {
  FakePlatform fake;
  for (char letter = 'B'; letter <= 'Z'; ++letter) fake.drives.drives[letter] = FakeDrives::Sized(1ull << 30, 1ull << 29);
  HeadlessUi ui;
  Form1 form(ui, fake.platform);
  form.Load();
  ASSERT_EQ(form.CaptionL.Count() - 1, 25);
  for (const int i : {24, 25}) {
    const Visual& text = form.CaptionL(i);
    form.DispatchMouse(MouseEventKind::kDown, {kLeftButton, 0, text.Left() + 900, text.Top() + 60});
    form.DispatchMouse(MouseEventKind::kUp, {kLeftButton, 0, text.Left() + 900, text.Top() + 60});
  }
  EXPECT_EQ(fake.shell.runs, (std::vector<FakeShell::Run>{{"explorer.exe Y:", 1}}));
}

}  // namespace
}  // namespace quillet::testing
