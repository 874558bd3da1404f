// Devices through winmm, which is loaded at the first command: the start of
// the program doesn't need it.
#pragma once

#include "platform/devices.h"
#include "platform/win32/handles.h"

namespace quillet::win32 {

class Win32Devices : public DeviceService {
 public:
  void SendMciString(std::string_view command) override;

 private:
  UniqueModule winmm_;
};

}  // namespace quillet::win32
