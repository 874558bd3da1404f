// The side bar's quick buttons, the pin that keeps them out, the side
// buttons of the handle strip, and the hover that brings them out.
#include <string>

#include "core/pass_over.h"
#include "core/value.h"
#include "shell/Form1.h"

namespace quillet {
namespace {

constexpr std::uint32_t kFolderAttribute = 16;
const char* const kPinTips[] = {"Gray Pin Unlock All Icons", "Blue Pin Lock Up Icons", "Red Pin Lock all Icons"};

// The quick buttons: pictures on the tool bar look, kept dark on the dark bar.
void StyleQuickButton(lumbutton& button, const char* tip) {
  button.SetCaption("");
  button.SetButtonStyle(5);
  button.SetColorScheme(3);  // a scheme of no table row keeps the colour below
  button.SetBackColor(Rgb(58, 68, 78));
  button.SetPictureAlign(0);
  button.SetToolTip(tip);
}

}  // namespace

void Form1::WireQuickButtons() {
  StyleQuickButton(lumbutton1, "Lock");
  StyleQuickButton(lumbutton2, "Search Win8");
  StyleQuickButton(lumbutton3, "Virtual Folder");
  StyleQuickButton(lumbutton4, "Task Manager");
  StyleQuickButton(lumbutton5, "Run");
  CMD_POWER.SetToolTipText("Shutdown / Restart");
  Image12.SetToolTipText("Run External App");
  Image10.SetToolTipText("Windows Dir");
  Image17.SetToolTipText("Auto Shutdown");
  Image14.SetToolTipText("Exit");

  lumbutton1.on_click = [this] { platform_.session.LockWorkStation(); };
  // lumbutton2 shows the search panel, a window still to come.
  lumbutton3.on_click = [this] { lumbutton3_Click(); };
  lumbutton4.on_click = [this] {
    platform_.shell.ShellExecute("", platform_.process.Environment("SystemRoot") + "\\system32\\taskmgr.exe", "",
                                 "", kShow);
  };
  lumbutton5.on_click = [this] {
    platform_.shell.RunCommandLine("explorer.exe shell:::{2559a1f3-21d7-11d4-bdaf-00c04f60b9f0}", kShowMinimized);
  };
  Image26.on_click = [this] { Image26_Click(); };
  Image26.on_mouse_move = [this](const MouseArgs&) { Image26_MouseMove(); };
  Image10.on_click = [this] {
    platform_.shell.RunCommandLine("Explorer /n," + platform_.process.Environment("SystemRoot"), kShowNormal);
  };
  Image12.on_click = [this] { Image12_Click(); };
  Image9.on_mouse_move = [this](const MouseArgs&) {
    Image9.SetPicture(Image4.Picture());
    Image11.SetPicture(Image14.Picture());
    HideEjectButtons();
  };
  Image11.on_mouse_move = [this](const MouseArgs&) {
    Image11.SetPicture(Image13.Picture());
    Image9.SetPicture(Image14.Picture());
    HideEjectButtons();
  };
  Image16.on_mouse_move = [this](const MouseArgs&) {
    Image9.SetPicture(Image14.Picture());
    Image11.SetPicture(Image14.Picture());
  };
  // CMD_POWER, Image11, Image17 and Image18 open the power panel, the settings,
  // the auto shutdown and the magnifier: windows still to come.
}

void Form1::ShowHoverStrip() {
  Timer3.SetEnabled(true);
  for (lumbutton* b : {&lumbutton1, &lumbutton2, &lumbutton3, &lumbutton4, &lumbutton5}) b->SetVisible(true);
  if (pin_mode_ != 2) {
    SetWidth(kWideWidth);
    Image26.SetVisible(true);
  }
}

void Form1::HideEjectButtons() {
  CMD_EJECT.SetVisible(false);
  CMD_EJECT_USB.SetVisible(false);
}

void Form1::Timer3_Timer() {
  // A hidden or minimised bar keeps the hover until it is back.
  if (GetWindowState() != kNormal) return;
  SetCaption(DecimalText(CaptionL.Count() - 1));
  Command1.Press();
  Timer3.SetEnabled(false);
  HideEjectButtons();
  Image19.SetVisible(false);
  if (pin_mode_ == 0) {
    for (lumbutton* b : {&lumbutton1, &lumbutton2, &lumbutton3, &lumbutton4, &lumbutton5}) b->SetVisible(false);
    Image26.SetVisible(false);
  }
  Image9.SetPicture(Image14.Picture());
  Image11.SetPicture(Image14.Picture());
  if (pin_mode_ != 2) SetWidth(kNarrowWidth);
}

void Form1::Image26_Click() {
  const std::int16_t next = pin_mode_ == 0 ? 1 : pin_mode_ == 1 ? 2 : 0;
  Save("pt", DecimalText(next));
  pin_mode_ = next;
  const Image* pictures[] = {&Image23, &Image24, &Image25};
  Image26.SetPicture(pictures[next]->Picture());
  if (next == 2) SetWidth(kWideWidth);
  Timer3.SetEnabled(true);
}

void Form1::Image26_MouseMove() {
  if (pin_mode_ >= 0 && pin_mode_ <= 2) Image26.SetToolTipText(kPinTips[pin_mode_]);
}

void Form1::lumbutton3_Click() {
  PassOver([&] {
    const std::string folder = Setting("virtual");
    const auto attributes = folder.empty() ? std::nullopt : platform_.files.Attributes(folder);
    if (!attributes || (*attributes & kFolderAttribute) == 0) {
      platform_.dialogs.MessageBox("Set Virtual Folder First !\r\nInside OptionMenu [VP]", kCritical,
                                   "Virtual Folder Not Set !");
      // The settings dialog that leads to the setting is still to come.
      return;
    }
    // The virtual folder browser it toggles is still to come.
  });
}

void Form1::Image12_Click() {
  PassOver([&] {
    const std::string u = Setting("url");
    if (u.size() <= 1) return;
    if (u.find("https") != std::string::npos || Text5.Text().find(u) != std::string::npos)
      platform_.shell.ShellExecute("Open", u, "", "", -1);
    else
      platform_.shell.ShellExecute("", u, "", "", kShowNormal);
  });
}

}  // namespace quillet
