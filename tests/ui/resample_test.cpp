#include "ui/resample.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace quillet {
namespace {

struct Case {
  const char* what;
  Picture source;
  int width, height;
  std::vector<std::uint32_t> expected;  // the result's pixels, rows from the top
};

const Case kCases[] = {
    {"same size comes back as it is, soft alpha included",
     {2, 1, {0x80102030u, 0x00FF00FFu}}, 2, 1, {0x80102030u, 0x00FF00FFu}},
    {"halving both ways averages each 2 x 2 block",
     {4, 2, {0xFF000000u, 0xFF204060u, 0xFFFFFFFFu, 0xFFFFFFFFu,  //
             0xFF102030u, 0xFF305070u, 0xFF000000u, 0xFF000000u}},
     2, 1, {0xFF182C40u, 0xFF808080u}},
    {"an edge enlarged runs through the colours between, ends kept",
     {2, 1, {0xFF000000u, 0xFFFFFFFFu}}, 4, 1, {0xFF000000u, 0xFF404040u, 0xFFBFBFBFu, 0xFFFFFFFFu}},
    {"see-through red lends no colour; hard edges stay hard",
     {2, 1, {0xFF0000FFu, 0x00FF0000u}}, 4, 1, {0xFF0000FFu, 0xFF0000FFu, 0u, 0u}},
    {"half covered counts as opaque when shrinking, colour unchanged",
     {2, 1, {0x00FF0000u, 0xFF00FF00u}}, 1, 1, {0xFF00FF00u}},
    {"under half covered is see-through",
     {3, 1, {0x00FF0000u, 0x00FF0000u, 0xFF00FF00u}}, 1, 1, {0u}},
    {"soft alpha averages premultiplied",
     {2, 1, {0x80FF0000u, 0xFF0000FFu}}, 1, 1, {0xC05500AAu}},
    {"one axis shrinks while the other grows",
     {1, 2, {0xFF000000u, 0xFF646464u}}, 3, 1, {0xFF323232u, 0xFF323232u, 0xFF323232u}},
    {"a single pixel fills any size", {1, 1, {0xFF123456u}}, 2, 2, std::vector<std::uint32_t>(4, 0xFF123456u)},
    {"zero width", {1, 1, {0xFF123456u}}, 0, 3, {}},
    {"negative height", {1, 1, {0xFF123456u}}, 3, -1, {}},
    {"no source pixels", {0, 0, {}}, 3, 3, {}},
    {"fewer pixels than the size says", {2, 2, {0xFF123456u}}, 4, 4, {}},
};

TEST(ResamplePicture, Cases) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    const Picture result = ResamplePicture(c.source, c.width, c.height);
    EXPECT_EQ(result.pixels, c.expected);
    if (c.expected.empty()) {
      EXPECT_EQ(result.width, 0);
      EXPECT_EQ(result.height, 0);
    } else {
      EXPECT_EQ(result.width, c.width);
      EXPECT_EQ(result.height, c.height);
    }
  }
}

// The bar's own case: a vertical shading squeezed and lengthened keeps every
// column alike and its top and bottom tones in order.
TEST(ResamplePicture, MeterBarSqueezedKeepsItsShading) {
  Picture bar{120, 11, {}};
  for (int y = 0; y < 11; ++y)
    for (int x = 0; x < 120; ++x) bar.pixels.push_back(0xFF000000u | static_cast<std::uint32_t>(y * 20) * 0x010101u);
  const Picture scaled = ResamplePicture(bar, 151, 7);
  ASSERT_EQ(scaled.pixels.size(), 151u * 7u);
  std::uint32_t previous = 0;
  for (int y = 0; y < 7; ++y) {
    const std::uint32_t first = scaled.pixels[static_cast<std::size_t>(y) * 151];
    for (int x = 1; x < 151; ++x) EXPECT_EQ(scaled.pixels[static_cast<std::size_t>(y) * 151 + x], first);
    EXPECT_GT(first, previous) << "row " << y;
    previous = first;
  }
}

}  // namespace
}  // namespace quillet
