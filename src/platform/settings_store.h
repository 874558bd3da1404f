// Per-user named text values under (application, section, key).
#pragma once

#include <string>
#include <string_view>

namespace quillet {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  // The stored text, or `fallback` when the key does not exist.
  [[nodiscard]] virtual std::string GetSetting(std::string_view application, std::string_view section,
                                               std::string_view key, std::string_view fallback) = 0;
  virtual void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) = 0;
  virtual void DeleteSetting(std::string_view application, std::string_view section,
                             std::string_view key) = 0;
};

}  // namespace quillet
