// Time as the system keeps it.
#pragma once

#include <cstdint>
#include <optional>

namespace quillet {

class ClockService {
 public:
  virtual ~ClockService() = default;
  // Milliseconds since the system started; wraps after 49.7 days.
  [[nodiscard]] virtual std::uint32_t TickCount() = 0;
  // The tick count of the user's last key or pointer input; nothing when the system won't say.
  [[nodiscard]] virtual std::optional<std::uint32_t> LastInputTick() = 0;
};

}  // namespace quillet
