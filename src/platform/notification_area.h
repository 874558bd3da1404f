// The notification area of the task bar: one icon of the program, and the
// clicks on it.
#pragma once

#include <functional>
#include <string>

namespace quillet {

enum NotifyMessage : int { kNotifyAdd = 0, kNotifyModify = 1, kNotifyDelete = 2 };

// What the program tells the system of its icon.
struct NotifyIconRecord {
  int id = 1;
  int flags = 7;               // the callback message, the icon and the tip are valid
  int callback_message = 512;  // a mouse move of the owner's window
  std::string tip;             // at most 63 characters and a NUL
  bool operator==(const NotifyIconRecord&) const = default;
};

class NotificationAreaService {
 public:
  virtual ~NotificationAreaService() = default;
  // Adds, changes or removes the program's icon (its own icon resource); true when the system took it.
  virtual bool NotifyIcon(int message, const NotifyIconRecord& record) = 0;
  // Hears the mouse message (513 left press, 516 right press, ...) of each event on the icon.
  std::function<void(int mouse_message)> on_icon_event;
};

}  // namespace quillet
