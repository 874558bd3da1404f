#include "drives/drive_scan.h"

#include <cmath>

#include "core/value.h"

namespace quillet {

namespace {
constexpr std::size_t kDriveBufferLength = 105;  // 26 roots of 4 characters and the closing NUL
}

std::string GetDriveStrings(DriveService& drives) {
  const auto raw = drives.LogicalDriveStrings();
  if (!raw || raw->empty()) return {};
  // A list longer than the buffer leaves it untouched: all blanks.
  if (raw->size() > kDriveBufferLength) return {};
  std::string buffer(kDriveBufferLength, ' ');
  buffer.replace(0, raw->size(), *raw);
  return Trim(buffer);
}

std::vector<std::string> RootsOf(std::string_view raw) {
  std::vector<std::string> roots;
  for (std::size_t pos = 0; pos < raw.size() && raw[pos] != '\0'; pos += 4)
    roots.push_back(UpperCase(raw.substr(pos, 3)));
  return roots;
}

DriveScan ScanDrives(std::string_view raw, const std::function<bool(const std::string& root)>& is_ready,
                     const std::function<int(const std::string& root)>& drive_type,
                     const std::function<std::string()>& hidden, const std::function<void()>& let_events_run) {
  DriveScan scan;
  std::size_t pos = 0;
  while (pos < raw.size() && raw[pos] != '\0') {
    const std::string root = UpperCase(raw.substr(pos, 3));
    pos += 4;
    if (InStrText(hidden(), root) == 0) {
      bool listed = is_ready(root);
      if (!listed) listed = drive_type(root) == kDriveCdRom;
      if (listed) {
        scan.list += root + "\r\n";
        ++scan.count;
      }
    }
    let_events_run();
  }
  return scan;
}

ByteCount GetDiskSpace(DriveService& drives, std::string_view drive, bool want_free) {
  return SpaceOf(drives.DiskFreeSpace(drive), want_free);
}

ByteCount SpaceOf(const std::optional<FreeSpaceCounts>& counts, bool want_free) {
  if (!counts) return {};
  return ByteCount::Product(counts->sectors_per_cluster, counts->bytes_per_sector,
                            want_free ? counts->free_clusters : counts->total_clusters);
}

std::string SpaceText(const ByteCount& bytes) {
  return FormatFixed2(bytes.ToDouble() / std::pow(1024.0, 3.0));
}

bool IsHomeDrive(ProcessService& process, std::string_view drive) {
  return process.Environment("HOMEDRIVE") == drive;
}

}  // namespace quillet
