#include "platform/win32/registry_settings_store.h"

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

namespace quillet::win32 {

std::wstring RegistrySettingsStore::KeyPath(std::string_view application, std::string_view section) {
  return L"Software\\VB and VBA Program Settings\\" + Widen(application) + L"\\" + Widen(section);
}

HKEY RegistrySettingsStore::Section(std::string_view application, std::string_view section, bool create) {
  const std::wstring path = KeyPath(application, section);
  if (const auto it = open_.find(path); it != open_.end()) return it->second.get();
  UniqueKey key;
  const REGSAM access = KEY_QUERY_VALUE | KEY_SET_VALUE;
  const LSTATUS status =
      create ? ::RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, access, nullptr, key.put(), nullptr)
             : ::RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, access, key.put());
  if (status != ERROR_SUCCESS) return nullptr;
  return open_.emplace(path, std::move(key)).first->second.get();
}

template <class Call>
LSTATUS RegistrySettingsStore::OnSection(std::string_view application, std::string_view section, bool create,
                                         Call call) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    const HKEY key = Section(application, section, create);
    if (key == nullptr) return ERROR_FILE_NOT_FOUND;
    const LSTATUS status = call(key);
    if (status != ERROR_KEY_DELETED) return status;
    open_.erase(KeyPath(application, section));
  }
  return ERROR_KEY_DELETED;
}

std::string RegistrySettingsStore::GetSetting(std::string_view application, std::string_view section,
                                              std::string_view key, std::string_view fallback) {
  const std::wstring name = Widen(key);
  std::wstring text(128, L'\0');
  const LSTATUS status = OnSection(application, section, false, [&](HKEY hkey) {
    // Most values fit the first buffer; a longer one, or one that grew meanwhile, is asked for again.
    LSTATUS s = ERROR_MORE_DATA;
    for (int attempt = 0; attempt < 3 && s == ERROR_MORE_DATA; ++attempt) {
      auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
      s = ::RegGetValueW(hkey, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
      if (s == ERROR_MORE_DATA) text.assign(bytes / sizeof(wchar_t) + 1, L'\0');
    }
    return s;
  });
  if (status != ERROR_SUCCESS) return std::string(fallback);
  text.resize(wcsnlen(text.c_str(), text.size()));
  return Narrow(text);
}

void RegistrySettingsStore::SaveSetting(std::string_view application, std::string_view section,
                                        std::string_view key, std::string_view value) {
  const std::wstring name = Widen(key), text = Widen(value);
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  (void)OnSection(application, section, true, [&](HKEY hkey) {
    return ::RegSetValueExW(hkey, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
  });
}

void RegistrySettingsStore::DeleteSetting(std::string_view application, std::string_view section,
                                          std::string_view key) {
  const std::wstring name = Widen(key);
  (void)OnSection(application, section, false, [&](HKEY hkey) { return ::RegDeleteValueW(hkey, name.c_str()); });
}

}  // namespace quillet::win32
