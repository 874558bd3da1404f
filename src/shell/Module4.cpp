#include "shell/Module4.h"

namespace quillet {
namespace {

constexpr int kAny = -1;

struct VersionRow {
  int platform_id, major, minor;
  const char* name;
};

// First match wins; a major of kAny after the NT rows stands for any other.
constexpr VersionRow kVersions[] = {
    {2, 3, kAny, "Windows NT 3.5"},
    {2, 4, kAny, "Windows NT 4.0"},
    {2, 5, 0, "Windows 2000"},
    {2, 5, 1, "Windows XP"},
    {2, 5, 2, "Windows Server 2003"},
    {2, 6, 0, "Windows Vista/Server 2008"},
    {2, 6, 1, "Windows 7/Server 2008 R2"},
    {1, kAny, 0, "Windows 95"},
    {1, kAny, 90, "Windows Me"},
    {1, kAny, kAny, "Windows 98"},
    {0, kAny, kAny, "Win32s on Windows 3.1"},
};

bool Matches(int want, int have) { return want == kAny || want == have; }

}  // namespace

std::string WinVersionName(SystemInfoService& system) {
  const auto v = system.Version();
  if (!v) return "Unable to identify your version of Windows.";
  for (const VersionRow& row : kVersions)
    if (row.platform_id == v->platform_id && Matches(row.major, v->major) && Matches(row.minor, v->minor))
      return row.name;
  // An NT of a major version the table doesn't list.
  if (v->platform_id == 2 && (v->major < 3 || v->major > 6)) return "Windows NT";
  return "Unable to identify your version of Windows.";
}

}  // namespace quillet
