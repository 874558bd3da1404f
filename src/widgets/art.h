// The program's own pictures, read from its resources or from GIF bytes.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/resources.h"
#include "ui/painter.h"

namespace quillet {

// The first frame of a GIF; null when the bytes don't read.
PicturePtr PictureFromGif(const std::vector<std::uint8_t>& bytes);

// The first frame of a GIF resource; null when it is missing or unreadable.
PicturePtr LoadGifPicture(ResourceService& resources, std::string_view type, std::string_view name);

}  // namespace quillet
