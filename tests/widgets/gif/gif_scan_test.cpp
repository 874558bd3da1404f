#include "widgets/gif/gif_scan.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

TestImage Frame(int width, int height, std::uint32_t seed) { return MakeImage(width, height, seed, 4); }

TEST(GifScan, FindsTheFramesThatWereComplete) {
  GifWriter three = WithGlobalTable();
  three.GraphicControl(0, 10).Image(Frame(8, 8, 1)).GraphicControl(0, 10).Image(Frame(8, 8, 2)).GraphicControl(0, 10);
  const std::size_t third = three.Size();  // the third image descriptor; its first sub-block is at third + 11
  three.Image(Frame(16, 16, 3)).Trailer();
  const auto one_frame = [](std::string_view signature) {
    return GifWriter(signature).Screen(4, 4, TestPalette(4, 1)).Image(Frame(4, 4, 1)).Get();
  };
  // Without a global table every frame needs its own palette; one without condemns the whole stream, frames
  // before it included.
  const auto local = [](std::uint32_t seed) { return WithTable(Frame(8, 8, seed), TestPalette(4, seed)); };
  GifWriter locals;
  locals.Screen(8, 8, {}).Image(local(1));
  const std::size_t second = locals.Size();
  locals.Image(local(2));
  GifWriter extensions = WithGlobalTable();
  extensions.Extension(0xFE, {{'h', 'i'}}).Image(Frame(4, 4, 1)).Application("XMPDataXMP", {{1, 2, 3}});
  extensions.Extension(0x01, {{0, 0, 0, 0, 8, 0, 8, 0, 8, 8, 1, 0}, {'h', 'i'}}).Image(Frame(4, 4, 2)).Trailer();

  const std::tuple<const char*, Bytes, std::size_t> cases[] = {
      {"Complete", three.Get(), 3},
      {"CutInThirdDescriptor", three.Prefix(third + 5), 2},
      {"CutBeforeThirdCodeSize", three.Prefix(third + 10), 2},
      {"CutAfterThirdCodeSize", three.Prefix(third + 11), 3},
      {"CutInsideLastSubBlocks", three.Prefix(third + 11 + 6), 3},
      {"NoTrailer", three.Prefix(three.Size() - 1), 3},
      {"ShorterThanSignature", three.Prefix(5), 0},
      {"CutBeforeScreenFlags", three.Prefix(10), 0},
      {"CutInGlobalTable", three.Prefix(13 + 5), 0},
      {"Empty", {}, 0},
      {"Gif87a", one_frame("GIF87a"), 1},
      {"SignatureInAnyCase", one_frame("gIf89A"), 1},
      {"UnknownVersion", one_frame("GIF88a"), 0},
      {"NotAGif", one_frame("PNG89a"), 0},
      {"LocalTablesOnEveryFrame", locals.Get(), 2},
      {"CutInSecondLocalTable", locals.Prefix(second + 10 + 5), 1},
      {"LocalTableOnFirstFrameOnly", GifWriter().Screen(8, 8, {}).Image(local(1)).Image(Frame(8, 8, 2)).Get(), 0},
      {"NoPaletteAnywhere", GifWriter().Screen(8, 8, {}).Image(Frame(8, 8, 1)).Trailer().Get(), 0},
      {"ExtensionsBetweenFrames", extensions.Get(), 2},
      {"ZeroBytesBetweenBlocks",
       WithGlobalTable().Bytes({0, 0}).Image(Frame(4, 4, 1)).Bytes({0}).Image(Frame(4, 4, 2)).Get(), 2},
      {"UnknownBlockEndsTheScan", WithGlobalTable().Image(Frame(4, 4, 1)).Bytes({0x99}).Image(Frame(4, 4, 2)).Get(), 1},
      {"TrailerEndsTheScan", WithGlobalTable().Image(Frame(4, 4, 1)).Trailer().Image(Frame(4, 4, 2)).Get(), 1},
      // The smallest block a stream can hold (descriptor, code size, terminator) still is a frame; its pixels are
      // simply missing.
      {"ImageWithoutData",
       WithGlobalTable().Image(Frame(4, 4, 1)).Descriptor(0, 0, 4, 4, 0).Bytes({2, 0}).Image(Frame(4, 4, 2)).Get(), 3},
  };
  for (const auto& [name, bytes, frames] : cases) {
    SCOPED_TRACE(name);
    const GifScanResult scan = ScanGifBlocks(bytes);
    EXPECT_EQ(scan.Frames.size(), frames);
    EXPECT_EQ(scan.Blocks.size(), scan.Frames.size());
  }
}

TEST(GifScan, TheCanvasIsTheUnionOfTheFramesNotTheLogicalScreen) {
  const GifScanResult scan = ScanGifBlocks(
      GifWriter().Screen(500, 400, TestPalette(4, 1)).Image(Solid(30, 40, 1, 10, 20)).Image(Solid(50, 8, 2)).Get());
  EXPECT_EQ(scan.CanvasWidth, 50);
  EXPECT_EQ(scan.CanvasHeight, 60);
}

