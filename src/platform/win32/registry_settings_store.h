// Settings in the per-user registry, where existing installations keep them:
// HKCU\Software\VB and VBA Program Settings\<application>\<section>, one
// REG_SZ value per key. A section's key stays open once used: start-up
// reads and writes some twenty values, and under Wine every open and close
// is a trip to the server.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/settings_store.h"
#include "platform/win32/handles.h"

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

 private:
  // The section's open key, made when `create`; null when there is none.
  HKEY Section(std::string_view application, std::string_view section, bool create);
  // Runs `call` on the section's key; a key deleted from outside is opened anew once.
  template <class Call>
  LSTATUS OnSection(std::string_view application, std::string_view section, bool create, Call call);

  std::map<std::wstring, UniqueKey> open_;
};

}  // namespace quillet::win32
