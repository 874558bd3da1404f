#include "shell/TimeMod.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(FormatUptime, SplitsMillisecondsIntoEachFormat) {
  const struct {
    std::int32_t ms;
    int format;
    const char* text;
  } cases[] = {
      {90061001, 0, "1 days, 1 hours, 1 minutes, 1 seconds, 1 milliseconds"},
      {90061001, 1, "1 days, 1 hours, 1 minutes, 1 seconds"},
      {90061001, 2, "1:1:1:1:1"},
      {90061001, 3, "1 days, 1 hours, 1 minutes"},
      {0, 3, "0 days, 0 hours, 0 minutes"},
      {59999, 3, "0 days, 0 hours, 0 minutes"},
      {2147483647, 2, "24:20:31:23:647"},
      {-1000, 2, "0:0:0:-1:0"},
      {1000, 4, ""},
      {1000, -1, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatUptime(c.ms, c.format), c.text) << c.ms << " " << c.format;
}

}  // namespace
}  // namespace quillet
