#include "platform/win32/win32_session.h"

#include "platform/win32/win32.h"

namespace quillet::win32 {

bool Win32Session::LockWorkStation() {
  if (dry_run_.Active()) {
    dry_run_.Record("lock");
    return true;
  }
  return ::LockWorkStation() != FALSE;
}

}  // namespace quillet::win32
