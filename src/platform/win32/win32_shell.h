// The shell through the wide calls.
#pragma once

#include "platform/shell.h"

namespace quillet::win32 {

class Win32Shell : public ShellService {
 public:
  bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                    std::string_view directory, int show) override;
};

}  // namespace quillet::win32
