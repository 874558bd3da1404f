// Periodic timers of the host: real ones in the Win32 host, virtual time in tests.
#pragma once

#include <cstdint>
#include <functional>

namespace quillet {

class TimerService {
 public:
  using TimerId = std::uint64_t;
  virtual ~TimerService() = default;
  // Calls `on_tick` every `interval_ms` until stopped; interval is at least 1.
  [[nodiscard]] virtual TimerId StartTimer(std::uint32_t interval_ms, std::function<void()> on_tick) = 0;
  virtual void StopTimer(TimerId id) = 0;
};

}  // namespace quillet
