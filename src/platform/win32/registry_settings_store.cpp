#include "platform/win32/registry_settings_store.h"

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

namespace quillet::win32 {

std::wstring RegistrySettingsStore::KeyPath(std::string_view application, std::string_view section) {
  return L"Software\\VB and VBA Program Settings\\" + Widen(application) + L"\\" + Widen(section);
}

std::string RegistrySettingsStore::GetSetting(std::string_view application, std::string_view section,
                                              std::string_view key, std::string_view fallback) {
  UniqueKey hkey;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(), 0, KEY_QUERY_VALUE,
                      hkey.put()) != ERROR_SUCCESS)
    return std::string(fallback);
  const std::wstring name = Widen(key);
  // The value may grow between the size query and the read; ask again then.
  for (int attempt = 0; attempt < 3; ++attempt) {
    DWORD bytes = 0;
    LSTATUS status = ::RegGetValueW(hkey.get(), nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes);
    if (status != ERROR_SUCCESS) return std::string(fallback);
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    status = ::RegGetValueW(hkey.get(), nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    if (status == ERROR_MORE_DATA) continue;
    if (status != ERROR_SUCCESS) return std::string(fallback);
    text.resize(wcsnlen(text.c_str(), text.size()));
    return Narrow(text);
  }
  return std::string(fallback);
}

void RegistrySettingsStore::SaveSetting(std::string_view application, std::string_view section,
                                        std::string_view key, std::string_view value) {
  UniqueKey hkey;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                        nullptr, hkey.put(), nullptr) != ERROR_SUCCESS)
    return;
  const std::wstring text = Widen(value);
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  ::RegSetValueExW(hkey.get(), Widen(key).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
}

void RegistrySettingsStore::DeleteSetting(std::string_view application, std::string_view section,
                                          std::string_view key) {
  UniqueKey hkey;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(), 0, KEY_SET_VALUE, hkey.put()) !=
      ERROR_SUCCESS)
    return;
  ::RegDeleteValueW(hkey.get(), Widen(key).c_str());
}

}  // namespace quillet::win32
