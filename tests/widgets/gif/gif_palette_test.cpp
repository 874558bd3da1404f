#include "widgets/gif/gif_palette.h"

#include <gtest/gtest.h>

#include <utility>

#include "widgets/gif/gif_reader.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using namespace gif_test;

const std::vector<std::uint32_t> kGlobal = TestPalette(4, 1);
const std::vector<std::uint32_t> kFirst = TestPalette(8, 2);
const std::vector<std::uint32_t> kThird = TestPalette(2, 3);

// Frame 1 and 3 have tables of their own, frame 2 uses the global one.
class GifPalette : public testing::Test {
 protected:
  GifPalette() {
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

TEST_F(GifPalette, GetPaletteGivesAFramesOwnTableOrRefuses) {
  const std::pair<std::int32_t, const std::vector<std::uint32_t>*> cases[] = {
      {0, &kGlobal}, {1, &kFirst}, {2, nullptr}, {3, &kThird}, {4, nullptr}, {-1, nullptr}};  // null: refused
  for (const auto& [frame, expected] : cases) {
    SCOPED_TRACE(frame);
    std::vector<std::uint32_t> colors = {123};
    const bool found = GetPalette(gif(), frame, colors);
    ASSERT_EQ(found, expected != nullptr);
    if (found) { EXPECT_EQ(colors, *expected); }
  }
}

TEST_F(GifPalette, SetPaletteTakesExactlyTheTablesCount) {
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

TEST_F(GifPalette, ACachedCopyComesBackAsOftenAsAsked) {
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

TEST(GifPaletteRefusals, NothingLoadedOrNoGlobalTable) {
  GifAnimation empty;
  std::vector<std::uint32_t> colors;
  EXPECT_FALSE(GetPalette(empty, 0, colors));
  EXPECT_FALSE(SetPalette(empty, 0, std::vector<std::uint32_t>(256)));
  EXPECT_FALSE(RestoreColorTables(empty, true));

  GifReader reader;
  const TestImage only = WithTable(MakeImage(4, 4, 1, 4), kFirst);
  ASSERT_EQ(reader.LoadAllFrames(GifWriter().Screen(4, 4, {}).Image(only).Get()), 1);
  EXPECT_FALSE(GetPalette(reader.Animation(), 0, colors));  // frame 0 is the global table: there is none
  EXPECT_TRUE(GetPalette(reader.Animation(), 1, colors));
}

}  // namespace
}  // namespace quillet
