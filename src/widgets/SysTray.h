// The program's icon in the notification area, and its presses as events.
// A press is taken only 15 ms after the handler of the last one returned.
#pragma once

#include <functional>
#include <string>

#include "platform/notification_area.h"
#include "ui/timer.h"
#include "ui/ui.h"

namespace quillet {

class SysTray {
 public:
  SysTray(Ui& ui, NotificationAreaService& area);
  ~SysTray();
  SysTray(const SysTray&) = delete;
  SysTray& operator=(const SysTray&) = delete;

  const std::string& SysTrayToolTip() const { return tool_tip_; }
  void SetSysTrayToolTip(std::string tip);
  int EventMode() const { return event_mode_; }
  // A value above 1 is taken as 1.
  void SetEventMode(int mode) { event_mode_ = mode > 1 ? 1 : mode; }
  bool IsVisible() const { return visible_; }

  // True puts the icon in (or refreshes it), false takes it out.
  void Show(bool visible);

  // The record as the system gets it.
  NotifyIconRecord Record() const;

  std::function<void()> on_left_press, on_right_press;
  std::function<void(int button)> on_press;  // with EventMode 1

 private:
  void IconEvent(int mouse_message);

  Ui& ui_;
  NotificationAreaService& area_;
  std::string tool_tip_ = "System Tray Control by Pelbrook";
  int event_mode_ = 0;
  bool visible_ = false;
  bool busy_ = false;
  Timer SysTimer;
};

}  // namespace quillet
