// The program's icon in the notification area: a hidden window that the
// shell tells of clicks on the icon. shell32 is loaded at the first call.
#pragma once

#include <optional>

#include "platform/notification_area.h"
#include "ui/win32/base_window.h"

namespace quillet::win32 {

class TrayWindow final : public BaseWindow<TrayWindow>, public NotificationAreaService {
 public:
  static constexpr const wchar_t* kClassName = L"QuilletTray";
  static constexpr UINT kClassStyle = 0;

  // Throws std::runtime_error when the window cannot be made.
  TrayWindow();
  ~TrayWindow() override;

  // The first icon goes in at the first idle moment, after the windows of the
  // start have painted: shell32 costs the start a good part of its time.
  bool NotifyIcon(int message, const NotifyIconRecord& record) override;
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept;

 private:
  bool Apply(int message, const NotifyIconRecord& record);

  static constexpr UINT_PTR kFirstIconTimer = 1;
  bool started_ = false;
  std::optional<NotifyIconRecord> first_icon_;
  UniqueModule shell32_;
  UniqueIcon icon_;
  UINT callback_message_ = 0;
  bool added_ = false;
};

}  // namespace quillet::win32
