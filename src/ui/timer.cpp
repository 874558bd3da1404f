#include "ui/timer.h"

namespace quillet {

Timer::Timer(TimerService& service, std::uint32_t interval_ms, bool enabled)
    : service_(service), interval_(interval_ms), enabled_(enabled) {
  Restart();
}

Timer::~Timer() { Stop(); }

void Timer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Restart();
}

void Timer::SetInterval(std::uint32_t interval_ms) {
  interval_ = interval_ms;
  Restart();
}

void Timer::Restart() {
  Stop();
  if (!enabled_ || interval_ == 0) return;
  id_ = service_.StartTimer(interval_, [this] {
    if (on_timer) on_timer();
  });
  running_ = true;
}

void Timer::Stop() {
  if (running_) service_.StopTimer(id_);
  running_ = false;
}

}  // namespace quillet
