#include "widgets/gif/lzw.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

using Codes = std::vector<std::pair<std::uint32_t, int>>;  // code, width

struct CodeCase {
  std::string name;
  int min_code_size;
  Codes codes;
  std::size_t pixel_count;
  std::vector<std::uint8_t> pixels;
  std::size_t decoded;
};

class LzwDecodeCodes : public testing::TestWithParam<CodeCase> {};

TEST_P(LzwDecodeCodes, ProducesTheIndicesTheCodesStandFor) {
  const CodeCase& c = GetParam();
  CodeWriter writer;
  for (const auto& [code, width] : c.codes) writer.Code(code, width);
  LzwDecoder decoder;
  const auto pixels = decoder.Decode(c.min_code_size, writer.SubBlocks(), c.pixel_count);
  EXPECT_EQ(std::vector<std::uint8_t>(pixels.begin(), pixels.end()), c.pixels);
  EXPECT_EQ(decoder.DecodedCount(), c.decoded);
}

// With a minimum code size of 2: clear 4, end 5, first new code 6, codes
// three bits wide until code 7 is defined.
INSTANTIATE_TEST_SUITE_P(
    Streams, LzwDecodeCodes,
    testing::Values(
        CodeCase{"DefinedCode", 2, {{4, 3}, {1, 3}, {2, 3}, {6, 3}, {5, 3}}, 4, {1, 2, 1, 2}, 4},
        CodeCase{"CodeBeingDefined", 2, {{4, 3}, {1, 3}, {6, 3}, {5, 3}}, 3, {1, 1, 1}, 3},
        CodeCase{"CodeBeingDefinedTwice", 2, {{4, 3}, {3, 3}, {6, 3}, {7, 4}, {5, 4}}, 6, {3, 3, 3, 3, 3, 3}, 6},
        CodeCase{"NoLeadingClear", 2, {{1, 3}, {2, 3}, {5, 3}}, 2, {1, 2}, 2},
        CodeCase{"WidthGrowsAndClearResetsIt", 2,
                 {{4, 3}, {0, 3}, {1, 3}, {2, 3}, {3, 4}, {4, 4}, {1, 3}, {6, 3}, {5, 3}}, 7,
                 {0, 1, 2, 3, 1, 1, 1}, 7},
        CodeCase{"CodeBeingDefinedRightAfterClear", 2, {{4, 3}, {6, 3}, {5, 3}}, 2, {0, 0}, 0},
        CodeCase{"UndefinedCodeStops", 2, {{4, 3}, {1, 3}, {7, 3}, {2, 3}, {5, 3}}, 3, {1, 0, 0}, 1},
        CodeCase{"EarlyEndCode", 2, {{4, 3}, {1, 3}, {5, 3}, {2, 3}}, 2, {1, 0}, 1},
        // Fewer than 9 bits remain after the last code, so no further code is read.
        CodeCase{"DataRunsOut", 8, {{256, 9}, {1, 9}, {2, 9}}, 4, {1, 2, 0, 0}, 2},
        CodeCase{"MorePixelsThanTheFrameHolds", 2, {{4, 3}, {1, 3}, {2, 3}, {3, 3}, {5, 3}}, 2, {1, 2}, 2},
        CodeCase{"StringCutAtTheFrameEnd", 2, {{4, 3}, {1, 3}, {2, 3}, {6, 3}, {5, 3}}, 3, {1, 2, 1}, 3},
        CodeCase{"CodeSizeOne", 1, {{2, 2}, {1, 2}, {0, 2}, {4, 3}, {3, 3}}, 4, {1, 0, 1, 0}, 4},
        CodeCase{"CodeSizeZeroIsRefused", 0, {{1, 1}, {0, 1}}, 2, {0, 0}, 0},
        CodeCase{"CodeSizeNineIsRefused", 9, {{512, 10}, {300, 10}}, 1, {0}, 0}),
    [](const auto& p) { return p.param.name; });

LzwOptions Lzw(int min_code_size, TableFull table_full = TableFull::kClear, bool leading_clear = true,
               int sub_block_size = 255) {
  return LzwOptions{min_code_size, leading_clear, table_full, sub_block_size};
}

