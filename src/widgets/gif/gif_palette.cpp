#include "widgets/gif/gif_palette.h"

#include <algorithm>
#include <optional>

namespace quillet {
namespace {

// The index of the frame's own table in ColorTables, if it has one.
std::optional<std::size_t> FindTable(const GifAnimation& gif, std::int32_t frame) {
  if (gif.Frames.empty() || frame < 0 || frame > gif.FrameCount()) return std::nullopt;
  std::int32_t column = 0;
  if (frame > 0) {
    column = gif.Frames[static_cast<std::size_t>(frame - 1)].ColorTable;
    if (column == 0) return std::nullopt;  // the frame uses the global table
  }
  const auto index = static_cast<std::size_t>(column);
  if (index >= gif.ColorTables.size() || gif.ColorTables[index].Count <= 0) return std::nullopt;
  return index;
}

}  // namespace

bool GetPalette(const GifAnimation& gif, std::int32_t frame, std::vector<std::uint32_t>& colors) {
  const auto index = FindTable(gif, frame);
  if (!index) return false;
  const ColorTable& table = gif.ColorTables[*index];
  colors.assign(table.Colors.begin(), table.Colors.begin() + table.Count);
  return true;
}

bool SetPalette(GifAnimation& gif, std::int32_t frame, std::span<const std::uint32_t> colors) {
  const auto index = FindTable(gif, frame);
  if (!index) return false;
  ColorTable& table = gif.ColorTables[*index];
  if (colors.size() < static_cast<std::size_t>(table.Count)) return false;
  std::copy_n(colors.begin(), table.Count, table.Colors.begin());
  return true;
}

bool CacheColorTables(GifAnimation& gif) {
  if (gif.CachedTables) return false;
  gif.CachedTables = CachedColorTables{gif.SelectedTable, gif.ColorTables};
  return true;
}

bool RestoreColorTables(GifAnimation& gif, bool drop_copy) {
  if (!gif.CachedTables) return false;
  gif.ColorTables = gif.CachedTables->ColorTables;
  gif.SelectedTable = -1;
  if (drop_copy) gif.CachedTables.reset();
  return true;
}

}  // namespace quillet
