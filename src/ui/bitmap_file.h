// Windows bitmap files: the pictures of the launch slots are kept as these.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "ui/painter.h"

namespace quillet {

// A 24-bit bitmap file of the picture, bottom-up, as the system writes one.
std::vector<std::uint8_t> EncodeBitmapFile(const Picture& picture);
// The picture of a bitmap file of 1, 4, 8, 16, 24 or 32 bits a pixel, top-down
// or bottom-up, uncompressed or with bit fields; fully opaque. Nothing for
// anything else, a cut-off file or absurd sizes.
std::optional<Picture> DecodeBitmapFile(const std::vector<std::uint8_t>& bytes);

}  // namespace quillet
