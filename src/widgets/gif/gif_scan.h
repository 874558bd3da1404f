// The walk over a GIF stream's blocks that builds the frame table. It reads
// no pixel data; the image blocks are only located, for unpacking later.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "widgets/gif/gif_types.h"

namespace quillet {

struct GifScanResult {
  std::vector<FrameRecord> Frames;      // empty when the stream was refused
  std::vector<BlockRef> Blocks;         // one per frame
  std::vector<ColorTable> ColorTables;  // [0] global, then the local tables
  std::int32_t TableCount = 0;          // local tables read
  bool HasGlobalTable = false;
  std::int32_t CanvasWidth = 0;
  std::int32_t CanvasHeight = 0;
  std::int32_t LoopCount = 0;
};

// Refuses (no frames) a stream without the GIF87a/GIF89a signature or with
// a frame that has no palette at all. A stream cut short keeps the frames
// that were complete before the cut.
[[nodiscard]] GifScanResult ScanGifBlocks(std::span<const std::uint8_t> gif_bytes);

}  // namespace quillet
