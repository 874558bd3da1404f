// The machine's drives through the system's own calls.
#pragma once

#include "platform/drives.h"

namespace quillet::win32 {

class Win32Drives : public DriveService {
 public:
  [[nodiscard]] std::optional<std::string> LogicalDriveStrings() override;
  [[nodiscard]] int DriveType(std::string_view drive) override;
  [[nodiscard]] std::optional<FreeSpaceCounts> DiskFreeSpace(std::string_view drive) override;
  [[nodiscard]] std::optional<bool> IsReady(std::string_view root) override;
  [[nodiscard]] std::string VolumeLabel(std::string_view drive) override;
};

}  // namespace quillet::win32
