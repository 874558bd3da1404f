#include "widgets/gif/gif_palette.h"

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

const std::vector<std::uint32_t> kGlobal = TestPalette(4, 1);
const std::vector<std::uint32_t> kFirst = TestPalette(8, 2);
const std::vector<std::uint32_t> kThird = TestPalette(2, 3);

TestImage WithTable(TestImage image, const std::vector<std::uint32_t>& table) {
  image.local_table = table;
  return image;
}

// Frame 1 and 3 have tables of their own, frame 2 uses the global one.
class PaletteTest : public testing::Test {
 protected:
  PaletteTest() {
    GifWriter gif;
    gif.Screen(4, 4, kGlobal)
        .Image(WithTable(MakeImage(4, 4, 1, 4), kFirst))
        .Image(MakeImage(4, 4, 2, 4))
        .Image(WithTable(MakeImage(4, 4, 3, 2), kThird))
        .Trailer();
    reader_.LoadAllFrames(gif.Get());
  }

  GifAnimation& gif() { return reader_.Animation(); }

  GifReader reader_;
};

struct GetCase {
  std::string name;
  std::int32_t frame;
  const std::vector<std::uint32_t>* colors;  // null: refused
};

class GetPaletteOf : public PaletteTest, public testing::WithParamInterface<GetCase> {};

TEST_P(GetPaletteOf, GivesAFramesOwnTableOrRefuses) {
  std::vector<std::uint32_t> colors = {123};
  const bool found = GetPalette(gif(), GetParam().frame, colors);
  ASSERT_EQ(found, GetParam().colors != nullptr);
  if (found) {
    EXPECT_EQ(colors, *GetParam().colors);
  }
}

INSTANTIATE_TEST_SUITE_P(Frames, GetPaletteOf,
                         testing::Values(GetCase{"Global", 0, &kGlobal}, GetCase{"LocalTable", 1, &kFirst},
                                         GetCase{"UsesTheGlobalTable", 2, nullptr},
                                         GetCase{"SmallLocalTable", 3, &kThird},
                                         GetCase{"PastTheLastFrame", 4, nullptr},
                                         GetCase{"Negative", -1, nullptr}),
                         [](const auto& p) { return p.param.name; });

TEST_F(PaletteTest, SetPaletteTakesExactlyTheTablesCount) {
  const std::vector<std::uint32_t> short_list(7, 0x010203);
  EXPECT_FALSE(SetPalette(gif(), 1, short_list));
  std::vector<std::uint32_t> colors;
  ASSERT_TRUE(GetPalette(gif(), 1, colors));
  EXPECT_EQ(colors, kFirst);

  std::vector<std::uint32_t> long_list(10);
  for (std::size_t i = 0; i < long_list.size(); ++i) long_list[i] = 0x100000u * static_cast<std::uint32_t>(i);
  ASSERT_TRUE(SetPalette(gif(), 1, long_list));
  ASSERT_TRUE(GetPalette(gif(), 1, colors));
  EXPECT_EQ(colors, std::vector<std::uint32_t>(long_list.begin(), long_list.begin() + 8));
  EXPECT_EQ(gif().ColorTables[1].Colors[8], 0u);

  EXPECT_FALSE(SetPalette(gif(), 2, long_list));  // no table of its own
  ASSERT_TRUE(SetPalette(gif(), 0, long_list));
  ASSERT_TRUE(GetPalette(gif(), 0, colors));
  EXPECT_EQ(colors.size(), 4u);
}

TEST_F(PaletteTest, ACachedCopyComesBackAsOftenAsAsked) {
  gif().SelectedTable = 1;
  ASSERT_TRUE(CacheColorTables(gif()));
  EXPECT_FALSE(CacheColorTables(gif()));  // one copy at a time

  const std::vector<std::uint32_t> grey(8, 0x808080);
  ASSERT_TRUE(SetPalette(gif(), 1, grey));
  ASSERT_TRUE(RestoreColorTables(gif(), false));
  std::vector<std::uint32_t> colors;
  ASSERT_TRUE(GetPalette(gif(), 1, colors));
  EXPECT_EQ(colors, kFirst);
  EXPECT_EQ(gif().SelectedTable, -1);  // the next paint puts colours in again

  ASSERT_TRUE(SetPalette(gif(), 1, grey));
  ASSERT_TRUE(RestoreColorTables(gif(), true));  // still there, now dropped
  ASSERT_TRUE(GetPalette(gif(), 1, colors));
  EXPECT_EQ(colors, kFirst);
  EXPECT_FALSE(RestoreColorTables(gif(), true));
  EXPECT_TRUE(CacheColorTables(gif()));
}

TEST(Palette, NothingLoadedRefusesEverything) {
  GifAnimation empty;
  std::vector<std::uint32_t> colors;
  EXPECT_FALSE(GetPalette(empty, 0, colors));
  EXPECT_FALSE(SetPalette(empty, 0, std::vector<std::uint32_t>(256)));
  EXPECT_FALSE(RestoreColorTables(empty, true));
}

TEST(Palette, NoGlobalTableMeansNoPaletteForFrameZero) {
  GifWriter gif;
  gif.Screen(4, 4, {}).Image(WithTable(MakeImage(4, 4, 1, 4), kFirst)).Trailer();
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(gif.Get()), 1);
  std::vector<std::uint32_t> colors;
  EXPECT_FALSE(GetPalette(reader.Animation(), 0, colors));
  EXPECT_TRUE(GetPalette(reader.Animation(), 1, colors));
}

}  // namespace
}  // namespace quillet
