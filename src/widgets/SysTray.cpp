#include "widgets/SysTray.h"

namespace quillet {
namespace {

constexpr int kLeftPress = 513, kRightPress = 516;
constexpr std::size_t kTipChars = 63;  // and the NUL: 64
constexpr std::uint32_t kQuietMs = 15;

}  // namespace

SysTray::SysTray(Ui& ui, NotificationAreaService& area) : ui_(ui), area_(area), SysTimer(ui.Timers(), 0, true) {
  area_.on_icon_event = [this](int mouse_message) { IconEvent(mouse_message); };
  SysTimer.on_timer = [this] {
    SysTimer.SetInterval(0);
    busy_ = false;
  };
}

SysTray::~SysTray() { area_.on_icon_event = nullptr; }

void SysTray::SetSysTrayToolTip(std::string tip) {
  tool_tip_ = std::move(tip);
  if (visible_) Show(true);
}

NotifyIconRecord SysTray::Record() const {
  NotifyIconRecord record;
  // A blank on either side of the text; nothing at all for an empty one.
  if (!tool_tip_.empty()) record.tip = (" " + tool_tip_ + " ").substr(0, kTipChars);
  return record;
}

void SysTray::Show(bool visible) {
  if (visible) {
    const bool was_there = visible_;
    area_.NotifyIcon(was_there ? kNotifyModify : kNotifyAdd, Record());
    visible_ = true;
  } else if (visible_) {
    area_.NotifyIcon(kNotifyDelete, Record());
    visible_ = false;
  }
}

void SysTray::IconEvent(int mouse_message) {
  if (busy_) return;
  if (mouse_message != kLeftPress && mouse_message != kRightPress) return;
  busy_ = true;
  const int button = mouse_message == kLeftPress ? 1 : 2;
  ui_.Guard([&] {
    if (event_mode_ != 0) {
      if (on_press) on_press(button);
    } else if (button == 1) {
      if (on_left_press) on_left_press();
    } else if (on_right_press) {
      on_right_press();
    }
  });
  SysTimer.SetInterval(kQuietMs);
}

}  // namespace quillet
