// Settings in the per-user registry, where existing installations keep them:
// HKCU\Software\VB and VBA Program Settings\<application>\<section>, one
// REG_SZ value per key.
#pragma once

#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace quillet::win32 {

class RegistrySettingsStore : public SettingsStore {
 public:
  [[nodiscard]] std::string GetSetting(std::string_view application, std::string_view section,
                                       std::string_view key, std::string_view fallback) override;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void DeleteSetting(std::string_view application, std::string_view section, std::string_view key) override;

  // The key path below HKEY_CURRENT_USER for an application and section.
  [[nodiscard]] static std::wstring KeyPath(std::string_view application, std::string_view section);
};

}  // namespace quillet::win32
