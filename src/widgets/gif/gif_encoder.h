// Turns one unpacked frame back into a GIF file of its own, as the picture
// that the AnimatedGIF property hands out.
#pragma once

#include <cstdint>
#include <vector>

#include "widgets/gif/gif_types.h"

namespace quillet {

// A single-frame GIF89a of frame `frame` (1-based) as it lies in the strip:
// the frame's colour table as a 256-entry global table, its transparent
// index if it has one, the image at (0, 0) compressed with a minimum code
// size of 8. Empty when there is no such frame or it has no pixels.
[[nodiscard]] std::vector<std::uint8_t> FrameToPicture(const GifAnimation& gif, std::int32_t frame);

}  // namespace quillet
