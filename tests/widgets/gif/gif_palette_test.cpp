#include "widgets/gif/gif_palette.h"

#include <gtest/gtest.h>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

const Palette kGlobal = TestPalette(4, 1), kFirst = TestPalette(8, 2), kThird = TestPalette(2, 3);

// Frame 1 and 3 have tables of their own, frame 2 uses the global one.
class GifPalette : public testing::Test {
 protected:
  GifPalette() {
    GifWriter writer;
    writer.Screen(4, 4, kGlobal).Image(WithTable(MakeImage(4, 4, 1, 4), kFirst)).Image(MakeImage(4, 4, 2, 4));
    reader_.LoadAllFrames(writer.Image(WithTable(MakeImage(4, 4, 3, 2), kThird)).Trailer().Get());
  }

  GifAnimation& gif() { return reader_.Animation(); }
  // The colours of frame `frame`'s table, or nothing when it is refused.
  std::optional<Palette> Get(std::int32_t frame) {
    Palette colors = {123};
    return GetPalette(gif(), frame, colors) ? std::optional(colors) : std::nullopt;
  }

  GifReader reader_;
};

TEST_F(GifPalette, GetPaletteGivesAFramesOwnTableOrRefuses) {
  const std::pair<std::int32_t, std::optional<Palette>> cases[] = {{0, kGlobal}, {1, kFirst},       {2, std::nullopt},
                                                                   {3, kThird},  {4, std::nullopt}, {-1, std::nullopt}};
  for (const auto& [frame, expected] : cases) EXPECT_EQ(Get(frame), expected) << frame;
}

TEST_F(GifPalette, SetPaletteTakesExactlyTheTablesCount) {
  EXPECT_FALSE(SetPalette(gif(), 1, Palette(7, 0x010203)));
  EXPECT_EQ(Get(1), kFirst);
  Palette long_list(10);
  for (std::size_t i = 0; i < long_list.size(); ++i) long_list[i] = 0x100000u * static_cast<std::uint32_t>(i);
  ASSERT_TRUE(SetPalette(gif(), 1, long_list));
  EXPECT_EQ(Get(1), Palette(long_list.begin(), long_list.begin() + 8));
  EXPECT_EQ(gif().ColorTables[1].Colors[8], 0u);
  EXPECT_FALSE(SetPalette(gif(), 2, long_list));  // no table of its own
  ASSERT_TRUE(SetPalette(gif(), 0, long_list));
  EXPECT_EQ(Get(0), Palette(long_list.begin(), long_list.begin() + 4));
}

TEST_F(GifPalette, ACachedCopyComesBackAsOftenAsAsked) {
  gif().SelectedTable = 1;
  ASSERT_TRUE(CacheColorTables(gif()));
  EXPECT_FALSE(CacheColorTables(gif()));  // one copy at a time
  const Palette grey(8, 0x808080);
  ASSERT_TRUE(SetPalette(gif(), 1, grey));
  ASSERT_TRUE(RestoreColorTables(gif(), false));
  EXPECT_EQ(Get(1), kFirst);
  EXPECT_EQ(gif().SelectedTable, -1);  // the next paint puts colours in again
  ASSERT_TRUE(SetPalette(gif(), 1, grey));
  ASSERT_TRUE(RestoreColorTables(gif(), true));  // still there, now dropped
  EXPECT_EQ(Get(1), kFirst);
  EXPECT_FALSE(RestoreColorTables(gif(), true));
  EXPECT_TRUE(CacheColorTables(gif()));
}

TEST(GifPaletteRefusals, NothingLoadedOrNoGlobalTable) {
  GifAnimation empty;
  Palette colors;
  EXPECT_FALSE(GetPalette(empty, 0, colors));
  EXPECT_FALSE(SetPalette(empty, 0, Palette(256)));
  EXPECT_FALSE(RestoreColorTables(empty, true));
  GifReader reader;
  ASSERT_EQ(reader.LoadAllFrames(GifWriter().Screen(4, 4, {}).Image(WithTable(MakeImage(4, 4, 1, 4), kFirst)).Get()),
            1);
  EXPECT_FALSE(GetPalette(reader.Animation(), 0, colors));  // frame 0 is the global table: there is none
  EXPECT_TRUE(GetPalette(reader.Animation(), 1, colors));
}

}  // namespace
}  // namespace quillet
