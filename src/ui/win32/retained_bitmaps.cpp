#include "ui/win32/retained_bitmaps.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace quillet::win32 {
namespace {

// BITMAPINFO with room for a full colour table.
struct DibInfo {
  BITMAPINFOHEADER header;
  std::array<RGBQUAD, 256> colours;
};

// The picture's copy if it is one of ours of the right shape, else a new one hung on the picture.
DibCopy* CopyFor(const RetainedPicture& picture, int width, int height, int bit_count, bool& made) {
  auto* copy = dynamic_cast<DibCopy*>(picture.Host());
  made = copy == nullptr || copy->Width() != width || copy->Height() != height || copy->BitCount() != bit_count;
  if (!made) return copy;
  picture.SetHost(nullptr);  // the old bitmap goes before a new one is made
  std::unique_ptr<DibCopy> fresh = DibCopy::Make(width, height, bit_count);
  copy = fresh.get();
  picture.SetHost(std::move(fresh));
  return copy;
}

}  // namespace

std::unique_ptr<DibCopy> DibCopy::Make(int width, int height, int bit_count) {
  if (width <= 0 || height <= 0) return nullptr;
  DibInfo info{};
  info.header.biSize = sizeof info.header;
  info.header.biWidth = width;
  info.header.biHeight = -height;  // rows from the top
  info.header.biPlanes = 1;
  info.header.biBitCount = static_cast<WORD>(bit_count);
  info.header.biCompression = BI_RGB;
  info.header.biClrUsed = bit_count == 8 ? 256 : 0;
  auto copy = std::make_unique<DibCopy>();
  void* bits = nullptr;
  copy->dc_.reset(::CreateCompatibleDC(nullptr));
  copy->bitmap_.reset(
      ::CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!copy->dc_ || !copy->bitmap_ || bits == nullptr) return nullptr;
  copy->selection_.emplace(copy->dc_.get(), copy->bitmap_.get());
  copy->bits_ = static_cast<std::uint8_t*>(bits);
  copy->width_ = width;
  copy->height_ = height;
  copy->bit_count_ = bit_count;
  copy->stride_ = ((width * bit_count + 31) / 32) * 4;
  return copy;
}

void DibCopy::Write(const void* source, int stride, int top, int rows, int skip, int bytes) noexcept {
  ::GdiFlush();  // GDI may still be drawing from the bits
  const auto* from = static_cast<const std::uint8_t*>(source);
  for (int y = 0; y < rows; ++y)
    std::memcpy(bits_ + static_cast<std::ptrdiff_t>(top + y) * stride_ + skip,
                from + static_cast<std::ptrdiff_t>(top + y) * stride + skip, static_cast<std::size_t>(bytes));
}

void DibCopy::SetColours(const Palette& colours) noexcept {
  if (colours_ == colours) return;
  // 0x00RRGGBB in memory is blue, green, red, 0: an RGBQUAD.
  std::array<RGBQUAD, 256> table;
  std::memcpy(table.data(), colours.data(), sizeof table);
  ::SetDIBColorTable(dc_.get(), 0, 256, table.data());
  colours_ = colours;
}

DibCopy* CurrentCopy(const IndexedPicture& picture) {
  if (picture.Bits() == nullptr || picture.Width() <= 0 || picture.Height() <= 0) return nullptr;
  bool made = false;
  DibCopy* copy = CopyFor(picture, picture.Width(), picture.Height(), 8, made);
  if (copy != nullptr && copy->version != picture.Version()) {
    copy->Write(picture.Bits(), picture.Stride(), 0, picture.Height(), 0, std::min(picture.Width(), picture.Stride()));
    copy->version = picture.Version();
  }
  return copy;
}

DibCopy* CurrentCopy(const ArgbSurface& surface) {
  const Picture& pixels = surface.Pixels();
  if (pixels.width <= 0 || pixels.height <= 0) return nullptr;
  bool made = false;
  DibCopy* copy = CopyFor(surface, pixels.width, pixels.height, 32, made);
  if (copy == nullptr) return nullptr;
  PictureRect dirty = surface.TakeDirty();
  if (made) dirty = {0, 0, pixels.width, pixels.height};
  dirty.width = std::min(dirty.width, pixels.width - dirty.left);
  dirty.height = std::min(dirty.height, pixels.height - dirty.top);
  if (!dirty.Empty() && dirty.left >= 0 && dirty.top >= 0)
    copy->Write(pixels.pixels.data(), pixels.width * 4, dirty.top, dirty.height, dirty.left * 4, dirty.width * 4);
  return copy;
}

}  // namespace quillet::win32
