// The headless host: forms run without windows, timers in virtual time.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/form.h"
#include "ui/ui.h"

namespace quillet::testing {

class VirtualTimers : public TimerService {
 public:
  TimerId StartTimer(std::uint32_t interval_ms, std::function<void()> on_tick) override;
  void StopTimer(TimerId id) override;
  // Moves the clock forward, firing every tick that falls due, in order.
  void Advance(std::uint64_t ms);
  std::uint64_t Now() const { return now_; }
  std::size_t Running() const { return timers_.size(); }
  // Milliseconds until the next tick of a timer, or nullopt.
  std::optional<std::uint64_t> NextDue() const;

 private:
  struct Entry {
    std::uint32_t interval;
    std::uint64_t due;
    std::function<void()> tick;
  };
  std::map<TimerId, Entry> timers_;
  TimerId next_id_ = 1;
  std::uint64_t now_ = 0;
};

// Text of a fixed advance per letter, so layout tests know the measures.
class HeadlessTextMetrics : public TextMetrics {
 public:
  TwipsSize Measure(const Font& font, std::string_view text) override;
  // Twips per letter and per line of a font.
  static int Advance(const Font& font);
  static int LineHeight(const Font& font);
};

class HeadlessUi : public Ui {
 public:
  std::unique_ptr<FormPeer> CreatePeer(Form& form) override;
  TimerService& Timers() override { return timers; }
  TextMetrics& Metrics() override { return metrics; }
  void DoEvents() override;
  ScreenInfo Screen() override { return screen; }
  void ReportError(std::string_view what) override { errors.emplace_back(what); }
  ScreenPoint PointerPosition() override { return pointer; }
  bool AppThemed() override { return themed; }
  void EndMenu() override { ++menus_ended; }

  // An event that the next DoEvents runs, as if the user acted while a handler let events run.
  void Post(std::function<void()> event) { queue_.push_back(std::move(event)); }

  VirtualTimers timers;
  HeadlessTextMetrics metrics;
  ScreenInfo screen{1280 * 15, 1024 * 15, 15.0};
  std::vector<std::string> errors;
  int do_events_calls = 0;
  bool loop_quit = false;
  std::vector<int> alphas;  // every alpha a form's window took, in order
  ScreenPoint pointer;
  bool themed = false;
  int menus_ended = 0;
  // The tip a form shows now, over which area of it.
  struct ShownTip {
    TwipsRect area;
    ToolTip tip;
  };
  std::optional<ShownTip> tip;
  // Plays the user while a pop-up menu is up: the id chosen, 0 to dismiss.
  std::function<int(const PopupMenu&)> on_popup;

 protected:
  void QuitEventLoop() override { loop_quit = true; }

 private:
  std::deque<std::function<void()>> queue_;
};

}  // namespace quillet::testing
