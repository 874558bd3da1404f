// The shell through the wide calls. shell32, ole32 and what they pull in are
// loaded at the first call, not with the program: under Wine they cost the
// start a good part of its time, and the bar shows its cards without them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/win32/win32.h"
#include "platform/shell.h"
#include "platform/win32/handles.h"

namespace quillet::win32 {

class Win32Shell : public ShellService {
 public:
  bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                    std::string_view directory, int show) override;
  bool RunCommandLine(std::string_view command_line, int show) override;
  [[nodiscard]] std::unique_ptr<ShellIcon> ExtractAssociatedIcon(std::string& path) override;
  [[nodiscard]] std::string ShortcutTarget(std::string_view path) override;

 private:
  // The address of a shell32 function, loading the library once; null when missing.
  FARPROC Function(const char* name);
  // The same for ole32.
  FARPROC Ole(const char* name);
  UniqueModule shell32_;
  UniqueModule ole32_;
};

}  // namespace quillet::win32
