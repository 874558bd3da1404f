// What a click and the pointer do on a drive card: the same handlers serve
// the card's picture, bar, text and icon.
#include <optional>
#include <string>

#include "core/pass_over.h"
#include "drives/drive_cards.h"
#include "drives/eject.h"
#include "shell/Form1.h"

namespace quillet {
namespace {

// The last cards the program opens by a click; those after it open nothing.
constexpr int kLastClickableCard = 24;

// The 12 characters of a card text from "free of": "free of 0.00" is an
// empty drive. Nothing when the text has no "free of".
std::optional<std::string> FreeOfText(const std::string& card_text) {
  const std::size_t at = card_text.find("free of");
  if (at == std::string::npos) return std::nullopt;
  return card_text.substr(at, 12);
}

}  // namespace

void Form1::WireEjectButtons() {
  for (Image* button : {&CMD_EJECT, &CMD_EJECT_USB}) button->SetHandCursor(true);
  CMD_EJECT.on_click = [this] { CMD_EJECT_Click(); };
  CMD_EJECT_USB.on_click = [this] { CMD_EJECT_USB_Click(); };
}

void Form1::WireCard(CardArray array, Visual& element, int i) {
  element.on_mouse_move = [this, array, i](const MouseArgs&) { Card_MouseMove(array, i); };
  // The icon lies over the picture; a click on it goes nowhere.
  if (array != kDRIVEICON) element.on_click = [this, i] { Card_Click(i); };
  if (array == kImageD || array == kDRIVEICON) WireCardDrop(array, element, i);
}

void Form1::Card_Click(int i) {
  if (i < 1 || i > kLastClickableCard) return;
  PassOver([&] {
    const std::string text = CaptionL(i).CaptionText();
    const std::string d = CardDrive(text);
    platform_.shell.RunCommandLine("explorer.exe " + d, kShowNormal);
    // An empty optical drive opens its door as well.
    if (platform_.drives.DriveType(d) == kDriveCdRom && FreeOfText(text) == "free of 0.00")
      OpenCdDoor(platform_.devices, d);
  });
}

void Form1::Card_MouseMove(CardArray array, int i) {
  // An eject button is out on a card: it must not jump to another.
  if (CMD_EJECT.Visible() || CMD_EJECT_USB.Visible()) return;
  const ScreenPoint p = ui().PointerPosition();
  ScreenPoint& last = card_pointer_[array];
  if (p != last) ShowHoverStrip();
  if (p != last && CaptionL.Exists(i)) {
    const std::string text = CaptionL(i).CaptionText();
    const std::string d = CardDrive(text);
    const int type = platform_.drives.DriveType(d);
    if (type == kDriveRemovable) {
      usb_drive_field = d;
      PlaceEjectButton(CMD_EJECT_USB, i);
    } else if (type == kDriveCdRom && FreeOfText(text) != "free of 0.00") {
      cd_drive_field = d;
      PlaceEjectButton(CMD_EJECT, i);
    }
  }
  last = p;
  if (array == kImageD) {
    Image9.SetPicture(Image14.Picture());
    Image11.SetPicture(Image14.Picture());
  }
}

void Form1::PlaceEjectButton(Image& button, int i) {
  button.Move({ImageD(i).Left() + ImageD(i).Width() - 620, ImageD(i).Top(), button.Width(), button.Height()});
  // Cards loaded later lie above it otherwise.
  BringToFront(button);
  button.SetVisible(true);
}

}  // namespace quillet
