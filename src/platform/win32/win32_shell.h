// The shell through the wide calls. shell32 and what it pulls in are loaded
// at the first call, not with the program: under Wine they cost the start a
// good part of its time, and the bar shows its cards without them.
#pragma once

#include <string_view>

#include "platform/shell.h"
#include "platform/win32/handles.h"

namespace quillet::win32 {

class Win32Shell : public ShellService {
 public:
  bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                    std::string_view directory, int show) override;
  bool RunCommandLine(std::string_view command_line, int show) override;

 private:
  // The address of a shell32 function, loading the library once; null when missing.
  FARPROC Function(const char* name);
  UniqueModule shell32_;
};

}  // namespace quillet::win32
