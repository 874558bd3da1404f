// Quillet.exe: the real services, the Win32 host and the side bar.
#include <exception>

#include "platform/platform.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_devices.h"
#include "platform/win32/win32_dialogs.h"
#include "platform/win32/win32_drives.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_process.h"
#include "platform/win32/win32_resources.h"
#include "platform/win32/win32_session.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_system_info.h"
#include "shell/Form1.h"
#include "ui/win32/tray_window.h"
#include "ui/win32/win32_ui.h"

namespace {

int RunQuillet() {
  quillet::win32::RegistrySettingsStore settings;
  quillet::win32::Win32Drives drives;
  quillet::win32::Win32Process process;
  quillet::win32::Win32Clock clock;
  quillet::win32::Win32Dialogs dialogs;
  quillet::win32::Win32Files files;
  quillet::win32::Win32Resources resources;
  quillet::win32::Win32Shell shell;
  quillet::win32::Win32Session session;
  quillet::win32::Win32Devices devices;
  quillet::win32::Win32SystemInfo system;
  quillet::win32::TrayWindow tray;
  quillet::Platform platform{settings, drives, process, clock,   dialogs, files,
                             resources, shell, session, devices, system,  tray};

  quillet::win32::Win32Ui ui;
  quillet::Form1 form1(ui, platform);
  ui.Guard([&] { form1.Load(); });
  if (ui.Ended()) return 0;
  if (form1.Loaded()) ui.Guard([&] { form1.Show(); });
  // Without a window no one could end the loop.
  if (ui.OpenForms().empty()) return 1;
  const int code = ui.Run();
  // Every form is unloaded by now. The process ends here, as a drive query
  // that hangs on its own thread must not hold it open.
  ::ExitProcess(static_cast<UINT>(code));
}

void ReportFatal(const char* what) noexcept {
  ::MessageBoxW(nullptr, quillet::win32::Widen(what).c_str(), L"Quillet", MB_OK | MB_ICONERROR);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  try {
    return RunQuillet();
  } catch (const std::exception& e) {
    ReportFatal(e.what());
  } catch (...) {
    ReportFatal("Unknown error");
  }
  return 1;
}
