// A run that touches no device: when QUILLET_DRY_RUN names a file, the
// services that would lock the session or move a drive's medium append a
// line to that file instead and report success. Tests under Wine read it.
#pragma once

#include <string>
#include <string_view>

namespace quillet::win32 {

class DryRun {
 public:
  DryRun();
  bool Active() const { return !path_.empty(); }
  // One request, one line.
  void Record(std::string_view line) const;

 private:
  std::wstring path_;
};

}  // namespace quillet::win32
