#include "widgets/gif/gif_scan.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::GifWriter;
using gif_test::MakeImage;
using gif_test::TestImage;
using gif_test::TestPalette;

TestImage Frame(int width, int height, std::uint32_t seed) {
  TestImage image = MakeImage(width, height, seed, 4);
  image.lzw.min_code_size = 2;
  return image;
}

TestImage WithLocalTable(TestImage image, int colors, std::uint32_t seed) {
  image.local_table = TestPalette(colors, seed);
  return image;
}

GifWriter Header() {
  GifWriter gif;
  gif.Screen(16, 16, TestPalette(4, 7));
  return gif;
}

// Three frames; `third` is the offset of the third image descriptor.
struct ThreeFrames {
  GifWriter gif = Header();
  std::size_t third = 0;
  std::size_t third_data = 0;  // first sub-block of the third image

  ThreeFrames() {
    gif.GraphicControl(0, 10).Image(Frame(8, 8, 1));
    gif.GraphicControl(0, 10).Image(Frame(8, 8, 2));
    gif.GraphicControl(0, 10);
    third = gif.Size();
    gif.Image(Frame(16, 16, 3));
    third_data = third + 11;
    gif.Trailer();
  }
};

struct CountCase {
  std::string name;
  std::vector<std::uint8_t> bytes;
  std::size_t frames;
};

std::vector<CountCase> CountCases() {
  const ThreeFrames three;
  std::vector<CountCase> cases = {
      {"Complete", three.gif.Get(), 3},
      {"CutInThirdDescriptor", three.gif.Prefix(three.third + 5), 2},
      {"CutBeforeThirdCodeSize", three.gif.Prefix(three.third + 10), 2},
      {"CutAfterThirdCodeSize", three.gif.Prefix(three.third + 11), 3},
      {"CutInsideLastSubBlocks", three.gif.Prefix(three.third_data + 6), 3},
      {"NoTrailer", three.gif.Prefix(three.gif.Size() - 1), 3},
      {"ShorterThanSignature", three.gif.Prefix(5), 0},
      {"CutBeforeScreenFlags", three.gif.Prefix(10), 0},
      {"CutInGlobalTable", three.gif.Prefix(13 + 5), 0},
      {"Empty", {}, 0},
  };

  cases.push_back({"Gif87a", GifWriter("GIF87a").Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get(), 1});
  cases.push_back({"SignatureInAnyCase", GifWriter("gIf89A").Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get(), 1});
  cases.push_back({"UnknownVersion", GifWriter("GIF88a").Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get(), 0});
  cases.push_back({"NotAGif", GifWriter("PNG89a").Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get(), 0});

  // Without a global table every frame needs its own palette; one without
  // condemns the whole stream, frames before it included.
  cases.push_back({"LocalTablesOnEveryFrame",
                   GifWriter().Screen(8, 8, {}).Image(WithLocalTable(Frame(8, 8, 1), 4, 1))
                       .Image(WithLocalTable(Frame(8, 8, 2), 4, 2)).Trailer().Get(),
                   2});
  cases.push_back({"LocalTableOnFirstFrameOnly",
                   GifWriter().Screen(8, 8, {}).Image(WithLocalTable(Frame(8, 8, 1), 4, 1))
                       .Image(Frame(8, 8, 2)).Trailer().Get(),
                   0});
  cases.push_back({"NoPaletteAnywhere", GifWriter().Screen(8, 8, {}).Image(Frame(8, 8, 1)).Trailer().Get(), 0});

  cases.push_back({"ExtensionsBetweenFrames",
                   Header().Comment("made here").Image(Frame(4, 4, 1)).PlainText("hello")
                       .Application("XMPDataXMP", {{1, 2, 3}}).Image(Frame(4, 4, 2)).Trailer().Get(),
                   2});
  cases.push_back({"ZeroBytesBetweenBlocks",
                   Header().Bytes({0, 0}).Image(Frame(4, 4, 1)).Bytes({0}).Image(Frame(4, 4, 2)).Trailer().Get(),
                   2});
  cases.push_back({"UnknownBlockEndsTheScan",
                   Header().Image(Frame(4, 4, 1)).Bytes({0x99}).Image(Frame(4, 4, 2)).Trailer().Get(), 1});
  cases.push_back({"TrailerEndsTheScan", Header().Image(Frame(4, 4, 1)).Trailer().Image(Frame(4, 4, 2)).Get(), 1});
  // The smallest block a stream can hold (descriptor, code size, terminator)
  // still is a frame; its pixels are simply missing.
  cases.push_back({"ImageWithoutData",
                   Header().Image(Frame(4, 4, 1)).Descriptor(0, 0, 4, 4, 0).Bytes({2, 0})
                       .Image(Frame(4, 4, 2)).Trailer().Get(),
                   3});
  return cases;
}

