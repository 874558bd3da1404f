#include "shell/TimeMod.h"

namespace quillet {

std::string FormatUptime(std::int32_t ms, int format) {
  const std::int32_t millis = ms % 1000;
  const std::int32_t seconds = ms / 1000 % 60;
  const std::int32_t minutes = ms / 60000 % 60;
  const std::int32_t hours = ms / 3600000 % 24;
  const std::int32_t days = ms / 86400000;
  const auto s = [](std::int32_t v) { return std::to_string(v); };
  switch (format) {
    case 0:
      return s(days) + " days, " + s(hours) + " hours, " + s(minutes) + " minutes, " + s(seconds) +
             " seconds, " + s(millis) + " milliseconds";
    case 1:
      return s(days) + " days, " + s(hours) + " hours, " + s(minutes) + " minutes, " + s(seconds) + " seconds";
    case 2:
      return s(days) + ":" + s(hours) + ":" + s(minutes) + ":" + s(seconds) + ":" + s(millis);
    case 3:
      return s(days) + " days, " + s(hours) + " hours, " + s(minutes) + " minutes";
    default:
      return {};
  }
}

}  // namespace quillet
