// The system's visual styles, from uxtheme.dll, loaded at the first use so
// that a start of the program doesn't pay for it.
#pragma once

#include "platform/win32/handles.h"

namespace quillet::win32 {

class ThemeLibrary {
 public:
  [[nodiscard]] bool AppThemed() noexcept;
  // A push button in the current style and state (1 normal, 2 hot,
  // 3 pressed, 4 disabled); false when there is no style to draw with.
  [[nodiscard]] bool DrawPushButton(HDC dc, const RECT& rect, int state) noexcept;

 private:
  bool Load() noexcept;

  using IsAppThemedFn = BOOL(WINAPI*)();
  using OpenThemeDataFn = HANDLE(WINAPI*)(HWND, LPCWSTR);
  using CloseThemeDataFn = HRESULT(WINAPI*)(HANDLE);
  using DrawThemeBackgroundFn = HRESULT(WINAPI*)(HANDLE, HDC, int, int, const RECT*, const RECT*);

  bool tried_ = false;
  UniqueModule module_;
  IsAppThemedFn is_app_themed_ = nullptr;
  OpenThemeDataFn open_ = nullptr;
  CloseThemeDataFn close_ = nullptr;
  DrawThemeBackgroundFn draw_ = nullptr;
};

}  // namespace quillet::win32
