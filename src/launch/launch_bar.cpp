// The side bar's side of the launch bar: making the window, showing it at
// start, and painting every slot again in a new ground colour.
#include <memory>

#include "core/pass_over.h"
#include "core/value.h"
#include "launch/Form11.h"
#include "launch/launch_slots.h"
#include "shell/Form1.h"

namespace quillet {

void Form1::Form11Deleter::operator()(quillet::Form11* bar) const { std::default_delete<quillet::Form11>()(bar); }

quillet::Form11& Form1::Form11() {
  if (!form11_) form11_.reset(std::make_unique<quillet::Form11>(ui(), *this, platform_).release());
  return *form11_;
}

void Form1::ShowLaunchBarAtStart() {
  PassOver([&] {
    const std::string folder = LaunchFolder(platform_.process);
    if (!platform_.files.FolderExists(folder + "\\")) (void)platform_.files.CreateFolder(folder);
  });
  PassOver([&] {
    if (Setting("LB").empty()) Save("LB", "E");
  });
  PassOver([&] {
    if (Setting("LB") == "E") Form11().Show();
  });
}

void Form1::QL_Replace() {
  quillet::Form11& bar = Form11();
  bar.Load();
  const auto bound = ToInt16(Val(Text6.Text())).value_or(0);
  for (int i = 1; i <= bound; ++i) {
    std::string path = Setting(SlotKey(i));
    if (path.empty()) {
      // A gap costs the next slot its target: it goes on with no path.
      if (Val(Text6.Text()) <= i) return;
      ++i;
    }
    const auto icon = platform_.shell.ExtractAssociatedIcon(path);
    PictureBox& box = bar.p(i);
    box.SetPicture(nullptr);
    box.SetBackColor(SlotBackColour(Text4.Text()));
    CaptureSlot(platform_, box, i, path, icon.get(), ui().Screen().twips_per_pixel);
  }
}

}  // namespace quillet
