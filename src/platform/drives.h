// What the drive panel asks of the machine's drives.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

enum DriveType : int {
  kDriveUnknown = 0,
  kDriveNoRoot = 1,
  kDriveRemovable = 2,
  kDriveFixed = 3,
  kDriveRemote = 4,
  kDriveCdRom = 5,
  kDriveRamDisk = 6,
};

struct FreeSpaceCounts {
  std::uint32_t sectors_per_cluster = 0;
  std::uint32_t bytes_per_sector = 0;
  std::uint32_t free_clusters = 0;
  std::uint32_t total_clusters = 0;
};

class DriveService {
 public:
  virtual ~DriveService() = default;
  // The roots, each ended by a NUL, the list ended by a further NUL
  // ("C:\\\0D:\\\0\0"); nullopt when the system call fails.
  [[nodiscard]] virtual std::optional<std::string> LogicalDriveStrings() = 0;
  // Type of a root "C:\\" or of "C:".
  [[nodiscard]] virtual int DriveType(std::string_view drive) = 0;
  // Space counts of "C:" or "C:\\"; nullopt when the query fails.
  [[nodiscard]] virtual std::optional<FreeSpaceCounts> DiskFreeSpace(std::string_view drive) = 0;
  // Whether media can be read now; nullopt when the root names no drive at all.
  [[nodiscard]] virtual std::optional<bool> IsReady(std::string_view root) = 0;
  // Volume label of "C:", "" when it has none or cannot be read.
  [[nodiscard]] virtual std::string VolumeLabel(std::string_view drive) = 0;
};

}  // namespace quillet
