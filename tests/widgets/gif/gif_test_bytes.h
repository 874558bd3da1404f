// Builds GIF streams in memory for the reader's tests, with an LZW encoder
// of its own (a plain map of strings) so the reader is not checked against
// the encoder it ships with.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "widgets/gif/gif_types.h"

namespace quillet::gif_test {

enum class TableFull {
  kClear,     // end the string, write the pixel on its own and a clear code
  kKeepGoing  // no clear: the table stays full and codes stay 12 bits wide
};

struct LzwOptions {
  int min_code_size = 8;
  bool leading_clear = true;
  TableFull table_full = TableFull::kClear;
  int sub_block_size = 255;
};

// Image data of `pixels` without the minimum code size byte: sub-blocks and
// the zero terminator.
std::vector<std::uint8_t> ReferenceLzw(const std::vector<std::uint8_t>& pixels, const LzwOptions& options);

// Packs codes of the given widths, low bit first, into sub-blocks.
class CodeWriter {
 public:
  CodeWriter& Code(std::uint32_t code, int width);
  std::vector<std::uint8_t> SubBlocks(int sub_block_size = 255) const;

 private:
  std::vector<std::uint8_t> bytes_;
  std::uint32_t bits_ = 0;
  int bit_count_ = 0;
};

// Noise over a gradient, as in a photograph reduced to a palette: enough
// variety to fill the string table, enough runs to make long strings.
std::vector<std::uint8_t> PhotoPixels(int width, int height, std::uint32_t seed, int levels = 256);
std::vector<std::uint32_t> TestPalette(int count, std::uint32_t seed);

struct TestImage {
  std::uint16_t left = 0;
  std::uint16_t top = 0;
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;       // rows top to bottom
  std::vector<std::uint32_t> local_table;  // none when empty
  bool interlaced = false;
  LzwOptions lzw;
};

// PhotoPixels compressed with the smallest code size that holds `levels`.
TestImage MakeImage(int width, int height, std::uint32_t seed, int levels = 256);
TestImage Solid(int width, int height, std::uint8_t index);
TestImage WithTable(TestImage image, std::vector<std::uint32_t> table);

class GifWriter {
 public:
  explicit GifWriter(std::string_view signature = "GIF89a");

  // Logical screen; a global table when `global_table` is not empty.
  GifWriter& Screen(std::uint16_t width, std::uint16_t height, const std::vector<std::uint32_t>& global_table);
  GifWriter& Netscape(std::uint16_t loops);
  GifWriter& Application(std::string_view name, const std::vector<std::vector<std::uint8_t>>& sub_blocks);
  GifWriter& GraphicControl(int disposal, std::uint16_t delay, std::optional<std::uint8_t> transparent = {});
  GifWriter& Extension(std::uint8_t label, const std::vector<std::vector<std::uint8_t>>& sub_blocks);
  GifWriter& Image(const TestImage& image);
  GifWriter& Descriptor(std::uint16_t left, std::uint16_t top, std::uint16_t width, std::uint16_t height,
                        std::uint8_t packed);
  GifWriter& Bytes(const std::vector<std::uint8_t>& bytes);
  GifWriter& Trailer();

  std::size_t Size() const { return bytes_.size(); }
  const std::vector<std::uint8_t>& Get() const { return bytes_; }
  // The stream cut to its first `length` bytes.
  std::vector<std::uint8_t> Prefix(std::size_t length) const;

 private:
  void Word(std::uint16_t value);
  void Table(const std::vector<std::uint32_t>& colors);

  std::vector<std::uint8_t> bytes_;
};

// A 64 x 64 screen with a 256-colour global table, ready for frames.
GifWriter WithGlobalTable();

// Frame `frame` (0-based) as it lies in the strip, rows top to bottom.
std::vector<std::uint8_t> StripPixels(const GifAnimation& gif, std::size_t frame);

}  // namespace quillet::gif_test
