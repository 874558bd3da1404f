// The tip of one area of a form's window: a tool-tip control that watches
// the window's mouse messages itself and shows after the system's delay.
#pragma once

#include "platform/win32/handles.h"
#include "ui/popups.h"

namespace quillet::win32 {

class ToolTipWindow {
 public:
  // Replaces any tip shown before; `area` is in the owner's client pixels.
  void Show(HWND owner, const RECT& area, const ToolTip& tip) noexcept;
  void Hide() noexcept { window_.reset(); }

 private:
  bool LoadCommonControls() noexcept;

  // Declared first, so the window goes before the library that made it.
  UniqueModule common_controls_;
  UniqueWindow window_;
};

}  // namespace quillet::win32
