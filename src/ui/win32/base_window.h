// The one window procedure of the host. `Derived` names its class
// (kClassName, kClassStyle) and answers messages in one noexcept
// `OnMessage` switch; this base finds the object from the window.
#pragma once

#include <string>

#include "platform/win32/handles.h"

namespace quillet::win32 {

struct WindowArgs {
  DWORD style = WS_POPUP;
  DWORD ex_style = 0;
  RECT rect{0, 0, 0, 0};
  HWND parent = nullptr;  // HWND_MESSAGE for a message-only window
  std::wstring title;
};

template <class Derived>
class BaseWindow {
 public:
  BaseWindow(const BaseWindow&) = delete;
  BaseWindow& operator=(const BaseWindow&) = delete;
  [[nodiscard]] HWND hwnd() const noexcept { return window_.get(); }

 protected:
  BaseWindow() = default;
  ~BaseWindow() { Destroy(); }

  [[nodiscard]] bool Create(const WindowArgs& args) noexcept {
    if (!RegisterOnce()) return false;
    const HWND created = ::CreateWindowExW(args.ex_style, Derived::kClassName, args.title.c_str(), args.style,
                                           args.rect.left, args.rect.top, args.rect.right - args.rect.left,
                                           args.rect.bottom - args.rect.top, args.parent, nullptr,
                                           ::GetModuleHandleW(nullptr), static_cast<Derived*>(this));
    return created != nullptr && created == window_.get();
  }

  // The object stops hearing messages first, so that none reaches it while
  // the window goes away (the derived part may be half destroyed by then).
  void Destroy() noexcept {
    if (!window_) return;
    ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, 0);
    window_.reset();
  }

  static LRESULT Default(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return ::DefWindowProcW(hwnd, message, wparam, lparam);
  }

 private:
  static bool RegisterOnce() noexcept {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    if (::GetClassInfoExW(instance, Derived::kClassName, &wc)) return true;
    wc.cbSize = sizeof wc;
    wc.style = Derived::kClassStyle;
    wc.lpfnWndProc = &BaseWindow::WindowProc;
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.hIcon = ::LoadIconW(instance, MAKEINTRESOURCEW(1));  // shared resource icon, never destroyed
    wc.lpszClassName = Derived::kClassName;
    return ::RegisterClassExW(&wc) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
  }

  static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    if (message == WM_NCCREATE) {
      auto* self = static_cast<Derived*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
      ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
      self->window_.reset(hwnd);
    }
    auto* self = reinterpret_cast<Derived*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr) return Default(hwnd, message, wparam, lparam);
    if (message == WM_NCDESTROY) {
      // The system destroyed the window itself (a failed creation): forget it.
      ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
      (void)self->window_.release();
      return Default(hwnd, message, wparam, lparam);
    }
    return self->OnMessage(message, wparam, lparam);
  }

  UniqueWindow window_;
};

}  // namespace quillet::win32
