#include "launch/launch_slots.h"

#include <cmath>
#include <stdexcept>

#include "core/value.h"
#include "shell/settings.h"
#include "ui/bitmap_file.h"

namespace quillet {

Colour SlotBackColour(std::string_view text4) {
  if (text4.empty() || text4 == "T") return kSlotGrey;
  // Junk where a colour belongs leaves the slot grey.
  const auto colour = TextToInt32(text4);
  return colour ? static_cast<Colour>(*colour) : kSlotGrey;
}

std::string SlotKey(int index) { return DecimalText(index) + "Lanuch"; }

std::string LaunchFolder(ProcessService& process) { return process.ProgramFolder() + "\\Launch Bar"; }

std::string SlotBitmapPath(ProcessService& process, int index) {
  return LaunchFolder(process) + "\\" + DecimalText(index) + ".bmp";
}

std::string GetShortcutTarget(ShellService& shell, std::string_view path) { return shell.ShortcutTarget(path); }

void CaptureSlot(Platform& platform, PictureBox& box, int index, const std::string& target, const ShellIcon* icon,
                 double twips_per_pixel) {
  box.Cls();
  if (icon == nullptr) {
    platform.dialogs.MessageBox("Unable to extract the Associated Icon.", kOkOnly | kInformation, "Quillet");
    return;
  }
  // The icon covers the whole box, whatever its own size.
  const double per_pixel = std::round(twips_per_pixel);
  const int width = static_cast<int>(std::lround(box.Width() / per_pixel));
  const int height = static_cast<int>(std::lround(box.Height() / per_pixel));
  box.DrawPixels(0, 0, width, icon->Render(width, height));
  const std::string file = SlotBitmapPath(platform.process, index);
  if (!platform.files.WriteWholeFile(file, EncodeBitmapFile(box.Image())))
    throw std::runtime_error("Cannot save the picture of the slot to " + file + ".");
  SaveSetting(platform, "Form1", SlotKey(index), target);
}

}  // namespace quillet
