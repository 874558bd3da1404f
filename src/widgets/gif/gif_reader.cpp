#include "widgets/gif/gif_reader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>
#include <utility>

#include "widgets/gif/gif_scan.h"

namespace quillet {
namespace {

constexpr std::size_t kDescriptorPacked = 9;  // from the 0x2C byte
constexpr std::size_t kDescriptorSize = 10;
constexpr std::uint8_t kLocalTableFlag = 0x80;
constexpr std::uint8_t kInterlacedFlag = 0x40;

std::int32_t ClampToInt32(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// Rows of an interlaced image come in four passes: every 8th from 0, every
// 8th from 4, every 4th from 2, every 2nd from 1.
struct InterlacePass {
  std::int32_t first;
  std::int32_t step;
};
constexpr InterlacePass kInterlacePasses[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};

}  // namespace

std::int32_t GifReader::LoadGifBytes(std::vector<std::uint8_t> gif_bytes, const GifLoadOptions& options) {
  ClearGif();
  gif_bytes_ = std::move(gif_bytes);
  return Load(gif_bytes_, options);
}

std::int32_t GifReader::LoadAllFrames(std::span<const std::uint8_t> gif_bytes, const GifLoadOptions& options) {
  ClearGif();
  // Holds the old stream until the end, since `gif_bytes` may point into it.
  const std::vector<std::uint8_t> previous = std::move(gif_bytes_);
  gif_bytes_.clear();
  if (options.DesignTime) {
    gif_bytes_.assign(gif_bytes.begin(), gif_bytes.end());
    gif_bytes = gif_bytes_;
  }
  const std::int32_t count = Load(gif_bytes, options);
  if (count > 0) {
    BuildFrameStrip(false);
    FinishLoading();
  }
  stream_ = {};
  return count;
}

std::int32_t GifReader::Load(std::span<const std::uint8_t> stream, const GifLoadOptions& options) {
  stream_ = stream;
  options_ = options;
  animation_.CanvasWidth = 0;
  animation_.CanvasHeight = 0;
  animation_.LoopCount = 0;

  std::int32_t count = 0;
  if (!stream_.empty()) {
    GifScanResult scan = ScanGifBlocks(stream_);
    animation_.CanvasWidth = scan.CanvasWidth;
    animation_.CanvasHeight = scan.CanvasHeight;
    animation_.LoopCount = scan.LoopCount;
    count = static_cast<std::int32_t>(scan.Frames.size());
    if (count > 0) {
      animation_.Frames = std::move(scan.Frames);
      animation_.ColorTables = std::move(scan.ColorTables);
      blocks_ = std::move(scan.Blocks);
      if (!BuildFrameStrip(true)) count = 0;
    }
  }
  if (count == 0) {
    gif_bytes_.clear();
    ClearGif();
  }
  return count;
}

bool GifReader::BuildFrameStrip(bool first_pass) {
  if (first_pass) {
    if (animation_.Frames.empty() || !PrepareStrip()) return false;
    UnpackFrame(0);
    second_pass_pending_ = !animation_.Plan.FirstOnly;
    return true;
  }
  if (second_pass_pending_) {
    for (std::size_t i = 1; i < animation_.Frames.size(); ++i) UnpackFrame(i);
    second_pass_pending_ = false;
  }
  return true;
}

void GifReader::FinishLoading() {
  blocks_.clear();
  blocks_.shrink_to_fit();
  second_pass_pending_ = false;
  if (!options_.DesignTime) {
    stream_ = {};
    gif_bytes_.clear();
    gif_bytes_.shrink_to_fit();
  }
}

void GifReader::ClearGif() {
  const std::int32_t canvas_width = animation_.CanvasWidth;
  const std::int32_t canvas_height = animation_.CanvasHeight;
  const std::int32_t loop_count = animation_.LoopCount;
  animation_ = GifAnimation{};
  animation_.CanvasWidth = canvas_width;
  animation_.CanvasHeight = canvas_height;
  animation_.LoopCount = loop_count;
  blocks_.clear();
  stream_ = {};
  next_strip_x_ = 0;
  second_pass_pending_ = false;
}

void GifReader::PlanStrip() {
  const auto& frames = animation_.Frames;
  const FrameRecord& first = frames.front();
  StripPlan plan;
  plan.FirstOnly = options_.DesignTime || frames.size() == 1;
  plan.AllRestoreBackground = true;
  bool later_transparent = false;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const FrameRecord& f = frames[i];
    plan.TotalWidth += f.Width;
    plan.MaxHeight = std::max(plan.MaxHeight, f.Height);
    plan.MaxLength = std::max(plan.MaxLength, blocks_[i].Length);
    plan.AnyTransparent = plan.AnyTransparent || f.TransparentFlag != 0;
    later_transparent = later_transparent || (i > 0 && f.TransparentFlag != 0);
    plan.AllRestoreBackground = plan.AllRestoreBackground && f.Disposal == 2;
    plan.AnyRestore = plan.AnyRestore || f.Disposal >= 2;
  }
  // Frames that depend on what came before are composed on a canvas; a mask
  // is needed where parts of it must stay see-through.
  plan.NeedsCanvas = !plan.FirstOnly && !plan.AllRestoreBackground;
  const bool first_smaller =
      first.Width < animation_.CanvasWidth || first.Height < animation_.CanvasHeight;
  plan.CanvasNeedsMask = plan.NeedsCanvas && (plan.AnyRestore || first.TransparentFlag != 0 ||
                                              (later_transparent && first_smaller));
  animation_.Plan = plan;
}

bool GifReader::PrepareStrip() {
  PlanStrip();
  const StripPlan& plan = animation_.Plan;
  const FrameRecord& first = animation_.Frames.front();
  const std::int64_t width = plan.FirstOnly ? first.Width : plan.TotalWidth;
  const std::int64_t height = plan.FirstOnly ? first.Height : plan.MaxHeight;
  if (width <= 0 || height <= 0) return false;
  const std::int64_t stride = (width + 3) & ~std::int64_t{3};
  const std::uint64_t bytes = static_cast<std::uint64_t>(stride) * static_cast<std::uint64_t>(height);
  if (stride > std::numeric_limits<std::int32_t>::max() || bytes > options_.MaxStripBytes) return false;

  FrameStrip& strip = animation_.Strip;
  strip.Width = static_cast<std::int32_t>(width);
  strip.Height = static_cast<std::int32_t>(height);
  strip.Stride = static_cast<std::int32_t>(stride);
  strip.Bits.assign(static_cast<std::size_t>(bytes), 0);
  next_strip_x_ = 0;
  return true;
}

// Frames lie left to right in file order. A frame that does not fit the
// strip (only possible with negative sizes) leaves nothing in it.
void GifReader::UnpackFrame(std::size_t index) {
  FrameRecord& f = animation_.Frames[index];
  f.StripX = ClampToInt32(next_strip_x_);
  next_strip_x_ += f.Width;
  const FrameStrip& strip = animation_.Strip;
  if (f.Width <= 0 || f.Height <= 0 || f.StripX < 0 || f.Height > strip.Height ||
      std::int64_t{f.StripX} + f.Width > strip.Width) {
    return;
  }

  // A block cut short by the end of the stream is read as far as it goes.
  const BlockRef& ref = blocks_[index];
  const auto start = static_cast<std::size_t>(ref.Start);
  const std::size_t length =
      std::min(static_cast<std::size_t>(ref.Length), stream_.size() - start);
  const auto block = stream_.subspan(start, length);
  if (block.size() <= kDescriptorSize) return;
  const std::uint8_t packed = block[kDescriptorPacked];
  std::size_t data_offset = kDescriptorSize;
  if (packed & kLocalTableFlag) data_offset += std::size_t{3} << ((packed & 7) + 1);
  if (data_offset >= block.size()) return;

  const auto pixel_count = static_cast<std::size_t>(f.Width) * static_cast<std::size_t>(f.Height);
  const auto pixels = decoder_.Decode(block[data_offset], block.subspan(data_offset + 1), pixel_count);
  PlaceRows(pixels.data(), f, (packed & kInterlacedFlag) != 0);
}

void GifReader::PlaceRows(const std::uint8_t* pixels, const FrameRecord& frame, bool interlaced) {
  FrameStrip& strip = animation_.Strip;
  const auto width = static_cast<std::size_t>(frame.Width);
  auto copy_row = [&](std::int32_t y, std::size_t source_row) {
    std::memcpy(strip.Row(y) + frame.StripX, pixels + source_row * width, width);
  };
  if (!interlaced) {
    for (std::int32_t y = 0; y < frame.Height; ++y) copy_row(y, static_cast<std::size_t>(y));
    return;
  }
  std::size_t source_row = 0;
  for (const InterlacePass& pass : kInterlacePasses) {
    for (std::int32_t y = pass.first; y < frame.Height; y += pass.step) copy_row(y, source_row++);
  }
}

}  // namespace quillet
