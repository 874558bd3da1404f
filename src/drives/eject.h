// Opening an optical drive's door.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/devices.h"

namespace quillet {

// `drive` is "E:". The device stays open: a second call finds its alias
// taken and the door command still works.
void OpenCdDoor(DeviceService& devices, std::string_view drive);

// The 9x family's eject request for a drive ("F:"): the block device call
// 0x440D, minor code 0x49, on the drive's number (A: is 1).
std::array<std::uint32_t, 7> EjectRegisters(std::string_view drive);

}  // namespace quillet
