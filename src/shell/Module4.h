// The name of the running Windows version, as the settings windows show it.
#pragma once

#include <string>

#include "platform/system_info.h"

namespace quillet {

std::string WinVersionName(SystemInfoService& system);

}  // namespace quillet
