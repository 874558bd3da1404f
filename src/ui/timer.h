// The timer control: ticks every Interval ms while Enabled and Interval > 0.
#pragma once

#include <cstdint>
#include <functional>

#include "ui/timer_service.h"

namespace quillet {

class Timer {
 public:
  Timer(TimerService& service, std::uint32_t interval_ms, bool enabled);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  bool Enabled() const { return enabled_; }
  // Enabling a timer that runs keeps its deadline; disabling stops it.
  void SetEnabled(bool enabled);
  std::uint32_t Interval() const { return interval_; }
  // A new interval starts the count again; 0 stops the ticks but not Enabled.
  void SetInterval(std::uint32_t interval_ms);

  std::function<void()> on_timer;

 private:
  void Restart();
  void Stop();

  TimerService& service_;
  std::uint32_t interval_;
  bool enabled_;
  bool running_ = false;
  TimerService::TimerId id_ = 0;
};

}  // namespace quillet
