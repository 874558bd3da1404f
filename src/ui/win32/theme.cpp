#include "ui/win32/theme.h"

namespace quillet::win32 {
namespace {

template <class F>
F Proc(HMODULE module, const char* name) noexcept {
  return reinterpret_cast<F>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

constexpr int kPushButtonPart = 1;

}  // namespace

bool ThemeLibrary::Load() noexcept {
  if (tried_) return is_app_themed_ != nullptr;
  tried_ = true;
  module_.reset(::LoadLibraryW(L"uxtheme.dll"));
  if (!module_) return false;
  open_ = Proc<OpenThemeDataFn>(module_.get(), "OpenThemeData");
  close_ = Proc<CloseThemeDataFn>(module_.get(), "CloseThemeData");
  draw_ = Proc<DrawThemeBackgroundFn>(module_.get(), "DrawThemeBackground");
  is_app_themed_ = Proc<IsAppThemedFn>(module_.get(), "IsAppThemed");
  if (open_ == nullptr || close_ == nullptr || draw_ == nullptr) is_app_themed_ = nullptr;
  return is_app_themed_ != nullptr;
}

bool ThemeLibrary::AppThemed() noexcept { return Load() && is_app_themed_() != FALSE; }

bool ThemeLibrary::DrawPushButton(HDC dc, const RECT& rect, int state) noexcept {
  if (!AppThemed()) return false;
  const HANDLE theme = open_(nullptr, L"BUTTON");
  if (theme == nullptr) return false;
  const bool drawn = SUCCEEDED(draw_(theme, dc, kPushButtonPart, state, &rect, nullptr));
  close_(theme);
  return drawn;
}

}  // namespace quillet::win32
