#include <algorithm>
#include <bit>
#include <cstring>

#include "widgets/gif/lzw.h"

namespace quillet {
namespace {

constexpr std::uint32_t kMaxCodes = 4096;
constexpr int kMaxCodeWidth = 12;
constexpr std::size_t kOneByteStrings = 256;
constexpr std::size_t kChunk = 16;
// A string may start just before the end of the frame, and copies run up to
// one chunk past a string's end.
constexpr std::size_t kOutputSlack = kMaxCodes + 2 * kChunk;
constexpr std::size_t kDataPadding = 16;  // the bit reader loads 8 bytes at a time

std::uint64_t LoadLittleEndian64(const std::uint8_t* p) {
  std::uint64_t value = 0;
  std::memcpy(&value, p, sizeof value);
  if constexpr (std::endian::native == std::endian::big) {
    std::uint64_t swapped = 0;
    for (int i = 0; i < 8; ++i) swapped = (swapped << 8) | ((value >> (8 * i)) & 0xFF);
    value = swapped;
  }
  return value;
}

// Copies whole chunks, so it writes up to kChunk - 1 bytes past dst + n.
// Each chunk is loaded before it is stored, so a source that ends at or
// before dst is read correctly even when the two are closer than a chunk.
void CopyString(std::uint8_t* dst, const std::uint8_t* src, std::size_t n) {
  std::uint8_t* const stop = dst + n;
  do {
    std::uint8_t chunk[kChunk];
    std::memcpy(chunk, src, kChunk);
    std::memcpy(dst, chunk, kChunk);
    dst += kChunk;
    src += kChunk;
  } while (dst < stop);
}

}  // namespace

std::span<const std::uint8_t> LzwDecoder::Decode(int min_code_size,
                                                  std::span<const std::uint8_t> sub_blocks,
                                                  std::size_t pixel_count) {
  PrepareOutput(pixel_count);
  decoded_ = 0;
  if (min_code_size >= 1 && min_code_size <= 8) {
    JoinSubBlocks(sub_blocks);
    decoded_ = Run(min_code_size, pixel_count);
  }
  std::uint8_t* const pixels = output_.data() + kOneByteStrings;
  std::fill(pixels + decoded_, pixels + pixel_count, std::uint8_t{0});
  return {pixels, pixel_count};
}

void LzwDecoder::JoinSubBlocks(std::span<const std::uint8_t> sub_blocks) {
  data_.clear();
  data_.reserve(sub_blocks.size() + kDataPadding);
  std::size_t i = 0;
  while (i < sub_blocks.size()) {
    const std::size_t length = sub_blocks[i++];
    if (length == 0) break;
    const std::size_t take = std::min(length, sub_blocks.size() - i);
    data_.insert(data_.end(), sub_blocks.begin() + static_cast<std::ptrdiff_t>(i),
                 sub_blocks.begin() + static_cast<std::ptrdiff_t>(i + take));
    i += take;
  }
}

void LzwDecoder::PrepareOutput(std::size_t pixel_count) {
  const std::size_t needed = kOneByteStrings + pixel_count + kOutputSlack;
  if (output_.size() < needed) output_.resize(needed);
  for (std::size_t i = 0; i < kOneByteStrings; ++i) output_[i] = static_cast<std::uint8_t>(i);
}

// Every string in the table is a run of output already written: a literal is
// one of the 256 bytes in front of the pixels, and a new entry is the
// previous code's string plus the first byte of the current one, which is
// exactly the previous string extended by one in place.
std::size_t LzwDecoder::Run(int min_code_size, std::size_t pixel_count) {
  const std::uint32_t clear_code = 1u << min_code_size;
  const std::uint32_t end_code = clear_code + 1;
  for (std::uint32_t code = 0; code < clear_code; ++code) {
    string_start_[code] = code;
    string_length_[code] = 1;
  }
  string_length_[clear_code] = 0;
  string_length_[end_code] = 0;

  const std::uint64_t bit_budget = std::uint64_t{8} * data_.size();
  data_.resize(data_.size() + kDataPadding, 0);
  const std::uint8_t* in = data_.data();
  std::uint64_t bits = 0;
  unsigned bit_count = 0;
  std::uint64_t bits_used = 0;

  std::uint8_t* const base = output_.data();
  std::uint8_t* const first = base + kOneByteStrings;
  std::uint8_t* const last = first + pixel_count;
  std::uint8_t* out = first;
  int width = min_code_size + 1;
  std::uint32_t mask = (1u << width) - 1;
  std::uint32_t next_code = clear_code + 2;
  std::uint32_t prev_start = 0;
  std::uint32_t prev_length = 0;  // 0: no previous code since a clear

  while (out < last) {
    bits |= LoadLittleEndian64(in) << bit_count;
    in += (63 - bit_count) >> 3;
    bit_count |= 56;
    const std::uint32_t code = static_cast<std::uint32_t>(bits) & mask;
    bits >>= width;
    bit_count -= static_cast<unsigned>(width);
    bits_used += static_cast<unsigned>(width);
    if (bits_used > bit_budget) break;

    std::uint32_t length = 0;
    if (code < next_code) {
      length = string_length_[code];
      if (length == 0) {
        if (code == end_code) break;
        width = min_code_size + 1;
        mask = (1u << width) - 1;
        next_code = clear_code + 2;
        prev_length = 0;
        continue;
      }
      CopyString(out, base + string_start_[code], length);
    } else if (code == next_code && prev_length != 0) {
      // The code being defined right now: previous string plus its own first byte.
      length = prev_length + 1;
      CopyString(out, base + prev_start, prev_length);
      out[prev_length] = out[0];
    } else {
      break;  // not a code yet: the data is damaged
    }

    if (prev_length != 0 && next_code < kMaxCodes) {
      string_start_[next_code] = prev_start;
      string_length_[next_code] = static_cast<std::uint16_t>(prev_length + 1);
      ++next_code;
      if (next_code > mask && width < kMaxCodeWidth) {
        ++width;
        mask = (mask << 1) | 1;
      }
    }
    prev_start = static_cast<std::uint32_t>(out - base);
    prev_length = length;
    out += length;
  }
  return std::min(static_cast<std::size_t>(out - first), pixel_count);
}

}  // namespace quillet
