// Time as the system keeps it.
#pragma once

#include <cstdint>

namespace quillet {

class ClockService {
 public:
  virtual ~ClockService() = default;
  // Milliseconds since the system started; wraps after 49.7 days.
  [[nodiscard]] virtual std::uint32_t TickCount() = 0;
};

}  // namespace quillet
