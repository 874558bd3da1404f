// The GDI host's copies of retained pictures: a DIB section selected into a
// memory DC of its own, kept on the picture from one paint to the next, so
// that drawing a frame makes no bitmap and copies only what changed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/win32/handles.h"
#include "ui/retained_picture.h"

namespace quillet::win32 {

class DibCopy final : public HostCopy {
 public:
  DibCopy() = default;  // holds nothing: Make gives a working one
  // A top-down DIB of `bit_count` bits a pixel (8 or 32); null when GDI has none to give.
  [[nodiscard]] static std::unique_ptr<DibCopy> Make(int width, int height, int bit_count);

  [[nodiscard]] HDC dc() const noexcept { return dc_.get(); }
  [[nodiscard]] int Width() const noexcept { return width_; }
  [[nodiscard]] int Height() const noexcept { return height_; }
  [[nodiscard]] int BitCount() const noexcept { return bit_count_; }
  // Copies `rows` rows of `bytes` bytes from `source` (`stride` apart) to row `top`, byte `skip` on.
  void Write(const void* source, int stride, int top, int rows, int skip, int bytes) noexcept;
  // Puts `colours` into an 8-bit DIB's colour table unless it holds them already.
  void SetColours(const Palette& colours) noexcept;

  std::uint64_t version = ~std::uint64_t{0};  // of the indexed pixels copied

 private:
  // Destroyed in reverse: the bitmap leaves the DC before either is deleted.
  UniqueDc dc_;
  UniqueBitmap bitmap_;
  std::optional<ScopedSelectObject> selection_;
  std::uint8_t* bits_ = nullptr;
  int width_ = 0, height_ = 0, bit_count_ = 0, stride_ = 0;
  std::optional<Palette> colours_;
};

// The picture's copy, made or brought up to date: all of it when new, the
// pixels of a new version, or a surface's dirty rectangle. Null on failure.
[[nodiscard]] DibCopy* CurrentCopy(const IndexedPicture& picture);
[[nodiscard]] DibCopy* CurrentCopy(const ArgbSurface& surface);

}  // namespace quillet::win32
