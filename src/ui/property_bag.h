// Stored properties of a control: one keyed list per control, values as
// text or bytes, each read with the default the control gives.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/value.h"
#include "ui/painter.h"

namespace quillet {

class PropertyBag {
 public:
  void WriteProperty(std::string_view key, std::string value) { values_[std::string(key)] = std::move(value); }
  void WriteProperty(std::string_view key, std::int64_t value) { WriteProperty(key, DecimalText(value)); }
  void WriteBytes(std::string_view key, const std::vector<std::uint8_t>& bytes) {
    values_[std::string(key)] = std::string(bytes.begin(), bytes.end());
  }

  std::string ReadProperty(std::string_view key, std::string_view fallback) const {
    const auto it = values_.find(std::string(key));
    return it == values_.end() ? std::string(fallback) : it->second;
  }
  // A stored number outside the 64-bit range reads as the fallback.
  std::int64_t ReadNumber(std::string_view key, std::int64_t fallback) const {
    const auto it = values_.find(std::string(key));
    if (it == values_.end()) return fallback;
    const double value = Val(it->second);
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    return value >= -kLimit && value < kLimit ? static_cast<std::int64_t>(value) : fallback;
  }
  std::vector<std::uint8_t> ReadBytes(std::string_view key) const {
    const auto it = values_.find(std::string(key));
    if (it == values_.end()) return {};
    return {it->second.begin(), it->second.end()};
  }
  // Booleans are stored as -1 and 0.
  void WriteFlag(std::string_view key, bool on) { WriteProperty(key, std::int64_t{on ? -1 : 0}); }
  bool ReadFlag(std::string_view key, bool fallback) const { return ReadNumber(key, fallback ? -1 : 0) != 0; }
  bool Has(std::string_view key) const { return values_.count(std::string(key)) != 0; }

 private:
  std::map<std::string, std::string> values_;
};

// A font as one stored text, "name,size,bold".
inline std::string FontProperty(const Font& f) {
  return f.name + "," + NumberText(f.size) + "," + (f.bold ? "1" : "0");
}
inline Font FontFromProperty(std::string_view text, const Font& fallback) {
  const auto first = text.find(','), second = text.rfind(',');
  if (first == std::string_view::npos || second == first) return fallback;
  Font f;
  f.name = std::string(text.substr(0, first));
  f.size = Val(text.substr(first + 1, second - first - 1));
  f.bold = text.substr(second + 1) == "1";
  if (f.name.empty() || !(f.size > 0)) return fallback;
  return f;
}

}  // namespace quillet
