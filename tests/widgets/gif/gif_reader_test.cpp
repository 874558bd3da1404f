#include "widgets/gif/gif_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::GifWriter;
using gif_test::MakeImage;
using gif_test::TestImage;
using gif_test::TestPalette;

GifWriter Header() {
  GifWriter gif;
  gif.Screen(64, 64, TestPalette(256, 3));
  return gif;
}

// The frame's pixels as they lie in the strip.
std::vector<std::uint8_t> StripPixels(const GifAnimation& gif, std::size_t frame) {
  const FrameRecord& f = gif.Frames[frame];
  std::vector<std::uint8_t> pixels;
  for (std::int32_t y = 0; y < f.Height; ++y) {
    const std::uint8_t* row = gif.Strip.Row(y) + f.StripX;
    pixels.insert(pixels.end(), row, row + f.Width);
  }
  return pixels;
}

struct FrameCase {
  std::string name;
  TestImage image;
};

TestImage Adjusted(TestImage image, int min_code_size, bool interlaced) {
  image.lzw.min_code_size = min_code_size;
  image.interlaced = interlaced;
  for (auto& p : image.pixels) p = static_cast<std::uint8_t>(p & ((1 << min_code_size) - 1));
  return image;
}

class ReaderUnpacks : public testing::TestWithParam<FrameCase> {};

TEST_P(ReaderUnpacks, EveryPixelAsItsPaletteIndex) {
  const TestImage& image = GetParam().image;
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(Header().Image(image).Trailer().Get()), 1);
  const GifAnimation& gif = reader.Animation();
  EXPECT_EQ(gif.Strip.Width, image.width);
  EXPECT_EQ(gif.Strip.Height, image.height);
  EXPECT_EQ(StripPixels(gif, 0), image.pixels);
}

INSTANTIATE_TEST_SUITE_P(
    Images, ReaderUnpacks,
    testing::Values(FrameCase{"OnePixel", MakeImage(1, 1, 1)},
                    FrameCase{"OddWidth", MakeImage(13, 9, 2)},
                    FrameCase{"TwoBitCodes", Adjusted(MakeImage(40, 30, 3), 2, false)},
                    FrameCase{"FiveBitCodes", Adjusted(MakeImage(40, 30, 4), 5, false)},
                    FrameCase{"FullTables", MakeImage(320, 240, 5)},
                    FrameCase{"InterlacedOneRow", Adjusted(MakeImage(7, 1, 6), 8, true)},
                    FrameCase{"InterlacedFiveRows", Adjusted(MakeImage(7, 5, 7), 8, true)},
                    FrameCase{"InterlacedSeventeenRows", Adjusted(MakeImage(9, 17, 8), 8, true)},
                    FrameCase{"InterlacedLarge", Adjusted(MakeImage(200, 123, 9), 8, true)}),
    [](const auto& p) { return p.param.name; });

// Three frames of different sizes, the middle one interlaced and with its own table.
struct ThreeFrameGif {
  std::vector<TestImage> images = {MakeImage(10, 6, 1), Adjusted(MakeImage(7, 9, 2), 8, true), MakeImage(5, 3, 3)};
  GifWriter gif = Header();

  ThreeFrameGif() {
    images[1].local_table = TestPalette(16, 4);
    for (const auto& image : images) gif.GraphicControl(1, 5).Image(image);
    gif.Trailer();
  }
};

TEST(GifReader, PutsFramesSideBySideInFileOrder) {
  const ThreeFrameGif three;
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(three.gif.Get()), 3);
  const GifAnimation& gif = reader.Animation();
  EXPECT_EQ(gif.Strip.Width, 22);
  EXPECT_EQ(gif.Strip.Height, 9);
  EXPECT_EQ(gif.Strip.Stride, 24);
  EXPECT_EQ(gif.Strip.Bits.size(), 24u * 9u);
  const std::int32_t strip_x[] = {0, 10, 17};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(gif.Frames[i].StripX, strip_x[i]);
    EXPECT_EQ(StripPixels(gif, i), three.images[i].pixels);
  }
  // Below a short frame the strip stays 0.
  for (std::int32_t y = 6; y < 9; ++y) EXPECT_EQ(gif.Strip.Row(y)[0], 0);
  EXPECT_EQ(gif.SelectedTable, -1);
}

