// Arbitrary bytes into the GIF reader, both loading paths. Whatever frames
// come out must also survive the frame encoder: written back and read
// again, they give the same indices.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "widgets/gif/gif_encoder.h"
#include "widgets/gif/gif_palette.h"
#include "widgets/gif/gif_reader.h"

namespace {

using quillet::FrameRecord;
using quillet::GifAnimation;
using quillet::GifLoadOptions;
using quillet::GifReader;

constexpr std::size_t kMaxStripBytes = std::size_t{1} << 22;  // keeps every run quick
constexpr std::int64_t kMaxRoundTripPixels = std::int64_t{1} << 16;
constexpr std::int32_t kMaxRoundTripFrames = 8;

bool SameRows(const GifAnimation& a, const FrameRecord& f, const GifAnimation& b) {
  for (std::int32_t y = 0; y < f.Height; ++y) {
    if (std::memcmp(a.Strip.Row(y) + f.StripX, b.Strip.Row(y), static_cast<std::size_t>(f.Width)) != 0) {
      return false;
    }
  }
  return true;
}

void CheckRoundTrip(const GifAnimation& gif) {
  for (std::int32_t n = 1; n <= gif.FrameCount() && n <= kMaxRoundTripFrames; ++n) {
    const FrameRecord& f = gif.Frames[static_cast<std::size_t>(n - 1)];
    if (std::int64_t{f.Width} * f.Height > kMaxRoundTripPixels) continue;
    auto picture = quillet::FrameToPicture(gif, n);
    if (picture.empty()) continue;
    GifReader back;
    if (back.LoadAllFrames(std::move(picture)) != 1 || !SameRows(gif, f, back.Animation())) std::abort();
  }
}

void TouchPalettes(GifAnimation& gif) {
  std::vector<std::uint32_t> colors;
  for (std::int32_t n = 0; n <= gif.FrameCount() + 1; ++n) {
    if (quillet::GetPalette(gif, n, colors) && !quillet::SetPalette(gif, n, colors)) std::abort();
  }
  if (!quillet::CacheColorTables(gif) || !quillet::RestoreColorTables(gif, true)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + size);
  GifLoadOptions options;
  options.MaxStripBytes = kMaxStripBytes;

  GifReader reader;
  if (reader.LoadAllFrames(bytes, options) > 0) {
    CheckRoundTrip(reader.Animation());
    TouchPalettes(reader.Animation());
  }

  options.DesignTime = true;
  GifReader design;
  design.LoadAllFrames(bytes, options);
  return 0;
}
