// Which drives the side bar shows, and how much space they have.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/byte_count.h"
#include "platform/drives.h"
#include "platform/process.h"

namespace quillet {

// The raw root list "C:\\\0D:\\\0\0" as the 105-character buffer leaves it,
// blanks trimmed; "" when the system call fails.
std::string GetDriveStrings(DriveService& drives);

struct DriveScan {
  std::string list;  // upper-case roots, each ended by CR LF
  int count = 0;
};

// The roots of a raw list, in its order.
std::vector<std::string> RootsOf(std::string_view raw);

// Walks the raw list: a root found in the hidden text is skipped, a ready
// drive is listed, and so is a CD-ROM drive without media. `hidden` is read
// anew for each root and `let_events_run` runs after each one, so the user
// interface stays alive while slow devices answer.
DriveScan ScanDrives(std::string_view raw, const std::function<bool(const std::string& root)>& is_ready,
                     const std::function<int(const std::string& root)>& drive_type,
                     const std::function<std::string()>& hidden, const std::function<void()>& let_events_run);

// Free or total bytes of "C:"; 0 when the query fails.
ByteCount GetDiskSpace(DriveService& drives, std::string_view drive, bool want_free);
// The same from counts already had; 0 without them.
ByteCount SpaceOf(const std::optional<FreeSpaceCounts>& counts, bool want_free);

// Bytes in GB (1024^3) as "0.00".
std::string SpaceText(const ByteCount& bytes);

// True when `drive` ("C:") is exactly the environment's HOMEDRIVE.
bool IsHomeDrive(ProcessService& process, std::string_view drive);

}  // namespace quillet
