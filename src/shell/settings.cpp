#include "shell/settings.h"

namespace quillet {

std::string GetSetting(Platform& platform, std::string_view section, std::string_view key,
                       std::string_view fallback) {
  return platform.settings.GetSetting(platform.process.ExecutableName(), section, key, fallback);
}

void SaveSetting(Platform& platform, std::string_view section, std::string_view key, std::string_view value) {
  platform.settings.SaveSetting(platform.process.ExecutableName(), section, key, value);
}

void DeleteSetting(Platform& platform, std::string_view section, std::string_view key) {
  platform.settings.DeleteSetting(platform.process.ExecutableName(), section, key);
}

}  // namespace quillet
