// Opening an optical drive's door, and the two eject buttons of the cards.
#include "drives/eject.h"

#include <cctype>
#include <string>

#include "core/value.h"
#include "shell/Form1.h"

namespace quillet {

void OpenCdDoor(DeviceService& devices, std::string_view drive) {
  const std::string d(drive);
  // "Open E:: Alias DriveE: Type CDAudio": the doubled colon is what the device takes.
  devices.SendMciString("Open " + d + ": Alias Drive" + d + " Type CDAudio");
  devices.SendMciString("Set Drive" + d + " Door Open");
}

std::array<std::uint32_t, 7> EjectRegisters(std::string_view drive) {
  const int letter = drive.empty() ? 'A' : std::toupper(static_cast<unsigned char>(drive[0]));
  const auto number = static_cast<std::uint32_t>(letter - 'A' + 1);
  // EBX, EDX, ECX, EAX, EDI, ESI, flags.
  return {number, 0, 0x849, 0x440D, 0, 0, 0};
}

void Form1::CMD_EJECT_Click() {
  if (platform_.drives.DriveType(cd_drive_field) != kDriveCdRom) return;
  OpenCdDoor(platform_.devices, cd_drive_field);
  CMD_EJECT.SetVisible(false);
  Command1.Press();
}

void Form1::CMD_EJECT_USB_Click() {
  if (usb_drive_field.empty() || platform_.drives.DriveType(usb_drive_field) != kDriveRemovable) return;
  const std::string v = UpperCase(usb_drive_field.substr(0, 2));
  if (platform_.devices.NtFamily()) {
    // The card stays until the next refresh; the hover's end brings one.
    platform_.devices.EjectMedia(v);
    return;
  }
  platform_.devices.DosIoctl(EjectRegisters(v));
  CMD_EJECT_USB.SetVisible(false);
  Command1.Press();
}

}  // namespace quillet
