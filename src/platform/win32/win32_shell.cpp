#include "platform/win32/win32_shell.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {

FARPROC Win32Shell::Function(const char* name) {
  if (!shell32_) shell32_.reset(::LoadLibraryW(L"shell32.dll"));
  return shell32_ ? ::GetProcAddress(shell32_.get(), name) : nullptr;
}

bool Win32Shell::ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                              std::string_view directory, int show) {
  using ShellExecuteFn = HINSTANCE(WINAPI*)(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT);
  const auto shell_execute = reinterpret_cast<ShellExecuteFn>(reinterpret_cast<void*>(Function("ShellExecuteW")));
  if (shell_execute == nullptr) return false;
  const std::wstring verb = Widen(operation), target = Widen(file), params = Widen(parameters),
                     folder = Widen(directory);
  const HINSTANCE result =
      shell_execute(nullptr, verb.empty() ? nullptr : verb.c_str(), target.c_str(),
                    params.empty() ? nullptr : params.c_str(), folder.empty() ? nullptr : folder.c_str(), show);
  // Values above 32 mean success.
  return reinterpret_cast<INT_PTR>(result) > 32;
}

bool Win32Shell::RunCommandLine(std::string_view command_line, int show) {
  std::wstring line = Widen(command_line);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION started{};
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started))
    return false;
  const UniqueHandle process(started.hProcess), thread(started.hThread);
  return true;
}

}  // namespace quillet::win32
