#include "platform/win32/win32_dialogs.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {

int Win32Dialogs::MessageBox(std::string_view text, int style, std::string_view title) {
  return ::MessageBoxW(nullptr, Widen(text).c_str(), Widen(title).c_str(), static_cast<UINT>(style));
}

}  // namespace quillet::win32
