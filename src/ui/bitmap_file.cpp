#include "ui/bitmap_file.h"

#include <array>
#include <bit>
#include <cstddef>

namespace quillet {
namespace {

constexpr std::size_t kFileHeaderSize = 14;
constexpr std::uint32_t kCoreHeaderSize = 12;  // OS/2 1.x: 16-bit sizes, 3-byte palette entries
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kRgb = 0;
constexpr std::uint32_t kBitFields = 3;
constexpr std::uint32_t kAlphaBitFields = 6;
// About a gigabyte of decoded pixels: beyond any picture the program keeps,
// and well within what a 32-bit process can hand out.
constexpr std::uint64_t kMaxPixels = std::uint64_t{16384} * 16384;
// Pixels per metre at 96 dots an inch.
constexpr std::uint32_t kPixelsPerMetre = 3780;

using Bytes = std::vector<std::uint8_t>;

bool Has(const Bytes& bytes, std::uint64_t offset, std::uint64_t count) {
  return offset <= bytes.size() && count <= bytes.size() - offset;
}
std::uint32_t U16(const Bytes& bytes, std::size_t at) {
  return static_cast<std::uint32_t>(bytes[at] | (bytes[at + 1] << 8));
}
std::uint32_t U32(const Bytes& bytes, std::size_t at) { return U16(bytes, at) | (U16(bytes, at + 2) << 16); }

// Where and how the pixels lie, read from the headers.
struct Layout {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  bool top_down = false;
  std::uint32_t bits = 0;
  std::array<std::uint32_t, 3> masks{};  // red, green, blue
  std::uint64_t palette_offset = 0;
  std::uint32_t palette_entry = 4;  // bytes an entry
  std::uint32_t palette_count = 0;
  std::uint64_t pixels_offset = 0;
};

bool ValidDepth(std::uint32_t bits) {
  return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

// Masks as Windows assumes them when a file gives none.
std::array<std::uint32_t, 3> DefaultMasks(std::uint32_t bits) {
  if (bits == 16) return {0x7C00, 0x03E0, 0x001F};
  return {0xFF0000, 0x00FF00, 0x0000FF};
}

Layout ReadCoreHeader(const Bytes& bytes) {
  Layout layout;
  layout.width = U16(bytes, 18);
  layout.height = U16(bytes, 20);
  layout.bits = U16(bytes, 24);
  layout.palette_entry = 3;
  layout.palette_offset = kFileHeaderSize + kCoreHeaderSize;
  if (layout.bits <= 8) layout.palette_count = 1u << layout.bits;
  layout.masks = DefaultMasks(layout.bits);
  return layout;
}

std::optional<Layout> ReadInfoHeader(const Bytes& bytes, std::uint32_t header_size) {
  Layout layout;
  const auto width = static_cast<std::int32_t>(U32(bytes, 18));
  const auto height = static_cast<std::int32_t>(U32(bytes, 22));
  if (width <= 0 || height == 0) return std::nullopt;
  layout.width = static_cast<std::uint32_t>(width);
  layout.top_down = height < 0;
  // Through 64 bits: the most negative height has no positive int32.
  layout.height = static_cast<std::uint32_t>(layout.top_down ? -std::int64_t{height} : std::int64_t{height});
  layout.bits = U16(bytes, 28);
  const std::uint32_t compression = U32(bytes, 30);
  const std::uint32_t colours_used = U32(bytes, 46);
  std::uint64_t after_header = kFileHeaderSize + header_size;

  layout.masks = DefaultMasks(layout.bits);
  if (compression == kBitFields || compression == kAlphaBitFields) {
    if (layout.bits != 16 && layout.bits != 32) return std::nullopt;
    // A plain info header is followed by the masks; later versions hold them.
    const std::uint64_t masks_at = kFileHeaderSize + kInfoHeaderSize;
    if (header_size == kInfoHeaderSize) after_header += compression == kAlphaBitFields ? 16 : 12;
    if (!Has(bytes, masks_at, 12)) return std::nullopt;
    for (std::size_t i = 0; i < 3; ++i) layout.masks[i] = U32(bytes, static_cast<std::size_t>(masks_at + 4 * i));
  } else if (compression != kRgb) {
    return std::nullopt;  // run-length and embedded JPEG or PNG
  }
  layout.palette_offset = after_header;
  // Windows reads no more entries than the depth can index.
  if (layout.bits <= 8) {
    const std::uint32_t most = 1u << layout.bits;
    layout.palette_count = colours_used == 0 || colours_used > most ? most : colours_used;
  }
  return layout;
}

std::optional<Layout> ReadLayout(const Bytes& bytes) {
  if (!Has(bytes, 0, kFileHeaderSize + 4) || bytes[0] != 'B' || bytes[1] != 'M') return std::nullopt;
  const std::uint32_t header_size = U32(bytes, kFileHeaderSize);
  const bool core = header_size == kCoreHeaderSize;
  const bool info = header_size == kInfoHeaderSize || header_size == 52 || header_size == 56 || header_size == 108 ||
                    header_size == 124;
  if ((!core && !info) || !Has(bytes, kFileHeaderSize, header_size)) return std::nullopt;
  std::optional<Layout> layout = core ? std::optional(ReadCoreHeader(bytes)) : ReadInfoHeader(bytes, header_size);
  if (!layout || layout->width == 0 || layout->height == 0 || !ValidDepth(layout->bits)) return std::nullopt;
  if (std::uint64_t{layout->width} * layout->height > kMaxPixels) return std::nullopt;
  const std::uint64_t palette_end =
      layout->palette_offset + std::uint64_t{layout->palette_count} * layout->palette_entry;
  if (!Has(bytes, layout->palette_offset, palette_end - layout->palette_offset)) return std::nullopt;
  // Some writers leave the offset 0: the pixels then follow the palette.
  const std::uint32_t offset = U32(bytes, 10);
  layout->pixels_offset = offset == 0 ? palette_end : offset;
  return layout;
}

std::vector<std::uint32_t> ReadPalette(const Bytes& bytes, const Layout& layout) {
  // Indices past the palette come out black.
  std::vector<std::uint32_t> palette(std::size_t{1} << layout.bits, 0xFF000000u);
  for (std::uint32_t i = 0; i < layout.palette_count; ++i) {
    const auto at = static_cast<std::size_t>(layout.palette_offset + std::uint64_t{i} * layout.palette_entry);
    palette[i] = 0xFF000000u | (std::uint32_t{bytes[at + 2]} << 16) | (std::uint32_t{bytes[at + 1]} << 8) | bytes[at];
  }
  return palette;
}

// One channel of a bit-field pixel scaled to 0..255.
std::uint32_t Channel(std::uint32_t value, std::uint32_t mask) {
  if (mask == 0) return 0;
  const int shift = std::countr_zero(mask);
  const std::uint64_t most = mask >> shift;
  return static_cast<std::uint32_t>((((value & mask) >> shift) * std::uint64_t{255} + most / 2) / most);
}

std::uint32_t FieldPixel(std::uint32_t value, const std::array<std::uint32_t, 3>& masks) {
  return 0xFF000000u | (Channel(value, masks[0]) << 16) | (Channel(value, masks[1]) << 8) | Channel(value, masks[2]);
}

void DecodeRow(const std::uint8_t* row, const Layout& layout, const std::vector<std::uint32_t>& palette,
               std::uint32_t* out) {
  const std::uint32_t bits = layout.bits;
  for (std::uint32_t x = 0; x < layout.width; ++x) {
    if (bits <= 8) {
      const std::uint32_t per_byte = 8 / bits;
      const std::uint32_t shift = 8 - bits * (x % per_byte + 1);
      out[x] = palette[(row[x / per_byte] >> shift) & ((1u << bits) - 1)];
    } else if (bits == 24) {
      const std::uint8_t* p = row + 3 * std::size_t{x};
      out[x] = 0xFF000000u | (std::uint32_t{p[2]} << 16) | (std::uint32_t{p[1]} << 8) | p[0];
    } else if (bits == 16) {
      const std::uint8_t* p = row + 2 * std::size_t{x};
      out[x] = FieldPixel(static_cast<std::uint32_t>(p[0] | (p[1] << 8)), layout.masks);
    } else {
      const std::uint8_t* p = row + 4 * std::size_t{x};
      const std::uint32_t value = p[0] | (p[1] << 8) | (p[2] << 16) | (std::uint32_t{p[3]} << 24);
      out[x] = FieldPixel(value, layout.masks);
    }
  }
}

void PutU16(Bytes& bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
void PutU32(Bytes& bytes, std::uint32_t value) {
  PutU16(bytes, value & 0xFFFF);
  PutU16(bytes, value >> 16);
}

}  // namespace

std::vector<std::uint8_t> EncodeBitmapFile(const Picture& picture) {
  const std::uint32_t width = picture.width > 0 ? static_cast<std::uint32_t>(picture.width) : 0;
  const std::uint32_t height = picture.height > 0 ? static_cast<std::uint32_t>(picture.height) : 0;
  const std::uint32_t stride = (width * 3 + 3) / 4 * 4;
  const std::uint32_t offset = kFileHeaderSize + kInfoHeaderSize;
  Bytes bytes;
  bytes.reserve(offset + std::size_t{stride} * height);
  bytes.push_back('B');
  bytes.push_back('M');
  for (std::uint32_t field : {offset + stride * height, 0u, offset}) PutU32(bytes, field);
  for (std::uint32_t field : {kInfoHeaderSize, width, height}) PutU32(bytes, field);
  PutU16(bytes, 1);   // planes
  PutU16(bytes, 24);  // bits a pixel
  for (std::uint32_t field : {kRgb, stride * height, kPixelsPerMetre, kPixelsPerMetre, 0u, 0u}) PutU32(bytes, field);
  for (std::uint32_t y = height; y-- > 0;) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::size_t at = std::size_t{y} * width + x;
      const std::uint32_t pixel = at < picture.pixels.size() ? picture.pixels[at] : 0;
      bytes.push_back(static_cast<std::uint8_t>(pixel));
      bytes.push_back(static_cast<std::uint8_t>(pixel >> 8));
      bytes.push_back(static_cast<std::uint8_t>(pixel >> 16));
    }
    bytes.resize(bytes.size() + (stride - width * 3), 0);
  }
  return bytes;
}

std::optional<Picture> DecodeBitmapFile(const std::vector<std::uint8_t>& bytes) {
  const std::optional<Layout> layout = ReadLayout(bytes);
  if (!layout) return std::nullopt;
  const std::uint64_t row_bits = std::uint64_t{layout->width} * layout->bits;
  const std::uint64_t stride = (row_bits + 31) / 32 * 4;
  // The last row may go without its padding.
  const std::uint64_t needed = stride * (layout->height - 1) + (row_bits + 7) / 8;
  if (!Has(bytes, layout->pixels_offset, needed)) return std::nullopt;

  const std::vector<std::uint32_t> palette =
      layout->bits <= 8 ? ReadPalette(bytes, *layout) : std::vector<std::uint32_t>{};
  Picture picture;
  picture.width = static_cast<int>(layout->width);
  picture.height = static_cast<int>(layout->height);
  picture.pixels.resize(std::size_t{layout->width} * layout->height);
  for (std::uint32_t y = 0; y < layout->height; ++y) {
    const std::uint32_t stored = layout->top_down ? y : layout->height - 1 - y;
    const std::uint8_t* row = bytes.data() + layout->pixels_offset + stride * stored;
    DecodeRow(row, *layout, palette, picture.pixels.data() + std::size_t{y} * layout->width);
  }
  return picture;
}

}  // namespace quillet
