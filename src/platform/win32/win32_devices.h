// Devices through winmm, loaded at the first command (the start of the
// program doesn't need it), and the storage and VWIN32 device calls.
#pragma once

#include "platform/devices.h"
#include "platform/win32/dry_run.h"
#include "platform/win32/handles.h"

namespace quillet::win32 {

class Win32Devices : public DeviceService {
 public:
  void SendMciString(std::string_view command) override;
  bool NtFamily() override;
  bool EjectMedia(std::string_view drive) override;
  bool DosIoctl(const std::array<std::uint32_t, 7>& registers) override;

 private:
  DryRun dry_run_;
  UniqueModule winmm_;
};

}  // namespace quillet::win32
