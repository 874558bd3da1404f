#include "widgets/gif/gif_encoder.h"

#include <gtest/gtest.h>

#include <string>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::GifWriter;
using gif_test::MakeImage;
using gif_test::TestImage;
using gif_test::TestPalette;

std::vector<std::uint8_t> FramePixels(const GifAnimation& gif, std::size_t frame) {
  const FrameRecord& f = gif.Frames[frame];
  std::vector<std::uint8_t> pixels;
  for (std::int32_t y = 0; y < f.Height; ++y) {
    const std::uint8_t* row = gif.Strip.Row(y) + f.StripX;
    pixels.insert(pixels.end(), row, row + f.Width);
  }
  return pixels;
}

TestImage Solid(int width, int height, std::uint8_t value) {
  TestImage image;
  image.width = width;
  image.height = height;
  image.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value);
  return image;
}

// Frames chosen so the encoder's codes grow to every width, the table fills
// and is cleared many times over (a 512 x 512 noisy frame needs far more than
// 4096 codes), and strings get long.
struct AnimationUnderTest {
  std::vector<TestImage> images = {MakeImage(1, 1, 1),   MakeImage(7, 3, 2),      MakeImage(64, 64, 3),
                                   MakeImage(512, 512, 4), Solid(300, 200, 17), MakeImage(33, 17, 5)};
  GifReader reader;

  AnimationUnderTest() {
    images[1].local_table = TestPalette(8, 9);
    for (auto& p : images[1].pixels) p &= 7;
    GifWriter gif;
    gif.Screen(600, 600, TestPalette(256, 1));
    for (std::size_t i = 0; i < images.size(); ++i) {
      gif.GraphicControl(1, 4, i == 5 ? std::optional<std::uint8_t>(42) : std::nullopt).Image(images[i]);
    }
    reader.LoadAllFrames(gif.Trailer().Get());
  }
};

TEST(FrameToPicture, EveryFrameReadsBackAsTheSameIndices) {
  const AnimationUnderTest animation;
  const GifAnimation& gif = animation.reader.Animation();
  ASSERT_EQ(gif.FrameCount(), 6);
  for (std::int32_t n = 1; n <= gif.FrameCount(); ++n) {
    SCOPED_TRACE(n);
    GifReader back;
    ASSERT_EQ(back.LoadAllFrames(FrameToPicture(gif, n)), 1);
    const auto& expected = animation.images[static_cast<std::size_t>(n - 1)];
    EXPECT_EQ(back.Animation().Strip.Width, expected.width);
    EXPECT_EQ(back.Animation().Strip.Height, expected.height);
    EXPECT_EQ(FramePixels(back.Animation(), 0), expected.pixels);
  }
}

TEST(FrameToPicture, CarriesTheFramesColoursAndTransparency) {
  const AnimationUnderTest animation;
  const GifAnimation& gif = animation.reader.Animation();
  struct Expectation {
    std::int32_t frame;
    std::int32_t colors;
    bool transparent;
  };
  for (const Expectation e : {Expectation{2, 8, false}, Expectation{6, 256, true}, Expectation{1, 256, false}}) {
    SCOPED_TRACE(e.frame);
    GifReader back;
    ASSERT_EQ(back.LoadAllFrames(FrameToPicture(gif, e.frame)), 1);
    const GifAnimation& picture = back.Animation();
    const ColorTable& source = gif.ColorTables[static_cast<std::size_t>(gif.Frames[static_cast<std::size_t>(e.frame - 1)].ColorTable)];
    ASSERT_EQ(source.Count, e.colors);
    // Always a full 256-entry table; the colours the frame lacks are black.
    EXPECT_EQ(picture.ColorTables[0].Count, 256);
    EXPECT_EQ(picture.ColorTables[0].Colors, source.Colors);
    EXPECT_EQ(picture.Frames[0].TransparentFlag, e.transparent ? 1 : 0);
    EXPECT_EQ(picture.Frames[0].TransparentIndex, e.transparent ? 42 : 0);
    EXPECT_EQ(picture.Frames[0].Left, 0);
    EXPECT_EQ(picture.Frames[0].Top, 0);
  }
}

TEST(FrameToPicture, WritesAPlainGif89aWithShortSubBlocks) {
  const AnimationUnderTest animation;
  const auto bytes = FrameToPicture(animation.reader.Animation(), 4);  // 512 x 512, opaque
  ASSERT_GT(bytes.size(), 800u);
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 6), "GIF89a");
  EXPECT_EQ(bytes[6] | (bytes[7] << 8), 512);
  EXPECT_EQ(bytes[8] | (bytes[9] << 8), 512);
  EXPECT_EQ(bytes[10], 0x87);
  EXPECT_EQ(bytes[781], 0x2C);  // right after the 256 colours
  EXPECT_EQ(bytes[790], 0);     // no local table, not interlaced
  EXPECT_EQ(bytes[791], 8);     // minimum code size
  std::size_t at = 792;
  std::size_t blocks = 0;
  while (bytes[at] != 0) {
    if (bytes[at + bytes[at] + 1] != 0) {
      EXPECT_EQ(bytes[at], 254) << "only the last sub-block may be short";
    }
    at += bytes[at] + 1u;
    ++blocks;
  }
  EXPECT_GT(blocks, 100u);
  EXPECT_EQ(at + 2, bytes.size());
  EXPECT_EQ(bytes.back(), 0x3B);
}

TEST(FrameToPicture, GivesNothingWithoutSuchAFrame) {
  const AnimationUnderTest animation;
  const GifAnimation& gif = animation.reader.Animation();
  EXPECT_TRUE(FrameToPicture(gif, 0).empty());
  EXPECT_TRUE(FrameToPicture(gif, 7).empty());
  EXPECT_TRUE(FrameToPicture(GifAnimation{}, 1).empty());
}

}  // namespace
}  // namespace quillet
