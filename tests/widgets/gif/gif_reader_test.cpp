#include "widgets/gif/gif_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

TestImage Interlaced(TestImage image) {
  image.interlaced = true;
  return image;
}

bool AllZero(const std::uint8_t* begin, const std::uint8_t* end) {
  return std::all_of(begin, end, [](std::uint8_t p) { return p == 0; });
}

// Three frames of different sizes: the second interlaced and with its own table, the third a single interlaced row
// in 2-bit codes.
class GifReaderThreeFrames : public testing::Test {
 protected:
  GifReaderThreeFrames() {
    images[1].local_table = TestPalette(16, 4);
    for (const auto& image : images) gif.GraphicControl(1, 5).Image(image);
    gif.Trailer();
  }

  std::vector<TestImage> images = {MakeImage(10, 6, 1), Interlaced(MakeImage(7, 9, 2)),
                                   Interlaced(MakeImage(5, 1, 3, 4))};
  GifWriter gif = WithGlobalTable();
  GifReader reader;
};

TEST_F(GifReaderThreeFrames, PutsFramesSideBySideInFileOrder) {
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 3);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.Strip.Width, 22);
  EXPECT_EQ(anim.Strip.Height, 9);
  EXPECT_EQ(anim.Strip.Stride, 24);
  EXPECT_EQ(anim.Strip.Bits.size(), 24u * 9u);
  const std::int32_t strip_x[] = {0, 10, 17};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(anim.Frames[i].StripX, strip_x[i]);
    EXPECT_EQ(StripPixels(anim, i), images[i].pixels);
    for (std::int32_t y = images[i].height; y < 9; ++y) {  // under a short frame the strip stays 0
      EXPECT_TRUE(AllZero(anim.Strip.Row(y) + strip_x[i], anim.Strip.Row(y) + strip_x[i] + images[i].width)) << y;
    }
  }
  EXPECT_EQ(anim.SelectedTable, -1);
}

TEST_F(GifReaderThreeFrames, TheFirstPassUnpacksFrameOneOnly) {
  ASSERT_EQ(reader.LoadGifBytes(gif.Get()), 3);
  const GifAnimation& anim = reader.Animation();
  EXPECT_TRUE(reader.SecondPassPending());
  EXPECT_EQ(StripPixels(anim, 0), images[0].pixels);
  for (std::int32_t y = 0; y < anim.Strip.Height; ++y) {
    EXPECT_TRUE(AllZero(anim.Strip.Row(y) + 10, anim.Strip.Row(y) + anim.Strip.Width)) << y;
  }
  ASSERT_TRUE(reader.BuildFrameStrip(false));
  EXPECT_FALSE(reader.SecondPassPending());
  EXPECT_EQ(StripPixels(anim, 2), images[2].pixels);
  EXPECT_FALSE(reader.GifBytes().empty());  // still needed until loading finishes
  reader.FinishLoading();
  EXPECT_TRUE(reader.GifBytes().empty());
  EXPECT_EQ(StripPixels(anim, 1), images[1].pixels);
}

TEST_F(GifReaderThreeFrames, AtDesignTimeUnpacksFrameOneAndReloadsFromTheStreamItKept) {
  GifLoadOptions design;
  design.DesignTime = true;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get(), design), 3);
  EXPECT_EQ(reader.Animation().Strip.Width, 10);
  EXPECT_EQ(reader.Animation().Strip.Height, 6);
  EXPECT_EQ(StripPixels(reader.Animation(), 0), images[0].pixels);
  EXPECT_EQ(reader.GifBytes(), gif.Get());
  ASSERT_EQ(reader.LoadAllFrames(reader.GifBytes(), design), 3);
  EXPECT_EQ(reader.GifBytes(), gif.Get());
  ASSERT_EQ(reader.LoadAllFrames(reader.GifBytes()), 3);  // at run time the stream goes
  EXPECT_TRUE(reader.GifBytes().empty());
  EXPECT_EQ(StripPixels(reader.Animation(), 2), images[2].pixels);
}

TEST_F(GifReaderThreeFrames, ALoadReplacesTheLastOne) {
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 3);
  const TestImage only = MakeImage(3, 2, 9);
  ASSERT_EQ(reader.LoadAllFrames(GifWriter().Screen(3, 2, TestPalette(2, 1)).Netscape(4).Image(only).Trailer().Get()),
            1);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.ColorTables.size(), 1u);
  EXPECT_EQ(anim.ColorTables[0].Count, 2);
  EXPECT_EQ(anim.LoopCount, 4);
  EXPECT_EQ(anim.CanvasWidth, 3);
  EXPECT_EQ(StripPixels(anim, 0), only.pixels);
}

