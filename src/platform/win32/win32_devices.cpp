#include "platform/win32/win32_devices.h"

#include <string>

#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"
#include <winioctl.h>

namespace quillet::win32 {
namespace {

constexpr DWORD kVwin32DosIoctl = 1;
constexpr DWORD kDeleteOnClose = 0x04000000;

}  // namespace

void Win32Devices::SendMciString(std::string_view command) {
  if (dry_run_.Active()) {
    dry_run_.Record("mci " + std::string(command));
    return;
  }
  if (!winmm_) winmm_.reset(::LoadLibraryW(L"winmm.dll"));
  if (!winmm_) return;
  using SendFn = DWORD(WINAPI*)(LPCWSTR, LPWSTR, UINT, HANDLE);
  const auto send =
      reinterpret_cast<SendFn>(reinterpret_cast<void*>(::GetProcAddress(winmm_.get(), "mciSendStringW")));
  if (send == nullptr) return;
  wchar_t answer[2] = L"0";
  send(Widen(command).c_str(), answer, 0, nullptr);
}

bool Win32Devices::NtFamily() { return (::GetVersion() & 0x80000000u) == 0; }

bool Win32Devices::EjectMedia(std::string_view drive) {
  if (dry_run_.Active()) {
    dry_run_.Record("eject " + std::string(drive));
    return true;
  }
  const std::wstring path = L"\\\\.\\" + Widen(drive);
  const UniqueFile volume(
      ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!volume) return false;
  DWORD bytes = 0;
  return ::DeviceIoControl(volume.get(), IOCTL_STORAGE_EJECT_MEDIA, nullptr, 0, nullptr, 0, &bytes, nullptr) != FALSE;
}

bool Win32Devices::DosIoctl(const std::array<std::uint32_t, 7>& registers) {
  const UniqueFile vwin32(::CreateFileW(L"\\\\.\\VWIN32", 0, 0, nullptr, 0, kDeleteOnClose, nullptr));
  if (!vwin32) return false;
  std::array<std::uint32_t, 7> block = registers;
  DWORD bytes = 0;
  ::DeviceIoControl(vwin32.get(), kVwin32DosIoctl, block.data(), sizeof block, block.data(), sizeof block, &bytes,
                    nullptr);
  return true;
}

}  // namespace quillet::win32
