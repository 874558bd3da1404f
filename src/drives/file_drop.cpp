// Files and folders dropped on a drive card are copied to the root of its
// drive; the drop marker shows where, the splash spins beside the pointer.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drives/Form7.h"
#include "drives/drive_cards.h"
#include "shell/Form1.h"

namespace quillet {
namespace {

constexpr std::uint32_t kFolderAttribute = 16;

// The file system doesn't tell names apart by case.
bool SamePath(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

}  // namespace

void Form1::Form7Deleter::operator()(Form7* splash) const { std::default_delete<Form7>()(splash); }

void Form1::WireFileDrop() {
  Timer5.on_timer = [this] { ui().Guard([this] { Timer5_Timer(); }); };
  Image19.on_mouse_move = [this](const MouseArgs&) { Image19.SetVisible(false); };
  AcceptFiles(true);
}

void Form1::WireCardDrop(CardArray array, Visual& element, int i) {
  element.on_ole_drag_drop = [this, i](const std::vector<std::string>& paths, int, int) {
    Card_OLEDragDrop(i, paths);
  };
  if (array == kImageD) element.on_ole_drag_over = [this, i](int, int) { ImageD_OLEDragOver(i); };
}

void Form1::ImageD_OLEDragOver(int i) {
  // A disc can't take the files: no marker, and the drop is refused later.
  if (platform_.drives.DriveType(CardDrive(CaptionL(i).CaptionText())) == kDriveCdRom) return;
  Image19.Move({ImageD(i).Left() + Image19.Width() / 4, ImageD(i).Top(), Image19.Width(), Image19.Height()});
  BringToFront(Image19);
  Image19.SetVisible(true);
  Timer3.SetEnabled(true);
}

void Form1::Card_OLEDragDrop(int i, const std::vector<std::string>& paths) {
  for (const std::string& s : paths) {
    const std::string name = s.substr(s.rfind('\\') + 1);
    const std::string d = CardDrive(CaptionL(i).CaptionText());
    if (platform_.drives.DriveType(d) == kDriveCdRom) return;
    const std::string t = d + "\\" + name;
    // The item lies on that root already; spelled in another case it is the
    // same item, and copying it onto itself would lose it.
    if (SamePath(s, t)) {
      Image19.SetVisible(false);
      return;
    }
    // Replacing the folder that holds the item would delete the item before its copy.
    if (s.size() > t.size() && SamePath(std::string_view(s).substr(0, t.size() + 1), t + "\\")) {
      Image19.SetVisible(false);
      platform_.dialogs.MessageBox("Cannot copy " + s + " to " + t + ": it lies inside it.", kOkOnly | kExclamation,
                                   "Quillet");
      return;
    }
    const bool there = platform_.files.ListingFinds(t);
    if (there && platform_.dialogs.MessageBox(t + "\r\n\r\n", kYesNo, "already exists do you want overwrite?") !=
                     kAnswerYes)
      continue;
    if (!CopyDropped(s, t, there)) return;
  }
}

// Copies one dropped item with the splash up; a failure ends the drop.
bool Form1::CopyDropped(const std::string& s, const std::string& t, bool replace) {
  ShowForm7();
  FileService& files = platform_.files;
  const bool folder = (files.Attributes(s).value_or(0) & kFolderAttribute) != 0;
  bool copied = false;
  if (folder) {
    if (replace) (void)KillFolder(t);
    copied = files.CopyFolder(s, t);
  } else {
    copied = (!replace || files.FileDelete(t)) && files.FileCopy(s, t);
  }
  if (!copied) {
    Timer5_Timer();
    Image19.SetVisible(false);
    platform_.dialogs.MessageBox("Cannot copy " + s + " to " + t + ".", kOkOnly | kExclamation, "Quillet");
    return false;
  }
  // A folder put over one of its name leaves the marker where it is.
  if (!(folder && replace)) Image19.SetVisible(false);
  Timer5.SetEnabled(true);
  return true;
}

bool Form1::KillFolder(std::string path) {
  if (!path.empty() && path.back() == '\\') path.pop_back();
  if (!platform_.files.FolderExists(path)) return false;
  const bool deleted = platform_.files.DeleteFolder(path);
  return deleted && !platform_.files.FolderExists(path);
}

void Form1::ShowForm7() {
  if (!form7_) form7_.reset(std::make_unique<Form7>(ui(), platform_.resources).release());
  form7_->Show();
}

void Form1::Timer5_Timer() {
  if (form7_) {
    form7_->Timer1.SetEnabled(false);
    form7_->Unload();
  }
  Timer5.SetEnabled(false);
}

}  // namespace quillet
