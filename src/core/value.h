// Value semantics of settings and texts: every stored number is text, read back
// with a parse that forgives junk instead of failing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Leading number of a text; 0 for junk. Stops at the first character that
// cannot continue the number. Blanks, tabs and line feeds inside are skipped,
// "&H" and "&O" prefixes read hexadecimal and octal.
double Val(std::string_view text);

// A whole text as a 32-bit integer, the way a text is converted where a
// number is wanted: blanks around it, a decimal number (rounded half to
// even), or "&H"/"&O" digits as a 32-bit pattern, either with a trailing
// "&". Nothing for anything else ("0x10", "12abc", "", out of range).
std::optional<std::int32_t> TextToInt32(std::string_view text);

// Conversions that round half to even and fail outside their range.
std::optional<std::int16_t> ToInt16(double value);
std::optional<std::int32_t> ToInt32(double value);
// Truncation towards zero, failing outside the 32-bit range.
std::optional<std::int32_t> TruncateToInt32(double value);

// Shortest decimal text of an integer or of a double the way a user reads it:
// "30", "-2", "1320", "5655.5".
std::string DecimalText(std::int64_t value);
std::string NumberText(double value);
// Text of a single-precision value with up to seven significant digits.
std::string SingleText(float value);

// "0.00": two decimals, halves rounded away from zero, at least one integer digit.
std::string FormatFixed2(double value);

// Case-insensitive search as a text comparison does it; 1-based position or 0.
std::size_t InStrText(std::string_view haystack, std::string_view needle);
std::string UpperCase(std::string_view text);
std::string Trim(std::string_view text, char blank = ' ');

}  // namespace quillet