class ScanFrameCount : public testing::TestWithParam<CountCase> {};

TEST_P(ScanFrameCount, FindsTheFramesThatWereComplete) {
  const GifScanResult scan = ScanGifBlocks(GetParam().bytes);
  EXPECT_EQ(scan.Frames.size(), GetParam().frames);
  EXPECT_EQ(scan.Blocks.size(), scan.Frames.size());
}

INSTANTIATE_TEST_SUITE_P(Streams, ScanFrameCount, testing::ValuesIn(CountCases()),
                         [](const auto& p) { return p.param.name; });

TEST(ScanGifBlocks, TheCanvasIsTheUnionOfTheFramesNotTheLogicalScreen) {
  GifWriter gif;
  gif.Screen(500, 400, TestPalette(4, 1));
  TestImage a = Frame(30, 40, 1);
  a.left = 10;
  a.top = 20;
  TestImage b = Frame(50, 8, 2);
  gif.Image(a).Image(b).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  EXPECT_EQ(scan.CanvasWidth, 50);
  EXPECT_EQ(scan.CanvasHeight, 60);
}

TEST(ScanGifBlocks, OneFrameSetsTheCanvasToItsOwnExtent) {
  TestImage only = Frame(5, 3, 1);
  only.left = 2;
  only.top = 1;
  const GifScanResult scan = ScanGifBlocks(Header().Image(only).Trailer().Get());
  ASSERT_EQ(scan.Frames.size(), 1u);
  EXPECT_EQ(scan.CanvasWidth, 7);
  EXPECT_EQ(scan.CanvasHeight, 4);
}

struct SignedCase {
  std::string name;
  std::uint16_t left, top, width, height, delay;
  std::int32_t left_read, top_read, width_read, height_read, delay_read, canvas_width;
};

class ScanSignedFields : public testing::TestWithParam<SignedCase> {};

// The stream's 16-bit numbers are read signed.
TEST_P(ScanSignedFields, ReadsSixteenBitFieldsAsSigned) {
  const SignedCase& c = GetParam();
  GifWriter gif = Header();
  gif.GraphicControl(0, c.delay).Descriptor(c.left, c.top, c.width, c.height, 0).Bytes({2, 2, 0x4C, 0x01, 0});
  const GifScanResult scan = ScanGifBlocks(gif.Trailer().Get());
  ASSERT_EQ(scan.Frames.size(), 1u);
  const FrameRecord& f = scan.Frames[0];
  EXPECT_EQ(f.Left, c.left_read);
  EXPECT_EQ(f.Top, c.top_read);
  EXPECT_EQ(f.Width, c.width_read);
  EXPECT_EQ(f.Height, c.height_read);
  EXPECT_EQ(f.Delay, c.delay_read);
  EXPECT_EQ(scan.CanvasWidth, c.canvas_width);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, ScanSignedFields,
    testing::Values(SignedCase{"Plain", 1, 2, 3, 4, 5, 1, 2, 3, 4, 50, 4},
                    SignedCase{"ZeroDelayStaysZero", 0, 0, 3, 4, 0, 0, 0, 3, 4, 0, 3},
                    SignedCase{"TopBitSet", 0x8000, 0xFFFF, 0x8001, 0x7FFF, 0x8000, -32768, -1, -32767, 32767,
                               -327680, 0},
                    SignedCase{"NegativeLeftShrinksTheCanvas", 0xFFFF, 0, 10, 1, 0xFFFF, -1, 0, 10, 1, -10, 9},
                    SignedCase{"LargestPositive", 0x7FFF, 0, 0x7FFF, 1, 0x7FFF, 32767, 0, 32767, 1, 327670,
                               65534}),
    [](const auto& p) { return p.param.name; });

struct LoopCase {
  std::string name;
  std::string application;
  std::vector<std::vector<std::uint8_t>> sub_blocks;
  std::int32_t loop_count;
};