TEST(LzwDecoder, GivesBackWhatAnotherEncoderCompressed) {
  struct Case {
    std::string name;
    std::vector<std::uint8_t> pixels;
    LzwOptions lzw;
  };
  for (const Case& c : {Case{"OnePixel", PhotoPixels(1, 1, 1), Lzw(8)},
                        Case{"FourColours", PhotoPixels(64, 64, 2, 4), Lzw(2)},
                        Case{"SeventyColours", PhotoPixels(120, 80, 3, 70), Lzw(7)},
                        Case{"FullTableCleared", PhotoPixels(400, 300, 4), Lzw(8)},
                        Case{"FullTableKeptWithoutClear", PhotoPixels(400, 300, 5), Lzw(8, TableFull::kKeepGoing)},
                        Case{"SmallCodesKeptWithoutClear", PhotoPixels(300, 300, 6, 4), Lzw(2, TableFull::kKeepGoing)},
                        Case{"NoLeadingClear", PhotoPixels(200, 100, 7), Lzw(8, TableFull::kClear, false)},
                        Case{"TinySubBlocks", PhotoPixels(90, 70, 8), Lzw(8, TableFull::kClear, true, 1)},
                        Case{"LongRuns", Solid(2000, 100, 1).pixels, Lzw(8)}}) {
    SCOPED_TRACE(c.name);
    LzwDecoder decoder;
    const auto pixels = decoder.Decode(c.lzw.min_code_size, ReferenceLzw(c.pixels, c.lzw), c.pixels.size());
    EXPECT_EQ(decoder.DecodedCount(), c.pixels.size());
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), c.pixels.begin(), c.pixels.end()));
  }
}

TEST(LzwDecoder, AReusedDecoderLeavesNothingOfTheLastFrame) {
  LzwDecoder decoder;
  const auto big = PhotoPixels(300, 200, 5, 256);
  decoder.Decode(8, ReferenceLzw(big, Lzw(8)), big.size());
  const std::vector<std::uint8_t> small = {7, 7, 7, 9};
  auto data = ReferenceLzw(small, Lzw(8));
  data.resize(data.size() - 3);  // lose the end code and the last string
  const auto pixels = decoder.Decode(8, data, 40);
  ASSERT_EQ(pixels.size(), 40u);
  EXPECT_LT(decoder.DecodedCount(), 4u);
  for (std::size_t i = decoder.DecodedCount(); i < pixels.size(); ++i) EXPECT_EQ(pixels[i], 0) << i;
}

// The hashed table must find every string a plain map finds, or the output
// still decodes but is longer.
TEST(LzwEncode, WritesTheSameCodesAsAPlainTable) {
  for (const TestImage& image : {MakeImage(1, 1, 1), MakeImage(300, 200, 2, 4), MakeImage(600, 500, 3),
                                 Solid(1000, 200, 3)}) {
    SCOPED_TRACE(image.width);
    std::vector<std::uint8_t> encoded;
    LzwEncode(IndexImage{image.pixels.data(), image.width, image.height, image.width}, image.lzw.min_code_size,
              encoded);
    auto expected = ReferenceLzw(image.pixels, Lzw(image.lzw.min_code_size, TableFull::kClear, true, 254));
    expected.insert(expected.begin(), static_cast<std::uint8_t>(image.lzw.min_code_size));
    EXPECT_EQ(encoded, expected);
  }
}

TEST(LzwEncode, ReadsRowsByTheirStride) {
  // Two 3-pixel rows inside 5-byte rows; the bytes between must not leak in.
  const std::vector<std::uint8_t> strip = {1, 2, 3, 99, 99, 4, 5, 6, 99, 99};
  std::vector<std::uint8_t> encoded;
  LzwEncode(IndexImage{strip.data(), 3, 2, 5}, 8, encoded);
  LzwDecoder decoder;
  const auto pixels = decoder.Decode(encoded[0], std::span(encoded).subspan(1), 6);
  EXPECT_EQ(std::vector<std::uint8_t>(pixels.begin(), pixels.end()), (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace quillet
