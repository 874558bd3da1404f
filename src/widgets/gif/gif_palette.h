// Reading and replacing a frame's colours, and keeping a copy of all of them.
// Only the tables change: the strip holds indices, so new colours show at the
// next paint. Pausing and repainting around these is the player's part.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "widgets/gif/gif_types.h"

namespace quillet {

// Frame 0 means the global table; frame n (1-based) must have a local table
// of its own. False when nothing is loaded or there is no such table.
[[nodiscard]] bool GetPalette(const GifAnimation& gif, std::int32_t frame, std::vector<std::uint32_t>& colors);

// Copies exactly the table's count of colours from the front of `colors`;
// false as GetPalette, or when `colors` holds fewer.
[[nodiscard]] bool SetPalette(GifAnimation& gif, std::int32_t frame, std::span<const std::uint32_t> colors);

// Keeps a copy of every table and of SelectedTable. Refuses (false) while a
// copy exists.
[[nodiscard]] bool CacheColorTables(GifAnimation& gif);

// Puts the copy back and marks no table as selected, so the next paint
// applies colours again. False when there was no copy.
bool RestoreColorTables(GifAnimation& gif, bool drop_copy);

}  // namespace quillet
