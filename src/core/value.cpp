#include "core/value.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace quillet {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }

double RadixValue(std::string_view text, std::size_t pos, int radix) {
  double result = 0;
  for (; pos < text.size(); ++pos) {
    const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(text[pos])));
    int digit = -1;
    if (c >= '0' && c <= '9') digit = c - '0';
    else if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (digit < 0 || digit >= radix) break;
    result = result * radix + digit;
  }
  // Hexadecimal and octal literals are 32-bit patterns: &HFFFFFFFF is -1.
  if (result <= 0xFFFFFFFFu && result > 0x7FFFFFFF) result -= 4294967296.0;
  return result;
}

}  // namespace

double Val(std::string_view text) {
  std::size_t pos = 0;
  while (pos < text.size() && IsBlank(text[pos])) ++pos;
  if (pos + 1 < text.size() && text[pos] == '&') {
    const char kind = static_cast<char>(std::tolower(static_cast<unsigned char>(text[pos + 1])));
    if (kind == 'h') return RadixValue(text, pos + 2, 16);
    if (kind == 'o') return RadixValue(text, pos + 2, 8);
  }
  // Gather the characters that form a number, skipping blanks, then let strtod read them.
  std::string number;
  bool digits = false, point = false, exponent = false;
  for (; pos < text.size(); ++pos) {
    const char c = text[pos];
    if (IsBlank(c)) continue;
    if (std::isdigit(static_cast<unsigned char>(c))) {
      number += c;
      digits = true;
    } else if ((c == '+' || c == '-') &&
               (number.empty() || number.back() == 'e')) {
      number += c;
    } else if (c == '.' && !point && !exponent) {
      number += c;
      point = true;
    } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && digits && !exponent) {
      number += 'e';
      exponent = true;
    } else {
      break;
    }
  }
  if (!digits) return 0;
  // A dangling exponent ("12e", "12e-") reads as the mantissa alone.
  while (!number.empty() && (number.back() == 'e' || number.back() == '+' || number.back() == '-'))
    number.pop_back();
  const double value = std::strtod(number.c_str(), nullptr);
  return std::isfinite(value) ? value : 0;
}

std::optional<std::int32_t> TextToInt32(std::string_view text) {
  std::size_t first = 0, last = text.size();
  while (first < last && text[first] == ' ') ++first;
  while (last > first && text[last - 1] == ' ') --last;
  std::string_view t = text.substr(first, last - first);
  if (t.size() >= 2 && t[0] == '&' && (t[1] == 'h' || t[1] == 'H' || t[1] == 'o' || t[1] == 'O')) {
    const int radix = (t[1] == 'h' || t[1] == 'H') ? 16 : 8;
    t.remove_prefix(2);
    if (!t.empty() && t.back() == '&') t.remove_suffix(1);
    if (t.empty()) return std::nullopt;
    std::uint64_t value = 0;
    for (const char c : t) {
      const int lower = std::tolower(static_cast<unsigned char>(c));
      const int digit = std::isdigit(lower) ? lower - '0' : (lower >= 'a' && lower <= 'f') ? lower - 'a' + 10 : 99;
      if (digit >= radix) return std::nullopt;
      value = value * radix + static_cast<unsigned>(digit);
      if (value > 0xFFFFFFFFu) return std::nullopt;
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
  }
  if (!t.empty() && t.back() == '&') t.remove_suffix(1);
  // Sign, digits, one point, an exponent: nothing else may stand in the text.
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
  bool digits = false;
  while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) { ++i; digits = true; }
  if (i < t.size() && t[i] == '.') {
    ++i;
    while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) { ++i; digits = true; }
  }
  if (!digits) return std::nullopt;
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
    ++i;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
    if (i == t.size() || !std::isdigit(static_cast<unsigned char>(t[i]))) return std::nullopt;
    while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) ++i;
  }
  if (i != t.size()) return std::nullopt;
  return ToInt32(std::strtod(std::string(t).c_str(), nullptr));
}

