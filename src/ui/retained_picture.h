// Pictures that live as long as their owner and change in place, so that a
// host can keep a device copy of each (a bitmap) from one paint to the next
// instead of making one per paint. The copy hangs on the picture itself and
// dies with it; at each draw the host brings it up to date with only what
// changed since the last:
// - IndexedPicture: 8-bit palette indices (an animation's frame strip) whose
//   colours come with each draw. The pixels are uploaded when their version
//   changes; a frame change is a swap of the colour table.
// - ArgbSurface: 0xAARRGGBB pixels (a compositing canvas) with a dirty
//   rectangle that grows with each change and is cleared when the host has
//   copied it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "ui/painter.h"

namespace quillet {

// Pixels of a picture: left, top, width, height.
struct PictureRect {
  int left = 0, top = 0, width = 0, height = 0;
  bool Empty() const { return width <= 0 || height <= 0; }
  bool operator==(const PictureRect&) const = default;
};

// What a host keeps for a retained picture.
class HostCopy {
 public:
  virtual ~HostCopy() = default;
};

class RetainedPicture {
 public:
  RetainedPicture() = default;
  RetainedPicture(RetainedPicture&&) = default;
  RetainedPicture& operator=(RetainedPicture&&) = default;
  // A copy would share a host copy that only one of them keeps current.
  RetainedPicture(const RetainedPicture&) = delete;
  RetainedPicture& operator=(const RetainedPicture&) = delete;

  // The host's copy, made at the first draw; drawing changes no pixel.
  HostCopy* Host() const { return host_.get(); }
  void SetHost(std::unique_ptr<HostCopy> copy) const { host_ = std::move(copy); }

 private:
  mutable std::unique_ptr<HostCopy> host_;
};

// 8-bit pixels owned elsewhere, rows from the top, `stride` bytes apart.
class IndexedPicture : public RetainedPicture {
 public:
  // Points at new pixels, or tells that the pixels pointed at have changed.
  void SetPixels(const std::uint8_t* bits, int width, int height, int stride) {
    bits_ = bits;
    width_ = width;
    height_ = height;
    stride_ = stride;
    ++version_;
  }
  const std::uint8_t* Bits() const { return bits_; }
  int Width() const { return width_; }
  int Height() const { return height_; }
  int Stride() const { return stride_; }
  // Changes with every SetPixels.
  std::uint64_t Version() const { return version_; }

 private:
  const std::uint8_t* bits_ = nullptr;
  int width_ = 0, height_ = 0, stride_ = 0;
  std::uint64_t version_ = 0;
};

// Pixels of alpha 0 (then 0 altogether) or 255, so they are premultiplied
// as they are; an opaque surface shows alpha 0 as black.
class ArgbSurface : public RetainedPicture {
 public:
  ArgbSurface() = default;
  ArgbSurface(int width, int height, bool opaque) : opaque_(opaque) {
    picture_.width = width;
    picture_.height = height;
    picture_.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0u);
    dirty_ = {0, 0, width, height};
  }
  const Picture& Pixels() const { return picture_; }
  bool Opaque() const { return opaque_; }
  // For writing: the caller marks what it changes with Touch.
  Picture& Edit() { return picture_; }
  void Touch(const PictureRect& r) {
    if (r.Empty()) return;
    if (dirty_.Empty()) {
      dirty_ = r;
      return;
    }
    const int right = std::max(dirty_.left + dirty_.width, r.left + r.width);
    const int bottom = std::max(dirty_.top + dirty_.height, r.top + r.height);
    dirty_.left = std::min(dirty_.left, r.left);
    dirty_.top = std::min(dirty_.top, r.top);
    dirty_.width = right - dirty_.left;
    dirty_.height = bottom - dirty_.top;
  }
  void TouchAll() { dirty_ = {0, 0, picture_.width, picture_.height}; }
  // What changed since the host last took it; taking it clears it.
  PictureRect Dirty() const { return dirty_; }
  PictureRect TakeDirty() const { return std::exchange(dirty_, PictureRect{}); }

 private:
  Picture picture_;
  bool opaque_ = false;
  mutable PictureRect dirty_;
};

// `source` of `picture` in `colours`, index `transparent` (-1 for none)
// see-through, as an ordinary picture: for hosts that keep no copy.
[[nodiscard]] Picture ToPicture(const IndexedPicture& picture, const PictureRect& source, const Palette& colours,
                                int transparent);
[[nodiscard]] Picture ToPicture(const ArgbSurface& surface, const PictureRect& source);

}  // namespace quillet
