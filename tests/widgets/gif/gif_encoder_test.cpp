#include "widgets/gif/gif_encoder.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

// Frames chosen so the encoder's codes grow to every width, the table fills
// and is cleared many times over (a 512 x 480 noisy frame needs far more than
// 4096 codes), and strings get long. Frame 2 has 8 colours of its own; frame
// 6 lies off the origin and has a transparent index.
struct AnimationUnderTest {
  std::vector<TestImage> images = {MakeImage(1, 1, 1),   WithTable(MakeImage(7, 3, 2, 8), TestPalette(8, 9)),
                                   MakeImage(64, 64, 3), MakeImage(512, 480, 4),
                                   Solid(300, 200, 17),  MakeImage(33, 17, 5)};
  GifReader reader;

  AnimationUnderTest() {
    images[5].left = 3;
    images[5].top = 2;
    GifWriter gif;
    gif.Screen(600, 600, TestPalette(256, 1));
    for (std::size_t i = 0; i < images.size(); ++i) {
      gif.GraphicControl(1, 4, i == 5 ? std::optional<std::uint8_t>(42) : std::nullopt).Image(images[i]);
    }
    reader.LoadAllFrames(gif.Trailer().Get());
  }
};

TEST(GifFrameToPicture, EveryFrameReadsBackWithItsIndicesColoursAndTransparency) {
  const AnimationUnderTest animation;
  const GifAnimation& gif = animation.reader.Animation();
  ASSERT_EQ(gif.FrameCount(), 6);
  for (std::int32_t n = 1; n <= gif.FrameCount(); ++n) {
    SCOPED_TRACE(n);
    GifReader back;
    ASSERT_EQ(back.LoadAllFrames(FrameToPicture(gif, n)), 1);
    const GifAnimation& picture = back.Animation();
    const auto i = static_cast<std::size_t>(n - 1);
    EXPECT_EQ(picture.Strip.Width, animation.images[i].width);
    EXPECT_EQ(picture.Strip.Height, animation.images[i].height);
    EXPECT_EQ(StripPixels(picture, 0), animation.images[i].pixels);

    const ColorTable& source = gif.ColorTables[static_cast<std::size_t>(gif.Frames[i].ColorTable)];
    ASSERT_EQ(source.Count, n == 2 ? 8 : 256);
    // Always a full 256-entry table; the colours the frame lacks are black.
    EXPECT_EQ(picture.ColorTables[0].Count, 256);
    EXPECT_EQ(picture.ColorTables[0].Colors, source.Colors);
    EXPECT_EQ(picture.Frames[0].TransparentFlag, n == 6 ? 1 : 0);
    EXPECT_EQ(picture.Frames[0].TransparentIndex, n == 6 ? 42 : 0);
    EXPECT_EQ(picture.Frames[0].Left, 0);
    EXPECT_EQ(picture.Frames[0].Top, 0);
  }
}

TEST(GifFrameToPicture, WritesAPlainGif89a) {
  const AnimationUnderTest animation;
  // 512 x 480, opaque; its sub-blocks are LzwEncode's, checked on their own.
  const auto bytes = FrameToPicture(animation.reader.Animation(), 4);
  ASSERT_GT(bytes.size(), 800u);
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 6), "GIF89a");
  EXPECT_EQ(bytes[6] | (bytes[7] << 8), 512);
  EXPECT_EQ(bytes[8] | (bytes[9] << 8), 480);
  EXPECT_EQ(bytes[10], 0x87);
  EXPECT_EQ(bytes[781], 0x2C);  // right after the 256 colours
  EXPECT_EQ(bytes[790], 0);     // no local table, not interlaced
  EXPECT_EQ(bytes[791], 8);     // minimum code size
  EXPECT_EQ(bytes.back(), 0x3B);
}

TEST(GifFrameToPicture, GivesNothingWithoutSuchAFrame) {
  const AnimationUnderTest animation;
  const GifAnimation& gif = animation.reader.Animation();
  EXPECT_TRUE(FrameToPicture(gif, 0).empty());
  EXPECT_TRUE(FrameToPicture(gif, 7).empty());
  EXPECT_TRUE(FrameToPicture(GifAnimation{}, 1).empty());
}

}  // namespace
}  // namespace quillet
