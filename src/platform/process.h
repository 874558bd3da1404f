// The running program: who it is, where it lives, what it inherits.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

class ProcessService {
 public:
  virtual ~ProcessService() = default;
  // File name of the running executable without its extension ("Quillet").
  [[nodiscard]] virtual std::string ExecutableName() = 0;
  // Folder of the running executable, without a trailing backslash.
  [[nodiscard]] virtual std::string ProgramFolder() = 0;
  // A variable of the process environment, "" when unset.
  [[nodiscard]] virtual std::string Environment(std::string_view name) = 0;
  // True when another process of this same executable already runs. The
  // answer is taken once, at the first call, and holds for the process.
  [[nodiscard]] virtual bool PreviousInstance() = 0;
};

}  // namespace quillet
