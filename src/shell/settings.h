// The settings store under the running executable's name, read at each call:
// a renamed executable starts with empty settings.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace quillet {

std::string GetSetting(Platform& platform, std::string_view section, std::string_view key,
                       std::string_view fallback = {});
void SaveSetting(Platform& platform, std::string_view section, std::string_view key, std::string_view value);
void DeleteSetting(Platform& platform, std::string_view section, std::string_view key);

}  // namespace quillet
