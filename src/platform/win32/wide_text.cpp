#include "platform/win32/wide_text.h"

#include "platform/win32/win32.h"

namespace quillet::win32 {

std::wstring Widen(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int size = static_cast<int>(utf8.size());
  const int length = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  if (length <= 0) return {};
  std::wstring out(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, out.data(), length);
  return out;
}

std::string Narrow(std::wstring_view utf16) {
  if (utf16.empty()) return {};
  const int size = static_cast<int>(utf16.size());
  const int length = ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, nullptr, 0, nullptr, nullptr);
  if (length <= 0) return {};
  std::string out(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, out.data(), length, nullptr, nullptr);
  return out;
}

}  // namespace quillet::win32
