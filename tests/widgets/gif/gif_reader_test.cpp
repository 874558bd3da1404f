#include "widgets/gif/gif_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

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

TEST(GifReader, UnpacksEveryPixelAsItsPaletteIndex) {
  const std::pair<const char*, TestImage> cases[] = {
      {"OnePixel", MakeImage(1, 1, 1)},
      {"OddWidth", MakeImage(13, 9, 2)},
      {"TwoBitCodes", MakeImage(40, 30, 3, 4)},
      {"FullTables", MakeImage(320, 240, 5)},
      {"InterlacedOneRow", Interlaced(MakeImage(7, 1, 6))},
      {"InterlacedSeventeenRows", Interlaced(MakeImage(9, 17, 8))}};
  for (const auto& [name, image] : cases) {
    SCOPED_TRACE(name);
    GifReader reader;
    ASSERT_EQ(reader.LoadAllFrames(WithGlobalTable().Image(image).Trailer().Get()), 1);
    const GifAnimation& gif = reader.Animation();
    EXPECT_EQ(gif.Strip.Width, image.width);
    EXPECT_EQ(gif.Strip.Height, image.height);
    EXPECT_EQ(StripPixels(gif, 0), image.pixels);
  }
}

// Three frames of different sizes, the middle one interlaced and with its own table.
class GifReaderThreeFrames : public testing::Test {
 protected:
  GifReaderThreeFrames() {
    images[1].local_table = TestPalette(16, 4);
    for (const auto& image : images) gif.GraphicControl(1, 5).Image(image);
    gif.Trailer();
    design.DesignTime = true;
  }

  std::vector<TestImage> images = {MakeImage(10, 6, 1), Interlaced(MakeImage(7, 9, 2)), MakeImage(5, 3, 3)};
  GifWriter gif = WithGlobalTable();
  GifLoadOptions design;
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
  }
  // Below a short frame the strip stays 0.
  for (std::int32_t y = 6; y < 9; ++y) EXPECT_EQ(anim.Strip.Row(y)[0], 0);
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
  GifWriter next;
  next.Screen(3, 2, TestPalette(2, 1)).Netscape(4).Image(only).Trailer();
  ASSERT_EQ(reader.LoadAllFrames(next.Get()), 1);
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
  GifWriter gif = WithGlobalTable();
  gif.Image(MakeImage(3, 4, 1)).Descriptor(0, 0, 5, 4, 0).Bytes({8, 0}).Image(after).Trailer();
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 3);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(StripPixels(anim, 1), std::vector<std::uint8_t>(20, 0));
  EXPECT_EQ(anim.Frames[2].StripX, 8);
  EXPECT_EQ(StripPixels(anim, 2), after.pixels);
}

TEST(GifReader, ARefusedLoadLeavesNothingLoaded) {
  const std::tuple<const char*, std::vector<std::uint8_t>, std::size_t> cases[] = {
      {"NotAGif", {'G', 'I', 'F', '9', '9', 'a', 0, 0, 0, 0, 0, 0, 0}, 1u << 20},
      {"NoPixelsAtAll", WithGlobalTable().Descriptor(0, 0, 0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
      {"NegativeWidths", WithGlobalTable().Descriptor(0, 0, 0xFFF0, 5, 0).Bytes({8, 0}).Get(), 1u << 20},
      {"StripTooLarge", WithGlobalTable().Image(MakeImage(100, 100, 1)).Get(), 100 * 99}};
  for (const auto& [name, bytes, max_strip_bytes] : cases) {
    SCOPED_TRACE(name);
    GifReader reader;
    ASSERT_EQ(reader.LoadAllFrames(WithGlobalTable().Image(MakeImage(4, 4, 1)).Get()), 1);
    GifLoadOptions options;
    options.MaxStripBytes = max_strip_bytes;
    EXPECT_EQ(reader.LoadAllFrames(bytes, options), 0);
    const GifAnimation& gif = reader.Animation();
    EXPECT_TRUE(gif.Frames.empty());
    EXPECT_TRUE(gif.ColorTables.empty());
    EXPECT_TRUE(gif.Strip.Bits.empty());
    EXPECT_TRUE(reader.GifBytes().empty());
  }
}

TEST(GifReader, AFrameWithANegativeWidthIsLeftOutOfTheStrip) {
  GifWriter gif = WithGlobalTable();
  gif.Descriptor(0, 0, 0xFFFC, 5, 0).Bytes({8, 0}).Image(MakeImage(12, 5, 2));  // width -4
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 2);
  const GifAnimation& anim = reader.Animation();
  EXPECT_EQ(anim.Strip.Width, 8);
  EXPECT_EQ(anim.Frames[1].StripX, -4);  // does not fit: not unpacked
  EXPECT_TRUE(AllZero(anim.Strip.Bits.data(), anim.Strip.Bits.data() + anim.Strip.Bits.size()));
}

TEST(GifReader, PlansACanvasOnlyWhereFramesBuildOnEachOther) {
  struct Case {
    std::string name;
    std::vector<int> disposals;
    std::vector<bool> transparent;
    int first_width;  // the others are 8 wide
    bool canvas;
    bool mask;
  };
  for (const Case& c : {Case{"SingleFrame", {1}, {true}, 8, false, false},
                        Case{"EveryFrameRestoresBackground", {2, 2, 2}, {true, true, true}, 8, false, false},
                        Case{"OpaqueFramesKept", {1, 0, 1}, {false, false, false}, 8, true, false},
                        Case{"SomeFrameRestores", {1, 2, 1}, {false, false, false}, 8, true, true},
                        Case{"RestoreToPrevious", {1, 1, 3}, {false, false, false}, 8, true, true},
                        Case{"FirstFrameTransparent", {1, 1}, {true, false}, 8, true, true},
                        Case{"LaterTransparentOverFullFirst", {1, 1}, {false, true}, 8, true, false},
                        Case{"LaterTransparentOverSmallFirst", {1, 1}, {false, true}, 4, true, true}}) {
    SCOPED_TRACE(c.name);
    GifWriter gif = WithGlobalTable();
    for (std::size_t i = 0; i < c.disposals.size(); ++i) {
      gif.GraphicControl(c.disposals[i], 1, c.transparent[i] ? std::optional<std::uint8_t>(0) : std::nullopt);
      gif.Image(MakeImage(i == 0 ? c.first_width : 8, 8, static_cast<std::uint32_t>(i)));
    }
    GifReader reader;
    ASSERT_EQ(reader.LoadAllFrames(gif.Trailer().Get()), static_cast<std::int32_t>(c.disposals.size()));
    EXPECT_EQ(reader.Animation().Plan.NeedsCanvas, c.canvas);
    EXPECT_EQ(reader.Animation().Plan.CanvasNeedsMask, c.mask);
  }
}

}  // namespace
}  // namespace quillet
