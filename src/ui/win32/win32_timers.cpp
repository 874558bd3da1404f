#include "ui/win32/win32_timers.h"

#include <stdexcept>

namespace quillet::win32 {

Win32Timers::Win32Timers(Ui& ui) : ui_(ui) {
  WindowArgs args;
  args.style = 0;
  args.parent = HWND_MESSAGE;
  if (!Create(args)) throw std::runtime_error("The timer window cannot be created");
}

Win32Timers::~Win32Timers() {
  for (const auto& [id, tick] : ticks_) ::KillTimer(hwnd(), id);
  Destroy();
}

TimerService::TimerId Win32Timers::StartTimer(std::uint32_t interval_ms, std::function<void()> on_tick) {
  const UINT_PTR id = next_id_++;
  ticks_.emplace(id, std::make_shared<std::function<void()>>(std::move(on_tick)));
  ::SetTimer(hwnd(), id, interval_ms == 0 ? 1 : interval_ms, nullptr);
  return id;
}

void Win32Timers::StopTimer(TimerId id) {
  const auto it = ticks_.find(static_cast<UINT_PTR>(id));
  if (it == ticks_.end()) return;
  ::KillTimer(hwnd(), it->first);
  ticks_.erase(it);
}

LRESULT Win32Timers::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  if (message == WM_TIMER) {
    const auto it = ticks_.find(static_cast<UINT_PTR>(wparam));
    if (it == ticks_.end()) return 0;  // stopped, with a tick still queued
    const auto tick = it->second;
    ui_.Guard([&] {
      if (*tick) (*tick)();
    });
    return 0;
  }
  return Default(hwnd(), message, wparam, lparam);
}

}  // namespace quillet::win32
