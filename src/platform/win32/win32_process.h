// The running program as the system sees it.
#pragma once

#include <optional>
#include <string>

#include "platform/process.h"
#include "platform/win32/handles.h"

namespace quillet::win32 {

class Win32Process : public ProcessService {
 public:
  [[nodiscard]] std::string ExecutableName() override;
  [[nodiscard]] std::string ProgramFolder() override;
  [[nodiscard]] std::string Environment(std::string_view name) override;
  // Creates the instance mutex at the first call and holds it for the life of
  // this object; another object of the same executable, in this process or
  // another, then answers true.
  [[nodiscard]] bool PreviousInstance() override;

  // Full path of the running executable.
  [[nodiscard]] static std::wstring ExecutablePath();
  // Name of the instance mutex of an executable path: the path case-folded,
  // backslashes replaced, so a renamed copy is another executable.
  [[nodiscard]] static std::wstring InstanceMutexName(std::wstring_view executable_path);

 private:
  UniqueHandle instance_mutex_;
  std::optional<bool> previous_instance_;
};

}  // namespace quillet::win32
