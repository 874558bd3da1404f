#include "drives/drive_scan.h"

#include <gtest/gtest.h>

#include "fakes/fake_platform.h"

namespace quillet {
namespace {

using testing::FakeDrive;
using testing::FakeDrives;
using testing::FakeProcess;

constexpr std::uint64_t kGiB = 1024ull * 1024 * 1024;

FakeDrive D(int type = kDriveFixed, bool ready = true) {
  FakeDrive d;
  d.type = type;
  d.ready = ready;
  return d;
}

FakeDrive WithCounts(FreeSpaceCounts counts, bool fails = false) {
  FakeDrive d;
  d.counts = counts;
  d.space_fails = fails;
  return d;
}

std::function<bool(const std::string&)> AskedDirectly(FakeDrives& drives) {
  return [&drives](const std::string& root) { return drives.IsReady(root).value_or(false); };
}

std::function<int(const std::string&)> TypeOf(FakeDrives& drives) {
  return [&drives](const std::string& root) { return drives.DriveType(root); };
}

DriveScan Scan(FakeDrives& drives, const std::string& hidden = "") {
  return ScanDrives(GetDriveStrings(drives), AskedDirectly(drives), TypeOf(drives), [&] { return hidden; }, [] {});
}

TEST(GetDriveStrings, GivesTheNulSeparatedRootsOrNothing) {
  FakeDrives drives;
  drives.drives['C'] = FakeDrive{};
  drives.drives['E'] = FakeDrive{};
  EXPECT_EQ(GetDriveStrings(drives), std::string("C:\\\0E:\\\0\0", 9));
  drives.list_fails = true;
  EXPECT_EQ(GetDriveStrings(drives), "");
}

TEST(GetDriveStrings, AListLongerThanTheBufferReadsAsNoDrives) {
  FakeDrives drives;
  for (char c = 'A'; c <= 'Z'; ++c) drives.drives[c] = FakeDrive{};
  EXPECT_EQ(GetDriveStrings(drives).size(), 105u);  // 26 roots fit exactly
  class Oversized : public FakeDrives {
    std::optional<std::string> LogicalDriveStrings() override { return std::string(200, 'x'); }
  } oversized;
  EXPECT_EQ(GetDriveStrings(oversized), "");
}

TEST(ScanDrives, ListsReadyDrivesAndEveryCdRomButHidesWhatTheUserHid) {
  const struct {
    const char* name;
    std::map<char, FakeDrive> drives;
    std::string hidden;
    std::string list;
    int count;
  } cases[] = {
      {"all ready", {{'C', D()}, {'D', D()}}, "", "C:\\\r\nD:\\\r\n", 2},
      {"hidden drive is not counted", {{'C', D()}, {'D', D()}}, "\r\nD:\\", "C:\\\r\n", 1},
      {"hidden text is searched without case", {{'C', D()}, {'D', D()}}, "\r\nd:\\", "C:\\\r\n", 1},
      {"empty optical drive keeps its card", {{'C', D()}, {'E', D(kDriveCdRom, false)}}, "", "C:\\\r\nE:\\\r\n", 2},
      {"empty card reader gets none", {{'C', D()}, {'F', D(kDriveRemovable, false)}}, "", "C:\\\r\n", 1},
      {"unready fixed drive gets none", {{'C', D()}, {'G', D(kDriveFixed, false)}}, "", "C:\\\r\n", 1},
      {"only an empty optical drive", {{'E', D(kDriveCdRom, false)}, {'F', D(kDriveRemovable, false)}}, "",
       "E:\\\r\n", 1},
      {"ready drive of unknown type is listed", {{'Q', D(kDriveUnknown, true)}}, "", "Q:\\\r\n", 1},
      {"all hidden", {{'C', D()}, {'D', D()}}, "\r\nC:\\\r\nD:\\", "", 0},
      {"no drives", {}, "", "", 0},
  };
  for (const auto& c : cases) {
    FakeDrives drives;
    drives.drives = c.drives;
    const DriveScan scan = Scan(drives, c.hidden);
    EXPECT_EQ(scan.list, c.list) << c.name;
    EXPECT_EQ(scan.count, c.count) << c.name;
  }
}

TEST(ScanDrives, LetsEventsRunAfterEveryDriveAndRereadsTheHiddenList) {
  FakeDrives drives;
  drives.drives = {{'C', D()}, {'D', D()}, {'E', D()}};
  std::string hidden;
  int events = 0;
  // The user hides E: while the scan waits on D:.
  const DriveScan scan = ScanDrives(GetDriveStrings(drives), AskedDirectly(drives), TypeOf(drives), [&] { return hidden; }, [&] {
    if (++events == 2) hidden = "\r\nE:\\";
  });
  EXPECT_EQ(events, 3);
  EXPECT_EQ(scan.list, "C:\\\r\nD:\\\r\n");
  EXPECT_EQ(scan.count, 2);
  EXPECT_EQ(drives.ready_queries, (std::vector<std::string>{"C:\\", "D:\\"}));
}

TEST(ScanDrives, UpperCasesRootsFromALowerCaseList) {
  FakeDrives drives;
  const std::string raw("c:\\\0d:\\\0\0", 9);
  drives.drives = {{'C', D()}, {'D', D(kDriveRemovable, false)}};
  const DriveScan scan = ScanDrives(raw, AskedDirectly(drives), TypeOf(drives), [] { return std::string(); }, [] {});
  EXPECT_EQ(scan.list, "C:\\\r\n");
}

TEST(SpaceText, ShowsGigabytesWithTwoDecimals) {
  const struct {
    const char* name;
    FakeDrive drive;
    const char* total;
    const char* free;
  } cases[] = {
      // 10^12 bytes: 244140625 clusters of 4096 bytes.
      {"a terabyte disk", WithCounts({8, 512, 24414062, 244140625}), "931.32", "93.13"},
      {"one byte under a GiB", WithCounts({1, 1, 0, static_cast<std::uint32_t>(kGiB - 1)}), "1.00",
       "0.00"},
      {"4999 KiB", WithCounts({1, 1024, 4999, 4999}), "0.00", "0.00"},
      {"failed query", WithCounts({}, true), "0.00", "0.00"},
      {"eight terabytes", FakeDrives::Sized(8ull * 1024 * kGiB, 2 * kGiB), "8192.00", "2.00"},
  };
  for (const auto& c : cases) {
    FakeDrives drives;
    drives.drives['C'] = c.drive;
    EXPECT_EQ(SpaceText(GetDiskSpace(drives, "C:", false)), c.total) << c.name;
    EXPECT_EQ(SpaceText(GetDiskSpace(drives, "C:", true)), c.free) << c.name;
  }
}

TEST(GetDiskSpace, IsTheExactProductOfTheCounts) {
  FakeDrives drives;
  drives.drives['C'] = WithCounts({64, 4096, 3000000000u, 4000000000u});
  EXPECT_EQ(GetDiskSpace(drives, "C:", false).ToString(), "1048576000000000");
  EXPECT_EQ(GetDiskSpace(drives, "C:", true).ToString(), "786432000000000");
  EXPECT_EQ(GetDiskSpace(drives, "X:", true).ToString(), "0");
}

TEST(IsHomeDrive, ComparesExactly) {
  FakeProcess process;
  EXPECT_TRUE(IsHomeDrive(process, "C:"));
  EXPECT_FALSE(IsHomeDrive(process, "c:"));
  EXPECT_FALSE(IsHomeDrive(process, "C:\\"));
  process.environment.clear();
  EXPECT_FALSE(IsHomeDrive(process, "C:"));
}

}  // namespace
}  // namespace quillet
