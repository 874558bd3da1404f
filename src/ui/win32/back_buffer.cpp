#include "ui/win32/back_buffer.h"

namespace quillet::win32 {

HDC BackBuffer::Prepare(HDC target, int width, int height) noexcept {
  if (width <= 0 || height <= 0) return nullptr;
  if (dc_ && bitmap_ && width == width_ && height == height_) return dc_.get();
  selection_.reset();
  bitmap_.reset();
  if (!dc_) dc_.reset(::CreateCompatibleDC(target));
  if (!dc_) return nullptr;
  bitmap_.reset(::CreateCompatibleBitmap(target, width, height));
  if (!bitmap_) return nullptr;
  selection_.emplace(dc_.get(), bitmap_.get());
  width_ = width;
  height_ = height;
  return dc_.get();
}

}  // namespace quillet::win32