TEST(GifReader, AFrameCutShortKeepsWhatArrived) {
  const TestImage last = MakeImage(50, 40, 2);
  GifWriter gif = WithGlobalTable();
  gif.Image(MakeImage(20, 20, 1)).Image(last);
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Prefix(gif.Size() - 300)), 2);
  const auto pixels = StripPixels(reader.Animation(), 1);
  EXPECT_TRUE(std::equal(pixels.begin(), pixels.begin() + 500, last.pixels.begin()));  // the top rows arrived
  EXPECT_TRUE(AllZero(pixels.data() + pixels.size() - 200, pixels.data() + pixels.size()));
}

TEST(GifReader, AnImageWithoutDataLeavesItsAreaEmptyAndTheNextFrameInPlace) {
  const TestImage after = MakeImage(6, 4, 2);
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(
                WithGlobalTable().Image(MakeImage(3, 4, 1)).Descriptor(0, 0, 5, 4, 0).Bytes({8, 0}).Image(after).Get()),
            3);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(StripPixels(anim, 1), Bytes(20, 0));
  EXPECT_EQ(anim.Frames[2].StripX, 8);
  EXPECT_EQ(StripPixels(anim, 2), after.pixels);
}

TEST(GifReader, ARefusedLoadLeavesNothingLoaded) {
  const std::tuple<const char*, Bytes, std::size_t> cases[] = {
      {"NotAGif", {'G', 'I', 'F', '9', '9', 'a', 0, 0, 0, 0, 0, 0, 0}, 1u << 20},
      {"NoPixelsAtAll", WithGlobalTable().Descriptor(0, 0, 0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
      {"NegativeWidths", WithGlobalTable().Descriptor(0, 0, 0xFFF0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
      {"StripTooLarge", WithGlobalTable().Image(MakeImage(100, 100, 1)).Get(), 100 * 99}};
  for (const auto& [name, bytes, max_strip_bytes] : cases) {
    SCOPED_TRACE(name);
    GifReader reader;
    ASSERT_EQ(reader.LoadAllFrames(WithGlobalTable().Image(MakeImage(4, 4, 1)).Get()), 1);
    EXPECT_EQ(reader.LoadAllFrames(bytes, {.MaxStripBytes = max_strip_bytes}), 0);
    const GifAnimation& gif = reader.Animation();
    EXPECT_TRUE(gif.Frames.empty());
    EXPECT_TRUE(gif.ColorTables.empty());
    EXPECT_TRUE(gif.Strip.Bits.empty());
    EXPECT_TRUE(reader.GifBytes().empty());
  }
}

TEST(GifReader, AFrameWithANegativeWidthIsLeftOutOfTheStrip) {
  GifReader reader;  // width -4, then 12
  ASSERT_EQ(reader.LoadAllFrames(
                WithGlobalTable().Descriptor(0, 0, 0xFFFC, 5, 0).Bytes({8, 0}).Image(MakeImage(12, 5, 2)).Get()),
            2);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.Strip.Width, 8);
  EXPECT_EQ(anim.Frames[1].StripX, -4);  // does not fit: not unpacked
  EXPECT_TRUE(AllZero(anim.Strip.Bits.data(), anim.Strip.Bits.data() + anim.Strip.Bits.size()));
}

TEST(GifReader, PlansACanvasOnlyWhereFramesBuildOnEachOther) {
  const std::tuple<const char*, std::vector<int>, std::vector<bool>, int, bool, bool> cases[] = {
      // name, disposals, transparency, the first frame's width (the others are 8 wide); canvas, mask
      {"SingleFrame", {1}, {true}, 8, false, false},
      {"EveryFrameRestoresBackground", {2, 2, 2}, {true, true, true}, 8, false, false},
      {"OpaqueFramesKept", {1, 0, 1}, {false, false, false}, 8, true, false},
      {"SomeFrameRestores", {1, 2, 1}, {false, false, false}, 8, true, true},
      {"RestoreToPrevious", {1, 1, 3}, {false, false, false}, 8, true, true},
      {"FirstFrameTransparent", {1, 1}, {true, false}, 8, true, true},
      {"LaterTransparentOverFullFirst", {1, 1}, {false, true}, 8, true, false},
      {"LaterTransparentOverSmallFirst", {1, 1}, {false, true}, 4, true, true}};
  for (const auto& [name, disposals, transparent, first_width, canvas, mask] : cases) {
    SCOPED_TRACE(name);
    GifWriter gif = WithGlobalTable();
    for (std::size_t i = 0; i < disposals.size(); ++i) {
      gif.GraphicControl(disposals[i], 1, transparent[i] ? std::optional<std::uint8_t>(0) : std::nullopt);
      gif.Image(MakeImage(i == 0 ? first_width : 8, 8, static_cast<std::uint32_t>(i)));
    }
    GifReader reader;
    ASSERT_EQ(reader.LoadAllFrames(gif.Trailer().Get()), static_cast<std::int32_t>(disposals.size()));
    EXPECT_EQ(reader.Animation().Plan.NeedsCanvas, canvas);
    EXPECT_EQ(reader.Animation().Plan.CanvasNeedsMask, mask);
  }
}

}  // namespace
}  // namespace quillet
