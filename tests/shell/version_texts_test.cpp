// The running Windows by name: from the version numbers and from the registry.
#include <gtest/gtest.h>

#include "fakes/fake_platform.h"
#include "shell/Module4.h"
#include "shell/WinVersion.h"

namespace quillet::testing {
namespace {

TEST(VersionTexts, NameByPlatformMajorAndMinor) {
  const struct {
    std::optional<OsVersion> version;
    const char* name;
  } cases[] = {
      {OsVersion{2, 3, 51}, "Windows NT 3.5"},       {OsVersion{2, 4, 0}, "Windows NT 4.0"},
      {OsVersion{2, 5, 0}, "Windows 2000"},          {OsVersion{2, 5, 1}, "Windows XP"},
      {OsVersion{2, 5, 2}, "Windows Server 2003"},   {OsVersion{2, 6, 0}, "Windows Vista/Server 2008"},
      {OsVersion{2, 6, 1}, "Windows 7/Server 2008 R2"}, {OsVersion{2, 10, 0}, "Windows NT"},
      {OsVersion{1, 4, 0}, "Windows 95"},            {OsVersion{1, 4, 90}, "Windows Me"},
      {OsVersion{1, 4, 10}, "Windows 98"},           {OsVersion{0, 3, 10}, "Win32s on Windows 3.1"},
      {OsVersion{2, 6, 2}, "Unable to identify your version of Windows."},
      {OsVersion{3, 1, 0}, "Unable to identify your version of Windows."},
      {std::nullopt, "Unable to identify your version of Windows."},
  };
  FakeSystemInfo system;
  for (const auto& c : cases) {
    system.version = c.version;
    EXPECT_EQ(WinVersionName(system), c.name);
  }
}

TEST(VersionTexts, ProductNameReportsAKeyThatWontOpenOrClose) {
  FakePlatform fake;
  EXPECT_EQ(ProductNameFromRegistry(fake.system, fake.dialogs), "");
  ASSERT_EQ(fake.dialogs.shown.size(), 1u);
  EXPECT_EQ(fake.dialogs.shown[0].text, "Error opening key.");

  auto& key = fake.system.keys["SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"];
  EXPECT_EQ(ProductNameFromRegistry(fake.system, fake.dialogs), "<Error>");
  key["ProductName"] = "Windows 10 Pro";
  fake.system.close_fails = true;
  EXPECT_EQ(ProductNameFromRegistry(fake.system, fake.dialogs), "Windows 10 Pro");
  ASSERT_EQ(fake.dialogs.shown.size(), 2u);
  EXPECT_EQ(fake.dialogs.shown[1].text, "Error closing key.");
}

}  // namespace
}  // namespace quillet::testing
