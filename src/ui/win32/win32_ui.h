// The Win32 host: real windows for forms, real timers, the message loop.
#pragma once

#include "ui/ui.h"
#include "ui/win32/gdi_painter.h"
#include "ui/win32/pixel_scale.h"
#include "ui/win32/theme.h"
#include "ui/win32/win32_timers.h"

namespace quillet::win32 {

class Win32Ui final : public Ui {
 public:
  Win32Ui();

  [[nodiscard]] std::unique_ptr<FormPeer> CreatePeer(Form& form) override;
  TimerService& Timers() override { return timers_; }
  TextMetrics& Metrics() override { return metrics_; }
  void DoEvents() override;
  [[nodiscard]] ScreenInfo Screen() override;
  void ReportError(std::string_view what) override;
  [[nodiscard]] ScreenPoint PointerPosition() override;
  [[nodiscard]] bool AppThemed() override;
  void EndMenu() override;

  // Runs the event loop until the program ends; the exit code of WM_QUIT.
  int Run();
  [[nodiscard]] const PixelScale& Scale() const noexcept { return scale_; }

 protected:
  void QuitEventLoop() override;

 private:
  PixelScale scale_;
  Win32Timers timers_;
  GdiTextMetrics metrics_;
  ThemeLibrary theme_;
};

}  // namespace quillet::win32
