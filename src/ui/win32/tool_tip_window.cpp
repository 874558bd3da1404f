#include "ui/win32/tool_tip_window.h"

#include <commctrl.h>

#include "platform/win32/wide_text.h"
#include "ui/win32/gdi_painter.h"

namespace quillet::win32 {
namespace {

constexpr int kMaxTipWidth = 400;  // pixels; longer texts wrap

}  // namespace

// The tips live in comctl32, which the program otherwise doesn't need at start.
bool ToolTipWindow::LoadCommonControls() noexcept {
  if (common_controls_) return true;
  common_controls_.reset(::LoadLibraryW(L"comctl32.dll"));
  if (!common_controls_) return false;
  using InitFn = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
  const auto init = reinterpret_cast<InitFn>(
      reinterpret_cast<void*>(::GetProcAddress(common_controls_.get(), "InitCommonControlsEx")));
  const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES};
  return init != nullptr && init(&classes) != FALSE;
}

void ToolTipWindow::Show(HWND owner, const RECT& area, const ToolTip& tip) noexcept {
  window_.reset();
  if (tip.text.empty() || !LoadCommonControls()) return;
  const DWORD style = WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | (tip.balloon ? TTS_BALLOON : 0);
  window_.reset(::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, style, CW_USEDEFAULT, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, ::GetModuleHandleW(nullptr),
                                  nullptr));
  const HWND w = window_.get();
  if (w == nullptr) return;
  ::SetClassLongPtrW(w, GCL_STYLE, ::GetClassLongPtrW(w, GCL_STYLE) | CS_DROPSHADOW);
  std::wstring text = Widen(tip.text);
  TOOLINFOW info{};
  info.cbSize = TTTOOLINFOW_V2_SIZE;
  info.uFlags = TTF_SUBCLASS | (tip.right_to_left ? TTF_RTLREADING : 0);
  info.hwnd = owner;
  info.uId = 1;
  info.rect = area;
  info.lpszText = text.data();
  ::SendMessageW(w, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
  if (!tip.title.empty() || tip.icon != 0) {
    const std::wstring title = Widen(tip.title);
    ::SendMessageW(w, TTM_SETTITLEW, static_cast<WPARAM>(tip.icon), reinterpret_cast<LPARAM>(title.c_str()));
  }
  ::SendMessageW(w, TTM_SETMAXTIPWIDTH, 0, kMaxTipWidth);
  // The tip counts its delay from a pointer move it sees; the pointer may rest from now on.
  POINT at{};
  if (::GetCursorPos(&at) && ::ScreenToClient(owner, &at)) {
    MSG move{};
    move.hwnd = owner;
    move.message = WM_MOUSEMOVE;
    move.lParam = MAKELPARAM(at.x, at.y);
    move.time = ::GetMessageTime();
    ::SendMessageW(w, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&move));
  }
  if (tip.back_color) ::SendMessageW(w, TTM_SETTIPBKCOLOR, HostColour(*tip.back_color), 0);
}

}  // namespace quillet::win32
