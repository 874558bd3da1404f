// Turning unpacked GIF frames into pixels: one frame alone, or composed onto
// a canvas that remembers earlier frames. Alpha 0 stands for the mask's
// white: what lies behind shows there.
#pragma once

#include <cstdint>
#include <vector>

#include "ui/painter.h"
#include "widgets/gif/gif_types.h"

namespace quillet {

// Frame `frame` (1-based) in its colours; its transparent index has alpha 0.
Picture FramePicture(const GifAnimation& gif, std::int32_t frame);

// Flips frames `first` to `last` of the strip in place, horizontally for
// bit 1 and vertically for bit 2 of `bits`, moving Left and Top to match.
void MirrorFrames(GifAnimation& gif, int bits, std::int32_t first, std::int32_t last);

// Flips a picture over its whole area, as the canvas follows the frames.
void MirrorPicture(Picture& picture, int bits);

class GifCanvas {
 public:
  GifCanvas() = default;
  GifCanvas(std::int32_t width, std::int32_t height, bool mask);

  bool Exists() const { return picture_.width > 0; }
  bool HasMask() const { return mask_; }
  // Before drawing a frame: frame 1 clears everything; disposal 3 keeps the
  // frame's rectangle for later; then the frame is drawn in.
  void ComposeBefore(const GifAnimation& gif, std::int32_t frame);
  // After drawing: disposal 2 clears the frame's rectangle, 3 puts back what was saved.
  void ComposeAfter(const GifAnimation& gif, std::int32_t frame);
  // What the control shows: without a mask the canvas is opaque, black where nothing was drawn.
  Picture Shown() const;
  Picture& Pixels() { return picture_; }
  const Picture& Pixels() const { return picture_; }

 private:
  struct Rect {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
  };
  Rect Clip(const FrameRecord& f) const;

  Picture picture_;
  bool mask_ = false;
  Rect saved_rect_;
  std::vector<std::uint32_t> saved_;
};

}  // namespace quillet