class ScanLoopCount : public testing::TestWithParam<LoopCase> {};

TEST_P(ScanLoopCount, TakesTheLoopCountOnlyFromANetscapeBlock) {
  const LoopCase& c = GetParam();
  GifWriter gif = Header();
  gif.Application(c.application, c.sub_blocks).Image(Frame(4, 4, 1)).Image(Frame(4, 4, 2)).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  EXPECT_EQ(scan.LoopCount, c.loop_count);
  EXPECT_EQ(scan.Frames.size(), 2u);  // the frames after the block are found either way
}

INSTANTIATE_TEST_SUITE_P(
    Blocks, ScanLoopCount,
    testing::Values(LoopCase{"UpperCase", "NETSCAPE2.0", {{1, 5, 0}}, 5},
                    LoopCase{"LowerCase", "netscape2.0", {{1, 7, 0}}, 7},
                    LoopCase{"MixedCase", "NetScape2.0", {{1, 0x34, 0x12}}, 0x1234},
                    LoopCase{"ForeverIsZero", "NETSCAPE2.0", {{1, 0, 0}}, 0},
                    LoopCase{"LargestReadsMinusOne", "NETSCAPE2.0", {{1, 0xFF, 0xFF}}, -1},
                    LoopCase{"SubBlockNotOfThreeBytes", "NETSCAPE2.0", {{1, 9, 0, 0, 0}}, 0},
                    LoopCase{"TwoSubBlocks", "NETSCAPE2.0", {{1, 3, 0}, {2, 0, 0, 0, 0}}, 3},
                    LoopCase{"OtherVersion", "NETSCAPE2.1", {{1, 5, 0}}, 0},
                    LoopCase{"OtherApplication", "ANIMEXTS1.0", {{1, 5, 0}}, 0}),
    [](const auto& p) { return p.param.name; });

struct DisposalCase {
  std::string name;
  int first_disposal;
  int second_disposal;
  std::uint8_t first_read;
  std::uint8_t second_read;
};

class ScanDisposal : public testing::TestWithParam<DisposalCase> {};

TEST_P(ScanDisposal, ReadsTwoBitsAndTreatsRestoreOnTheFirstFrameAsNone) {
  const DisposalCase& c = GetParam();
  GifWriter gif = Header();
  gif.GraphicControl(c.first_disposal, 1).Image(Frame(4, 4, 1));
  gif.GraphicControl(c.second_disposal, 1).Image(Frame(4, 4, 2)).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  ASSERT_EQ(scan.Frames.size(), 2u);
  EXPECT_EQ(scan.Frames[0].Disposal, c.first_read);
  EXPECT_EQ(scan.Frames[1].Disposal, c.second_read);
}

INSTANTIATE_TEST_SUITE_P(Values, ScanDisposal,
                         testing::Values(DisposalCase{"None", 0, 0, 0, 0},
                                         DisposalCase{"Keep", 1, 1, 1, 1},
                                         DisposalCase{"Background", 2, 2, 2, 2},
                                         DisposalCase{"PreviousOnFirstFrame", 3, 3, 0, 3},
                                         DisposalCase{"HighBitIgnored", 5, 6, 1, 2},
                                         DisposalCase{"HighBitIgnoredPreviousOnFirst", 7, 7, 0, 3}),
                         [](const auto& p) { return p.param.name; });

// What counts is whether a frame was accepted, not whether a control block
// came before.
TEST(ScanGifBlocks, RestoreToPreviousIsKeptFromTheSecondFrameOn) {
  GifWriter gif = Header();
  gif.Image(Frame(4, 4, 1));
  gif.GraphicControl(3, 1).Image(Frame(4, 4, 2)).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  ASSERT_EQ(scan.Frames.size(), 2u);
  EXPECT_EQ(scan.Frames[0].Disposal, 0);
  EXPECT_EQ(scan.Frames[1].Disposal, 3);
}

