// Disk sizes as the exact product of three 32-bit counts (up to 2^96), so a
// large drive keeps every digit on a 32-bit build too.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillet {

class ByteCount {
 public:
  ByteCount() = default;
  static ByteCount Product(std::uint32_t a, std::uint32_t b, std::uint32_t c);

  double ToDouble() const;
  std::string ToString() const;  // decimal digits
  bool operator==(const ByteCount&) const = default;

 private:
  std::array<std::uint32_t, 3> words_{};  // little-endian 32-bit words
};

}  // namespace quillet
