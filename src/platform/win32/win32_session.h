// The session through user32.
#pragma once

#include "platform/session.h"

namespace quillet::win32 {

class Win32Session : public SessionService {
 public:
  bool LockWorkStation() override;
};

}  // namespace quillet::win32
