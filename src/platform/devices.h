// Drives as devices: media control commands for the optical drives' doors,
// and the eject of a removable medium.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quillet {

class DeviceService {
 public:
  virtual ~DeviceService() = default;
  // A media control interface command; its answer isn't looked at.
  virtual void SendMciString(std::string_view command) = 0;
  // True on the NT family of the system; false on the 9x family.
  [[nodiscard]] virtual bool NtFamily() = 0;
  // The storage driver's eject of the medium in a drive ("F:"); true when the request was taken.
  virtual bool EjectMedia(std::string_view drive) = 0;
  // The 9x family's block device request through VWIN32, with the seven
  // registers EBX, EDX, ECX, EAX, EDI, ESI and flags; false when the device can't be opened.
  virtual bool DosIoctl(const std::array<std::uint32_t, 7>& registers) = 0;
};

}  // namespace quillet
