#include "ico_file.h"

#include <cstddef>
#include <stdexcept>

namespace quillet::art {
namespace {

constexpr std::uint16_t kIconType = 1;
constexpr std::uint16_t kCursorType = 2;
constexpr std::uint32_t kDirectorySize = 6;
constexpr std::uint32_t kEntrySize = 16;
constexpr std::uint32_t kInfoHeaderSize = 40;

void Put16(std::vector<std::uint8_t>& out, std::uint32_t v) {
  out.push_back(static_cast<std::uint8_t>(v & 0xFF));
  out.push_back(static_cast<std::uint8_t>((v >> 8) & 0xFF));
}
void Put32(std::vector<std::uint8_t>& out, std::uint32_t v) {
  Put16(out, v & 0xFFFF);
  Put16(out, v >> 16);
}

std::uint32_t Pixel(const Picture& picture, int x, int y) {
  return picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                        static_cast<std::size_t>(x)];
}

// The DIB as an icon resource stores it: a header of twice the height (the
// colour rows and the mask rows), both bottom row first.
std::vector<std::uint8_t> Dib(const Picture& picture) {
  const int w = picture.width, h = picture.height;
  if (w < 1 || h < 1 || w > 256 || h > 256 || picture.pixels.size() != static_cast<std::size_t>(w * h))
    throw std::runtime_error("an icon image must be 1 to 256 px a side");
  const auto mask_stride = static_cast<std::uint32_t>((w + 31) / 32 * 4);
  const auto colour_bytes = static_cast<std::uint32_t>(w * h * 4);
  std::vector<std::uint8_t> out;
  Put32(out, kInfoHeaderSize);
  Put32(out, static_cast<std::uint32_t>(w));
  Put32(out, static_cast<std::uint32_t>(2 * h));
  Put16(out, 1);   // planes
  Put16(out, 32);  // bits a pixel
  Put32(out, 0);   // no compression
  Put32(out, colour_bytes + mask_stride * static_cast<std::uint32_t>(h));
  for (int i = 0; i < 4; ++i) Put32(out, 0);  // resolution and palette: unused
  for (int y = h - 1; y >= 0; --y)
    for (int x = 0; x < w; ++x) Put32(out, Pixel(picture, x, y));  // 0xAARRGGBB is B, G, R, A in memory
  for (int y = h - 1; y >= 0; --y) {
    std::vector<std::uint8_t> row(mask_stride, 0);
    for (int x = 0; x < w; ++x)
      if (Pixel(picture, x, y) >> 24 == 0) row[static_cast<std::size_t>(x / 8)] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
    out.insert(out.end(), row.begin(), row.end());
  }
  return out;
}

struct Image {
  const Picture* picture;
  std::uint16_t planes_or_hot_x;
  std::uint16_t bits_or_hot_y;
};

std::vector<std::uint8_t> Encode(std::uint16_t type, const std::vector<Image>& images) {
  std::vector<std::vector<std::uint8_t>> dibs;
  for (const Image& image : images) dibs.push_back(Dib(*image.picture));
  std::vector<std::uint8_t> out;
  Put16(out, 0);
  Put16(out, type);
  Put16(out, static_cast<std::uint32_t>(images.size()));
  auto offset = kDirectorySize + kEntrySize * static_cast<std::uint32_t>(images.size());
  for (std::size_t i = 0; i < images.size(); ++i) {
    const Picture& p = *images[i].picture;
    out.push_back(static_cast<std::uint8_t>(p.width & 0xFF));  // 256 is written as 0
    out.push_back(static_cast<std::uint8_t>(p.height & 0xFF));
    out.push_back(0);  // no palette
    out.push_back(0);
    Put16(out, images[i].planes_or_hot_x);
    Put16(out, images[i].bits_or_hot_y);
    Put32(out, static_cast<std::uint32_t>(dibs[i].size()));
    Put32(out, offset);
    offset += static_cast<std::uint32_t>(dibs[i].size());
  }
  for (const auto& dib : dibs) out.insert(out.end(), dib.begin(), dib.end());
  return out;
}

}  // namespace

std::vector<std::uint8_t> EncodeIcon(const std::vector<Picture>& pictures) {
  std::vector<Image> images;
  for (const Picture& p : pictures) {
    if (p.width != p.height) throw std::runtime_error("an icon image must be square");
    images.push_back({&p, 1, 32});
  }
  return Encode(kIconType, images);
}

std::vector<std::uint8_t> EncodeCursor(const Picture& picture, int hot_x, int hot_y) {
  if (hot_x < 0 || hot_y < 0 || hot_x >= picture.width || hot_y >= picture.height)
    throw std::runtime_error("a cursor's hot spot lies outside it");
  return Encode(kCursorType, {{&picture, static_cast<std::uint16_t>(hot_x), static_cast<std::uint16_t>(hot_y)}});
}

}  // namespace quillet::art
