// The system's tick count.
#pragma once

#include "platform/clock.h"

namespace quillet::win32 {

class Win32Clock : public ClockService {
 public:
  [[nodiscard]] std::uint32_t TickCount() override;
  [[nodiscard]] std::optional<std::uint32_t> LastInputTick() override;
};

}  // namespace quillet::win32
