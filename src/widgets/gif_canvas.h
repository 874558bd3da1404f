// Turning unpacked GIF frames into pixels: one frame alone, or composed onto
// a canvas that remembers earlier frames. Alpha 0 stands for the mask's
// white: what lies behind shows there. The canvas is a retained surface that
// marks what each step changes, so a host's copy of it follows by the
// changed rectangle alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ui/painter.h"
#include "ui/retained_picture.h"
#include "widgets/gif/gif_types.h"

namespace quillet {

// Frame `frame` (1-based) in its colours; its transparent index has alpha 0.
Picture FramePicture(const GifAnimation& gif, std::int32_t frame);

// Flips frames `first` to `last` of the strip in place, horizontally for
// bit 1 and vertically for bit 2 of `bits`, moving Left and Top to match.
void MirrorFrames(GifAnimation& gif, int bits, std::int32_t first, std::int32_t last);

// Flips a picture over its whole area, as the canvas follows the frames.
void MirrorPicture(Picture& picture, int bits);

// The largest canvas to allocate, 4 bytes a pixel; a bigger one is not made,
// as a bitmap that could not be created would not be.
constexpr std::size_t kMaxCanvasBytes = std::size_t{1} << 28;

// Colour (red in the low byte) as an opaque canvas pixel.
constexpr std::uint32_t OpaquePixel(Colour c) {
  return 0xFF000000u | (std::uint32_t(RedOf(c)) << 16) | (std::uint32_t(GreenOf(c)) << 8) | std::uint32_t(BlueOf(c));
}

class GifCanvas {
 public:
  GifCanvas() = default;
  // Stays empty (Exists() false) when a side is under 1 or the pixels would pass `max_bytes`.
  GifCanvas(std::int32_t width, std::int32_t height, bool mask, std::size_t max_bytes = kMaxCanvasBytes);

  bool Exists() const { return surface_.Pixels().width > 0; }
  bool HasMask() const { return mask_; }
  // Before drawing a frame: frame 1 clears everything; disposal 3 keeps the
  // frame's rectangle for later; then the frame is drawn in.
  void ComposeBefore(const GifAnimation& gif, std::int32_t frame);
  // After drawing: disposal 2 clears the frame's rectangle, 3 puts back what was saved.
  void ComposeAfter(const GifAnimation& gif, std::int32_t frame);
  // Fills (0, 0, width, height) with an opaque `pixel` and draws the frame
  // again over it: a filled control keeps no trace of earlier frames there.
  void Backfill(const GifAnimation& gif, std::int32_t frame, std::int32_t width, std::int32_t height,
                std::uint32_t pixel);
  // What the control shows: without a mask the canvas is opaque, black
  // where nothing was drawn.
  const ArgbSurface& Surface() const { return surface_; }
  const Picture& Pixels() const { return surface_.Pixels(); }
  // Flips the canvas as the frames are flipped (see MirrorFrames).
  void Mirror(int bits);

 private:
  struct Rect {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
  };
  Rect Clip(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) const;
  void Draw(const GifAnimation& gif, const FrameRecord& f);
  void Touch(const Rect& r) { surface_.Touch({r.left, r.top, r.right - r.left, r.bottom - r.top}); }

  ArgbSurface surface_;
  bool mask_ = false;
  Rect saved_rect_;
  std::vector<std::uint32_t> saved_;
};

}  // namespace quillet
