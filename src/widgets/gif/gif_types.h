// The data a loaded GIF leaves for the player: the frame table, the colour
// tables and every frame unpacked as palette indices into one 8-bit strip.
// Plain structs so the player and the hosts can read and adjust them freely.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillet {

// One frame. The file's 16-bit numbers are read signed, so values of 0x8000
// and above arrive negative.
struct FrameRecord {
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Width = 0;
  std::int32_t Height = 0;
  std::int32_t Delay = 0;       // milliseconds: the file's hundredths times 10
  std::int32_t ColorTable = 0;  // index into ColorTables; 0 is the global table
  // While scanning: offset in the stream of the frame's graphic control
  // extension, or of its image descriptor when it has none. Once the frame
  // is unpacked: its first column in the strip.
  std::int32_t StripX = 0;
  std::uint8_t TransparentIndex = 0;
  std::uint8_t TransparentFlag = 0;  // 1 when TransparentIndex is see-through
  std::uint8_t Disposal = 0;         // 0 to 3
};

// Where one image block lies in the stream: from its 0x2C byte through the
// last sub-block terminator. Needed only while frames are being unpacked.
struct BlockRef {
  std::int32_t Length = 0;
  std::int32_t Start = 0;  // offset of the 0x2C byte, from 0
};

// A palette. Colours are 0x00RRGGBB (the file's red in bits 16 to 23), ready
// to be used as entries of a device-independent bitmap's colour table.
struct ColorTable {
  std::array<std::uint32_t, 256> Colors{};  // entries past Count stay 0
  std::int32_t Count = 0;                   // colours the file gave
};

// All unpacked frames side by side, one palette index per pixel. Rows run
// top-down (row 0 is the top of every frame); Stride is Width rounded up to
// a multiple of 4, the row alignment of an 8-bit DIB, so a host can hand the
// bytes to a top-down DIB section as they are. A frame occupies columns
// StripX to StripX + Width - 1 of rows 0 to its Height - 1.
struct FrameStrip {
  std::int32_t Width = 0;
  std::int32_t Height = 0;
  std::int32_t Stride = 0;
  std::vector<std::uint8_t> Bits;  // Stride * Height bytes

  std::uint8_t* Row(std::int32_t y) { return Bits.data() + Offset(y); }
  const std::uint8_t* Row(std::int32_t y) const { return Bits.data() + Offset(y); }

 private:
  std::size_t Offset(std::int32_t y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(Stride);
  }
};

// What the first pass learns about the frames; the player decides from it
// whether it needs a compositing canvas and a mask.
struct StripPlan {
  bool FirstOnly = false;  // design time or a single frame: only frame 1 is unpacked
  std::int64_t TotalWidth = 0;
  std::int32_t MaxHeight = 0;
  std::int32_t MaxLength = 0;  // longest image block
  bool AnyTransparent = false;
  bool AllRestoreBackground = false;  // every frame has Disposal 2
  bool AnyRestore = false;            // some frame has Disposal 2 or 3
  bool NeedsCanvas = false;
  bool CanvasNeedsMask = false;
};

// The copy kept by CacheColorTables.
struct CachedColorTables {
  std::int32_t SelectedTable = -1;
  std::vector<ColorTable> ColorTables;
};

// Everything that stays once a GIF is loaded.
struct GifAnimation {
  std::vector<FrameRecord> Frames;      // frame n is Frames[n - 1]
  std::vector<ColorTable> ColorTables;  // [0] global (Count 0 when absent), then local tables in file order
  FrameStrip Strip;
  StripPlan Plan;
  // The union of all frames: largest Left + Width and Top + Height. The
  // logical screen size of the header is not used.
  std::int32_t CanvasWidth = 0;
  std::int32_t CanvasHeight = 0;
  std::int32_t LoopCount = 0;  // from the NETSCAPE2.0 block; 0 for ever
  // The table the player last put into the strip's bitmap; -1 for none.
  std::int32_t SelectedTable = -1;
  std::optional<CachedColorTables> CachedTables;

  std::int32_t FrameCount() const { return static_cast<std::int32_t>(Frames.size()); }
};

}  // namespace quillet
