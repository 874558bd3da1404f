// What the program asks of the Windows shell.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// Show states of a started program or folder.
enum ShowState : int { kShowHide = 0, kShowNormal = 1, kShowMinimized = 2, kShowMaximized = 3, kShow = 5 };

// An icon the system handed out; it goes back to the system with the object.
class ShellIcon {
 public:
  virtual ~ShellIcon() = default;
  // The icon stretched to `width` x `height` pixels as the system draws it,
  // row by row from the top, as 0xAARRGGBB with straight alpha.
  [[nodiscard]] virtual std::vector<std::uint32_t> Render(int width, int height) const = 0;
};

class ShellService {
 public:
  virtual ~ShellService() = default;
  // Opens a file, folder, program or shell name ("::{CLSID}") as the shell
  // does; an empty operation is the default verb. True when it started.
  virtual bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                            std::string_view directory, int show) = 0;
  // Starts a program from a command line, its first window in the show state.
  virtual bool RunCommandLine(std::string_view command_line, int show) = 0;
  // The icon of a file, or of the program that opens it. The system may
  // write that program's path over `path`, which then holds it. Null when
  // there is no icon.
  [[nodiscard]] virtual std::unique_ptr<ShellIcon> ExtractAssociatedIcon(std::string& path) = 0;
  // The target a shortcut file points at; "" when it can't be read.
  [[nodiscard]] virtual std::string ShortcutTarget(std::string_view path) = 0;
};

}  // namespace quillet
