// The side bar's drive cards and the refresh that keeps them current: a
// changed count rebuilds the cards, the bottom edge stays where it was.
#include <cmath>

#include "core/pass_over.h"
#include "core/value.h"
#include "drives/drive_cards.h"
#include "drives/drive_scan.h"
#include "shell/Form1.h"

namespace quillet {
void Form1::BuildDriveList(std::string_view raw) {
  Text1.SetText("");
  // Every drive is asked at once; each answer is taken as it comes.
  drive_monitor_.Ask(RootsOf(raw));
  const auto let_events_run = [this] { ui().DoEvents(); };
  const DriveScan scan = ScanDrives(
      raw, [&](const std::string& root) { return drive_monitor_.Await(root, let_events_run).ready; },
      [&](const std::string& root) { return drive_monitor_.Await(root, let_events_run).type; },
      [this] { return Text3.Text(); }, let_events_run);
  Text1.SetText(scan.list);
  Text_ND.SetText(DecimalText(scan.count));
}

ByteCount Form1::GetDiskSpace(std::string_view drive, bool want_free) {
  return SpaceOf(drive_monitor_.Last(drive).space, want_free);
}

void Form1::Command1_Click() {
  PassOver([&] { SetCaption(Text_ND.Text()); });
  PassOver([&] { Text_ND.SetText(""); });
  PassOver([&] { BuildDriveList(GetDriveStrings()); });
  PassOver([&] {
    if (Check2.Value() == 1) Command4.Press();
  });
  const int count = static_cast<int>(Val(Text_ND.Text()));
  for (int i = 1; i <= count; ++i) {
    if (Check2.Value() == 1) {
      MakeCard(i);
      FillCard(i);
      SetCardIcon(i);
    } else {
      FillCard(i);
    }
  }
  FitHeightKeepingBottom();
}

void Form1::Command2_Click() {
  PassOver([&] {
    SetCaption(Text_ND.Text());
    Text_ND.SetText("");
  });
  PassOver([&] { BuildDriveList(GetDriveStrings()); });
  PassOver([&] { SetCaption(DecimalText(CaptionL.Count() - 1)); });
  const int loaded = CaptionL.Count() - 1;
  for (int i = 1; i <= loaded; ++i) {
    PassOver([&] { (void)CaptionL.Unload(i); });
    PassOver([&] { (void)ImageD.Unload(i); });
    PassOver([&] { (void)Imagebar.Unload(i); });
  }
  const int count = static_cast<int>(Val(Text_ND.Text()));
  for (int i = 1; i <= count; ++i) {
    MakeCard(i);
    FillCard(i);
    SetCardIcon(i);
  }
  FitHeightKeepingBottom();
}

void Form1::Command4_Click() {
  PassOver([&] { SetCaption(DecimalText(CaptionL.Count() - 1)); });
  // Icons are left loaded: a later card of the same number moves its icon and sets it anew.
  const int loaded = CaptionL.Count() - 1;
  for (int i = 1; i <= loaded; ++i) {
    PassOver([&] { (void)CaptionL.Unload(i); });
    PassOver([&] {
      if (Check2.Value() == 1) (void)ImageD.Unload(i);
    });
    PassOver([&] { (void)Imagebar.Unload(i); });
  }
}

void Form1::MakeCard(int i) {
  // Loading an element that is there already fails and is passed over.
  (void)ImageD.Load(i);
  (void)Imagebar.Load(i);
  (void)CaptionL.Load(i);
  (void)DRIVEICON.Load(i);
  PassOver([&] { ImageD(i).SetTop(ImageD(i - 1).Top() + ImageD(i - 1).Height() - 75); });
  PassOver([&] { DRIVEICON(i).SetTop(ImageD(i - 1).Top() + ImageD(i - 1).Height() - 75); });
  PassOver([&] { CaptionL(i).SetTop(CaptionL(i - 1).Top() + CaptionL(i - 1).Height() - 75); });
  PassOver([&] { Imagebar(i).SetTop(Imagebar(i - 1).Top() + Imagebar(i - 1).Height() + 540); });
}

void Form1::FillCard(int i) {
  PassOver([&] {
    const std::size_t p = InStrText(Text1.Text(), "\r");
    // "C:\" + CR gives "C:"; without a line the drive stays the last one.
    if (p >= 2) card_drive_ = Text1.Text().substr(0, p - 2);
    Text1.SetText(Text1.Text().size() > p + 1 ? Text1.Text().substr(p + 1) : std::string());
  });
  const std::string d = card_drive_;
  std::string total, free;
  PassOver([&] {
    total = SpaceText(GetDiskSpace(d, false));
    free = SpaceText(GetDiskSpace(d, true));
    CaptionL(i).SetCaption(CardText(d, drive_monitor_.Last(d).label, free, total));
  });
  PassOver([&] {
    if (total == "0.00") {
      Imagebar(i).SetVisible(false);
      return;
    }
    if (const auto pct = FreePercent(free, total)) {
      switch (BarPictureFor(*pct)) {
        case BarPicture::kPlenty: Imagebar(i).SetPicture(Image1.Picture()); break;
        case BarPicture::kLow: Imagebar(i).SetPicture(Image2.Picture()); break;
        case BarPicture::kCritical: Imagebar(i).SetPicture(Image3.Picture()); break;
        case BarPicture::kKeep: break;
      }
    }
    Imagebar(i).SetWidth(static_cast<int>(std::lround(BarWidth(free, total))));
    Imagebar(i).SetVisible(true);
  });
  PassOver([&] { CaptionL(i).SetVisible(true); });
}

void Form1::SetCardIcon(int i) {
  PassOver([&] {
    const std::string d = CardDrive(CaptionL(i).CaptionText());
    switch (drive_monitor_.Last(d).type) {
      case kDriveRemovable: DRIVEICON(i).SetPicture(DR.Picture()); break;
      case kDriveFixed: DRIVEICON(i).SetPicture(IsHomeDrive(d) ? DC.Picture() : DD.Picture()); break;
      case kDriveCdRom: DRIVEICON(i).SetPicture(DCD.Picture()); break;
      default: break;  // the element keeps what it has
    }
  });
  PassOver([&] {
    ImageD(i).SetVisible(true);
    DRIVEICON(i).SetVisible(true);
    BringToFront(DRIVEICON(i));
    BringToFront(Imagebar(i));
  });
}

void Form1::FitHeightKeepingBottom() {
  PassOver([&] {
    const int last = ImageD.Count() - 1;
    SetHeight(ImageD(last).Top() + ImageD(last).Height());
  });
  PassOver([&] {
    const int old_count = static_cast<int>(Val(Caption()));
    const int new_count = CaptionL.Count() - 1;
    const int h = ImageD(0).Height();
    if (Caption() == "0") return;  // the first building moves nothing
    if (old_count < new_count) SetTop(Top() - (new_count - old_count) * h);
    else if (old_count > new_count) SetTop(Top() + (old_count - new_count) * h);
  });
}

}  // namespace quillet
