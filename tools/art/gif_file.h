// Pictures to GIF files: at most 255 colours chosen by median cut and a few
// rounds of k-means, index 255 see-through, compressed by the program's own
// encoder. Everything is in a fixed order, so the same picture always gives
// the same bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/painter.h"

namespace quillet::art {

// The file's bytes; `picture` must have hard alpha (0 or 255). Fails with an
// exception if the bytes don't read back as the colours chosen or if any
// colour is the side bar's key colour.
std::vector<std::uint8_t> EncodeGif(const Picture& picture);

// The picture as a program reading the file gets it.
Picture DecodeGif(const std::vector<std::uint8_t>& bytes);

void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes);

}  // namespace quillet::art
