#include "core/byte_count.h"

#include <algorithm>

namespace quillet {

ByteCount ByteCount::Product(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
  const std::uint64_t ab = std::uint64_t{a} * b;
  const std::uint64_t low = (ab & 0xFFFFFFFFu) * c;
  const std::uint64_t high = (ab >> 32) * c + (low >> 32);
  ByteCount r;
  r.words_ = {static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(high),
              static_cast<std::uint32_t>(high >> 32)};
  return r;
}

double ByteCount::ToDouble() const {
  return (static_cast<double>(words_[2]) * 4294967296.0 + words_[1]) * 4294967296.0 + words_[0];
}

std::string ByteCount::ToString() const {
  auto w = words_;
  std::string digits;
  do {
    std::uint64_t rem = 0;
    for (int i = 2; i >= 0; --i) {
      const std::uint64_t cur = (rem << 32) | w[static_cast<std::size_t>(i)];
      w[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(cur / 10);
      rem = cur % 10;
    }
    digits += static_cast<char>('0' + rem);
  } while (w[0] != 0 || w[1] != 0 || w[2] != 0);
  std::reverse(digits.begin(), digits.end());
  return digits;
}

}  // namespace quillet
