// The session through user32.
#pragma once

#include "platform/session.h"
#include "platform/win32/dry_run.h"

namespace quillet::win32 {

class Win32Session : public SessionService {
 public:
  bool LockWorkStation() override;

 private:
  DryRun dry_run_;
};

}  // namespace quillet::win32
