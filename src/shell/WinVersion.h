// The product name of the running Windows, from the machine's registry.
#pragma once

#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/system_info.h"

namespace quillet {

// "ProductName" of the current version's key; "" after "Error opening key.".
std::string ProductNameFromRegistry(SystemInfoService& system, DialogService& dialogs);

// A text value of an open key, or "<Error>".
std::string QueryRegString(RegistryKey& key, std::string_view name);

}  // namespace quillet
