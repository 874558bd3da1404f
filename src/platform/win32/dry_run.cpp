#include "platform/win32/dry_run.h"

#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {

DryRun::DryRun() {
  const DWORD size = ::GetEnvironmentVariableW(L"QUILLET_DRY_RUN", nullptr, 0);
  if (size <= 1) return;
  std::vector<wchar_t> value(size, L'\0');
  if (::GetEnvironmentVariableW(L"QUILLET_DRY_RUN", value.data(), size) == size - 1)
    path_.assign(value.data(), size - 1);
}

void DryRun::Record(std::string_view line) const {
  if (!Active()) return;
  const UniqueFile file(::CreateFileW(path_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return;
  const std::string text = std::string(line) + "\r\n";
  DWORD written = 0;
  ::WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

}  // namespace quillet::win32
