// Arbitrary bytes into the GIF reader, both loading paths. Whatever frames come out must also survive the frame
// encoder: written back and read again, they give the same indices. The same bytes then play in the control, a few
// frames painted, so the canvas is composed and cut too.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "headless/headless_ui.h"
#include "ui/display_list.h"
#include "widgets/gif/gif_encoder.h"
#include "widgets/gif/gif_palette.h"
#include "widgets/gif/gif_reader.h"
#include "widgets/ucAniGIF.h"

namespace {

using quillet::FrameRecord;
using quillet::GifAnimation;
using quillet::GifReader;

constexpr std::size_t kMaxStripBytes = std::size_t{1} << 22;  // keeps every run quick
constexpr std::int64_t kMaxRoundTripPixels = std::int64_t{1} << 16;
constexpr std::int32_t kMaxRoundTripFrames = 8;
constexpr std::size_t kMaxPlayedBytes = std::size_t{1} << 16;  // every paint goes over every pixel
constexpr int kPaintedFrames = 8;

bool SameRows(const GifAnimation& a, const FrameRecord& f, const GifAnimation& b) {
  for (std::int32_t y = 0; y < f.Height; ++y) {
    if (std::memcmp(a.Strip.Row(y) + f.StripX, b.Strip.Row(y), static_cast<std::size_t>(f.Width)) != 0) return false;
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

// How the control shows it comes from the last byte, which a stream that ends with its trailer does not read.
void Play(const std::vector<std::uint8_t>& bytes) {
  if (bytes.empty()) return;
  quillet::testing::VirtualTimers timers;
  quillet::ucAniGIF gif(
      timers, {.bounds = {150, 90, 600, 450}, .max_strip_bytes = kMaxPlayedBytes, .max_canvas_bytes = kMaxPlayedBytes});
  const int look = bytes.back();
  gif.SetStretch(look % 5);
  gif.SetAutoSize((look / 5) % 2 != 0);
  gif.SetBackStyle((look / 10) % 2);
  gif.SetMirrored((look / 20) % 4);
  gif.SetDelayAnimation((look / 80) % 4);
  if (!gif.LoadAnimatedGIF_Array(bytes)) return;
  quillet::DisplayList drawn;
  for (int n = 0; n < kPaintedFrames; ++n) {
    drawn.Clear();
    gif.Paint(drawn);
    // A picture whose pixels are fewer than its size says would be read past its end by the host.
    for (const auto& op : drawn.ops) {
      if (op.kind != quillet::DisplayList::Op::kPicture) continue;
      const quillet::Picture& p = *op.picture;
      if (p.width < 0 || p.height < 0 || p.pixels.size() != std::size_t(p.width) * std::size_t(p.height)) std::abort();
    }
    // Stopped or waiting: step by hand.
    if (const auto due = timers.NextDue())
      timers.Advance(*due);
    else
      gif.SetAction(3);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + size);
  GifReader reader;
  if (reader.LoadAllFrames(bytes, {.MaxStripBytes = kMaxStripBytes}) > 0) {
    CheckRoundTrip(reader.Animation());
    TouchPalettes(reader.Animation());
  }
  GifReader design;
  design.LoadAllFrames(bytes, {.DesignTime = true, .MaxStripBytes = kMaxStripBytes});
  Play(bytes);
  return 0;
}
