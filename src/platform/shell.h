// What the program asks of the Windows shell.
#pragma once

#include <string_view>

namespace quillet {

// Show states of a started program or folder.
enum ShowState : int { kShowHide = 0, kShowNormal = 1, kShowMinimized = 2, kShowMaximized = 3, kShow = 5 };

class ShellService {
 public:
  virtual ~ShellService() = default;
  // Opens a file, folder, program or shell name ("::{CLSID}") as the shell
  // does; an empty operation is the default verb. True when it started.
  virtual bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                            std::string_view directory, int show) = 0;
  // Starts a program from a command line, its first window in the show state.
  virtual bool RunCommandLine(std::string_view command_line, int show) = 0;
};

}  // namespace quillet
