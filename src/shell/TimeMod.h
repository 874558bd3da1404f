// Uptime as text.
#pragma once

#include <cstdint>
#include <string>

namespace quillet {

// Formats 0 to 3 as "d days, h hours, ..." variants; any other format gives "".
std::string FormatUptime(std::int32_t ms, int format);

}  // namespace quillet
