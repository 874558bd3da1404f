// Portable code speaks UTF-8; the W APIs speak UTF-16. Convert at the edge.
#pragma once

#include <string>
#include <string_view>

namespace quillet::win32 {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view utf16);

}  // namespace quillet::win32
