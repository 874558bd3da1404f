#include "platform/win32/win32_session.h"

#include "platform/win32/win32.h"

namespace quillet::win32 {

bool Win32Session::LockWorkStation() { return ::LockWorkStation() != FALSE; }

}  // namespace quillet::win32