TEST(GifScan, ReadsSixteenBitFieldsAsSigned) {
  const struct {
    std::uint16_t left, top, width, height, delay;
    std::array<std::int32_t, 6> read;  // left, top, width, height, delay, canvas width
  } cases[] = {{0x8000, 0xFFFF, 0x8001, 0x7FFF, 0x8000, {-32768, -1, -32767, 32767, -327680, 0}},
               {0xFFFF, 0, 10, 1, 0xFFFF, {-1, 0, 10, 1, -10, 9}},
               {0x7FFF, 0, 0x7FFF, 1, 0x7FFF, {32767, 0, 32767, 1, 327670, 65534}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.left);
    GifWriter gif = WithGlobalTable();
    gif.GraphicControl(0, c.delay).Descriptor(c.left, c.top, c.width, c.height, 0).Bytes({2, 2, 0x4C, 0x01, 0});
    const GifScanResult scan = ScanGifBlocks(gif.Trailer().Get());
    ASSERT_EQ(scan.Frames.size(), 1u);
    const FrameRecord& f = scan.Frames[0];
    EXPECT_EQ((std::array{f.Left, f.Top, f.Width, f.Height, f.Delay, scan.CanvasWidth}), c.read);
  }
}

TEST(GifScan, TakesTheLoopCountOnlyFromANetscapeBlockInAnyCase) {
  const std::tuple<std::string, std::vector<Bytes>, std::int32_t> cases[] = {
      {"netscape2.0", {{1, 7, 0}}, 7},
      {"NetScape2.0", {{1, 0x34, 0x12}}, 0x1234},
      {"NETSCAPE2.0", {{1, 0xFF, 0xFF}}, -1},
      {"NETSCAPE2.0", {{1, 9, 0, 0, 0}}, 0},
      {"NETSCAPE2.0", {{1, 3, 0}, {2, 0, 0, 0, 0}}, 3},
      {"NETSCAPE2.1", {{1, 5, 0}}, 0}};
  for (const auto& [application, sub_blocks, loop_count] : cases) {
    SCOPED_TRACE(application + " " + std::to_string(loop_count));
    GifWriter gif = WithGlobalTable();
    gif.Application(application, sub_blocks).Image(Frame(4, 4, 1)).Image(Frame(4, 4, 2)).Trailer();
    const GifScanResult scan = ScanGifBlocks(gif.Get());
    EXPECT_EQ(scan.LoopCount, loop_count);
    EXPECT_EQ(scan.Frames.size(), 2u);  // the frames after the block are found either way
  }
}

// Two bits; restore-to-previous on the first accepted frame (whether or not a control block came before) reads as
// none.
TEST(GifScan, ReadsDisposalAndTreatsRestoreOnTheFirstFrameAsNone) {
  // The disposals written (-1: no control block), and read.
  const std::array<int, 4> cases[] = {{2, 3, 2, 3}, {7, 6, 0, 2}, {3, 5, 0, 1}, {-1, 3, 0, 3}};
  for (const auto& [first, second, first_read, second_read] : cases) {
    SCOPED_TRACE(first);
    GifWriter gif = WithGlobalTable();
    if (first >= 0) gif.GraphicControl(first, 1);
    gif.Image(Frame(4, 4, 1)).GraphicControl(second, 1).Image(Frame(4, 4, 2)).Trailer();
    const GifScanResult scan = ScanGifBlocks(gif.Get());
    ASSERT_EQ(scan.Frames.size(), 2u);
    EXPECT_EQ(scan.Frames[0].Disposal, first_read);
    EXPECT_EQ(scan.Frames[1].Disposal, second_read);
  }
}

TEST(GifScan, AGraphicControlWaitsForTheNextImageOnly) {
  GifWriter gif = WithGlobalTable();
  const auto gce_offset = static_cast<std::int32_t>(gif.Size());
  gif.GraphicControl(2, 7, std::uint8_t{9}).Extension(0xFE, {{'x'}}).Application("XMPDataXMP", {{0}});
  gif.Image(Frame(4, 4, 1));
  const auto second_offset = static_cast<std::int32_t>(gif.Size());
  gif.Image(Frame(4, 4, 2));
  // The later one wins. Its index byte is not a transparent index, and not a sub-block length either.
  gif.GraphicControl(1, 3, std::uint8_t{1}).Bytes({0x21, 0xF9, 4, 0x00, 4, 0, 77, 0});
  gif.Image(Frame(4, 4, 3));
  gif.GraphicControl(2, 99).Trailer();  // nothing follows it
  const GifScanResult scan = ScanGifBlocks(gif.Get());
  ASSERT_EQ(scan.Frames.size(), 3u);
  // Disposal, delay, transparent flag and index, and where the frame's blocks begin.
  const auto read = [&](std::size_t i) {
    const FrameRecord& f = scan.Frames[i];
    return std::array<std::int32_t, 5>{f.Disposal, f.Delay, f.TransparentFlag, f.TransparentIndex, f.StripX};
  };
  EXPECT_EQ(read(0), (std::array<std::int32_t, 5>{2, 70, 1, 9, gce_offset}));
  EXPECT_EQ(read(1), (std::array<std::int32_t, 5>{0, 0, 0, 0, second_offset}));
  EXPECT_EQ(scan.Blocks[1].Start, second_offset);
  EXPECT_EQ(read(2)[1], 40);
  EXPECT_EQ(read(2)[2], 0);
  EXPECT_EQ(read(2)[3], 0);
}

}  // namespace
}  // namespace quillet
