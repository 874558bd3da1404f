// Opening an optical drive's door.
#pragma once

#include <string_view>

#include "platform/devices.h"

namespace quillet {

// `drive` is "E:". The device stays open: a second call finds its alias
// taken and the door command still works.
void OpenCdDoor(DeviceService& devices, std::string_view drive);

}  // namespace quillet
