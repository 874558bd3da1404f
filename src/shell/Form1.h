// The side bar: the program's first window and the owner of all others.
#pragma once

#include <cstdint>
#include <string>

#include "core/byte_count.h"
#include "drives/drive_monitor.h"
#include "platform/platform.h"
#include "ui/control_array.h"
#include "ui/form.h"
#include "ui/hidden_controls.h"
#include "ui/picture_box.h"
#include "ui/timer.h"
#include "ui/visual.h"
#include "widgets/Caption.h"
#include "shell/Menu.h"
#include "widgets/DFTrans.h"
#include "widgets/SysTray.h"
#include "widgets/lumbutton.h"

namespace quillet {

class Form11;

class Form1 : public Form {
 public:
  Form1(Ui& ui, Platform& platform);
  ~Form1() override;

  // The two widths: the cards only, and with the handle strip and side buttons.
  static constexpr int kNarrowWidth = 2350;
  static constexpr int kWideWidth = 2640;

  // The window as designed: borderless, out of the task bar, see-through on the key colour.
  static FormArgs WindowArgs();

  // Shared operations other windows call.
  ByteCount GetDiskSpace(std::string_view drive, bool want_free);
  std::string GetDriveStrings();
  void BuildDriveList(std::string_view raw);
  bool IsHomeDrive(std::string_view drive);
  void SavePosition();
  std::int16_t PinMode() const { return pin_mode_; }
  bool InTray() const { return in_tray_; }
  // Saves the place of a normal window, takes the icon out and ends the
  // program; the exit button also stops the refresh first.
  void ExitProgram(bool from_exit_button);

  // Hidden controls: the program's shared variables.
  HiddenTextBox Text1, Text2, Text3, Text4, Text5, Text6{"1"}, Text8, Text_ND{"0"}, Text_THEME;
  HiddenCheckBox Check2, Check4, Check6;
  HiddenCommand Command1{"Get Active Logical Drives"};
  HiddenCommand Command2{"Recall"};
  HiddenCommand Command4{"Unload Label"};

  Timer Timer1, Timer2, Timer3, Timer4, Timer5, Timer6;

  quillet::Caption Caption1;  // the uptime strip, also a drag handle
  Image Image5;  // handle strip
  Image Image9;  // exit button of the handle strip, lit while the pointer is on it
  Image Image11;  // options button of the strip, the same
  Image Image16;  // a see-through area above the strip that puts both out
  DFTrans DFTrans1;
  SysTray SysTray1;
  quillet::Menu Menu;  // the tray icon's menu, a hidden form

  // The hover strip: five quick buttons and the pin.
  lumbutton lumbutton1, lumbutton2, lumbutton3, lumbutton4, lumbutton5;
  Image Image26;
  // Side buttons, shown while the window is wide.
  Image CMD_POWER, Image12, Image10, Image17, Image18;
  // Eject buttons that come out on a card, and the drop marker.
  Image CMD_EJECT, CMD_EJECT_USB, Image19;

  // The drive cards: element i of each array shows drive i; element 0 is the template.
  ControlArray<Image> ImageD;
  ControlArray<Image> Imagebar;
  ControlArray<quillet::Caption> CaptionL;  // qualified: Caption() is the title text
  ControlArray<Image> DRIVEICON;

  // Pictures the cards copy from; they live in a frame no one sees.
  Image Image1, Image2, Image3;      // live meter bars: plenty, low, critical
  Image Image6, Image7, Image8;      // the standard set
  Image Image20, Image21, Image22;   // the thin set
  Image DC, DD, DCD, DR;             // system disk, disk, optical, removable
  Image Image4, Image13, Image14;    // exit lit, options lit, blank
  Image Image23, Image24, Image25;   // the gray, blue and red pin

  // The drives of the eject buttons, "E:".
  std::string cd_drive_field, usb_drive_field;

  // File drop
  // Deletes a folder with all in it: true when it was there and is gone.
  bool KillFolder(std::string path);

  // Launch bar
  PictureBox ps;  // the picture of an empty slot, in a frame no one sees
  // The launch bar window, made at the first use; it loads when its
  // controls are touched.
  quillet::Form11& Form11();
  // Paints every slot again from its saved target, in the current ground colour.
  void QL_Replace();

 protected:
  void Form_Load() override;
  void Form_Unload() override;
  void Form_Resize() override;
  void Form_Close() override;

 private:
  void WireHiddenControls();
  void WireVisuals();
  void LoadSettings();
  void ApplyPinMode();
  void LoadArt();
  void Command1_Click();
  void Command2_Click();
  void Command4_Click();
  void MakeCard(int i);
  void FillCard(int i);
  void SetCardIcon(int i);
  void FitHeightKeepingBottom();
  void Timer1_Timer();
  void Timer2_Timer();
  void Timer3_Timer();
  void Image5_DblClick();
  void Caption1_MouseDown(const MouseArgs& args);
  void Caption1_MouseMove(const MouseArgs& args);
  void Image5_MouseMove(const MouseArgs& args);
  void Image9_Click();
  // Quick buttons, pin and side buttons.
  void WireQuickButtons();
  void ShowHoverStrip();
  void HideEjectButtons();
  void Image26_Click();
  void Image26_MouseMove();
  void lumbutton3_Click();
  void Image12_Click();
  // Cards: the same handlers for every element of the four arrays.
  enum CardArray { kImageD, kImagebar, kCaptionL, kDRIVEICON };
  void WireCard(CardArray array, Visual& element, int i);
  void WireEjectButtons();
  void Card_Click(int i);
  void Card_MouseMove(CardArray array, int i);
  void PlaceEjectButton(Image& button, int i);
  void CMD_EJECT_Click();
  void CMD_EJECT_USB_Click();
  // The two handles keep their own grab point and the pointer's last place.
  struct DragHandle {
    std::int16_t x = 0, y = 0;
    ScreenPoint last_screen;
  };
  void DragMove(DragHandle& handle, const MouseArgs& args);
  void SysTray1_LeftPress();
  void SysTray1_RightPress();
  std::string Setting(std::string_view key, std::string_view fallback = {});
  void Save(std::string_view key, std::string_view value);

  Platform& platform_;
  DriveMonitor drive_monitor_;
  std::string card_drive_;  // the drive the card loop fills, kept across a failed step
  DragHandle image5_grab_, caption1_grab_;
  ScreenPoint card_pointer_[4];  // each array's handler keeps its own
  std::int16_t pin_mode_ = 0;
  bool in_tray_ = false;

  // File drop
  void WireFileDrop();
  void WireCardDrop(CardArray array, Visual& element, int i);
  void ImageD_OLEDragOver(int i);
  void Card_OLEDragDrop(int i, const std::vector<std::string>& paths);
  bool CopyDropped(const std::string& s, const std::string& t, bool replace);
  void ShowForm7();
  void Timer5_Timer();
  struct Form7Deleter {
    void operator()(class Form7* splash) const;
  };
  std::unique_ptr<class Form7, Form7Deleter> form7_;  // the copy splash, made when first shown

  // Launch bar
  void ShowLaunchBarAtStart();
  struct Form11Deleter {
    void operator()(quillet::Form11* bar) const;
  };
  std::unique_ptr<quillet::Form11, Form11Deleter> form11_;
};

}  // namespace quillet