std::optional<std::int16_t> ToInt16(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  const double r = std::nearbyint(value);  // default rounding mode: half to even
  if (r < -32768 || r > 32767) return std::nullopt;
  return static_cast<std::int16_t>(r);
}

std::optional<std::int32_t> ToInt32(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  const double r = std::nearbyint(value);
  if (r < -2147483648.0 || r > 2147483647.0) return std::nullopt;
  return static_cast<std::int32_t>(r);
}

std::optional<std::int32_t> TruncateToInt32(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  const double r = std::trunc(value);
  if (r < -2147483648.0 || r > 2147483647.0) return std::nullopt;
  return static_cast<std::int32_t>(r);
}

std::string DecimalText(std::int64_t value) { return std::to_string(value); }

std::string NumberText(double value) {
  if (value == std::trunc(value) && std::fabs(value) < 1e15)
    return DecimalText(static_cast<std::int64_t>(value));
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.15g", value);
  return buf;
}

std::string SingleText(float value) {
  const double v = value;
  if (v == std::trunc(v) && std::fabs(v) < 1e7) return DecimalText(static_cast<std::int64_t>(v));
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.7g", v);
  return buf;
}

std::string FormatFixed2(double value) {
  if (!std::isfinite(value)) return "0.00";
  // Round on the value's 15 significant decimal digits, so 0.125 gives 0.13
  // as a user expects, not 0.12 as the binary tie-break would.
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.14e", std::fabs(value));
  const std::string s = buf;
  const auto e = s.find('e');
  std::string digits = s.substr(0, 1) + s.substr(2, e - 2);  // 15 digits
  const int exp10 = std::atoi(s.c_str() + e + 1);
  // Value = 0.d1d2... * 10^(exp10 + 1); keep digits up to the hundredths.
  const int keep = exp10 + 1 + 2;
  std::string kept;
  bool round_up = false;
  if (keep <= 0) {
    kept = "0";
    round_up = keep == 0 && digits[0] >= '5';
  } else {
    if (static_cast<std::size_t>(keep) >= digits.size()) {
      digits.append(static_cast<std::size_t>(keep) - digits.size(), '0');
      kept = digits;
    } else {
      kept = digits.substr(0, static_cast<std::size_t>(keep));
      round_up = digits[static_cast<std::size_t>(keep)] >= '5';
    }
  }
  if (round_up) {
    int i = static_cast<int>(kept.size()) - 1;
    while (i >= 0 && kept[static_cast<std::size_t>(i)] == '9') kept[static_cast<std::size_t>(i--)] = '0';
    if (i < 0) kept.insert(kept.begin(), '1');
    else ++kept[static_cast<std::size_t>(i)];
  }
  while (kept.size() < 3) kept.insert(kept.begin(), '0');
  std::string out = kept.substr(0, kept.size() - 2) + "." + kept.substr(kept.size() - 2);
  const bool zero = out.find_first_not_of("0.") == std::string::npos;
  return (value < 0 && !zero) ? "-" + out : out;
}

std::size_t InStrText(std::string_view haystack, std::string_view needle) {
  if (needle.empty()) return haystack.empty() ? 0 : 1;
  if (needle.size() > haystack.size()) return 0;
  for (std::size_t i = 0; i + needle.size() <= haystack.size(); ++i) {
    std::size_t j = 0;
    while (j < needle.size() &&
           std::toupper(static_cast<unsigned char>(haystack[i + j])) ==
               std::toupper(static_cast<unsigned char>(needle[j])))
      ++j;
    if (j == needle.size()) return i + 1;
  }
  return 0;
}

std::string UpperCase(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

std::string Trim(std::string_view text, char blank) {
  const auto first = text.find_first_not_of(blank);
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(blank);
  return std::string(text.substr(first, last - first + 1));
}

}  // namespace quillet
