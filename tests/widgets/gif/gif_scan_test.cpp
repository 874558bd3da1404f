#include "widgets/gif/gif_scan.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

TestImage Frame(int width, int height, std::uint32_t seed) { return MakeImage(width, height, seed, 4); }

// Three frames; `third` is the offset of the third image descriptor.
struct ThreeFrames {
  GifWriter gif = WithGlobalTable();
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
  const auto one_frame = [](std::string_view signature) {
    return GifWriter(signature).Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get();
  };
  cases.push_back({"Gif87a", one_frame("GIF87a"), 1});
  cases.push_back({"SignatureInAnyCase", one_frame("gIf89A"), 1});
  cases.push_back({"UnknownVersion", one_frame("GIF88a"), 0});
  cases.push_back({"NotAGif", one_frame("PNG89a"), 0});

  // Without a global table every frame needs its own palette; one without
  // condemns the whole stream, frames before it included.
  const auto local = [](std::uint32_t seed) { return WithTable(Frame(8, 8, seed), TestPalette(4, seed)); };
  GifWriter locals;
  locals.Screen(8, 8, {}).Image(local(1));
  const std::size_t second = locals.Size();
  locals.Image(local(2));
  cases.push_back({"LocalTablesOnEveryFrame", locals.Get(), 2});
  cases.push_back({"CutInSecondLocalTable", locals.Prefix(second + 10 + 5), 1});
  cases.push_back(
      {"LocalTableOnFirstFrameOnly", GifWriter().Screen(8, 8, {}).Image(local(1)).Image(Frame(8, 8, 2)).Get(), 0});
  cases.push_back({"NoPaletteAnywhere", GifWriter().Screen(8, 8, {}).Image(Frame(8, 8, 1)).Trailer().Get(), 0});

  cases.push_back({"ExtensionsBetweenFrames",
                   WithGlobalTable().Extension(0xFE, {{'h', 'i'}}).Image(Frame(4, 4, 1))
                       .Extension(0x01, {{0, 0, 0, 0, 8, 0, 8, 0, 8, 8, 1, 0}, {'h', 'i'}})
                       .Application("XMPDataXMP", {{1, 2, 3}}).Image(Frame(4, 4, 2)).Trailer().Get(),
                   2});
  cases.push_back({"ZeroBytesBetweenBlocks",
                   WithGlobalTable().Bytes({0, 0}).Image(Frame(4, 4, 1)).Bytes({0}).Image(Frame(4, 4, 2)).Get(), 2});
  cases.push_back({"UnknownBlockEndsTheScan",
                   WithGlobalTable().Image(Frame(4, 4, 1)).Bytes({0x99}).Image(Frame(4, 4, 2)).Get(), 1});
  cases.push_back(
      {"TrailerEndsTheScan", WithGlobalTable().Image(Frame(4, 4, 1)).Trailer().Image(Frame(4, 4, 2)).Get(), 1});
  // The smallest block a stream can hold (descriptor, code size, terminator)
  // still is a frame; its pixels are simply missing.
  cases.push_back({"ImageWithoutData",
                   WithGlobalTable().Image(Frame(4, 4, 1)).Descriptor(0, 0, 4, 4, 0).Bytes({2, 0})
                       .Image(Frame(4, 4, 2)).Get(),
                   3});
  return cases;
}

class GifScanFrameCount : public testing::TestWithParam<CountCase> {};

TEST_P(GifScanFrameCount, FindsTheFramesThatWereComplete) {
  const GifScanResult scan = ScanGifBlocks(GetParam().bytes);
  EXPECT_EQ(scan.Frames.size(), GetParam().frames);
  EXPECT_EQ(scan.Blocks.size(), scan.Frames.size());
}

INSTANTIATE_TEST_SUITE_P(Streams, GifScanFrameCount, testing::ValuesIn(CountCases()),
                         [](const auto& p) { return p.param.name; });

