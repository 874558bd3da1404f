// GIF's variable-width LZW, both ways.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillet {

// Decodes image data straight into palette indices. Every code's string is
// copied whole from where it was written before (strings are runs of the
// output itself), so the cost is per code, not per pixel. Reuse one decoder
// for many frames to keep its buffers.
class LzwDecoder {
 public:
  LzwDecoder() = default;
  LzwDecoder(const LzwDecoder&) = delete;
  LzwDecoder& operator=(const LzwDecoder&) = delete;

  // `sub_blocks` starts just after the minimum code size byte: length-
  // prefixed sub-blocks up to a zero length or the end of the span.
  // Returns exactly `pixel_count` indices, valid until the next call; those
  // the data did not reach (cut short, bad code, early end code) are 0.
  std::span<const std::uint8_t> Decode(int min_code_size, std::span<const std::uint8_t> sub_blocks,
                                       std::size_t pixel_count);

  // Indices actually produced by the last Decode.
  std::size_t DecodedCount() const { return decoded_; }

 private:
  void JoinSubBlocks(std::span<const std::uint8_t> sub_blocks);
  void PrepareOutput(std::size_t pixel_count);
  std::size_t Run(int min_code_size, std::size_t pixel_count);

  std::vector<std::uint8_t> data_;    // the sub-blocks' payload, zero padded
  std::vector<std::uint8_t> output_;  // 256 one-byte strings, the pixels, slack
  std::array<std::uint32_t, 4096> string_start_{};  // offset into output_
  std::array<std::uint16_t, 4096> string_length_{};  // 0 for clear and end codes
  std::size_t decoded_ = 0;
};

// Rows of palette indices to compress.
struct IndexImage {
  const std::uint8_t* Pixels = nullptr;  // first (top) row
  std::int32_t Width = 0;
  std::int32_t Height = 0;
  std::int32_t Stride = 0;  // bytes from one row to the next
};

// Compresses `image` with a hashed string table (5003 slots) and appends the
// image data to `out`: the minimum code size byte, sub-blocks of at most 254
// bytes and the zero terminator. The code size is held to 2 to 8; indices
// must be below 1 << min_code_size, higher bits are dropped. The table is
// cleared when it reaches 4096 codes.
void LzwEncode(const IndexImage& image, int min_code_size, std::vector<std::uint8_t>& out);

}  // namespace quillet
