// Builds GIF streams in memory for the reader's tests, with an LZW encoder of its own (a plain map of strings) so
// the reader is not checked against the encoder it ships with.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "widgets/gif/gif_types.h"

namespace quillet::gif_test {

using Bytes = std::vector<std::uint8_t>;
using Palette = std::vector<std::uint32_t>;
using Codes = std::vector<std::pair<std::uint32_t, int>>;  // code, width

// Codes packed low bit first into sub-blocks, and the zero terminator.
inline Bytes PackCodes(const Codes& codes, int sub_block_size = 255) {
  Bytes data, out;
  std::uint32_t bits = 0;
  int count = 0;
  for (const auto& [code, width] : codes) {
    bits |= code << count;
    for (count += width; count >= 8; count -= 8, bits >>= 8) data.push_back(static_cast<std::uint8_t>(bits));
  }
  if (count > 0) data.push_back(static_cast<std::uint8_t>(bits));
  for (std::size_t i = 0, n = 0; i < data.size(); i += n) {
    n = std::min(static_cast<std::size_t>(sub_block_size), data.size() - i);
    out.push_back(static_cast<std::uint8_t>(n));
    out.insert(out.end(), data.data() + i, data.data() + i + n);
  }
  out.push_back(0);
  return out;
}

// On a full table kClear ends the string, writes the pixel on its own and a clear code; kKeepGoing writes no
// clear, so the table stays full and codes stay 12 bits wide.
enum class TableFull { kClear, kKeepGoing };

struct LzwOptions {
  int min_code_size = 8;
  bool leading_clear = true;
  TableFull table_full = TableFull::kClear;
  int sub_block_size = 255;
};

// Greedy LZW: the longest known string is written, then that string plus the next pixel becomes a new code; the
// width grows once the new code needs it. Gives the image data without the minimum code size byte.
inline Bytes ReferenceLzw(const Bytes& pixels, const LzwOptions& options) {
  const std::uint32_t clear = 1u << options.min_code_size, kNone = ~0u;  // kNone: no string begun
  Codes codes;
  std::map<std::pair<std::uint32_t, std::uint8_t>, std::uint32_t> strings;
  int width = options.min_code_size + 1;
  std::uint32_t next = clear + 2, prefix = kNone;
  if (options.leading_clear) codes.emplace_back(clear, width);
  for (const std::uint8_t pixel : pixels) {
    if (prefix == kNone) {
      prefix = pixel;
    } else if (const auto found = strings.find({prefix, pixel}); found != strings.end()) {
      prefix = found->second;
    } else {
      codes.emplace_back(prefix, width);
      if (next < 4096) {
        strings[{prefix, pixel}] = next;
        if (next++ == (1u << width)) ++width;
      } else if (options.table_full == TableFull::kClear) {
        codes.insert(codes.end(), {{pixel, width}, {clear, width}});
        strings.clear();
        width = options.min_code_size + 1;
        next = clear + 2;
        prefix = kNone;
        continue;
      }
      prefix = pixel;
    }
  }
  if (prefix != kNone) codes.emplace_back(prefix, width);
  codes.emplace_back(clear + 1, width);
  return PackCodes(codes, options.sub_block_size);
}

inline std::uint32_t NextRandom(std::uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

// Noise over a gradient, as in a photograph reduced to a palette: enough variety to fill the string table, enough
// runs to make long strings.
inline Bytes PhotoPixels(int width, int height, std::uint32_t seed, int levels = 256) {
  Bytes pixels;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int value = (x * 3 + y * 2) / 4 + static_cast<int>(NextRandom(seed) % 9) - 4;
      pixels.push_back(static_cast<std::uint8_t>((value % levels + levels) % levels));
    }
  }
  return pixels;
}

inline Palette TestPalette(int count, std::uint32_t seed) {
  Palette colors(static_cast<std::size_t>(count));
  for (auto& color : colors) color = NextRandom(seed) & 0xFFFFFF;
  return colors;
}

// Bits of the size field of the smallest table that holds `count` colours.
inline std::uint8_t TableBits(std::size_t count) {
  std::uint8_t bits = 0;
  while ((std::size_t{2} << bits) < count) ++bits;
  return bits;
}

struct TestImage {
  std::uint16_t left = 0, top = 0;
  int width = 0, height = 0;
  Bytes pixels{};         // rows top to bottom
  Palette local_table{};  // none when empty
  bool interlaced = false;
  LzwOptions lzw{};
};

// PhotoPixels compressed with the smallest code size that holds `levels`.
inline TestImage MakeImage(int width, int height, std::uint32_t seed, int levels = 256) {
  TestImage image{.width = width, .height = height, .pixels = PhotoPixels(width, height, seed, levels)};
  image.lzw.min_code_size = std::max(2, TableBits(static_cast<std::size_t>(levels)) + 1);
  return image;
}

inline TestImage Solid(int width, int height, std::uint8_t index, int left = 0, int top = 0) {
  return {static_cast<std::uint16_t>(left), static_cast<std::uint16_t>(top), width, height,
          Bytes(static_cast<std::size_t>(width * height), index)};
}

