#include "shell/Form1.h"

#include <cmath>
#include <cstdlib>
#include <optional>

#include "core/units.h"
#include "core/pass_over.h"
#include "core/value.h"
#include "drives/drive_scan.h"
#include "shell/TimeMod.h"
#include "shell/settings.h"
#include "widgets/art.h"

namespace quillet {
namespace {

constexpr int kMinimumPeriodSeconds = 15;
// The uptime strip's own colour, shown while no user colour is stored.
constexpr Colour kCaption1Design = Rgb(38, 50, 56);

// A number given as text where a property wants one: the whole text must be a number.
std::optional<double> StrictNumber(std::string_view text) {
  const std::string trimmed = Trim(text);
  if (trimmed.empty()) return std::nullopt;
  char* end = nullptr;
  const double value = std::strtod(trimmed.c_str(), &end);
  if (end == nullptr || *end != '\0' || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace

namespace {

// Control array elements copy their template and start hidden; `wire` gives each its handlers.
ControlArray<Image> ImageArray(Form& form, TwipsRect bounds, bool stretch, std::function<void(Image&, int)> wire) {
  return ControlArray<Image>(
      std::make_unique<Image>("", bounds, stretch, false),
      [stretch, wire](const Image& t, int i) {
        auto copy = std::make_unique<Image>("", t.Bounds(), stretch, false);
        copy->SetPicture(t.Picture());
        copy->Move(t.Bounds());
        wire(*copy, i);
        return copy;
      },
      [&form](Image& e) { form.AddVisual(e); }, [&form](Image& e) { form.RemoveVisual(e); });
}

// The card text as designed: white letters with a dark outline on a see-through ground.
std::unique_ptr<quillet::Caption> CardCaptionTemplate(TextMetrics& metrics) {
  auto caption = std::make_unique<quillet::Caption>("CaptionL", TwipsRect{510, -195, 1815, 720}, metrics, false);
  caption->InitProperties("CaptionL", Font{"Tahoma", 6.75, false});
  caption->SetCaptionShadowed(false);
  caption->SetCaptionOUTColor(Rgb(16, 24, 32));
  return caption;
}

}  // namespace

Form1::Form1(Ui& ui, Platform& platform)
    : Form(ui, WindowArgs()),
      Timer1(ui.Timers(), 30000, true),
      Timer2(ui.Timers(), 60000, true),
      Timer3(ui.Timers(), 2000, false),
      Timer4(ui.Timers(), 2000, false),
      Timer5(ui.Timers(), 1000, false),
      Timer6(ui.Timers(), 100, false),
      Caption1("Caption1", {60, 330, 2025, 180}, ui.Metrics()),
      Image5("Image5", {2340, 720, 315, 945}, false),
      Image9("Image9", {2350, 730, 300, 310}, false),
      Image11("Image11", {2350, 1030, 300, 270}, false),
      Image16("Image16", {2280, 600, 375, 135}, false),
      DFTrans1(*this),
      SysTray1(ui, platform.tray),
      Menu(ui, *this, platform),
      lumbutton1("lumbutton1", {60, 60, 255, 255}, ui, false),
      lumbutton2("lumbutton2", {360, 60, 255, 255}, ui, false),
      lumbutton3("lumbutton3", {660, 60, 255, 255}, ui, false),
      lumbutton4("lumbutton4", {970, 60, 255, 255}, ui, false),
      lumbutton5("lumbutton5", {1300, 60, 255, 255}, ui, false),
      Image26("Image26", {1680, 80, 240, 240}, false, false),
      CMD_POWER("CMD_POWER", {2120, 315, 195, 195}, false),
      Image12("Image12", {2355, 345, 240, 240}, false),
      Image10("Image10", {2385, 1680, 240, 240}, false),
      Image17("Image17", {2385, 1935, 240, 240}, false),
      Image18("Image18", {2400, 2165, 240, 240}, false),
      CMD_EJECT("CMD_EJECT", {0, 0, 960, 720}, false, false),
      CMD_EJECT_USB("CMD_EJECT_USB", {0, 0, 960, 720}, false, false),
      Image19("Image19", {0, 0, 360, 360}, false, false),
      ImageD(ImageArray(*this, {0, -120, 2340, 720}, true,
                        [this](Image& e, int i) { WireCard(kImageD, e, i); })),
      Imagebar(ImageArray(*this, {45, 390, 2265, 105}, true,
                          [this](Image& e, int i) { WireCard(kImagebar, e, i); })),
      CaptionL(
          CardCaptionTemplate(ui.Metrics()),
          [this, &ui](const quillet::Caption& t, int i) {
            auto copy = std::make_unique<quillet::Caption>("CaptionL", t.Bounds(), ui.Metrics(), false);
            copy->CopyPropertiesFrom(t);
            WireCard(kCaptionL, *copy, i);
            return copy;
          },
          [this](quillet::Caption& c) { AddVisual(c); }, [this](quillet::Caption& c) { RemoveVisual(c); }),
      DRIVEICON(ImageArray(*this, {0, -120, 4455, 615}, false,
                           [this](Image& e, int i) { WireCard(kDRIVEICON, e, i); })),
      Image1("Image1", {}, true, false), Image2("Image2", {}, true, false), Image3("Image3", {}, true, false),
      Image6("Image6", {}, true, false), Image7("Image7", {}, true, false), Image8("Image8", {}, true, false),
      Image20("Image20", {}, true, false), Image21("Image21", {}, true, false),
      Image22("Image22", {}, true, false),
      DC("DC", {}, false, false), DD("DD", {}, false, false), DCD("DCD", {}, false, false),
      DR("DR", {}, false, false),
      Image4("Image4", {}, false, false), Image13("Image13", {}, false, false), Image14("Image14", {}, false, false),
      Image23("Image23", {}, false, false), Image24("Image24", {}, false, false),
      Image25("Image25", {}, false, false),
      ps("ps", {0, 0, 405, 405}, ui.Screen().twips_per_pixel, false),
      platform_(platform),
      drive_monitor_(platform.drives) {
  LoadArt();
  WireHiddenControls();
  WireVisuals();
  DFTrans1.Resize();
}

void Form1::LoadArt() {
  const auto art = [this](std::string_view name) { return LoadGifPicture(platform_.resources, "GIF", name); };
  Image1.SetPicture(art("BAR_BLUE"));
  Image2.SetPicture(art("BAR_AMBER"));
  Image3.SetPicture(art("BAR_RED"));
  Image6.SetPicture(Image1.Picture());
  Image7.SetPicture(Image2.Picture());
  Image8.SetPicture(Image3.Picture());
  Image20.SetPicture(art("THIN_BLUE"));
  Image21.SetPicture(art("THIN_ORANGE"));
  Image22.SetPicture(art("THIN_DARKRED"));
  DC.SetPicture(art("DRIVE_SYSTEM"));
  DD.SetPicture(art("DRIVE_HDD"));
  DCD.SetPicture(art("DRIVE_CD"));
  DR.SetPicture(art("DRIVE_REMOVABLE"));
  Image5.SetPicture(art("HANDLE_STRIP"));
  Image4.SetPicture(art("EXIT_LIT"));
  Image13.SetPicture(art("OPTIONS_LIT"));
  Image23.SetPicture(art("PIN_GRAY"));
  Image24.SetPicture(art("PIN_BLUE"));
  Image25.SetPicture(art("PIN_RED"));
  Image26.SetPicture(Image23.Picture());
  CMD_POWER.SetPicture(art("POWER"));
  Image12.SetPicture(art("RUN_EXTERNAL"));
  Image10.SetPicture(art("WINDOWS_FOLDER"));
  Image17.SetPicture(art("AUTO_SHUTDOWN"));
  Image18.SetPicture(art("MAGNIFIER"));
  CMD_EJECT.SetPicture(art("EJECT_DISC"));
  CMD_EJECT_USB.SetPicture(art("EJECT_USB"));
  Image19.SetPicture(art("DROP_MARKER"));
  lumbutton1.SetPictureNormal(art("LOCK"));
  lumbutton2.SetPictureNormal(art("SEARCH"));
  lumbutton3.SetPictureNormal(art("FOLDER"));
  lumbutton4.SetPictureNormal(art("TASK_MANAGER"));
  lumbutton5.SetPictureNormal(art("RUN"));
  ImageD(0).SetPicture(LoadGifPicture(platform_.resources, "NORMAL", "#101"));
  ps.SetBackColor(0x626262);
  ps.SetPicture(art("LAUNCH_EMPTY"));
  Imagebar(0).SetPicture(Image1.Picture());
}

FormArgs Form1::WindowArgs() {
  FormArgs args;
  args.name = "Form1";
  args.bounds = {1320, 5655, 2340, 2790};
  args.border = false;
  args.show_in_taskbar = false;
  args.back_color = kKeyColour;
  return args;
}

Form1::~Form1() {
  for (Visual* v : std::vector<Visual*>(Visuals())) RemoveVisual(*v);
}

std::string Form1::Setting(std::string_view key, std::string_view fallback) {
  return GetSetting(platform_, Name(), key, fallback);
}

void Form1::Save(std::string_view key, std::string_view value) { SaveSetting(platform_, Name(), key, value); }

void Form1::WireHiddenControls() {
  Text2.on_change = [this] {
    PassOver([&] {
      const auto ms = TruncateToInt32(Val(Text2.Text()) * 1000);
      if (ms && *ms >= 0) Timer1.SetInterval(static_cast<std::uint32_t>(*ms));
    });
    Save("Timer", Text2.Text());
  };
  Text3.on_change = [this] { Save("HH", Text3.Text()); };
  Text4.on_change = [this] {
    PassOver([&] {
      // An opaque ground in the stored colour; "T" lets the ground go see-through.
      if (Text4.Text() != "T") {
        Caption1.SetTransparent(false);
        if (const auto colour = TextToInt32(Text4.Text())) Caption1.SetBackColor(static_cast<Colour>(*colour));
      } else {
        Caption1.SetTransparent(true);
      }
    });
    Save("COLOR", Text4.Text());
  };
  Text6.on_change = [this] { Save("launch", Text6.Text()); };
  Text_THEME.on_change = [this] { Save("THEME", Text_THEME.Text()); };
  Text_ND.on_change = [this] {
    if (!Text_ND.Text().empty()) Check2.SetValue(Text_ND.Text() != Caption() ? 1 : 0);
  };
  Check4.on_click = [this] {
    Timer4.SetEnabled(Check4.Value() != 1);
    Save("dock", DecimalText(Check4.Value()));
  };
  Check6.on_click = [this] { Save("iupdate", DecimalText(Check6.Value())); };
  Command1.on_click = [this] { Command1_Click(); };
  Command2.on_click = [this] { Command2_Click(); };
  Command4.on_click = [this] { Command4_Click(); };
  Timer1.on_timer = [this] { ui().Guard([this] { Timer1_Timer(); }); };
  Timer2.on_timer = [this] { ui().Guard([this] { Timer2_Timer(); }); };
  Timer3.on_timer = [this] { ui().Guard([this] { Timer3_Timer(); }); };
  WireFileDrop();
}

void Form1::WireVisuals() {
  Caption1.InitProperties("Caption1", Font{"Tahoma", 6.75, false});
  Caption1.SetCaption("UpTime");
  Caption1.SetCaptionShadowed(false);
  Caption1.SetCaptionOutlined(false);
  Caption1.SetCaptionAligmend(1);
  Caption1.SetTransparent(false);
  Caption1.SetBackColor(kCaption1Design);
  for (Visual* v : std::initializer_list<Visual*>{&Caption1, &Image5, &Image16, &Image9, &Image11, &Image12,
                                                  &CMD_POWER, &Image10, &Image17, &Image18, &lumbutton1,
                                                  &lumbutton2, &lumbutton3, &lumbutton4, &lumbutton5, &Image26,
                                                  &CMD_EJECT, &CMD_EJECT_USB, &Image19})
    AddVisual(*v);
  Image5.SetToolTipText("DClick Minimized");
  Image5.on_mouse_move = [this](const MouseArgs& a) { Image5_MouseMove(a); };
  Image5.on_dbl_click = [this] { Image5_DblClick(); };
  Caption1.on_mouse_move = [this](const MouseArgs& a) { Caption1_MouseMove(a); };
  Caption1.on_mouse_down = [this](const MouseArgs& a) { Caption1_MouseDown(a); };
  Image9.on_click = [this] { Image9_Click(); };
  WireQuickButtons();
  WireEjectButtons();
  SysTray1.SetSysTrayToolTip("Quillet");
  SysTray1.on_left_press = [this] { SysTray1_LeftPress(); };
  SysTray1.on_right_press = [this] { SysTray1_RightPress(); };
  WireCard(kImageD, ImageD(0), 0);
  WireCard(kImagebar, Imagebar(0), 0);
  WireCard(kCaptionL, CaptionL(0), 0);
  WireCard(kDRIVEICON, DRIVEICON(0), 0);
}

void Form1::Form_Load() {
  if (platform_.process.PreviousInstance()) {
    platform_.dialogs.MessageBox("Previous Instance Already Open", kOkOnly | kInformation, "Information");
    ui().EndAtOnce();
    return;
  }
  PassOver([&] { SetBackColor(kKeyColour); });
  PassOver([&] { SetWidth(kNarrowWidth); });
  LoadSettings();
  PassOver([&] { SetCaption(DecimalText(CaptionL.Count() - 1)); });
  PassOver([&] { Command1.Press(); });
  PassOver([&] { SysTray1.Show(true); });
  PassOver([&] { Caption1.SetCaption(FormatUptime(static_cast<std::int32_t>(platform_.clock.TickCount()), 3)); });
  ShowLaunchBarAtStart();
  PassOver([&] {
    if (Setting("Hotkey") == "1") Timer6.SetEnabled(true);
  });
  PassOver([&] {
    if (Setting("frmTop", SingleText(static_cast<float>(Top()))).empty()) {
      SetTop(0);
      SetLeft(0);
    }
  });
  PassOver([&] { ApplyPinMode(); });
}

void Form1::LoadSettings() {
  PassOver([&] {
    if (const auto top = ToInt32(Val(Setting("frmTop", SingleText(static_cast<float>(Top())))))) SetTop(*top);
  });
  PassOver([&] {
    if (const auto left = ToInt32(Val(Setting("frmLeft", SingleText(static_cast<float>(Left())))))) SetLeft(*left);
  });
  PassOver([&] { Text2.SetText(NumberText(Val(Setting("Timer", Text2.Text())))); });
  PassOver([&] {
    Font font = CaptionL(0).Font();
    if (const auto name = Setting("Font"); !name.empty()) font.name = name;
    if (const auto size = StrictNumber(Setting("FontSize")); size && *size > 0) font.size = *size;
    const auto bold = Setting("FontBold");
    if (bold == "Normal") font.bold = false;
    if (bold == "Bold") font.bold = true;
    CaptionL(0).SetFont(font);
  });
  PassOver([&] { Text3.SetText(Setting("HH", Text3.Text())); });
  PassOver([&] { Text4.SetText(Setting("COLOR", Text4.Text())); });
  PassOver([&] {
    if (Val(Setting("launch")) < 1) Save("launch", "1");
    Text6.SetText(Setting("launch", Text6.Text()));
  });
  PassOver([&] {
    if (Val(Setting("SS")) == 1) Timer1.SetEnabled(false);
  });
  PassOver([&] {
    const auto theme = Setting("THEME");
    Text_THEME.SetText(theme.empty() ? "NORMAL" : theme);
  });
  // The thin meter bars replace the live set the cards copy from.
  PassOver([&] {
    if (const auto bars = Setting("meterbar"); !bars.empty() && bars == "0") {
      Image1.SetPicture(Image20.Picture());
      Image2.SetPicture(Image21.Picture());
      Image3.SetPicture(Image22.Picture());
    }
  });
  // Every period under the floor, also one chosen before, reverts to 30 seconds.
  PassOver([&] {
    if (Val(Text2.Text()) < kMinimumPeriodSeconds) Text2.SetText("30");
  });
}

void Form1::ApplyPinMode() {
  const auto pt = Setting("pt");
  if (pt.empty()) return;
  const auto mode = ToInt16(Val(pt));
  if (!mode) return;
  pin_mode_ = *mode;
  if (pin_mode_ != 1 && pin_mode_ != 2) return;
  Image26.SetPicture(pin_mode_ == 1 ? Image24.Picture() : Image25.Picture());
  for (lumbutton* b : {&lumbutton1, &lumbutton2, &lumbutton3, &lumbutton4, &lumbutton5}) b->SetVisible(true);
  Image26.SetVisible(true);
  if (pin_mode_ == 2) SetWidth(kWideWidth);
}

void Form1::Timer1_Timer() {
  SetCaption(DecimalText(CaptionL.Count() - 1));
  Command1.Press();
}

void Form1::Timer2_Timer() {
  Caption1.SetCaption(FormatUptime(static_cast<std::int32_t>(platform_.clock.TickCount()), 3));
}

std::string Form1::GetDriveStrings() { return quillet::GetDriveStrings(platform_.drives); }

bool Form1::IsHomeDrive(std::string_view drive) { return quillet::IsHomeDrive(platform_.process, drive); }

void Form1::SavePosition() {
  if (GetWindowState() != kNormal) return;
  Save("frmTop", SingleText(static_cast<float>(Top())));
  Save("frmLeft", SingleText(static_cast<float>(Left())));
}

void Form1::Caption1_MouseMove(const MouseArgs& args) {
  DragMove(caption1_grab_, args);
  // Only a pointer that really moved starts the hover: a resting one repeats its messages.
  const ScreenPoint p = ui().PointerPosition();
  if (p != caption1_grab_.last_screen) ShowHoverStrip();
  caption1_grab_.last_screen = p;
}

void Form1::Image5_MouseMove(const MouseArgs& args) {
  DragMove(image5_grab_, args);
  image5_grab_.last_screen = ui().PointerPosition();
  HideEjectButtons();
  Timer3.SetEnabled(false);
  Timer3.SetEnabled(true);
  Image9.SetPicture(Image14.Picture());
  Image11.SetPicture(Image14.Picture());
  ShowHoverStrip();
}

void Form1::DragMove(DragHandle& handle, const MouseArgs& args) {
  if (args.button == 0) {
    handle.x = static_cast<std::int16_t>(args.x);
    handle.y = static_cast<std::int16_t>(args.y);
    SavePosition();
  } else if (args.button == kLeftButton) {
    Move({Left() + args.x - handle.x, Top() + args.y - handle.y, Width(), Height()});
  }
}

void Form1::Form_Unload() { SavePosition(); }

void Form1::Form_Resize() {
  if (GetWindowState() == kMinimized) {
    Hide();
    SysTray1.Show(true);
    in_tray_ = true;
  }
}

void Form1::Form_Close() { ExitProgram(false); }

void Form1::Image5_DblClick() {
  SetWindowState(kMinimized);
  // Out and in again: the icon is fresh in the tray.
  SysTray1.Show(false);
  SysTray1.Show(true);
}

void Form1::SysTray1_LeftPress() {
  PassOver([&] {
    if (GetWindowState() == kNormal) {
      SetWindowState(kNormal);
      Invalidate();
    }
    if (GetWindowState() == kMinimized) {
      SetWindowState(kNormal);
      Show();
      Invalidate();
    }
  });
}

void Form1::SysTray1_RightPress() {
  Menu.Load();
  const int item = TrackPopupMenu(quillet::Menu::Items(), ui().PointerPosition(), 0, {});
  if (item != 0 && Menu.Loaded()) Menu.ItemClicked(item);
}

void Form1::Caption1_MouseDown(const MouseArgs& args) {
  // The right button opens the computer folder.
  if (args.button == kRightButton)
    platform_.shell.ShellExecute("", "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}", "", "", kShow);
}

void Form1::Image9_Click() { ExitProgram(true); }

void Form1::ExitProgram(bool from_exit_button) {
  if (from_exit_button) Timer1.SetEnabled(false);
  SysTray1.Show(false);
  in_tray_ = false;
  if (GetWindowState() == kNormal) {
    Save("frmTop", SingleText(static_cast<float>(Top())));
    Save("frmLeft", SingleText(static_cast<float>(Left())));
  }
  ui().EndProgram();
}

}  // namespace quillet
