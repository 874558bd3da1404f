// Loads a GIF stream into a GifAnimation: the frame table, the colour tables
// and every frame unpacked once, as palette indices, into one 8-bit strip.
// Colours are applied at display time by choosing a colour table, so the
// pixels never need decoding again.
//
// Loading runs in two passes so a form can show frame 1 before the rest is
// unpacked: LoadGifBytes ends after frame 1, BuildFrameStrip(false) unpacks
// the others, FinishLoading drops what only unpacking needed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "widgets/gif/gif_types.h"
#include "widgets/gif/lzw.h"

namespace quillet {

struct GifLoadOptions {
  // At design time only frame 1 goes into the strip and the stream is kept,
  // since it is what gets saved.
  bool DesignTime = false;
  // The largest strip to allocate; a bigger one fails the load, as a bitmap
  // that could not be created would.
  std::size_t MaxStripBytes = std::size_t{1} << 28;
};

class GifReader {
 public:
  GifReader() = default;
  GifReader(const GifReader&) = delete;
  GifReader& operator=(const GifReader&) = delete;

  // Replaces whatever was loaded: scans the stream and unpacks frame 1.
  // Returns the frame count; with 0 nothing is loaded.
  std::int32_t LoadGifBytes(std::vector<std::uint8_t> gif_bytes, const GifLoadOptions& options = {});

  // The first pass plans the strip, allocates it and unpacks frame 1; the
  // second unpacks frames 2 to the last (nothing when only frame 1 belongs
  // in the strip, or when already done). False when the strip can't be had.
  bool BuildFrameStrip(bool first_pass);

  // Drops the frame blocks and, unless at design time, the stream.
  void FinishLoading();

  // Loads and unpacks every frame at once, straight from `gif_bytes`, which
  // need only live for the call (at design time a copy is kept).
  std::int32_t LoadAllFrames(std::span<const std::uint8_t> gif_bytes, const GifLoadOptions& options = {});

  // Forgets the frames, tables and strip. The canvas size and loop count
  // stay until the next load resets them.
  void ClearGif();

  GifAnimation& Animation() { return animation_; }
  const GifAnimation& Animation() const { return animation_; }
  const std::vector<std::uint8_t>& GifBytes() const { return gif_bytes_; }
  bool SecondPassPending() const { return second_pass_pending_; }

 private:
  std::int32_t Load(std::span<const std::uint8_t> stream, const GifLoadOptions& options);
  bool PrepareStrip();
  void PlanStrip();
  void UnpackFrame(std::size_t index);
  void PlaceRows(const std::uint8_t* pixels, const FrameRecord& frame, bool interlaced);

  GifAnimation animation_;
  std::vector<std::uint8_t> gif_bytes_;
  std::span<const std::uint8_t> stream_;  // what is being unpacked: gif_bytes_ or the caller's
  std::vector<BlockRef> blocks_;
  GifLoadOptions options_;
  std::int64_t next_strip_x_ = 0;
  bool second_pass_pending_ = false;
  LzwDecoder decoder_;
};

}  // namespace quillet