// The rows of an interlaced image in the order the file holds them: four passes.
inline Bytes InterlacedOrder(const TestImage& image) {
  Bytes rows;
  for (const auto& [first, step] : {std::pair{0, 8}, {4, 8}, {2, 4}, {1, 2}}) {
    for (int y = first; y < image.height; y += step) {
      rows.insert(rows.end(), image.pixels.data() + y * image.width, image.pixels.data() + (y + 1) * image.width);
    }
  }
  return rows;
}

inline TestImage WithTable(TestImage image, Palette table) {
  image.local_table = std::move(table);
  return image;
}

class GifWriter {
 public:
  explicit GifWriter(std::string_view signature = "GIF89a") : bytes_(signature.begin(), signature.end()) {}

  // Logical screen; a global table when `global_table` is not empty. Background and aspect ratio are not 0, so a
  // reader that took them for blocks would stop there.
  GifWriter& Screen(std::uint16_t width, std::uint16_t height, const Palette& global_table) {
    const std::uint8_t flags = global_table.empty() ? 0x70 : 0xF0 | TableBits(global_table.size());
    return Bytes({Lo(width), Hi(width), Lo(height), Hi(height), flags, 1, 49}).Table(global_table);
  }
  GifWriter& Netscape(std::uint16_t loops) { return Application("NETSCAPE2.0", {{1, Lo(loops), Hi(loops)}}); }
  GifWriter& Application(std::string_view name, std::vector<gif_test::Bytes> sub_blocks) {
    sub_blocks.insert(sub_blocks.begin(), {name.begin(), name.end()});
    return Extension(0xFF, sub_blocks);
  }
  GifWriter& GraphicControl(int disposal, std::uint16_t delay, std::optional<std::uint8_t> transparent = {}) {
    const auto packed = static_cast<std::uint8_t>((disposal << 2) | (transparent ? 1 : 0));
    return Extension(0xF9, {{packed, Lo(delay), Hi(delay), transparent.value_or(0)}});
  }
  GifWriter& Extension(std::uint8_t label, const std::vector<gif_test::Bytes>& sub_blocks) {
    Bytes({0x21, label});
    for (const auto& block : sub_blocks) Bytes({static_cast<std::uint8_t>(block.size())}).Bytes(block);
    return Bytes({0});
  }
  GifWriter& Image(const TestImage& image) {
    const int table = image.local_table.empty() ? 0 : 0x80 | TableBits(image.local_table.size());
    Descriptor(image.left, image.top, static_cast<std::uint16_t>(image.width), static_cast<std::uint16_t>(image.height),
               static_cast<std::uint8_t>(table | (image.interlaced ? 0x40 : 0)));
    Table(image.local_table).Bytes({static_cast<std::uint8_t>(image.lzw.min_code_size)});
    return Bytes(ReferenceLzw(image.interlaced ? InterlacedOrder(image) : image.pixels, image.lzw));
  }
  GifWriter& Descriptor(std::uint16_t left, std::uint16_t top, std::uint16_t width, std::uint16_t height,
                        std::uint8_t packed) {
    return Bytes({0x2C, Lo(left), Hi(left), Lo(top), Hi(top), Lo(width), Hi(width), Lo(height), Hi(height), packed});
  }
  GifWriter& Bytes(const gif_test::Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
  }
  GifWriter& Trailer() { return Bytes({0x3B}); }

  std::size_t Size() const { return bytes_.size(); }
  const gif_test::Bytes& Get() const { return bytes_; }
  // The stream cut to its first `length` bytes.
  gif_test::Bytes Prefix(std::size_t length) const { return {bytes_.data(), bytes_.data() + std::min(length, Size())}; }

 private:
  static std::uint8_t Lo(std::uint16_t v) { return static_cast<std::uint8_t>(v); }
  static std::uint8_t Hi(std::uint16_t v) { return static_cast<std::uint8_t>(v >> 8); }
  GifWriter& Table(const Palette& colors) {
    for (const std::uint32_t c : colors)
      Bytes({static_cast<std::uint8_t>(c >> 16), static_cast<std::uint8_t>(c >> 8), static_cast<std::uint8_t>(c)});
    return *this;
  }

  gif_test::Bytes bytes_;
};

// A 64 x 64 screen with a 256-colour global table, ready for frames.
inline GifWriter WithGlobalTable() {
  GifWriter gif;
  gif.Screen(64, 64, TestPalette(256, 3));
  return gif;
}

// Frame `frame` (0-based) as it lies in the strip, rows top to bottom.
inline Bytes StripPixels(const GifAnimation& gif, std::size_t frame) {
  const FrameRecord& f = gif.Frames[frame];
  Bytes pixels;
  for (std::int32_t y = 0; y < f.Height; ++y) {
    pixels.insert(pixels.end(), gif.Strip.Row(y) + f.StripX, gif.Strip.Row(y) + f.StripX + f.Width);
  }
  return pixels;
}

}  // namespace quillet::gif_test
