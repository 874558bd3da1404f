#include "widgets/gif/gif_encoder.h"

#include <gtest/gtest.h>

#include <array>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

// Frames chosen so the encoder's codes grow to every width, the table fills and is cleared many times over (a
// 512 x 480 noisy frame needs far more than 4096 codes), and strings get long. Frame 2 has 8 colours of its own;
// frame 6 lies off the origin and has a transparent index.
class GifFrameToPicture : public testing::Test {
 protected:
  GifFrameToPicture() {
    images[5].left = 3;
    images[5].top = 2;
    GifWriter writer;
    writer.Screen(600, 600, TestPalette(256, 1));
    for (std::size_t i = 0; i < images.size(); ++i) {
      writer.GraphicControl(1, 4, i == 5 ? std::optional<std::uint8_t>(42) : std::nullopt).Image(images[i]);
    }
    reader.LoadAllFrames(writer.Trailer().Get());
  }

  std::vector<TestImage> images = {MakeImage(1, 1, 1),   WithTable(MakeImage(7, 3, 2, 8), TestPalette(8, 9)),
                                   MakeImage(64, 64, 3), MakeImage(512, 480, 4),
                                   Solid(300, 200, 17),  MakeImage(33, 17, 5)};
  GifReader reader;
  const GifAnimation& gif = reader.Animation();
};

TEST_F(GifFrameToPicture, EveryFrameReadsBackWithItsIndicesColoursAndTransparency) {
  ASSERT_EQ(gif.FrameCount(), 6);
  for (std::int32_t n = 1; n <= gif.FrameCount(); ++n) {
    SCOPED_TRACE(n);
    GifReader back;
    ASSERT_EQ(back.LoadAllFrames(FrameToPicture(gif, n)), 1);
    const GifAnimation& picture = back.Animation();
    const TestImage& image = images[static_cast<std::size_t>(n - 1)];
    EXPECT_EQ(picture.Strip.Width, image.width);
    EXPECT_EQ(picture.Strip.Height, image.height);
    EXPECT_EQ(StripPixels(picture, 0), image.pixels);
    const ColorTable& source =
        gif.ColorTables[static_cast<std::size_t>(gif.Frames[static_cast<std::size_t>(n - 1)].ColorTable)];
    ASSERT_EQ(source.Count, n == 2 ? 8 : 256);
    // Always a full 256-entry table; the colours the frame lacks are black.
    EXPECT_EQ(picture.ColorTables[0].Count, 256);
    EXPECT_EQ(picture.ColorTables[0].Colors, source.Colors);
    const FrameRecord& f = picture.Frames[0];
    EXPECT_EQ((std::array<int, 4>{f.TransparentFlag, f.TransparentIndex, f.Left, f.Top}),
              (std::array<int, 4>{n == 6, n == 6 ? 42 : 0, 0, 0}));
  }
}

// A plain GIF89a: 512 x 480 with a 256-colour global table, no local table, not interlaced, code size 8. Its
// sub-blocks are LzwEncode's, checked on their own.
TEST_F(GifFrameToPicture, WritesAPlainGif89a) {
  const auto bytes = FrameToPicture(gif, 4);
  ASSERT_GT(bytes.size(), 800u);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 11), (Bytes{'G', 'I', 'F', '8', '9', 'a', 0, 2, 0xE0, 1, 0x87}));
  EXPECT_EQ(Bytes(bytes.begin() + 781, bytes.begin() + 792), (Bytes{0x2C, 0, 0, 0, 0, 0, 2, 0xE0, 1, 0, 8}));
  EXPECT_EQ(bytes.back(), 0x3B);
}

TEST_F(GifFrameToPicture, GivesNothingWithoutSuchAFrame) {
  EXPECT_TRUE(FrameToPicture(gif, 0).empty());
  EXPECT_TRUE(FrameToPicture(gif, 7).empty());
  EXPECT_TRUE(FrameToPicture(GifAnimation{}, 1).empty());
}

}  // namespace
}  // namespace quillet
