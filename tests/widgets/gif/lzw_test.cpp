#include "widgets/gif/lzw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

Bytes Decoded(LzwDecoder& decoder, int min_code_size, const Bytes& data, std::size_t pixel_count) {
  const auto pixels = decoder.Decode(min_code_size, data, pixel_count);
  return {pixels.begin(), pixels.end()};
}

// With a minimum code size of 2: clear 4, end 5, first new code 6, codes three bits wide until code 7 is defined.
TEST(LzwDecoder, ProducesTheIndicesTheCodesStandFor) {
  // name, minimum code size, codes, pixels asked for; the pixels given and how many of them were decoded
  const std::tuple<const char*, int, Codes, std::size_t, Bytes, std::size_t> cases[] = {
      {"DefinedCode", 2, {{4, 3}, {1, 3}, {2, 3}, {6, 3}, {5, 3}}, 4, {1, 2, 1, 2}, 4},
      {"CodeBeingDefined", 2, {{4, 3}, {1, 3}, {6, 3}, {5, 3}}, 3, {1, 1, 1}, 3},
      {"CodeBeingDefinedTwice", 2, {{4, 3}, {3, 3}, {6, 3}, {7, 4}, {5, 4}}, 6, {3, 3, 3, 3, 3, 3}, 6},
      {"NoLeadingClear", 2, {{1, 3}, {2, 3}, {5, 3}}, 2, {1, 2}, 2},
      {"WidthGrowsAndClearResetsIt",
       2,
       {{4, 3}, {0, 3}, {1, 3}, {2, 3}, {3, 4}, {4, 4}, {1, 3}, {6, 3}, {5, 3}},
       7,
       {0, 1, 2, 3, 1, 1, 1},
       7},
      {"CodeBeingDefinedRightAfterClear", 2, {{4, 3}, {6, 3}, {5, 3}}, 2, {0, 0}, 0},
      {"UndefinedCodeStops", 2, {{4, 3}, {1, 3}, {7, 3}, {2, 3}, {5, 3}}, 3, {1, 0, 0}, 1},
      {"EarlyEndCode", 2, {{4, 3}, {1, 3}, {5, 3}, {2, 3}}, 2, {1, 0}, 1},
      // Fewer than 9 bits remain after the last code, so no further code is read.
      {"DataRunsOut", 8, {{256, 9}, {1, 9}, {2, 9}}, 4, {1, 2, 0, 0}, 2},
      {"MorePixelsThanTheFrameHolds", 2, {{4, 3}, {1, 3}, {2, 3}, {3, 3}, {5, 3}}, 2, {1, 2}, 2},
      {"StringCutAtTheFrameEnd", 2, {{4, 3}, {1, 3}, {2, 3}, {6, 3}, {5, 3}}, 3, {1, 2, 1}, 3},
      {"CodeSizeOne", 1, {{2, 2}, {1, 2}, {0, 2}, {4, 3}, {3, 3}}, 4, {1, 0, 1, 0}, 4},
      {"CodeSizeZeroIsRefused", 0, {{1, 1}, {0, 1}}, 2, {0, 0}, 0},
      {"CodeSizeNineIsRefused", 9, {{512, 10}, {300, 10}}, 1, {0}, 0},
  };
  for (const auto& [name, min_code_size, codes, pixel_count, pixels, decoded] : cases) {
    SCOPED_TRACE(name);
    LzwDecoder decoder;
    EXPECT_EQ(Decoded(decoder, min_code_size, PackCodes(codes), pixel_count), pixels);
    EXPECT_EQ(decoder.DecodedCount(), decoded);
  }
}

LzwOptions Lzw(int min_code_size, TableFull table_full = TableFull::kClear, bool leading_clear = true,
               int sub_block_size = 255) {
  return {min_code_size, leading_clear, table_full, sub_block_size};
}

TEST(LzwDecoder, GivesBackWhatAnotherEncoderCompressed) {
  const std::tuple<const char*, Bytes, LzwOptions> cases[] = {
      {"OnePixel", PhotoPixels(1, 1, 1), Lzw(8)},
      {"FourColours", PhotoPixels(64, 64, 2, 4), Lzw(2)},
      {"SeventyColours", PhotoPixels(120, 80, 3, 70), Lzw(7)},
      {"FullTableCleared", PhotoPixels(400, 300, 4), Lzw(8)},
      {"FullTableKeptWithoutClear", PhotoPixels(400, 300, 5), Lzw(8, TableFull::kKeepGoing)},
      {"SmallCodesKeptWithoutClear", PhotoPixels(300, 300, 6, 4), Lzw(2, TableFull::kKeepGoing)},
      {"NoLeadingClear", PhotoPixels(200, 100, 7), Lzw(8, TableFull::kClear, false)},
      {"TinySubBlocks", PhotoPixels(90, 70, 8), Lzw(8, TableFull::kClear, true, 1)},
      {"LongRuns", Solid(2000, 100, 1).pixels, Lzw(8)}};
  for (const auto& [name, pixels, lzw] : cases) {
    SCOPED_TRACE(name);
    LzwDecoder decoder;
    EXPECT_EQ(Decoded(decoder, lzw.min_code_size, ReferenceLzw(pixels, lzw), pixels.size()), pixels);
    EXPECT_EQ(decoder.DecodedCount(), pixels.size());
  }
}

TEST(LzwDecoder, AReusedDecoderLeavesNothingOfTheLastFrame) {
  LzwDecoder decoder;
  const auto big = PhotoPixels(300, 200, 5, 256);
  decoder.Decode(8, ReferenceLzw(big, Lzw(8)), big.size());
  auto data = ReferenceLzw({7, 7, 7, 9}, Lzw(8));
  data.resize(data.size() - 3);  // lose the end code and the last string
  const auto pixels = Decoded(decoder, 8, data, 40);
  ASSERT_EQ(pixels.size(), 40u);
  EXPECT_LT(decoder.DecodedCount(), 4u);
  for (std::size_t i = decoder.DecodedCount(); i < pixels.size(); ++i) EXPECT_EQ(pixels[i], 0) << i;
}

// The hashed table must find every string a plain map finds, or the output still decodes but is longer. Rows are
// read by their stride: the bytes between them must not leak in.
TEST(LzwEncode, WritesTheSameCodesAsAPlainTable) {
  for (const TestImage& image :
       {MakeImage(1, 1, 1), MakeImage(300, 200, 2, 4), MakeImage(600, 500, 3), Solid(1000, 200, 3)}) {
    SCOPED_TRACE(image.width);
    const int stride = image.width + 3;
    Bytes strip(static_cast<std::size_t>(stride * image.height), 99);
    for (int y = 0; y < image.height; ++y) std::copy_n(&image.pixels[y * image.width], image.width, &strip[y * stride]);
    Bytes encoded;
    LzwEncode({strip.data(), image.width, image.height, stride}, image.lzw.min_code_size, encoded);
    auto expected = ReferenceLzw(image.pixels, Lzw(image.lzw.min_code_size, TableFull::kClear, true, 254));
    expected.insert(expected.begin(), static_cast<std::uint8_t>(image.lzw.min_code_size));
    EXPECT_EQ(encoded, expected);
  }
}

}  // namespace
}  // namespace quillet
