#include "widgets/gif/lzw.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::CodeWriter;
using gif_test::LzwOptions;
using gif_test::PhotoPixels;
using gif_test::ReferenceLzw;
using gif_test::TableFull;

using Codes = std::vector<std::pair<std::uint32_t, int>>;  // code, width

struct CodeCase {
  std::string name;
  int min_code_size;
  Codes codes;
  std::size_t pixel_count;
  std::vector<std::uint8_t> pixels;
  std::size_t decoded;
};

class DecodeCodes : public testing::TestWithParam<CodeCase> {};

TEST_P(DecodeCodes, ProducesTheIndicesTheCodesStandFor) {
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
    Streams, DecodeCodes,
    testing::Values(
        CodeCase{"Literals", 2, {{4, 3}, {1, 3}, {2, 3}, {3, 3}, {5, 3}}, 3, {1, 2, 3}, 3},
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
        CodeCase{"EightBitLiterals", 8, {{256, 9}, {255, 9}, {0, 9}, {258, 9}, {257, 9}}, 4, {255, 0, 255, 0}, 4},
        CodeCase{"CodeSizeOne", 1, {{2, 2}, {1, 2}, {0, 2}, {4, 3}, {3, 3}}, 4, {1, 0, 1, 0}, 4},
        CodeCase{"CodeSizeZeroIsRefused", 0, {{1, 1}, {0, 1}}, 2, {0, 0}, 0},
        CodeCase{"CodeSizeNineIsRefused", 9, {{512, 10}, {300, 10}}, 1, {0}, 0}),
    [](const auto& p) { return p.param.name; });

struct RoundTripCase {
  std::string name;
  int width;
  int height;
  int levels;
  LzwOptions lzw;
};

std::vector<std::uint8_t> Solid(int width, int height, std::uint8_t value) {
  return std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value);
}

std::vector<std::uint8_t> CasePixels(const RoundTripCase& c) {
  if (c.levels == 1) return Solid(c.width, c.height, 1);
  return PhotoPixels(c.width, c.height, static_cast<std::uint32_t>(c.width * 31 + c.height), c.levels);
}

class DecodeRoundTrip : public testing::TestWithParam<RoundTripCase> {};

TEST_P(DecodeRoundTrip, GivesBackWhatAnotherEncoderCompressed) {
  const RoundTripCase& c = GetParam();
  const auto source = CasePixels(c);
  LzwDecoder decoder;
  const auto pixels = decoder.Decode(c.lzw.min_code_size, ReferenceLzw(source, c.lzw), source.size());
  EXPECT_EQ(decoder.DecodedCount(), source.size());
  EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), source.begin(), source.end()));
}

LzwOptions Lzw(int min_code_size, TableFull table_full = TableFull::kClear, bool leading_clear = true,
               int sub_block_size = 255) {
  return LzwOptions{min_code_size, leading_clear, table_full, sub_block_size};
}

INSTANTIATE_TEST_SUITE_P(
    Images, DecodeRoundTrip,
    testing::Values(RoundTripCase{"OnePixel", 1, 1, 256, Lzw(8)},
                    RoundTripCase{"TwoColours", 37, 11, 2, Lzw(2)},
                    RoundTripCase{"FourColours", 64, 64, 4, Lzw(2)},
                    RoundTripCase{"SixteenColours", 100, 50, 16, Lzw(4)},
                    RoundTripCase{"SeventyColours", 120, 80, 70, Lzw(7)},
                    RoundTripCase{"FullTableCleared", 400, 300, 256, Lzw(8)},
                    RoundTripCase{"FullTableKeptWithoutClear", 400, 300, 256, Lzw(8, TableFull::kKeepGoing)},
                    RoundTripCase{"SmallCodesKeptWithoutClear", 300, 300, 4, Lzw(2, TableFull::kKeepGoing)},
                    RoundTripCase{"NoLeadingClear", 200, 100, 256, Lzw(8, TableFull::kClear, false)},
                    RoundTripCase{"TinySubBlocks", 90, 70, 256, Lzw(8, TableFull::kClear, true, 1)},
                    RoundTripCase{"LongRuns", 2000, 100, 1, Lzw(8)},
                    RoundTripCase{"LongRunsSmallCodes", 3000, 30, 1, Lzw(2)}),
    [](const auto& p) { return p.param.name; });

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

struct EncodeCase {
  std::string name;
  int width;
  int height;
  int levels;
  int min_code_size;
};

class EncodeLikeAPlainTable : public testing::TestWithParam<EncodeCase> {};

// The hashed table must find every string a plain map finds, or the output
// still decodes but is longer.
TEST_P(EncodeLikeAPlainTable, WritesTheSameCodes) {
  const EncodeCase& c = GetParam();
  const auto pixels = c.levels == 1 ? Solid(c.width, c.height, 3)
                                    : PhotoPixels(c.width, c.height, static_cast<std::uint32_t>(c.width), c.levels);
  std::vector<std::uint8_t> encoded;
  LzwEncode(IndexImage{pixels.data(), c.width, c.height, c.width}, c.min_code_size, encoded);
  auto expected = ReferenceLzw(pixels, Lzw(c.min_code_size, TableFull::kClear, true, 254));
  expected.insert(expected.begin(), static_cast<std::uint8_t>(c.min_code_size));
  EXPECT_EQ(encoded, expected);
}

INSTANTIATE_TEST_SUITE_P(Images, EncodeLikeAPlainTable,
                         testing::Values(EncodeCase{"OnePixel", 1, 1, 256, 8},
                                         EncodeCase{"Small", 13, 7, 256, 8},
                                         EncodeCase{"FourColours", 300, 200, 4, 2},
                                         EncodeCase{"ManyClears", 600, 500, 256, 8},
                                         EncodeCase{"Solid", 1000, 200, 1, 8}),
                         [](const auto& p) { return p.param.name; });

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
