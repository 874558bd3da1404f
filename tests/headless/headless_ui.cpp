#include "headless/headless_ui.h"

#include <algorithm>
#include <cmath>

namespace quillet::testing {

TimerService::TimerId VirtualTimers::StartTimer(std::uint32_t interval_ms, std::function<void()> on_tick) {
  const std::uint32_t interval = interval_ms == 0 ? 1 : interval_ms;
  const TimerId id = next_id_++;
  timers_[id] = Entry{interval, now_ + interval, std::move(on_tick)};
  return id;
}

void VirtualTimers::StopTimer(TimerId id) { timers_.erase(id); }

std::optional<std::uint64_t> VirtualTimers::NextDue() const {
  std::optional<std::uint64_t> due;
  for (const auto& [id, e] : timers_)
    if (!due || e.due < *due) due = e.due;
  if (due) return *due - now_;
  return std::nullopt;
}

void VirtualTimers::Advance(std::uint64_t ms) {
  const std::uint64_t target = now_ + ms;
  for (;;) {
    // The earliest due tick; among equals the timer started first.
    auto next = timers_.end();
    for (auto it = timers_.begin(); it != timers_.end(); ++it)
      if (it->second.due <= target && (next == timers_.end() || it->second.due < next->second.due)) next = it;
    if (next == timers_.end()) break;
    now_ = next->second.due;
    next->second.due += next->second.interval;
    auto tick = next->second.tick;  // the handler may stop or restart its timer
    tick();
  }
  now_ = target;
}

int HeadlessTextMetrics::Advance(const Font& font) {
  return static_cast<int>(std::lround(font.size * (font.bold ? 11 : 10)));
}

int HeadlessTextMetrics::LineHeight(const Font& font) { return static_cast<int>(std::lround(font.size * 24)); }

TwipsSize HeadlessTextMetrics::Measure(const Font& font, std::string_view text) {
  int widest = 0, line = 0, lines = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') {
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      ++lines;
      line = 0;
      continue;
    }
    widest = std::max(widest, ++line);
  }
  return {widest * Advance(font), lines * LineHeight(font)};
}

namespace {
class HeadlessPeer : public FormPeer {
 public:
  HeadlessPeer(HeadlessUi& ui, Form& form) : ui_(ui), form_(form) {}
  void LayeringChanged() override {
    if (form_.Layering().alpha) ui_.alphas.push_back(*form_.Layering().alpha);
  }
  void BoundsChanged() override {}
  void VisibleChanged() override {}
  void WindowStateChanged() override {}
  void Invalidate() override {}
  void ShowToolTip(const TwipsRect& area, const ToolTip& tip) override { ui_.tip = HeadlessUi::ShownTip{area, tip}; }
  void HideToolTip() override { ui_.tip.reset(); }
  int TrackPopupMenu(const PopupMenu& menu, ScreenPoint, int, const TwipsRect&) override {
    return ui_.on_popup ? ui_.on_popup(menu) : 0;
  }

 private:
  HeadlessUi& ui_;
  Form& form_;
};
}  // namespace

std::unique_ptr<FormPeer> HeadlessUi::CreatePeer(Form& form) {
  return std::make_unique<HeadlessPeer>(*this, form);
}

void HeadlessUi::DoEvents() {
  ++do_events_calls;
  while (!queue_.empty()) {
    auto event = std::move(queue_.front());
    queue_.pop_front();
    Guard(event);
  }
}

}  // namespace quillet::testing
