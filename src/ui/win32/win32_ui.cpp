#include "ui/win32/win32_ui.h"

#include "platform/win32/wide_text.h"
#include "ui/win32/form_window.h"

namespace quillet::win32 {

Win32Ui::Win32Ui() : scale_(PixelScale::FromScreen()), timers_(*this), metrics_(scale_) {}

std::unique_ptr<FormPeer> Win32Ui::CreatePeer(Form& form) { return std::make_unique<FormWindow>(form, scale_, theme_); }

void Win32Ui::DoEvents() {
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (msg.message == WM_QUIT) {
      // Leave the quit for the loop that runs the program.
      ::PostQuitMessage(static_cast<int>(msg.wParam));
      return;
    }
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
}

ScreenInfo Win32Ui::Screen() {
  return ScreenInfo{scale_.ToTwips(::GetSystemMetrics(SM_CXSCREEN)),
                    scale_.ToTwips(::GetSystemMetrics(SM_CYSCREEN)), scale_.TwipsPerPixel()};
}

void Win32Ui::ReportError(std::string_view what) {
  ::MessageBoxW(nullptr, Widen(what).c_str(), L"Quillet", MB_OK | MB_ICONERROR);
}

ScreenPoint Win32Ui::PointerPosition() {
  POINT p{};
  ::GetCursorPos(&p);
  return {scale_.ToTwips(p.x), scale_.ToTwips(p.y)};
}

bool Win32Ui::AppThemed() { return theme_.AppThemed(); }

void Win32Ui::EndMenu() { ::EndMenu(); }

int Win32Ui::Run() {
  MSG msg{};
  int result;
  while ((result = ::GetMessageW(&msg, nullptr, 0, 0)) > 0) {
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
  return result == 0 ? static_cast<int>(msg.wParam) : 1;
}

void Win32Ui::QuitEventLoop() { ::PostQuitMessage(0); }

}  // namespace quillet::win32