TEST(ScanGifBlocks, AGraphicControlWaitsForTheNextImageOnly) {
  GifWriter gif = Header();
  const auto gce_offset = static_cast<std::int32_t>(gif.Size());
  gif.GraphicControl(2, 7, std::uint8_t{9}).Comment("between").Application("XMPDataXMP", {{0}});
  gif.Image(Frame(4, 4, 1));
  const auto second_offset = static_cast<std::int32_t>(gif.Size());
  gif.Image(Frame(4, 4, 2));
  // The later one wins. Its index byte is not a transparent index, and not a
  // sub-block length either.
  gif.GraphicControl(1, 3, std::uint8_t{1}).Bytes({0x21, 0xF9, 4, 0x00, 4, 0, 77, 0});
  gif.Image(Frame(4, 4, 3));
  gif.GraphicControl(2, 99).Trailer();  // nothing follows it
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  ASSERT_EQ(scan.Frames.size(), 3u);

  const FrameRecord& first = scan.Frames[0];
  EXPECT_EQ(first.Disposal, 2);
  EXPECT_EQ(first.Delay, 70);
  EXPECT_EQ(first.TransparentFlag, 1);
  EXPECT_EQ(first.TransparentIndex, 9);
  EXPECT_EQ(first.StripX, gce_offset);  // where the frame's blocks begin

  const FrameRecord& second = scan.Frames[1];
  EXPECT_EQ(second.Disposal, 0);
  EXPECT_EQ(second.Delay, 0);
  EXPECT_EQ(second.TransparentFlag, 0);
  EXPECT_EQ(second.StripX, second_offset);
  EXPECT_EQ(scan.Blocks[1].Start, second_offset);

  const FrameRecord& third = scan.Frames[2];
  EXPECT_EQ(third.Delay, 40);
  EXPECT_EQ(third.TransparentFlag, 0);
  EXPECT_EQ(third.TransparentIndex, 0);
}

TEST(ScanGifBlocks, ABlockRunsFromItsSeparatorThroughTheTerminator) {
  GifWriter gif = Header();
  const auto start = gif.Size();
  gif.Image(WithLocalTable(Frame(9, 9, 1), 8, 3));
  const auto end = gif.Size();
  const GifScanResult scan = ScanGifBlocks(gif.Trailer().Get());
  ASSERT_EQ(scan.Blocks.size(), 1u);
  EXPECT_EQ(scan.Blocks[0].Start, static_cast<std::int32_t>(start));
  EXPECT_EQ(scan.Blocks[0].Length, static_cast<std::int32_t>(end - start));
}

TEST(ScanGifBlocks, ReadsColourTablesInFileOrder) {
  const auto global = TestPalette(4, 11);
  const auto local_a = TestPalette(8, 12);
  const auto local_b = TestPalette(2, 13);
  GifWriter gif;
  gif.Screen(8, 8, global);
  TestImage a = Frame(4, 4, 1);
  a.local_table = local_a;
  TestImage b = Frame(4, 4, 3);
  b.local_table = local_b;
  gif.Image(a).Image(Frame(4, 4, 2)).Image(b).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());

  ASSERT_EQ(scan.Frames.size(), 3u);
  EXPECT_EQ(scan.Frames[0].ColorTable, 1);
  EXPECT_EQ(scan.Frames[1].ColorTable, 0);
  EXPECT_EQ(scan.Frames[2].ColorTable, 2);
  EXPECT_EQ(scan.TableCount, 2);
  ASSERT_EQ(scan.ColorTables.size(), 3u);
  const std::vector<std::uint32_t>* expected[] = {&global, &local_a, &local_b};
  for (std::size_t t = 0; t < 3; ++t) {
    SCOPED_TRACE(t);
    const ColorTable& table = scan.ColorTables[t];
    ASSERT_EQ(table.Count, static_cast<std::int32_t>(expected[t]->size()));
    for (std::size_t i = 0; i < 256; ++i) {
      EXPECT_EQ(table.Colors[i], i < expected[t]->size() ? (*expected[t])[i] : 0u) << i;
    }
  }
}

TEST(ScanGifBlocks, ColoursHoldRedInTheHighestByte) {
  GifWriter gif;
  gif.Screen(1, 1, {0x112233, 0xAABBCC}).Image(Frame(1, 1, 1));
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  ASSERT_EQ(scan.ColorTables.size(), 1u);
  // The writer puts 0x11 first: red.
  EXPECT_EQ(gif.Get()[13], 0x11);
  EXPECT_EQ(scan.ColorTables[0].Colors[0], 0x112233u);
  EXPECT_EQ(scan.ColorTables[0].Colors[1], 0xAABBCCu);
}

}  // namespace
}  // namespace quillet
