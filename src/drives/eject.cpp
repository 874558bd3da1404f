#include "drives/eject.h"

#include <string>

namespace quillet {

void OpenCdDoor(DeviceService& devices, std::string_view drive) {
  const std::string d(drive);
  // "Open E:: Alias DriveE: Type CDAudio": the doubled colon is what the device takes.
  devices.SendMciString("Open " + d + ": Alias Drive" + d + " Type CDAudio");
  devices.SendMciString("Set Drive" + d + " Door Open");
}

}  // namespace quillet
