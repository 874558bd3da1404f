// The drive service against the prefix's drives (at least C:).
#include <gtest/gtest.h>

#include <string>

#include "platform/win32/win32.h"
#include "platform/win32/win32_drives.h"

namespace quillet::win32 {
namespace {

char MissingLetter() {
  const DWORD mask = ::GetLogicalDrives();
  for (int i = 25; i >= 3; --i)
    if ((mask & (1u << i)) == 0) return static_cast<char>('A' + i);
  return 0;
}

TEST(Win32DrivesTest, DriveListParsesIntoRootsWithTypes) {
  Win32Drives drives;
  const auto raw = drives.LogicalDriveStrings();
  ASSERT_TRUE(raw.has_value());
  // Roots of the form X:\ each followed by a NUL, and one more NUL at the end.
  ASSERT_GE(raw->size(), 5u);
  ASSERT_EQ(raw->size() % 4, 1u);
  EXPECT_EQ(raw->back(), '\0');
  DWORD mask = 0;
  for (std::size_t at = 0; at + 1 < raw->size(); at += 4) {
    const std::string root = raw->substr(at, 3);
    EXPECT_EQ(raw->substr(at + 1, 3), std::string(":\\\0", 3)) << root;
    mask |= 1u << (root[0] - 'A');
    const int type = drives.DriveType(root);
    EXPECT_EQ(type, static_cast<int>(::GetDriveTypeA(root.c_str()))) << root;
    EXPECT_GE(type, 2) << root;  // every listed root has a root directory
    EXPECT_LE(type, 6) << root;
    EXPECT_EQ(drives.DriveType(root.substr(0, 2)), type) << "the \"C:\" form names the same drive";
  }
  EXPECT_EQ(mask, ::GetLogicalDrives());
  EXPECT_EQ(drives.DriveType("C:\\"), kDriveFixed);
}

TEST(Win32DrivesTest, ReadinessAndSpaceOfAPresentAndAnAbsentDrive) {
  Win32Drives drives;
  EXPECT_EQ(drives.IsReady("C:\\"), std::optional<bool>(true));
  EXPECT_EQ(drives.IsReady("c:"), std::optional<bool>(true));
  const auto space = drives.DiskFreeSpace("C:");
  ASSERT_TRUE(space.has_value());
  EXPECT_GT(space->sectors_per_cluster, 0u);
  EXPECT_GT(space->bytes_per_sector, 0u);
  EXPECT_GT(space->total_clusters, 0u);
  EXPECT_LE(space->free_clusters, space->total_clusters);

  const char missing = MissingLetter();
  ASSERT_NE(missing, 0);
  const std::string root = std::string(1, missing) + ":\\";
  EXPECT_EQ(drives.IsReady(root), std::nullopt) << root;
  EXPECT_EQ(drives.DriveType(root), kDriveNoRoot);
  EXPECT_FALSE(drives.DiskFreeSpace(root.substr(0, 2)).has_value());
  EXPECT_EQ(drives.VolumeLabel(root.substr(0, 2)), "");
  EXPECT_EQ(drives.IsReady("not a root"), std::nullopt);
}

}  // namespace
}  // namespace quillet::win32