TEST(GifReader, TheFirstPassUnpacksFrameOneOnly) {
  const ThreeFrameGif three;
  GifReader reader;
  ASSERT_EQ(reader.LoadGifBytes(three.gif.Get()), 3);
  const GifAnimation& gif = reader.Animation();
  EXPECT_TRUE(reader.SecondPassPending());
  EXPECT_EQ(StripPixels(gif, 0), three.images[0].pixels);
  for (std::int32_t y = 0; y < gif.Strip.Height; ++y) {
    const std::uint8_t* row = gif.Strip.Row(y);
    EXPECT_TRUE(std::all_of(row + 10, row + gif.Strip.Width, [](std::uint8_t p) { return p == 0; })) << y;
  }

  ASSERT_TRUE(reader.BuildFrameStrip(false));
  EXPECT_FALSE(reader.SecondPassPending());
  EXPECT_EQ(StripPixels(gif, 2), three.images[2].pixels);
  EXPECT_FALSE(reader.GifBytes().empty());  // still needed until loading finishes
  reader.FinishLoading();
  EXPECT_TRUE(reader.GifBytes().empty());
  EXPECT_EQ(StripPixels(gif, 1), three.images[1].pixels);
}

TEST(GifReader, AtDesignTimeOnlyFrameOneIsUnpackedAndTheStreamIsKept) {
  const ThreeFrameGif three;
  GifReader reader;
  GifLoadOptions design;
  design.DesignTime = true;
  ASSERT_EQ(reader.LoadAllFrames(three.gif.Get(), design), 3);
  const GifAnimation& gif = reader.Animation();
  EXPECT_EQ(gif.Strip.Width, 10);
  EXPECT_EQ(gif.Strip.Height, 6);
  EXPECT_EQ(StripPixels(gif, 0), three.images[0].pixels);
  EXPECT_EQ(reader.GifBytes(), three.gif.Get());
}

TEST(GifReader, ReloadsFromTheStreamItKept) {
  const ThreeFrameGif three;
  GifReader reader;
  GifLoadOptions design;
  design.DesignTime = true;
  ASSERT_EQ(reader.LoadAllFrames(three.gif.Get(), design), 3);
  ASSERT_EQ(reader.LoadAllFrames(reader.GifBytes(), design), 3);
  EXPECT_EQ(reader.GifBytes(), three.gif.Get());
  ASSERT_EQ(reader.LoadAllFrames(reader.GifBytes()), 3);  // at run time the stream goes
  EXPECT_TRUE(reader.GifBytes().empty());
  EXPECT_EQ(StripPixels(reader.Animation(), 2), three.images[2].pixels);
}

TEST(GifReader, AFrameCutShortKeepsWhatArrived) {
  TestImage first = MakeImage(20, 20, 1);
  TestImage last = MakeImage(50, 40, 2);
  GifWriter gif = Header();
  gif.Image(first).Image(last);
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Prefix(gif.Size() - 300)), 2);
  const auto pixels = StripPixels(reader.Animation(), 1);
  EXPECT_TRUE(std::equal(pixels.begin(), pixels.begin() + 500, last.pixels.begin()));  // the top rows arrived
  EXPECT_TRUE(std::all_of(pixels.end() - 200, pixels.end(), [](std::uint8_t p) { return p == 0; }));
}

TEST(GifReader, AnImageWithoutDataLeavesItsAreaEmptyAndTheNextFrameInPlace) {
  TestImage after = MakeImage(6, 4, 2);
  GifWriter gif = Header();
  gif.Image(MakeImage(3, 4, 1)).Descriptor(0, 0, 5, 4, 0).Bytes({8, 0}).Image(after).Trailer();
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 3);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(StripPixels(anim, 1), std::vector<std::uint8_t>(20, 0));
  EXPECT_EQ(anim.Frames[2].StripX, 8);
  EXPECT_EQ(StripPixels(anim, 2), after.pixels);
}

struct RefusedCase {
  std::string name;
  std::vector<std::uint8_t> bytes;
  std::size_t max_strip_bytes;
};

class ReaderRefuses : public testing::TestWithParam<RefusedCase> {};

