#include "platform/win32/win32_clock.h"

#include "platform/win32/win32.h"

namespace quillet::win32 {

std::uint32_t Win32Clock::TickCount() { return ::GetTickCount(); }

std::optional<std::uint32_t> Win32Clock::LastInputTick() {
  LASTINPUTINFO info{sizeof info, 0};
  if (!::GetLastInputInfo(&info)) return std::nullopt;
  return info.dwTime;
}

}  // namespace quillet::win32
