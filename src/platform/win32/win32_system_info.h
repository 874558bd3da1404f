// The system's version and the machine's registry through the wide calls.
#pragma once

#include "platform/system_info.h"

namespace quillet::win32 {

class Win32SystemInfo : public SystemInfoService {
 public:
  [[nodiscard]] std::optional<OsVersion> Version() override;
  [[nodiscard]] std::unique_ptr<RegistryKey> OpenMachineKey(std::string_view path) override;
};

}  // namespace quillet::win32
