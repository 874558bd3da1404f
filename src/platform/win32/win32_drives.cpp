#include "platform/win32/win32_drives.h"

#include <cctype>

#include "platform/win32/win32.h"
#include "platform/win32/wide_text.h"

namespace quillet::win32 {
namespace {

// An empty card reader or optical drive must answer "not ready", not ask the
// user to insert a disk.
class QuietCriticalErrors {
 public:
  QuietCriticalErrors() noexcept : old_(::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) {
    ::SetErrorMode(old_ | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  }
  ~QuietCriticalErrors() { ::SetErrorMode(old_); }
  QuietCriticalErrors(const QuietCriticalErrors&) = delete;
  QuietCriticalErrors& operator=(const QuietCriticalErrors&) = delete;

 private:
  UINT old_;
};

// The drive letter of "C", "C:" or "C:\", upper case; 0 for anything else.
char DriveLetter(std::string_view drive) {
  if (drive.empty() || drive.size() > 3) return 0;
  const auto c = static_cast<unsigned char>(drive[0]);
  if (!std::isalpha(c)) return 0;
  if (drive.size() >= 2 && drive[1] != ':') return 0;
  if (drive.size() == 3 && drive[2] != '\\' && drive[2] != '/') return 0;
  return static_cast<char>(std::toupper(c));
}

// "C:" means the drive's root to the callers; the system wants the backslash.
std::string RootPath(std::string_view drive) {
  std::string path(drive);
  if (path.size() == 2 && path[1] == ':') path += '\\';
  return path;
}

}  // namespace

std::optional<std::string> Win32Drives::LogicalDriveStrings() {
  const DWORD needed = ::GetLogicalDriveStringsW(0, nullptr);
  if (needed == 0) return std::nullopt;
  std::wstring buffer(needed + 1, L'\0');
  const DWORD length = ::GetLogicalDriveStringsW(static_cast<DWORD>(buffer.size()), buffer.data());
  if (length == 0 || length >= buffer.size()) return std::nullopt;
  // Keep the NUL after the last root and the list's closing NUL.
  buffer.resize(length + 1);
  return Narrow(buffer);
}

int Win32Drives::DriveType(std::string_view drive) {
  return static_cast<int>(::GetDriveTypeA(RootPath(drive).c_str()));
}

std::optional<FreeSpaceCounts> Win32Drives::DiskFreeSpace(std::string_view drive) {
  QuietCriticalErrors quiet;
  DWORD sectors = 0, bytes = 0, free_clusters = 0, total_clusters = 0;
  if (!::GetDiskFreeSpaceA(RootPath(drive).c_str(), &sectors, &bytes, &free_clusters, &total_clusters))
    return std::nullopt;
  return FreeSpaceCounts{sectors, bytes, free_clusters, total_clusters};
}

std::optional<bool> Win32Drives::IsReady(std::string_view root) {
  const char letter = DriveLetter(root);
  if (letter == 0) return std::nullopt;
  // A letter the system doesn't list has no drive object at all.
  if ((::GetLogicalDrives() & (1u << (letter - 'A'))) == 0) return std::nullopt;
  const wchar_t path[] = {static_cast<wchar_t>(letter), L':', L'\\', L'\0'};
  QuietCriticalErrors quiet;
  return ::GetVolumeInformationW(path, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0) != FALSE;
}

std::string Win32Drives::VolumeLabel(std::string_view drive) {
  const char letter = DriveLetter(drive);
  if (letter == 0) return {};
  const wchar_t path[] = {static_cast<wchar_t>(letter), L':', L'\\', L'\0'};
  wchar_t label[MAX_PATH + 1] = {};
  QuietCriticalErrors quiet;
  if (!::GetVolumeInformationW(path, label, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0)) return {};
  return Narrow(label);
}

}  // namespace quillet::win32
