// The user's session at this machine.
#pragma once

namespace quillet {

class SessionService {
 public:
  virtual ~SessionService() = default;
  // Shows the lock screen; true when the request was taken.
  virtual bool LockWorkStation() = 0;
};

}  // namespace quillet
