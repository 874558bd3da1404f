#include "launch/Form11.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "core/pass_over.h"
#include "core/value.h"
#include "launch/launch_slots.h"
#include "ui/bitmap_file.h"
#include "shell/Form1.h"
#include "shell/settings.h"
#include "widgets/art.h"

namespace quillet {
namespace {

constexpr TwipsRect kDesignBounds{0, 0, 480, 1710};
constexpr TwipsRect kSlotBounds{10, 285, 435, 435};
constexpr int kSlotGap = 15;

std::unique_ptr<PictureBox> SlotTemplate(double twips_per_pixel) {
  auto box = std::make_unique<PictureBox>("p", kSlotBounds, twips_per_pixel);
  box->SetBackColor(kSlotGrey);
  return box;
}

// The number of slots `Form1.Text6` asks for; slot numbers are 16-bit.
int SlotCount(const HiddenTextBox& text6) { return static_cast<int>(std::clamp(Val(text6.Text()), 0.0, 32767.0)); }

// The height of a window of `count` slots, `extra` below them.
int ColumnHeight(int count, int slot_height, int extra) { return count * slot_height + slot_height + extra; }

// A height below zero is refused, as the window refuses it.
void SetHeightChecked(Form& form, int height) {
  if (height < 0) throw std::invalid_argument("Invalid property value");
  form.SetHeight(height);
}

// The name behind the last backslash, found from the front as the text search does.
std::string NameAfterLastBackslash(const std::string& path) {
  std::size_t last = 0;
  for (std::size_t at = InStrText(path, "\\"); at != 0; at = InStrText(path.substr(last), "\\")) last += at;
  return path.substr(last);
}

}  // namespace

FormArgs Form11::WindowArgs() {
  FormArgs args;
  args.name = "Form11";
  args.bounds = kDesignBounds;
  args.border = false;
  args.show_in_taskbar = false;
  args.back_color = kKeyColour;
  return args;
}

Form11::Form11(Ui& ui, Form1& form1, Platform& platform)
    : Form(ui, WindowArgs()),
      Caption1("Caption1", {10, 0, 435, 105}, ui.Metrics()),
      Image13("Image13", {0, 120, 150, 150}, false),
      Image14("Image14", {160, 120, 150, 150}, false),
      Image1("Image1", {330, 120, 150, 150}, false),
      p(SlotTemplate(ui.Screen().twips_per_pixel),
        [this](const PictureBox& t, int i) {
          auto box = std::make_unique<PictureBox>("p", t.Bounds(), t.TwipsPerPixel());
          box->SetBackColor(t.BackColor());
          box->SetPicture(t.Picture(), t.TwipsPerPixel());
          box->SetToolTipText(t.ToolTipText());
          WireSlot(*box, i);
          return box;
        },
        [this](PictureBox& b) { AddVisual(b); }, [this](PictureBox& b) { RemoveVisual(b); }, 1),
      DFTrans1(*this),
      form1_(form1),
      platform_(platform) {
  Caption1.InitProperties("Caption1", Font{"Tahoma", 6.75, false});
  Caption1.SetCaption("");
  Caption1.SetCaptionGradientTyp(1);
  for (Visual* v : std::initializer_list<Visual*>{&Caption1, &Image13, &Image14, &Image1}) AddVisual(*v);
  Image13.SetPicture(LoadGifPicture(platform.resources, "GIF", "LAUNCH_ADD"));
  Image14.SetPicture(LoadGifPicture(platform.resources, "GIF", "LAUNCH_REMOVE"));
  Image1.SetPicture(LoadGifPicture(platform.resources, "GIF", "LAUNCH_CLOSE"));
  Image13.on_click = [this] { Image13_Click(); };
  Image14.on_click = [this] { Image14_Click(); };
  Image1.on_click = [this] { Image1_Click(); };
  Caption1.on_mouse_move = [this](const MouseArgs& a) { Caption1_MouseMove(a); };
  WireSlot(p(1), 1);
  AcceptFiles(true);
  DFTrans1.Resize();
}

Form11::~Form11() {
  for (Visual* v : std::vector<Visual*>(Visuals())) RemoveVisual(*v);
}

std::string Form11::Setting(std::string_view section, std::string_view key, std::string_view fallback) {
  return GetSetting(platform_, section, key, fallback);
}

void Form11::WireSlot(PictureBox& box, int index) {
  box.on_mouse_down = [this, index](const MouseArgs& a) { p_MouseDown(index, a); };
  box.on_mouse_move = [this, index](const MouseArgs&) { p_MouseMove(index); };
  box.on_ole_drag_drop = [this, index](const std::vector<std::string>& files, int, int) {
    p_OLEDragDrop(index, files);
  };
}

// The slots are rebuilt at each load; those of an earlier load go.
void Form11::ResetToDesign() {
  for (int i = p.Count(); i > 1; --i) (void)p.Unload(i);
  p(1).SetToolTipText("");
  p(1).SetPicture(nullptr);
  p(1).SetBackColor(kSlotGrey);
  Move(kDesignBounds);
}

void Form11::Form_Load() {
  ResetToDesign();
  if (!Setting("Form11", "frmTop").empty()) {
    PassOver([&] { SetTop(ToInt32(Val(Setting("Form11", "frmTop", DecimalText(Top())))).value()); });
    PassOver([&] { SetLeft(ToInt32(Val(Setting("Form11", "frmLeft", DecimalText(Left())))).value()); });
  } else {
    PlaceBeside();
  }
  SetBackColor(kKeyColour);
  (void)LoadSlotBitmap(p(1), 1);
  const int count = SlotCount(form1_.Text6);
  for (int i = 2; i <= count; ++i) {
    if (!p.Load(i)) continue;
    if (!LoadSlotBitmap(p(i), i)) p(i).SetPicture(form1_.ps.ImagePtr(), p(i).TwipsPerPixel());
    StackBelow(i);
    p(i).SetVisible(true);
  }
  SetHeight(ColumnHeight(p.Count(), p(1).Height(), 255));
  Caption1.SetCaptionGradientStart(form1_.Caption1.CaptionGradientStart());
}

void Form11::PlaceBeside() {
  if (ui().Screen().width_twips / 2 < form1_.Left())
    SetLeft(form1_.Left() - Width());
  else
    SetLeft(form1_.Width() + form1_.Left());
  SetTop(form1_.ImageD(1).Top() + form1_.Top());
}

bool Form11::LoadSlotBitmap(PictureBox& box, int index) {
  const std::string file = SlotBitmapPath(platform_.process, index);
  if (!platform_.files.ListingFinds(file)) return false;
  const auto bytes = platform_.files.ReadWholeFile(file);
  // A file that isn't a bitmap is taken as none.
  const auto picture = bytes ? DecodeBitmapFile(*bytes) : std::nullopt;
  if (!picture) return false;
  box.SetPicture(std::make_shared<const Picture>(*picture), box.TwipsPerPixel());
  return true;
}

void Form11::StackBelow(int index) { p(index).SetTop(p(index - 1).Height() + p(index - 1).Top() + kSlotGap); }

void Form11::Caption1_MouseMove(const MouseArgs& args) {
  if (args.button == 0) {
    grab_x_ = static_cast<std::int16_t>(args.x);
    grab_y_ = static_cast<std::int16_t>(args.y);
    if (GetWindowState() == kNormal) {
      SaveSetting(platform_, "Form11", "frmTop", DecimalText(Top()));
      SaveSetting(platform_, "Form11", "frmLeft", DecimalText(Left()));
    }
  } else if (args.button == kLeftButton) {
    Move({args.x - grab_x_ + Left(), args.y - grab_y_ + Top(), Width(), Height()});
  }
}

void Form11::Image13_Click() {
  const int n = SlotCount(form1_.Text6) + 1;
  if (p.Count() >= n) return;
  if (!p.Load(n)) return;
  p(n).SetPicture(form1_.ps.ImagePtr(), p(n).TwipsPerPixel());
  StackBelow(n);
  p(n).SetVisible(true);
  form1_.Text6.SetText(DecimalText(p.Count()));
  SetHeight(ColumnHeight(p.Count(), p(1).Height(), 300));
}

void Form11::Image14_Click() {
  PassOver([&] {
    const auto n = ToInt16(Val(form1_.Text6.Text()));
    if (!n || p.Count() != *n || *n <= 1) return;
    (void)platform_.files.FileDelete(SlotBitmapPath(platform_.process, *n));
    DeleteSetting(platform_, "Form1", SlotKey(*n));
    (void)p.Unload(*n);
    form1_.Text6.SetText(DecimalText(p.Count()));
    // The height below zero is refused: the window stays a slot too tall.
    PassOver([&] { SetHeightChecked(*this, -ColumnHeight(p.Count(), p(1).Height(), 0) - 255); });
  });
}

void Form11::Image1_Click() {
  SaveSetting(platform_, "Form1", "LB", "D");
  Unload();
}

void Form11::p_MouseDown(int index, const MouseArgs& args) {
  PassOver([&] {
    if (args.button == kLeftButton && args.shift == kCtrlMask) {
      p(index).SetPicture(form1_.ps.ImagePtr(), p(index).TwipsPerPixel());
      (void)platform_.files.FileDelete(SlotBitmapPath(platform_.process, index));
      DeleteSetting(platform_, "Form1", SlotKey(index));
    } else if (args.button == kLeftButton) {
      (void)platform_.shell.ShellExecute("", Setting("Form1", SlotKey(index)), "", "", kShow);
    } else if (args.button == kRightButton) {
      (void)platform_.shell.RunCommandLine("Explorer /select," + Setting("Form1", SlotKey(index)), kShowNormal);
    }
  });
}

void Form11::p_MouseMove(int index) {
  const std::string target = Setting("Form1", SlotKey(index));
  if (target.empty()) return;
  std::string tip(1, ' ');
  tip.append(NameAfterLastBackslash(target)).push_back(' ');
  p(index).SetToolTipText(std::move(tip));
}

void Form11::p_OLEDragDrop(int index, const std::vector<std::string>& files) {
  PictureBox& box = p(index);
  box.SetPicture(nullptr);
  box.SetBackColor(SlotBackColour(form1_.Text4.Text()));
  if (files.empty()) return;
  const std::string& name = files.front();
  // The name's last four characters; a name of three or fewer has none to take.
  if (name.size() <= 3) throw std::invalid_argument("Invalid procedure call or argument");
  std::string target = name.substr(name.size() - 4) == ".lnk" ? GetShortcutTarget(platform_.shell, name) : name;
  const auto icon = platform_.shell.ExtractAssociatedIcon(target);
  CaptureSlot(platform_, box, index, target, icon.get(), ui().Screen().twips_per_pixel);
}

}  // namespace quillet
