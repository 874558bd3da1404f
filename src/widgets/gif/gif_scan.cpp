#include "widgets/gif/gif_scan.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace quillet {
namespace {

constexpr std::uint8_t kExtensionIntroducer = 0x21;
constexpr std::uint8_t kImageSeparator = 0x2C;
constexpr std::uint8_t kApplicationLabel = 0xFF;
constexpr std::uint8_t kGraphicControlLabel = 0xF9;

constexpr unsigned char AsciiLower(unsigned char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

// The block names are compared in any letter case.
bool EqualsIgnoringCase(std::span<const std::uint8_t> bytes, std::string_view text) {
  return bytes.size() == text.size() &&
         std::equal(bytes.begin(), bytes.end(), text.begin(), [](std::uint8_t b, char c) {
           return AsciiLower(b) == AsciiLower(static_cast<unsigned char>(c));
         });
}

// Reads with 0-based offsets. A read that would pass the end fails (the
// caller then ends the scan); ReadBlock and SkipSubBlocks never fail.
class GifCursor {
 public:
  explicit GifCursor(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::int32_t Position() const { return position_; }
  void MoveTo(std::int32_t position) { position_ = position; }

  [[nodiscard]] bool ReadByte(std::uint8_t& value) {
    if (Remaining() < 1) return false;
    value = bytes_[Index()];
    ++position_;
    return true;
  }

  // 16-bit little-endian, read signed.
  [[nodiscard]] bool ReadWord(std::int32_t& value) {
    if (Remaining() < 2) return false;
    const auto low = bytes_[Index()];
    const auto high = bytes_[Index() + 1];
    value = static_cast<std::int16_t>(static_cast<std::uint16_t>(low | (high << 8)));
    position_ += 2;
    return true;
  }

  // n bytes, or nothing (and no move) when they would pass the end.
  std::span<const std::uint8_t> ReadBlock(std::int32_t n) {
    if (Remaining() < n) return {};
    const auto block = bytes_.subspan(Index(), static_cast<std::size_t>(n));
    position_ += n;
    return block;
  }

  // Walks length-prefixed sub-blocks to a zero length or the end, then steps
  // one further. At the end this leaves the position past the last byte.
  void SkipSubBlocks() {
    while (Remaining() > 0) {
      const std::uint8_t length = bytes_[Index()];
      if (length == 0) break;
      position_ += length + 1;
    }
    ++position_;
  }

  std::int64_t Remaining() const {
    return static_cast<std::int64_t>(bytes_.size()) - position_;
  }

 private:
  std::size_t Index() const { return static_cast<std::size_t>(position_); }

  std::span<const std::uint8_t> bytes_;
  std::int32_t position_ = 0;
};

class GifScanner {
 public:
  explicit GifScanner(std::span<const std::uint8_t> bytes) : cursor_(bytes) {}

  GifScanResult Run() {
    if (!ReadHeader()) return std::move(result_);
    for (;;) {
      const Step step = ReadNextBlock();
      if (step == Step::kEnd) break;
      if (step == Step::kRefuse) {
        result_.Frames.clear();
        result_.Blocks.clear();
        break;
      }
    }
    return std::move(result_);
  }

 private:
  enum class Step { kNext, kEnd, kRefuse };

  // Signature, then the packed byte and the global table at their fixed
  // offsets, whatever the header's other fields say.
  bool ReadHeader() {
    const auto signature = cursor_.ReadBlock(6);
    if (!EqualsIgnoringCase(signature, "gif89a") && !EqualsIgnoringCase(signature, "gif87a")) {
      return false;
    }
    result_.ColorTables.resize(1);
    cursor_.MoveTo(10);
    std::uint8_t packed = 0;
    if (!cursor_.ReadByte(packed)) return false;
    cursor_.MoveTo(13);
    if (packed & 0x80) {
      if (!ReadColorTable(0, (packed & 7) + 1)) return false;
      result_.HasGlobalTable = true;
    }
    return true;
  }

  Step ReadNextBlock() {
    const std::int32_t start = cursor_.Position();
    std::uint8_t introducer = 0;
    if (!cursor_.ReadByte(introducer)) return Step::kEnd;
    switch (introducer) {
      case 0:
        return Step::kNext;
      case kExtensionIntroducer:
        return ReadExtension(start) ? Step::kNext : Step::kEnd;
      case kImageSeparator:
        return ReadImage(start);
      default:  // the trailer, or anything unknown
        return Step::kEnd;
    }
  }

  bool ReadExtension(std::int32_t start) {
    std::uint8_t label = 0;
    if (!cursor_.ReadByte(label)) return false;
    if (label == kApplicationLabel) return ReadApplicationExtension();
    if (label == kGraphicControlLabel) return ReadGraphicControl(start);
    cursor_.SkipSubBlocks();
    return true;
  }

  bool ReadApplicationExtension() {
    std::uint8_t size = 0;
    if (!cursor_.ReadByte(size)) return false;
    if (EqualsIgnoringCase(cursor_.ReadBlock(size), "NETSCAPE2.0")) {
      std::uint8_t sub_block_size = 0;
      if (!cursor_.ReadByte(sub_block_size)) return false;
      if (sub_block_size == 3) {
        cursor_.MoveTo(cursor_.Position() + 1);  // the sub-block number
        if (!cursor_.ReadWord(result_.LoopCount)) return false;
      } else {
        cursor_.MoveTo(cursor_.Position() - 1);
      }
    }
    cursor_.SkipSubBlocks();
    return true;
  }

  // Its values wait in the pending record until the next image takes them.
  bool ReadGraphicControl(std::int32_t start) {
    pending_ = FrameRecord{};
    pending_.StripX = start;
    std::uint8_t size = 0;
    std::uint8_t packed = 0;
    if (!cursor_.ReadByte(size) || !cursor_.ReadByte(packed)) return false;
    pending_.Disposal = static_cast<std::uint8_t>((packed >> 2) & 3);
    // Nothing lies under the first frame to restore.
    if (pending_.Disposal == 3 && result_.Frames.empty()) pending_.Disposal = 0;
    std::int32_t delay = 0;
    if (!cursor_.ReadWord(delay)) return false;
    pending_.Delay = delay * 10;
    pending_.TransparentFlag = packed & 1;
    if (pending_.TransparentFlag == 1) {
      if (!cursor_.ReadByte(pending_.TransparentIndex)) return false;
    } else {
      cursor_.MoveTo(start + 7);
    }
    cursor_.SkipSubBlocks();
    return true;
  }

  Step ReadImage(std::int32_t start) {
    if (pending_.StripX == 0) pending_.StripX = start;
    FrameRecord& f = pending_;
    std::uint8_t packed = 0;
    if (!cursor_.ReadWord(f.Left) || !cursor_.ReadWord(f.Top) || !cursor_.ReadWord(f.Width) ||
        !cursor_.ReadWord(f.Height) || !cursor_.ReadByte(packed)) {
      return Step::kEnd;
    }
    if (packed & 0x80) {
      f.ColorTable = result_.TableCount + 1;
      if (!ReadColorTable(f.ColorTable, (packed & 7) + 1)) return Step::kEnd;
      result_.TableCount = f.ColorTable;
    } else if (!result_.HasGlobalTable) {
      return Step::kRefuse;  // a frame without any palette condemns the stream
    }
    std::uint8_t min_code_size = 0;
    if (!cursor_.ReadByte(min_code_size)) return Step::kEnd;
    cursor_.SkipSubBlocks();
    AcceptImage(start, cursor_.Position() - start);
    pending_ = FrameRecord{};
    return Step::kNext;
  }

  void AcceptImage(std::int32_t start, std::int32_t length) {
    if (length < 3) return;  // too small to hold an image: dropped
    const FrameRecord& f = pending_;
    result_.Frames.push_back(f);
    result_.Blocks.push_back(BlockRef{length, start});
    result_.CanvasWidth = std::max(result_.CanvasWidth, f.Left + f.Width);
    result_.CanvasHeight = std::max(result_.CanvasHeight, f.Top + f.Height);
  }

  bool ReadColorTable(std::int32_t column, int bits) {
    auto& tables = result_.ColorTables;
    if (tables.size() <= static_cast<std::size_t>(column)) {
      tables.resize(static_cast<std::size_t>(column) + 1);
    }
    const std::int32_t count = 1 << bits;
    const auto bytes = cursor_.ReadBlock(3 * count);
    if (bytes.empty()) return false;
    ColorTable& table = tables[static_cast<std::size_t>(column)];
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      table.Colors[i] = (std::uint32_t{bytes[3 * i]} << 16) | (std::uint32_t{bytes[3 * i + 1]} << 8) |
                        std::uint32_t{bytes[3 * i + 2]};
    }
    table.Count = count;
    return true;
  }

  GifCursor cursor_;
  GifScanResult result_;
  FrameRecord pending_;
};

}  // namespace

GifScanResult ScanGifBlocks(std::span<const std::uint8_t> gif_bytes) {
  // Positions are 32-bit and may run a sub-block past the end.
  constexpr std::size_t kLargest = std::numeric_limits<std::int32_t>::max() / 2;
  if (gif_bytes.size() > kLargest) return {};
  return GifScanner(gif_bytes).Run();
}

}  // namespace quillet
