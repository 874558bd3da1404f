// Stored properties of a control: one keyed list per control, values as
// text or bytes, each read with the default the control gives.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/value.h"

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
  bool Has(std::string_view key) const { return values_.count(std::string(key)) != 0; }

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace quillet
