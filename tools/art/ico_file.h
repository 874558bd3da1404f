// Pictures to Windows icon and cursor files: each image a 32-bit BGRA DIB
// with its AND mask (set where the picture is fully see-through), so the
// alpha edge shows on systems that blend and the mask on those that don't.
#pragma once

#include <cstdint>
#include <vector>

#include "ui/painter.h"

namespace quillet::art {

// An .ico holding `pictures` in the given order; each is square, 1 to 256 px.
std::vector<std::uint8_t> EncodeIcon(const std::vector<Picture>& pictures);

// A .cur of one picture whose hot spot is the pixel (hot_x, hot_y).
std::vector<std::uint8_t> EncodeCursor(const Picture& picture, int hot_x, int hot_y);

}  // namespace quillet::art
