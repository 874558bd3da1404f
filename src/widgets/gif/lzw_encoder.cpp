#include <algorithm>
#include <array>

#include "widgets/gif/lzw.h"

namespace quillet {
namespace {

constexpr int kHashSize = 5003;
constexpr std::uint32_t kMaxCodes = 4096;
constexpr int kSubBlockData = 254;

// Packs codes low bit first into sub-blocks of 254 bytes.
class CodePacker {
 public:
  explicit CodePacker(std::vector<std::uint8_t>& out) : out_(out) {}

  void PackCode(std::uint32_t code, int width) {
    bits_ |= code << bit_count_;
    bit_count_ += width;
    while (bit_count_ >= 8) {
      PutByte(static_cast<std::uint8_t>(bits_ & 0xFF));
      bits_ >>= 8;
      bit_count_ -= 8;
    }
  }

  // The partial byte, the last sub-block and the terminator.
  void Finish() {
    if (bit_count_ > 0) PutByte(static_cast<std::uint8_t>(bits_ & 0xFF));
    bits_ = 0;
    bit_count_ = 0;
    FlushSubBlock();
    out_.push_back(0);
  }

 private:
  void PutByte(std::uint8_t byte) {
    block_[static_cast<std::size_t>(++block_length_)] = byte;
    if (block_length_ == kSubBlockData) FlushSubBlock();
  }

  void FlushSubBlock() {
    if (block_length_ == 0) return;
    block_[0] = static_cast<std::uint8_t>(block_length_);
    out_.insert(out_.end(), block_.begin(), block_.begin() + 1 + block_length_);
    block_length_ = 0;
  }

  std::vector<std::uint8_t>& out_;
  std::uint32_t bits_ = 0;
  int bit_count_ = 0;
  std::array<std::uint8_t, 1 + kSubBlockData> block_{};
  int block_length_ = 0;
};

// Greedy LZW over an open-addressed table of (pixel, prefix) keys.
class HashedLzw {
 public:
  HashedLzw(int min_code_size, CodePacker& packer)
      : min_code_size_(min_code_size),
        clear_code_(1u << min_code_size),
        end_code_(clear_code_ + 1),
        packer_(packer) {
    Restart();
  }

  void Encode(const IndexImage& image) {
    packer_.PackCode(clear_code_, width_);
    const std::uint32_t pixel_mask = clear_code_ - 1;
    for (std::int32_t y = 0; y < image.Height; ++y) {
      const std::uint8_t* row = image.Pixels + static_cast<std::ptrdiff_t>(y) * image.Stride;
      for (std::int32_t x = 0; x < image.Width; ++x) Add(row[x] & pixel_mask);
    }
    if (has_prefix_) packer_.PackCode(prefix_, width_);
    packer_.PackCode(end_code_, width_);
    packer_.Finish();
  }

 private:
  void Restart() {
    hash_.fill(-1);
    width_ = min_code_size_ + 1;
    next_code_ = clear_code_ + 2;
    has_prefix_ = false;
  }

  void Add(std::uint32_t pixel) {
    if (!has_prefix_) {
      prefix_ = pixel;
      has_prefix_ = true;
      return;
    }
    const std::int32_t key = static_cast<std::int32_t>((pixel << 12) + prefix_);
    int slot = static_cast<int>((pixel << 4) ^ prefix_);
    if (slot >= kHashSize) slot = 0;
    if (Find(key, slot)) {
      prefix_ = codes_[static_cast<std::size_t>(slot)];
      return;
    }
    packer_.PackCode(prefix_, width_);
    prefix_ = pixel;
    codes_[static_cast<std::size_t>(slot)] = static_cast<std::uint16_t>(next_code_);
    hash_[static_cast<std::size_t>(slot)] = key;
    if (next_code_ > (1u << width_) - 1) {
      if (next_code_ >= kMaxCodes) {
        // The table is full: end the string here and start afresh.
        packer_.PackCode(prefix_, width_);
        packer_.PackCode(clear_code_, width_);
        Restart();
        return;
      }
      ++width_;
    }
    ++next_code_;
  }

  // Probes from `slot`; leaves it on the key's entry or on the free slot
  // where the key belongs.
  bool Find(std::int32_t key, int& slot) const {
    const int step = slot == 0 ? 1 : kHashSize - slot;
    for (;;) {
      const std::int32_t stored = hash_[static_cast<std::size_t>(slot)];
      if (stored == key) return true;
      if (stored < 0) return false;
      slot -= step;
      if (slot < 0) slot += kHashSize;
    }
  }

  const int min_code_size_;
  const std::uint32_t clear_code_;
  const std::uint32_t end_code_;
  CodePacker& packer_;
  std::array<std::int32_t, kHashSize> hash_{};
  std::array<std::uint16_t, kHashSize> codes_{};
  int width_ = 0;
  std::uint32_t next_code_ = 0;
  std::uint32_t prefix_ = 0;
  bool has_prefix_ = false;
};

}  // namespace

void LzwEncode(const IndexImage& image, int min_code_size, std::vector<std::uint8_t>& out) {
  min_code_size = std::clamp(min_code_size, 2, 8);
  out.push_back(static_cast<std::uint8_t>(min_code_size));
  CodePacker packer(out);
  HashedLzw(min_code_size, packer).Encode(image);
}

}  // namespace quillet
