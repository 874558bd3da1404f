// The picture box's persistent image: ground, picture and drawings.
#include <gtest/gtest.h>

#include "ui/picture_box.h"

namespace quillet {
namespace {

TEST(PictureBox, DrawingsBlendOnTheGroundAndGoWithANewGroundOrPicture) {
  PictureBox box("p", {0, 0, 60, 45}, 15.0);  // 4 x 3 pixels
  box.SetBackColor(Rgb(0, 0, 255));
  ASSERT_EQ(std::make_pair(box.Image().width, box.Image().height), std::make_pair(4, 3));
  box.DrawPixels(-1, 1, 2, {0xFFFFFFFF, 0x80FF0000, 0xFF00FF00, 0x00000000});
  const auto& px = box.Image().pixels;
  EXPECT_EQ(px[4], 0xFF80007Fu);   // half red over blue; the pixel left of the box is cut off
  EXPECT_EQ(px[8], 0xFF0000FFu);   // fully see-through: the ground stays
  EXPECT_EQ(px[0], 0xFF0000FFu);

  const PicturePtr before = box.ImagePtr();
  box.DrawPixels(0, 0, 1, {0xFF00FF00});
  EXPECT_EQ(before->pixels[0], 0xFF0000FFu);  // a picture taken from the image keeps what it showed
  EXPECT_EQ(box.Image().pixels[0], 0xFF00FF00u);

  box.SetPicture(std::make_shared<const Picture>(Picture{1, 1, {0xFF112233}}));
  EXPECT_EQ(box.Image().pixels[0], 0xFF112233u);
  EXPECT_EQ(box.Image().pixels[4], 0xFF0000FFu);  // the drawing went with it
  box.DrawPixels(0, 1, 1, {0xFFFFFFFF});
  box.Cls();
  EXPECT_EQ(box.Image().pixels[0], 0xFF112233u);
  EXPECT_EQ(box.Image().pixels[4], 0xFF0000FFu);
}

}  // namespace
}  // namespace quillet
