#include "platform/win32/win32_devices.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {

void Win32Devices::SendMciString(std::string_view command) {
  if (!winmm_) winmm_.reset(::LoadLibraryW(L"winmm.dll"));
  if (!winmm_) return;
  using SendFn = DWORD(WINAPI*)(LPCWSTR, LPWSTR, UINT, HANDLE);
  const auto send =
      reinterpret_cast<SendFn>(reinterpret_cast<void*>(::GetProcAddress(winmm_.get(), "mciSendStringW")));
  if (send == nullptr) return;
  wchar_t answer[2] = L"0";
  send(Widen(command).c_str(), answer, 0, nullptr);
}

}  // namespace quillet::win32
