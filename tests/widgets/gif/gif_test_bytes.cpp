#include "widgets/gif/gif_test_bytes.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quillet::gif_test {
namespace {

std::uint32_t NextRandom(std::uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

std::vector<std::uint8_t> InterlacedOrder(const std::vector<std::uint8_t>& pixels, int width, int height) {
  std::vector<std::uint8_t> out;
  out.reserve(pixels.size());
  const int passes[4][2] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
  for (const auto& pass : passes) {
    for (int y = pass[0]; y < height; y += pass[1]) {
      const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(y) * width;
      out.insert(out.end(), row, row + width);
    }
  }
  return out;
}

// Bits of the size field of the smallest table that holds `count` colours.
std::uint8_t TableBits(std::size_t count) {
  std::uint8_t bits = 0;
  while ((std::size_t{2} << bits) < count) ++bits;
  return bits;
}

}  // namespace

// Greedy LZW: the longest known string is written, then that string plus the
// next pixel becomes a new code. The width grows once the new code needs it.
std::vector<std::uint8_t> ReferenceLzw(const std::vector<std::uint8_t>& pixels, const LzwOptions& options) {
  const std::uint32_t clear = 1u << options.min_code_size;
  CodeWriter writer;
  std::map<std::pair<std::uint32_t, std::uint8_t>, std::uint32_t> strings;
  int width = options.min_code_size + 1;
  std::uint32_t next = clear + 2;
  if (options.leading_clear) writer.Code(clear, width);
  bool has_prefix = false;
  std::uint32_t prefix = 0;
  for (const std::uint8_t pixel : pixels) {
    if (!has_prefix) {
      prefix = pixel;
      has_prefix = true;
      continue;
    }
    const auto found = strings.find({prefix, pixel});
    if (found != strings.end()) {
      prefix = found->second;
      continue;
    }
    writer.Code(prefix, width);
    if (next < 4096) {
      strings[{prefix, pixel}] = next;
      if (next == (1u << width)) ++width;
      ++next;
      prefix = pixel;
    } else if (options.table_full == TableFull::kClear) {
      writer.Code(pixel, width).Code(clear, width);
      strings.clear();
      width = options.min_code_size + 1;
      next = clear + 2;
      has_prefix = false;
    } else {
      prefix = pixel;
    }
  }
  if (has_prefix) writer.Code(prefix, width);
  writer.Code(clear + 1, width);
  return writer.SubBlocks(options.sub_block_size);
}

CodeWriter& CodeWriter::Code(std::uint32_t code, int width) {
  bits_ |= code << bit_count_;
  bit_count_ += width;
  while (bit_count_ >= 8) {
    bytes_.push_back(static_cast<std::uint8_t>(bits_ & 0xFF));
    bits_ >>= 8;
    bit_count_ -= 8;
  }
  return *this;
}

std::vector<std::uint8_t> CodeWriter::SubBlocks(int sub_block_size) const {
  std::vector<std::uint8_t> data = bytes_;
  if (bit_count_ > 0) data.push_back(static_cast<std::uint8_t>(bits_ & 0xFF));
  std::vector<std::uint8_t> out;
  const auto block = static_cast<std::size_t>(sub_block_size);
  for (std::size_t i = 0; i < data.size(); i += block) {
    const std::size_t n = std::min(block, data.size() - i);
    out.push_back(static_cast<std::uint8_t>(n));
    out.insert(out.end(), data.begin() + static_cast<std::ptrdiff_t>(i),
               data.begin() + static_cast<std::ptrdiff_t>(i + n));
  }
  out.push_back(0);
  return out;
}

std::vector<std::uint8_t> PhotoPixels(int width, int height, std::uint32_t seed, int levels) {
  std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::uint32_t state = seed;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int gradient = (x * 3 + y * 2) / 4;
      const int noise = static_cast<int>(NextRandom(state) % 9) - 4;
      const int value = ((gradient + noise) % levels + levels) % levels;
      pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)] =
          static_cast<std::uint8_t>(value);
    }
  }
  return pixels;
}

std::vector<std::uint32_t> TestPalette(int count, std::uint32_t seed) {
  std::vector<std::uint32_t> colors(static_cast<std::size_t>(count));
  std::uint32_t state = seed;
  for (auto& color : colors) color = NextRandom(state) & 0xFFFFFF;
  return colors;
}

TestImage MakeImage(int width, int height, std::uint32_t seed, int levels) {
  TestImage image;
  image.width = width;
  image.height = height;
  image.pixels = PhotoPixels(width, height, seed, levels);
  image.lzw.min_code_size = std::max<int>(2, TableBits(static_cast<std::size_t>(levels)) + 1);
  return image;
}

TestImage Solid(int width, int height, std::uint8_t index) {
  TestImage image;
  image.width = width;
  image.height = height;
  image.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), index);
  return image;
}