TEST(GifScan, TheCanvasIsTheUnionOfTheFramesNotTheLogicalScreen) {
  TestImage a = Frame(30, 40, 1);
  a.left = 10;
  a.top = 20;
  GifWriter gif;
  gif.Screen(500, 400, TestPalette(4, 1)).Image(a).Image(Frame(50, 8, 2)).Trailer();
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  EXPECT_EQ(scan.CanvasWidth, 50);
  EXPECT_EQ(scan.CanvasHeight, 60);
}

TEST(GifScan, ReadsSixteenBitFieldsAsSigned) {
  struct Case {
    std::uint16_t left, top, width, height, delay;
    std::int32_t left_read, top_read, width_read, height_read, delay_read, canvas_width;
  };
  for (const Case& c : {Case{0x8000, 0xFFFF, 0x8001, 0x7FFF, 0x8000, -32768, -1, -32767, 32767, -327680, 0},
                        Case{0xFFFF, 0, 10, 1, 0xFFFF, -1, 0, 10, 1, -10, 9},
                        Case{0x7FFF, 0, 0x7FFF, 1, 0x7FFF, 32767, 0, 32767, 1, 327670, 65534}}) {
    SCOPED_TRACE(c.left);
    GifWriter gif = WithGlobalTable();
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
}

TEST(GifScan, TakesTheLoopCountOnlyFromANetscapeBlockInAnyCase) {
  struct Case {
    std::string application;
    std::vector<std::vector<std::uint8_t>> sub_blocks;
    std::int32_t loop_count;
  };
  for (const Case& c : {Case{"netscape2.0", {{1, 7, 0}}, 7}, Case{"NetScape2.0", {{1, 0x34, 0x12}}, 0x1234},
                        Case{"NETSCAPE2.0", {{1, 0xFF, 0xFF}}, -1}, Case{"NETSCAPE2.0", {{1, 9, 0, 0, 0}}, 0},
                        Case{"NETSCAPE2.0", {{1, 3, 0}, {2, 0, 0, 0, 0}}, 3}, Case{"NETSCAPE2.1", {{1, 5, 0}}, 0}}) {
    SCOPED_TRACE(c.application + " " + std::to_string(c.loop_count));
    GifWriter gif = WithGlobalTable();
    gif.Application(c.application, c.sub_blocks).Image(Frame(4, 4, 1)).Image(Frame(4, 4, 2)).Trailer();
    const GifScanResult scan = ScanGifBlocks(gif.Get());
    EXPECT_EQ(scan.LoopCount, c.loop_count);
    EXPECT_EQ(scan.Frames.size(), 2u);  // the frames after the block are found either way
  }
}

// Two bits; restore-to-previous on the first accepted frame (whether or not
// a control block came before) reads as none.
TEST(GifScan, ReadsDisposalAndTreatsRestoreOnTheFirstFrameAsNone) {
  struct Case {
    int first_disposal;  // -1: no control block
    int second_disposal;
    std::uint8_t first_read;
    std::uint8_t second_read;
  };
  for (const Case& c : {Case{2, 3, 2, 3}, Case{7, 6, 0, 2}, Case{3, 5, 0, 1}, Case{-1, 3, 0, 3}}) {
    SCOPED_TRACE(c.first_disposal);
    GifWriter gif = WithGlobalTable();
    if (c.first_disposal >= 0) gif.GraphicControl(c.first_disposal, 1);
    gif.Image(Frame(4, 4, 1)).GraphicControl(c.second_disposal, 1).Image(Frame(4, 4, 2)).Trailer();
    const GifScanResult scan = ScanGifBlocks(gif.Get());
    ASSERT_EQ(scan.Frames.size(), 2u);
    EXPECT_EQ(scan.Frames[0].Disposal, c.first_read);
    EXPECT_EQ(scan.Frames[1].Disposal, c.second_read);
  }
}

TEST(GifScan, AGraphicControlWaitsForTheNextImageOnly) {
  GifWriter gif = WithGlobalTable();
  const auto gce_offset = static_cast<std::int32_t>(gif.Size());
  gif.GraphicControl(2, 7, std::uint8_t{9}).Extension(0xFE, {{'x'}}).Application("XMPDataXMP", {{0}});
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

}  // namespace
}  // namespace quillet
