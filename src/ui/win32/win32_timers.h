// Real timers: SetTimer on a hidden message-only window, ticks dispatched by id.
#pragma once

#include <functional>
#include <map>
#include <memory>

#include "ui/timer_service.h"
#include "ui/ui.h"
#include "ui/win32/base_window.h"

namespace quillet::win32 {

class Win32Timers final : public BaseWindow<Win32Timers>, public TimerService {
 public:
  static constexpr const wchar_t* kClassName = L"QuilletTimers";
  static constexpr UINT kClassStyle = 0;

  // Ticks run under `ui`'s guard: an error is reported, the timer goes on.
  explicit Win32Timers(Ui& ui);
  ~Win32Timers();

  [[nodiscard]] TimerId StartTimer(std::uint32_t interval_ms, std::function<void()> on_tick) override;
  void StopTimer(TimerId id) override;
  [[nodiscard]] std::size_t Running() const noexcept { return ticks_.size(); }

  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept;

 private:
  Ui& ui_;
  // Shared so that a tick may stop its own timer while it runs.
  std::map<UINT_PTR, std::shared_ptr<std::function<void()>>> ticks_;
  UINT_PTR next_id_ = 1;
};

}  // namespace quillet::win32
