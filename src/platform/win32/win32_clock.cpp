#include "platform/win32/win32_clock.h"

#include "platform/win32/win32.h"

namespace quillet::win32 {

std::uint32_t Win32Clock::TickCount() { return ::GetTickCount(); }

}  // namespace quillet::win32
