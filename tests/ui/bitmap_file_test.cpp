#include "ui/bitmap_file.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace quillet {
namespace {

using Bytes = std::vector<std::uint8_t>;

void Put16(Bytes& bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
void Put32(Bytes& bytes, std::uint32_t value) {
  Put16(bytes, value & 0xFFFF);
  Put16(bytes, value >> 16);
}
Bytes Words32(std::initializer_list<std::uint32_t> values) {
  Bytes bytes;
  for (std::uint32_t value : values) Put32(bytes, value);
  return bytes;
}

// A bitmap file put together field by field.
struct File {
  std::uint32_t header_size = 40;
  std::int32_t width = 1;
  std::int32_t height = 1;
  std::uint32_t bits = 24;
  std::uint32_t compression = 0;
  std::uint32_t colours_used = 0;
  Bytes header_extra;  // fields of a later header version, after the first 40 bytes
  Bytes between;       // what lies between the header and the pixels: masks, palette
  Bytes pixels;
  std::int64_t offset = -1;  // -1: right after `between`

  File& Header(std::uint32_t value) { return header_size = value, *this; }
  File& Width(std::int32_t value) { return width = value, *this; }
  File& Height(std::int32_t value) { return height = value, *this; }
  File& Bits(std::uint32_t value) { return bits = value, *this; }
  File& Compression(std::uint32_t value) { return compression = value, *this; }
  File& ColoursUsed(std::uint32_t value) { return colours_used = value, *this; }
  File& HeaderExtra(Bytes value) { return header_extra = std::move(value), *this; }
  File& Between(Bytes value) { return between = std::move(value), *this; }
  File& Pixels(Bytes value) { return pixels = std::move(value), *this; }
  File& Offset(std::int64_t value) { return offset = value, *this; }

  Bytes Build() const {
    Bytes bytes{'B', 'M'};
    const std::uint32_t start = 14 + header_size + static_cast<std::uint32_t>(between.size());
    Put32(bytes, start + static_cast<std::uint32_t>(pixels.size()));
    Put32(bytes, 0);
    Put32(bytes, offset < 0 ? start : static_cast<std::uint32_t>(offset));
    Put32(bytes, header_size);
    if (header_size == 12) {
      Put16(bytes, static_cast<std::uint32_t>(width));
      Put16(bytes, static_cast<std::uint32_t>(height));
      Put16(bytes, 1);
      Put16(bytes, bits);
    } else {
      Put32(bytes, static_cast<std::uint32_t>(width));
      Put32(bytes, static_cast<std::uint32_t>(height));
      Put16(bytes, 1);
      Put16(bytes, bits);
      for (std::uint32_t field : {compression, 0u, 3780u, 3780u, colours_used, 0u}) Put32(bytes, field);
      bytes.insert(bytes.end(), header_extra.begin(), header_extra.end());
      bytes.resize(14 + header_size, 0);
    }
    bytes.insert(bytes.end(), between.begin(), between.end());
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
  }
};

TEST(BitmapFileEncode, OddWidthRowsArePaddedBottomUpAndReadBack) {
  Picture picture{5, 3, {}};
  for (int i = 0; i < 15; ++i)
    picture.pixels.push_back(0x80000000u | static_cast<std::uint32_t>(i * 0x0A0B0C + 0x010203));
  const Bytes bytes = EncodeBitmapFile(picture);

  ASSERT_EQ(bytes.size(), 14u + 40u + 16u * 3u);  // 15 bytes a row padded to 16
  EXPECT_EQ(bytes[0], 'B');
  EXPECT_EQ(bytes[1], 'M');
  EXPECT_EQ(bytes[2], bytes.size());
  EXPECT_EQ(bytes[10], 54);
  EXPECT_EQ(bytes[28], 24);
  // The first row stored is the bottom one, blue first; its padding byte is 0.
  const std::uint32_t bottom_left = picture.pixels[10];
  EXPECT_EQ(bytes[54], bottom_left & 0xFF);
  EXPECT_EQ(bytes[55], (bottom_left >> 8) & 0xFF);
  EXPECT_EQ(bytes[56], (bottom_left >> 16) & 0xFF);
  EXPECT_EQ(bytes[54 + 15], 0);

  const std::optional<Picture> back = DecodeBitmapFile(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->width, 5);
  EXPECT_EQ(back->height, 3);
  std::vector<std::uint32_t> opaque = picture.pixels;
  for (std::uint32_t& pixel : opaque) pixel |= 0xFF000000u;
  EXPECT_EQ(back->pixels, opaque);
}

struct DecodeCase {
  const char* what;
  File file;
  std::vector<std::uint32_t> expected;  // the picture's pixels, rows from the top
};

const DecodeCase kDecodeCases[] = {
    {"8 bits, three palette entries, bottom-up; an index past the palette is black",
     File()
         .Width(3)
         .Height(2)
         .Bits(8)
         .ColoursUsed(3)
         .Between({0x00, 0x00, 0xFF, 0, 0x00, 0xFF, 0x00, 0, 0xFF, 0x00, 0x00, 0})
         .Pixels({2, 1, 0, 0, 0, 0, 7, 0}),
     {0xFFFF0000u, 0xFFFF0000u, 0xFF000000u, 0xFF0000FFu, 0xFF00FF00u, 0xFFFF0000u}},
    {"1 bit, a row of ten pixels over two bytes, most significant bit first",
     File().Width(10).Bits(1).Between({0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0}).Pixels({0b10110000, 0b01000000, 0, 0}),
     {0xFFFFFFFFu, 0xFF000000u, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFF000000u, 0xFF000000u, 0xFF000000u, 0xFF000000u,
      0xFF000000u, 0xFFFFFFFFu}},
    {"4 bits, high nibble first",
     File()
         .Width(3)
         .Bits(4)
         .ColoursUsed(2)
         .Between({0x10, 0x20, 0x30, 0, 0x40, 0x50, 0x60, 0})
         .Pixels({0x01, 0x10, 0, 0}),
     {0xFF302010u, 0xFF605040u, 0xFF605040u}},
    {"32 bits top-down: the first row stored is the top; the fourth byte is not alpha",
     File().Width(2).Height(-2).Bits(32).Pixels({1, 2, 3, 0, 4, 5, 6, 0x80, 7, 8, 9, 0xFF, 10, 11, 12, 0}),
     {0xFF030201u, 0xFF060504u, 0xFF090807u, 0xFF0C0B0Au}},
    {"16 bits without fields are 5-5-5",
     File().Width(2).Bits(16).Pixels({0xFF, 0x7F, 0x1F, 0x00}),
     {0xFFFFFFFFu, 0xFF0000FFu}},
    {"16 bits with 5-6-5 fields",
     File()
         .Width(3)
         .Bits(16)
         .Compression(3)
         .Between(Words32({0xF800, 0x07E0, 0x001F}))
         .Pixels({0x00, 0xF8, 0xE0, 0x07, 0x10, 0x84, 0, 0}),
     {0xFFFF0000u, 0xFF00FF00u, 0xFF848284u}},
    {"32 bits with fields in another order",
     File()
         .Width(1)
         .Bits(32)
         .Compression(3)
         .Between(Words32({0x000000FF, 0x0000FF00, 0x00FF0000}))
         .Pixels({0x11, 0x22, 0x33, 0x44}),
     {0xFF112233u}},
    {"32 bits with alpha fields: four masks follow the header",
     File()
         .Width(1)
         .Bits(32)
         .Compression(6)
         .Between(Words32({0xFF000000, 0x00FF0000, 0x0000FF00, 0xFF}))
         .Pixels({0x44, 0x33, 0x22, 0x11}),
     {0xFF112233u}},
    {"a version 5 header holds the masks itself",
     File()
         .Header(124)
         .Width(1)
         .Bits(32)
         .Compression(3)
         .HeaderExtra(Words32({0x00FF0000, 0x000000FF, 0x0000FF00}))
         .Pixels({0x11, 0x22, 0x33, 0x44}),
     {0xFF331122u}},
    {"24 bits, the last row without its padding",
     File().Width(1).Height(2).Pixels({1, 2, 3, 0, 4, 5, 6}),
     {0xFF060504u, 0xFF030201u}},
    {"the offset 0 means the pixels follow the palette",
     File().Width(1).Bits(8).ColoursUsed(1).Between({9, 8, 7, 0}).Pixels({0, 0, 0, 0}).Offset(0),
     {0xFF070809u}},
};

TEST(BitmapFileDecode, Depths) {
  for (const DecodeCase& c : kDecodeCases) {
    SCOPED_TRACE(c.what);
    const std::optional<Picture> picture = DecodeBitmapFile(c.file.Build());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, c.file.width);
    EXPECT_EQ(picture->height, std::abs(c.file.height));
    EXPECT_EQ(picture->pixels, c.expected);
  }
}

struct BrokenCase {
  const char* what;
  Bytes bytes;
};

Bytes Good() { return File().Width(2).Height(2).Pixels(Bytes(16, 0x55)).Build(); }
Bytes Cut(Bytes bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}
Bytes Patched(Bytes bytes, std::size_t at, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
  return bytes;
}

std::vector<BrokenCase> BrokenCases() {
  return {
      {"no bytes", {}},
      {"the magic alone", {'B', 'M'}},
      {"bad magic", Patched(Good(), 0, 0x0036'4142)},
      {"cut inside the file header", Cut(Good(), 10)},
      {"cut inside the info header", Cut(Good(), 40)},
      {"cut one byte short of the last pixel", Cut(Good(), Good().size() - 3)},
      {"zero width", File().Width(0).Pixels({0, 0, 0, 0}).Build()},
      {"negative width", File().Width(-1).Pixels({0, 0, 0, 0}).Build()},
      {"zero height", File().Height(0).Pixels({0, 0, 0, 0}).Build()},
      {"the most negative height", File().Height(INT_MIN).Pixels({0, 0, 0, 0}).Build()},
      {"huge sizes", File().Width(INT_MAX).Height(INT_MAX).Bits(32).Pixels({0, 0, 0, 0}).Build()},
      {"a few pixels short of a wide picture", File().Width(4096).Height(4096).Pixels(Bytes(4096)).Build()},
      {"offset past the end", Patched(Good(), 10, 0x1000)},
      {"offset near 4 GB", Patched(Good(), 10, 0xFFFFFFF0u)},
      {"header size not one Windows writes", Patched(Good(), 14, 20)},
      {"header size past the end", Patched(Good(), 14, 124)},
      {"header size near 4 GB", Patched(Good(), 14, 0xFFFFFFFFu)},
      {"2 bits a pixel", File().Bits(2).Pixels({0, 0, 0, 0}).Build()},
      {"no bits a pixel", File().Bits(0).Pixels({0, 0, 0, 0}).Build()},
      {"64 bits a pixel", File().Bits(64).Pixels(Bytes(8)).Build()},
      {"run-length compressed", File().Bits(8).Compression(1).Between(Bytes(1024)).Pixels({1, 0, 0, 1}).Build()},
      {"PNG inside", File().Compression(5).Pixels({0, 0, 0, 0}).Build()},
      {"bit fields on 24 bits", File().Compression(3).Between(Bytes(12)).Pixels({0, 0, 0, 0}).Build()},
      {"bit fields cut off", File().Bits(16).Compression(3).Between(Bytes(8)).Pixels({}).Build()},
      {"palette past the end", Cut(File().Bits(8).Between(Bytes(1024)).Pixels({0, 0, 0, 0}).Build(), 600)},
      {"core header with no width", File().Header(12).Width(0).Pixels({0, 0, 0, 0}).Build()},
  };
}

TEST(BitmapFileDecode, BrokenInputsGiveNothing) {
  for (const BrokenCase& c : BrokenCases()) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(DecodeBitmapFile(c.bytes), std::nullopt);
  }
}

// A file just over the pixel cap, complete to its last byte, is refused
// before anything the size of its picture is allocated.
TEST(BitmapFileDecode, PicturesOverTheCapGiveNothing) {
  constexpr int kWidth = 16385, kHeight = 16384;
  const std::size_t stride = (kWidth + 31) / 32 * 4;
  const File file = File()
                        .Width(kWidth)
                        .Height(kHeight)
                        .Bits(1)
                        .Between({0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0})
                        .Pixels(Bytes(stride * kHeight));
  EXPECT_EQ(DecodeBitmapFile(file.Build()), std::nullopt);
}

}  // namespace
}  // namespace quillet