TEST_P(ReaderRefuses, LeavesNothingLoaded) {
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(Header().Image(MakeImage(4, 4, 1)).Get()), 1);
  GifLoadOptions options;
  options.MaxStripBytes = GetParam().max_strip_bytes;
  EXPECT_EQ(reader.LoadAllFrames(GetParam().bytes, options), 0);
  const GifAnimation& gif = reader.Animation();
  EXPECT_TRUE(gif.Frames.empty());
  EXPECT_TRUE(gif.ColorTables.empty());
  EXPECT_TRUE(gif.Strip.Bits.empty());
  EXPECT_TRUE(reader.GifBytes().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Streams, ReaderRefuses,
    testing::Values(RefusedCase{"Empty", {}, 1u << 20},
                    RefusedCase{"NotAGif", {'G', 'I', 'F', '9', '9', 'a', 0, 0, 0, 0, 0, 0, 0}, 1u << 20},
                    RefusedCase{"NoPixelsAtAll", Header().Descriptor(0, 0, 0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
                    RefusedCase{"NegativeWidths",
                                Header().Descriptor(0, 0, 0xFFF0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
                    RefusedCase{"StripTooLarge", Header().Image(MakeImage(100, 100, 1)).Get(), 100 * 99}),
    [](const auto& p) { return p.param.name; });

TEST(GifReader, AFrameWithANegativeWidthIsLeftOutOfTheStrip) {
  TestImage second = MakeImage(12, 5, 2);
  GifWriter gif = Header();
  gif.Descriptor(0, 0, 0xFFFC, 5, 0).Bytes({8, 0}).Image(second);  // width -4
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 2);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.Strip.Width, 8);
  EXPECT_EQ(anim.Frames[1].StripX, -4);  // does not fit: not unpacked
  EXPECT_TRUE(std::all_of(anim.Strip.Bits.begin(), anim.Strip.Bits.end(), [](std::uint8_t p) { return p == 0; }));
}

struct PlanCase {
  std::string name;
  std::vector<int> disposals;
  std::vector<bool> transparent;
  int first_width;  // the others are 8 wide
  bool canvas;
  bool mask;
};

class ReaderPlans : public testing::TestWithParam<PlanCase> {};

TEST_P(ReaderPlans, ACanvasOnlyWhereFramesBuildOnEachOther) {
  const PlanCase& c = GetParam();
  GifWriter gif = Header();
  for (std::size_t i = 0; i < c.disposals.size(); ++i) {
    gif.GraphicControl(c.disposals[i], 1, c.transparent[i] ? std::optional<std::uint8_t>(0) : std::nullopt);
    gif.Image(MakeImage(i == 0 ? c.first_width : 8, 8, static_cast<std::uint32_t>(i)));
  }
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Trailer().Get()), static_cast<std::int32_t>(c.disposals.size()));
  const StripPlan& plan = reader.Animation().Plan;
  EXPECT_EQ(plan.NeedsCanvas, c.canvas);
  EXPECT_EQ(plan.CanvasNeedsMask, c.mask);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, ReaderPlans,
    testing::Values(PlanCase{"SingleFrame", {1}, {true}, 8, false, false},
                    PlanCase{"EveryFrameRestoresBackground", {2, 2, 2}, {true, true, true}, 8, false, false},
                    PlanCase{"OpaqueFramesKept", {1, 0, 1}, {false, false, false}, 8, true, false},
                    PlanCase{"SomeFrameRestores", {1, 2, 1}, {false, false, false}, 8, true, true},
                    PlanCase{"RestoreToPrevious", {1, 1, 3}, {false, false, false}, 8, true, true},
                    PlanCase{"FirstFrameTransparent", {1, 1}, {true, false}, 8, true, true},
                    PlanCase{"LaterTransparentOverFullFirst", {1, 1}, {false, true}, 8, true, false},
                    PlanCase{"LaterTransparentOverSmallFirst", {1, 1}, {false, true}, 4, true, true}),
    [](const auto& p) { return p.param.name; });

TEST(GifReader, ALoadReplacesTheLastOne) {
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(ThreeFrameGif().gif.Get()), 3);
  TestImage only = MakeImage(3, 2, 9);
  GifWriter gif;
  gif.Screen(3, 2, TestPalette(2, 1)).Netscape(4).Image(only).Trailer();
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 1);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.ColorTables.size(), 1u);
  EXPECT_EQ(anim.ColorTables[0].Count, 2);
  EXPECT_EQ(anim.LoopCount, 4);
  EXPECT_EQ(anim.CanvasWidth, 3);
  EXPECT_EQ(StripPixels(anim, 0), only.pixels);
}

}  // namespace
}  // namespace quillet
