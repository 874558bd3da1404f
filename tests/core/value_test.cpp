#include "core/value.h"

#include <gtest/gtest.h>

#include "core/byte_count.h"

namespace quillet {
namespace {

TEST(Val, ReadsTheLeadingNumberAndForgivesJunk) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"", 0},         {"abc", 0},      {"30", 30},          {"  20", 20},       {"14x", 14},
      {"1 2", 12},     {"-5", -5},      {"+7", 7},           {"3.5", 3.5},       {"3.5.1", 3.5},
      {".5", 0.5},     {"1e3", 1000},   {"1d2", 100},        {"2e", 2},          {"&H10", 16},
      {"&hff", 255},   {"&O17", 15},    {"&HFFFFFFFF", -1},  {"5655", 5655},     {"1320.75", 1320.75},
      {"--3", 0},      {"T", 0},        {"0x10", 0},         {"\t9\n", 9},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(c.text), c.value) << '"' << c.text << '"';
}

TEST(Conversions, RoundHalfToEvenAndRefuseOverflow) {
  EXPECT_EQ(ToInt16(2.5), 2);
  EXPECT_EQ(ToInt16(3.5), 4);
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_FALSE(ToInt16(32767.5).has_value());
  EXPECT_FALSE(ToInt16(-32769).has_value());
  EXPECT_EQ(ToInt32(1e9), 1000000000);
  EXPECT_FALSE(ToInt32(3e9).has_value());
  EXPECT_EQ(TruncateToInt32(20.9 * 1000), 20900);
  EXPECT_EQ(TruncateToInt32(-1.9), -1);
  EXPECT_FALSE(TruncateToInt32(2147483648.0).has_value());
}

// What a colour text such as "&H8080FF&" becomes where a number is wanted.
TEST(TextToInt32, TakesTheWholeTextOrNothing) {
  const struct {
    const char* text;
    std::optional<std::int32_t> value;
  } cases[] = {
      {"&H8080FF", 0x8080FF},     {"&H8080FF&", 0x8080FF}, {"&h8080ff", 0x8080FF},       {"  &H8080FF  ", 0x8080FF},
      {"0x8080FF", {}},           {"&HFFFFFFFF", -1},      {"&H100000000", {}},         {"&O17", 15},
      {"&O8", {}},                {"&H", {}},              {"&HG1", {}},                {" 12 ", 12},
      {"+7", 7},                  {"-5", -5},              {"2.5", 2},                  {"3.5", 4},
      {"-2.5", -2},               {"1e3", 1000},           {"2147483647", 2147483647},  {"2147483648", {}},
      {"-2147483648", INT32_MIN}, {"2147483647.5", {}},    {"", {}},                    {"   ", {}},
      {"T", {}},                  {"12abc", {}},           {".", {}},                   {"--3", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(TextToInt32(c.text), c.value) << '"' << c.text << '"';
}

TEST(FormatFixed2, RoundsHalvesAwayFromZeroOnDecimalDigits) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0, "0.00"},          {0.004, "0.00"},   {0.005, "0.01"},       {0.125, "0.13"},
      {1, "1.00"},          {0.999999, "1.00"}, {931.3225746154785, "931.32"},
      {99.995, "100.00"},   {12.345, "12.35"}, {1234567.891, "1234567.89"},
      {-0.004, "0.00"},     {-1.5, "-1.50"},   {0.0049, "0.00"},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatFixed2(c.value), c.text) << c.value;
}

TEST(Texts, SearchIgnoresCaseAndTrimKeepsInnerBlanks) {
  EXPECT_EQ(InStrText("\r\nC:\\\r\nE:\\", "e:\\"), 8u);
  EXPECT_EQ(InStrText("abc", "D"), 0u);
  EXPECT_EQ(InStrText("abc", ""), 1u);
  EXPECT_EQ(InStrText("", ""), 0u);
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(UpperCase("c:\\"), "C:\\");
}

TEST(NumberTexts, MatchWhatTheStoreKeeps) {
  EXPECT_EQ(NumberText(30), "30");
  EXPECT_EQ(NumberText(0), "0");
  EXPECT_EQ(NumberText(20.5), "20.5");
  EXPECT_EQ(SingleText(5655), "5655");
  EXPECT_EQ(SingleText(-120), "-120");
  EXPECT_EQ(SingleText(1320.5f), "1320.5");
}

TEST(ByteCount, KeepsEveryDigitFarAboveFourGigabytes) {
  EXPECT_EQ(ByteCount::Product(8, 512, 244140625).ToString(), "1000000000000");
  EXPECT_EQ(ByteCount::Product(0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu).ToString(),
            "79228162458924105385300197375");  // (2^32-1)^3
  EXPECT_EQ(ByteCount::Product(1, 1, 0).ToString(), "0");
  EXPECT_DOUBLE_EQ(ByteCount::Product(64, 4096, 1u << 31).ToDouble(), 562949953421312.0);
}

}  // namespace
}  // namespace quillet
