#include "ui/win32/form_window.h"

#include <stdexcept>

#include "platform/win32/wide_text.h"

namespace quillet::win32 {
namespace {

int ButtonState(WPARAM wparam) noexcept {
  int buttons = 0;
  if (wparam & MK_LBUTTON) buttons |= kLeftButton;
  if (wparam & MK_RBUTTON) buttons |= kRightButton;
  if (wparam & MK_MBUTTON) buttons |= kMiddleButton;
  return buttons;
}

int ShiftState(WPARAM wparam) noexcept {
  int shift = 0;
  if (wparam & MK_SHIFT) shift |= 1;
  if (wparam & MK_CONTROL) shift |= 2;
  if (::GetKeyState(VK_MENU) < 0) shift |= 4;
  return shift;
}

struct ButtonMessage {
  UINT message;
  MouseEventKind kind;
  int button;
};

// Only the left button has a double click of its own; the others' double
// clicks arrive as plain presses.
constexpr ButtonMessage kButtonMessages[] = {
    {WM_LBUTTONDOWN, MouseEventKind::kDown, kLeftButton},
    {WM_RBUTTONDOWN, MouseEventKind::kDown, kRightButton},
    {WM_RBUTTONDBLCLK, MouseEventKind::kDown, kRightButton},
    {WM_MBUTTONDOWN, MouseEventKind::kDown, kMiddleButton},
    {WM_MBUTTONDBLCLK, MouseEventKind::kDown, kMiddleButton},
    {WM_LBUTTONUP, MouseEventKind::kUp, kLeftButton},
    {WM_RBUTTONUP, MouseEventKind::kUp, kRightButton},
    {WM_MBUTTONUP, MouseEventKind::kUp, kMiddleButton},
    {WM_LBUTTONDBLCLK, MouseEventKind::kDblClick, kLeftButton},
};

bool SameRect(const RECT& a, const RECT& b) noexcept {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

}  // namespace

WindowArgs FormWindow::ArgsFor(const Form& form, const PixelScale& scale) {
  const FormArgs& args = form.Args();
  WindowArgs w;
  w.style = args.border ? WS_OVERLAPPEDWINDOW : WS_POPUP;
  w.style |= WS_CLIPCHILDREN;
  if (!args.show_in_taskbar) w.ex_style |= WS_EX_TOOLWINDOW;
  if (form.Layering().Layered()) w.ex_style |= WS_EX_LAYERED;
  w.rect = scale.ToWindowRect(form.Bounds());
  w.title = Widen(form.Caption());
  return w;
}

FormWindow::FormWindow(Form& form, PixelScale scale, ThemeLibrary& theme)
    : form_(form), scale_(scale), theme_(theme), drops_([this](POINT p) {
        bool taken = false;
        form_.ui().Guard([&] { taken = form_.DispatchDragOver(scale_.ToTwips(p.x), scale_.ToTwips(p.y)); });
        return taken;
      }) {
  if (!Create(ArgsFor(form, scale)))
    throw std::runtime_error("The window of " + form.Name() + " cannot be created");
  if (form.Layering().Layered()) LayeringChanged();
}

void FormWindow::LayeringChanged() {
  const Layering& layering = form_.Layering();
  const LONG_PTR ex_style = ::GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  if (layering.Layered() && (ex_style & WS_EX_LAYERED) == 0)
    ::SetWindowLongPtrW(hwnd(), GWL_EXSTYLE, ex_style | WS_EX_LAYERED);
  if (layering.key) ::SetLayeredWindowAttributes(hwnd(), HostColour(*layering.key), 0, LWA_COLORKEY);
  if (layering.alpha) ::SetLayeredWindowAttributes(hwnd(), 0, static_cast<BYTE>(*layering.alpha), LWA_ALPHA);
}

FormWindow::~FormWindow() {
  *alive_ = false;
  drops_.Accept(hwnd(), false);
  Destroy();
}

void FormWindow::BoundsChanged() {
  const RECT r = scale_.ToWindowRect(form_.Bounds());
  applying_bounds_ = true;
  ::SetWindowPos(hwnd(), nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  applying_bounds_ = false;
}

void FormWindow::VisibleChanged() {
  if (!form_.Visible()) {
    ::ShowWindow(hwnd(), SW_HIDE);
    return;
  }
  switch (form_.GetWindowState()) {
    case kMinimized: ::ShowWindow(hwnd(), SW_SHOWMINNOACTIVE); break;
    case kMaximized: ::ShowWindow(hwnd(), SW_SHOWMAXIMIZED); break;
    default:
      // A form made normal while hidden may still be an icon.
      ::ShowWindow(hwnd(), ::IsIconic(hwnd()) || ::IsZoomed(hwnd()) ? SW_SHOWNORMAL
                           : form_.Args().activate_on_show                 ? SW_SHOW
                                                                           : SW_SHOWNOACTIVATE);
      break;
  }
}

void FormWindow::WindowStateChanged() {
  // A hidden form takes its state when it is shown.
  if (!form_.Visible()) return;
  switch (form_.GetWindowState()) {
    case kMinimized: ::ShowWindow(hwnd(), SW_MINIMIZE); break;
    case kMaximized: ::ShowWindow(hwnd(), SW_MAXIMIZE); break;
    default: ::ShowWindow(hwnd(), SW_RESTORE); break;
  }
}

void FormWindow::Invalidate() { ::InvalidateRect(hwnd(), nullptr, FALSE); }

void FormWindow::CaptionChanged() { ::SetWindowTextW(hwnd(), Widen(form_.Caption()).c_str()); }

LRESULT FormWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  for (const ButtonMessage& b : kButtonMessages) {
    if (b.message == message) {
      Mouse(b.kind, b.button, wparam, lparam);
      return 0;
    }
  }
  switch (message) {
    case WM_ERASEBKGND:
      return 1;  // the paint covers every pixel
    case WM_PAINT:
      Paint();
      // Taking drops loads ole32 and shell32: the window shows first.
      if (!painted_) {
        painted_ = true;
        if (accept_files_) ::SetTimer(hwnd(), kAcceptFilesTimer, 0, nullptr);
      }
      return 0;
    case WM_TIMER:
      if (wparam != kAcceptFilesTimer) break;
      ::KillTimer(hwnd(), kAcceptFilesTimer);
      drops_.Accept(hwnd(), accept_files_);
      return 0;
    case WM_MOUSEMOVE:
      if (!tracking_leave_) {
        TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, hwnd(), 0};
        tracking_leave_ = ::TrackMouseEvent(&track) != FALSE;
      }
      Mouse(MouseEventKind::kMove, ButtonState(wparam), wparam, lparam);
      return 0;
    case WM_MOUSELEAVE:
      tracking_leave_ = false;
      form_.ui().Guard([&] { form_.DispatchMouseLeave(); });
      return 0;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_SYSCHAR:
      if (Key(message, wparam)) return 0;
      break;
    case WM_SETCURSOR:
      if (LOWORD(lparam) == HTCLIENT && SetHandCursor()) return TRUE;
      break;
    case WM_ACTIVATE: {
      const bool active = LOWORD(wparam) != WA_INACTIVE;
      form_.ui().Guard([&] { form_.SetActive(active); });
      break;
    }
    case WM_DROPFILES:
      if (const auto drop = drops_.Read(reinterpret_cast<HDROP>(wparam))) Dropped(*drop);
      return 0;
    case FileDrops::kDropMessage: {
      const auto alive = alive_;
      while (const auto drop = drops_.TakePending()) {
        Dropped(*drop);
        if (!*alive) return 0;
      }
      return 0;
    }
    case WM_CLOSE:
      // The form decides; unloading it destroys the window.
      form_.RequestClose();
      return 0;
    case WM_SIZE: {
      const auto alive = alive_;
      SyncStateFromWindow(wparam);
      if (!*alive) return 0;
      break;
    }
    case WM_WINDOWPOSCHANGED: {
      const auto alive = alive_;
      SyncBoundsFromWindow();
      if (!*alive) return 0;
      break;
    }
    default:
      break;
  }
  return Default(hwnd(), message, wparam, lparam);
}

void FormWindow::Paint() noexcept {
  const PaintDc paint(hwnd());
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  const HDC memory = buffer_.Prepare(paint.get(), client.right, client.bottom);
  const HDC target = memory != nullptr ? memory : paint.get();
  const RECT& dirty = paint.dirty();
  const int saved = ::SaveDC(target);
  ::IntersectClipRect(target, dirty.left, dirty.top, dirty.right, dirty.bottom);
  GdiPainter painter(target, scale_, fonts_, &theme_);
  form_.ui().Guard([&] { form_.Paint(painter); });
  ::RestoreDC(target, saved);
  if (memory != nullptr)
    ::BitBlt(paint.get(), dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top, memory,
             dirty.left, dirty.top, SRCCOPY);
}

void FormWindow::Mouse(MouseEventKind kind, int button, WPARAM wparam, LPARAM lparam) noexcept {
  const HWND window = hwnd();
  const MouseArgs args{button, ShiftState(wparam),
                       scale_.ToTwips(static_cast<short>(LOWORD(lparam))),
                       scale_.ToTwips(static_cast<short>(HIWORD(lparam)))};
  // The window keeps the mouse while a button is held, so a drag that leaves it goes on.
  if (kind == MouseEventKind::kDown || kind == MouseEventKind::kDblClick) ::SetCapture(window);
  form_.ui().Guard([&] { form_.DispatchMouse(kind, args); });
  // `this` may be gone now; only the window handle is used.
  if (kind == MouseEventKind::kUp && ButtonState(wparam) == 0 && ::GetCapture() == window) ::ReleaseCapture();
}

bool FormWindow::Key(UINT message, WPARAM wparam) noexcept {
  int shift = 0;
  if (::GetKeyState(VK_SHIFT) < 0) shift |= kShiftMask;
  if (::GetKeyState(VK_CONTROL) < 0) shift |= kCtrlMask;
  if (::GetKeyState(VK_MENU) < 0) shift |= kAltMask;
  const int key = static_cast<int>(wparam);
  bool taken = true;
  form_.ui().Guard([&] {
    switch (message) {
      case WM_KEYDOWN: form_.DispatchKey(KeyEventKind::kDown, key, shift); break;
      case WM_KEYUP: form_.DispatchKey(KeyEventKind::kUp, key, shift); break;
      case WM_CHAR: form_.DispatchKey(KeyEventKind::kPress, key, shift); break;
      default: {
        // CharUpper takes one character in the low word of its argument.
        const auto upper = reinterpret_cast<UINT_PTR>(::CharUpperW(reinterpret_cast<LPWSTR>(wparam)));
        taken = form_.DispatchAccessKey(static_cast<int>(upper & 0xFFFF));
        break;
      }
    }
  });
  return taken;
}

bool FormWindow::SetHandCursor() noexcept {
  POINT p{};
  if (!::GetCursorPos(&p) || !::ScreenToClient(hwnd(), &p)) return false;
  const Visual* v = form_.HitTest(scale_.ToTwips(p.x), scale_.ToTwips(p.y));
  if (v == nullptr || !v->HandCursor()) return false;
  // The program's own hand, else the system's.
  HCURSOR hand = ::LoadCursorW(::GetModuleHandleW(nullptr), L"HAND_CURSOR");
  if (hand == nullptr) hand = ::LoadCursorW(nullptr, IDC_HAND);
  ::SetCursor(hand);
  return true;
}

void FormWindow::AcceptFiles(bool accept) {
  accept_files_ = accept;
  if (painted_ || !accept) drops_.Accept(hwnd(), accept);
}

void FormWindow::Dropped(const FileDrop& drop) noexcept {
  const int x = scale_.ToTwips(drop.client.x), y = scale_.ToTwips(drop.client.y);
  form_.ui().Guard([&] { (void)form_.DispatchDrop(drop.paths, x, y); });
}

void FormWindow::ShowToolTip(const TwipsRect& area, const ToolTip& tip) {
  tip_.Show(hwnd(), scale_.ToPixelEdges(area), tip);
}

void FormWindow::HideToolTip() { tip_.Hide(); }

int FormWindow::TrackPopupMenu(const PopupMenu& menu, ScreenPoint at, int flags, const TwipsRect& exclude) {
  const UniqueMenu popup(::CreatePopupMenu());
  if (!popup) return 0;
  for (const MenuItem& item : menu.items) {
    if (item.id == 0) {
      ::AppendMenuW(popup.get(), MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const UINT state = (item.checked ? MF_CHECKED : 0) | (item.enabled ? 0 : MF_GRAYED);
    ::AppendMenuW(popup.get(), MF_STRING | state, static_cast<UINT_PTR>(item.id), Widen(item.text).c_str());
  }
  if (menu.default_item != 0) ::SetMenuDefaultItem(popup.get(), static_cast<UINT>(menu.default_item), FALSE);
  // Without the foreground the menu would not close when the user clicks elsewhere.
  ::SetForegroundWindow(hwnd());
  TPMPARAMS params{sizeof params, scale_.ToPixelEdges(exclude)};
  const UINT how = static_cast<UINT>(flags) | TPM_RETURNCMD | TPM_VERTICAL;
  return static_cast<int>(::TrackPopupMenuEx(popup.get(), how, scale_.ToPixels(at.x), scale_.ToPixels(at.y),
                                             hwnd(), &params));
}

std::optional<ScreenPoint> FormWindow::ClientOrigin() {
  POINT p{};
  if (!::ClientToScreen(hwnd(), &p)) return std::nullopt;
  return ScreenPoint{scale_.ToTwips(p.x), scale_.ToTwips(p.y)};
}

void FormWindow::SyncStateFromWindow(WPARAM size_kind) noexcept {
  int state = kNormal;
  if (size_kind == SIZE_MINIMIZED) state = kMinimized;
  else if (size_kind == SIZE_MAXIMIZED) state = kMaximized;
  else if (size_kind != SIZE_RESTORED) return;
  if (!form_.Loaded() || state == form_.GetWindowState()) return;
  form_.ui().Guard([&] { form_.SetWindowState(state); });
}

// A window the user moved or sized (one with a border) tells its form.
void FormWindow::SyncBoundsFromWindow() noexcept {
  if (applying_bounds_ || !form_.Loaded() || ::IsIconic(hwnd())) return;
  RECT r{};
  if (!::GetWindowRect(hwnd(), &r) || SameRect(r, scale_.ToWindowRect(form_.Bounds()))) return;
  const TwipsRect bounds{scale_.ToTwips(r.left), scale_.ToTwips(r.top), scale_.ToTwips(r.right - r.left),
                         scale_.ToTwips(r.bottom - r.top)};
  form_.ui().Guard([&] { form_.Move(bounds); });
}

}  // namespace quillet::win32
