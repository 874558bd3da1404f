#include "platform/win32/win32_system_info.h"

#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {
namespace {

class Win32RegistryKey : public RegistryKey {
 public:
  explicit Win32RegistryKey(HKEY key) : key_(key) {}

  std::optional<std::string> QueryString(std::string_view name, std::size_t max_chars) override {
    std::vector<wchar_t> buffer(max_chars, L'\0');
    DWORD bytes = static_cast<DWORD>(max_chars * sizeof(wchar_t));
    if (::RegQueryValueExW(key_.get(), Widen(name).c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer.data()),
                           &bytes) != ERROR_SUCCESS)
      return std::nullopt;
    // The length counts the closing NUL, which is left out.
    const std::size_t chars = bytes / sizeof(wchar_t);
    return Narrow(std::wstring_view(buffer.data(), chars > 0 ? chars - 1 : 0));
  }

  bool Close() override { return ::RegCloseKey(key_.release()) == ERROR_SUCCESS; }

 private:
  UniqueKey key_;
};

}  // namespace

std::optional<OsVersion> Win32SystemInfo::Version() {
  OSVERSIONINFOW info{};
  info.dwOSVersionInfoSize = sizeof info;
  if (!::GetVersionExW(&info)) return std::nullopt;
  return OsVersion{static_cast<int>(info.dwPlatformId), static_cast<int>(info.dwMajorVersion),
                   static_cast<int>(info.dwMinorVersion)};
}

std::unique_ptr<RegistryKey> Win32SystemInfo::OpenMachineKey(std::string_view path) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, Widen(path).c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS)
    return nullptr;
  return std::make_unique<Win32RegistryKey>(key);
}

}  // namespace quillet::win32