TestImage WithTable(TestImage image, std::vector<std::uint32_t> table) {
  image.local_table = std::move(table);
  return image;
}

GifWriter::GifWriter(std::string_view signature) : bytes_(signature.begin(), signature.end()) {}

GifWriter& GifWriter::Screen(std::uint16_t width, std::uint16_t height,
                             const std::vector<std::uint32_t>& global_table) {
  Word(width);
  Word(height);
  bytes_.push_back(global_table.empty() ? 0x70 : static_cast<std::uint8_t>(0xF0 | TableBits(global_table.size())));
  // Background and aspect ratio: not 0, so a reader that took them for
  // blocks would stop there.
  bytes_.push_back(1);
  bytes_.push_back(49);
  Table(global_table);
  return *this;
}

GifWriter& GifWriter::Netscape(std::uint16_t loops) {
  return Application("NETSCAPE2.0",
                     {{1, static_cast<std::uint8_t>(loops & 0xFF), static_cast<std::uint8_t>(loops >> 8)}});
}

GifWriter& GifWriter::Application(std::string_view name,
                                  const std::vector<std::vector<std::uint8_t>>& sub_blocks) {
  std::vector<std::vector<std::uint8_t>> blocks = {{name.begin(), name.end()}};
  blocks.insert(blocks.end(), sub_blocks.begin(), sub_blocks.end());
  return Extension(0xFF, blocks);
}

GifWriter& GifWriter::GraphicControl(int disposal, std::uint16_t delay, std::optional<std::uint8_t> transparent) {
  const auto packed = static_cast<std::uint8_t>((disposal << 2) | (transparent ? 1 : 0));
  return Extension(0xF9, {{packed, static_cast<std::uint8_t>(delay & 0xFF), static_cast<std::uint8_t>(delay >> 8),
                           transparent.value_or(0)}});
}

GifWriter& GifWriter::Extension(std::uint8_t label, const std::vector<std::vector<std::uint8_t>>& sub_blocks) {
  bytes_.push_back(0x21);
  bytes_.push_back(label);
  for (const auto& block : sub_blocks) {
    bytes_.push_back(static_cast<std::uint8_t>(block.size()));
    bytes_.insert(bytes_.end(), block.begin(), block.end());
  }
  bytes_.push_back(0);
  return *this;
}

GifWriter& GifWriter::Image(const TestImage& image) {
  std::uint8_t packed = image.interlaced ? 0x40 : 0;
  if (!image.local_table.empty()) packed = static_cast<std::uint8_t>(packed | 0x80 | TableBits(image.local_table.size()));
  Descriptor(image.left, image.top, static_cast<std::uint16_t>(image.width), static_cast<std::uint16_t>(image.height),
             packed);
  Table(image.local_table);
  bytes_.push_back(static_cast<std::uint8_t>(image.lzw.min_code_size));
  const auto data = ReferenceLzw(
      image.interlaced ? InterlacedOrder(image.pixels, image.width, image.height) : image.pixels, image.lzw);
  return Bytes(data);
}

GifWriter& GifWriter::Descriptor(std::uint16_t left, std::uint16_t top, std::uint16_t width, std::uint16_t height,
                                 std::uint8_t packed) {
  bytes_.push_back(0x2C);
  Word(left);
  Word(top);
  Word(width);
  Word(height);
  bytes_.push_back(packed);
  return *this;
}

GifWriter& GifWriter::Bytes(const std::vector<std::uint8_t>& bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

GifWriter& GifWriter::Trailer() { return Bytes({0x3B}); }

std::vector<std::uint8_t> GifWriter::Prefix(std::size_t length) const {
  return {bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(std::min(length, bytes_.size()))};
}

void GifWriter::Word(std::uint16_t value) {
  bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF));
  bytes_.push_back(static_cast<std::uint8_t>(value >> 8));
}

void GifWriter::Table(const std::vector<std::uint32_t>& colors) {
  for (const std::uint32_t color : colors) {
    bytes_.push_back(static_cast<std::uint8_t>(color >> 16));
    bytes_.push_back(static_cast<std::uint8_t>(color >> 8));
    bytes_.push_back(static_cast<std::uint8_t>(color));
  }
}

GifWriter WithGlobalTable() {
  GifWriter gif;
  gif.Screen(64, 64, TestPalette(256, 3));
  return gif;
}

std::vector<std::uint8_t> StripPixels(const GifAnimation& gif, std::size_t frame) {
  const FrameRecord& f = gif.Frames[frame];
  std::vector<std::uint8_t> pixels;
  for (std::int32_t y = 0; y < f.Height; ++y) {
    const std::uint8_t* row = gif.Strip.Row(y) + f.StripX;
    pixels.insert(pixels.end(), row, row + f.Width);
  }
  return pixels;
}

}  // namespace quillet::gif_test
