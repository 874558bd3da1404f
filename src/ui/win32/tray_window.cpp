#include "ui/win32/tray_window.h"

#include <stdexcept>
#include <string>

#include "platform/win32/wide_text.h"

namespace quillet::win32 {
namespace {

using ShellNotifyIconFn = BOOL(WINAPI*)(DWORD, NOTIFYICONDATAW*);

}  // namespace

TrayWindow::TrayWindow() {
  WindowArgs args;
  args.style = 0;
  args.parent = HWND_MESSAGE;
  if (!Create(args)) throw std::runtime_error("The tray window cannot be created");
}

TrayWindow::~TrayWindow() {
  // An icon left behind would stand in the tray until the pointer passes it.
  if (added_) Apply(NIM_DELETE, NotifyIconRecord{});
  Destroy();
}

bool TrayWindow::NotifyIcon(int message, const NotifyIconRecord& record) {
  if (!started_) {
    if (message == NIM_DELETE) {
      first_icon_.reset();
    } else {
      if (!first_icon_) ::SetTimer(hwnd(), kFirstIconTimer, 0, nullptr);
      first_icon_ = record;
    }
    return true;
  }
  return Apply(message, record);
}

bool TrayWindow::Apply(int message, const NotifyIconRecord& record) {
  if (!shell32_) shell32_.reset(::LoadLibraryW(L"shell32.dll"));
  if (!shell32_) return false;
  const auto notify = reinterpret_cast<ShellNotifyIconFn>(
      reinterpret_cast<void*>(::GetProcAddress(shell32_.get(), "Shell_NotifyIconW")));
  if (notify == nullptr) return false;
  if (!icon_) {
    icon_.reset(static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                                ::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON),
                                                LR_DEFAULTCOLOR)));
  }
  NOTIFYICONDATAW data{};
  data.cbSize = NOTIFYICONDATAW_V1_SIZE;
  data.hWnd = hwnd();
  data.uID = static_cast<UINT>(record.id);
  data.uFlags = static_cast<UINT>(record.flags);
  data.uCallbackMessage = static_cast<UINT>(record.callback_message);
  data.hIcon = icon_.get();
  const std::wstring tip = Widen(record.tip).substr(0, std::size(data.szTip) - 1);
  tip.copy(data.szTip, tip.size());
  callback_message_ = data.uCallbackMessage;
  const bool done = notify(static_cast<DWORD>(message), &data) != FALSE;
  if (done && message == NIM_ADD) added_ = true;
  if (done && message == NIM_DELETE) added_ = false;
  return done;
}

LRESULT TrayWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  if (message == WM_TIMER && wparam == kFirstIconTimer) {
    ::KillTimer(hwnd(), kFirstIconTimer);
    started_ = true;
    if (first_icon_) Apply(NIM_ADD, *first_icon_);
    first_icon_.reset();
    return 0;
  }
  // The shell's callback carries the mouse message of the icon in its second argument.
  if (message == callback_message_ && callback_message_ != 0 && on_icon_event) {
    on_icon_event(static_cast<int>(lparam));
    return 0;
  }
  return Default(hwnd(), message, wparam, lparam);
}

}  // namespace quillet::win32
