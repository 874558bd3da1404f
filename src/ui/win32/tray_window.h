// The program's icon in the notification area: a hidden window that the
// shell tells of clicks on the icon. shell32 is loaded at the first call.
#pragma once

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

  bool NotifyIcon(int message, const NotifyIconRecord& record) override;
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept;

 private:
  UniqueModule shell32_;
  UniqueIcon icon_;
  UINT callback_message_ = 0;
  bool added_ = false;
};

}  // namespace quillet::win32
