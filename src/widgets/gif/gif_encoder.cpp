#include "widgets/gif/gif_encoder.h"

#include <cstddef>

#include "widgets/gif/lzw.h"

namespace quillet {
namespace {

constexpr std::size_t kPaletteStart = 13;
constexpr std::size_t kPaletteEnd = kPaletteStart + 3 * 256;  // 781
constexpr int kMinCodeSize = 8;

void PutWord(std::vector<std::uint8_t>& out, std::size_t at, std::int32_t value) {
  out[at] = static_cast<std::uint8_t>(value & 0xFF);
  out[at + 1] = static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

void AppendWord(std::vector<std::uint8_t>& out, std::int32_t value) {
  out.push_back(static_cast<std::uint8_t>(value & 0xFF));
  out.push_back(static_cast<std::uint8_t>((value >> 8) & 0xFF));
}

bool IsInStrip(const GifAnimation& gif, const FrameRecord& f) {
  const FrameStrip& strip = gif.Strip;
  return f.Width > 0 && f.Height > 0 && f.StripX >= 0 && f.Height <= strip.Height &&
         std::int64_t{f.StripX} + f.Width <= strip.Width &&
         static_cast<std::size_t>(f.ColorTable) < gif.ColorTables.size();
}

// Header and a full 256-entry global table; unused entries stay black.
void WriteHeader(std::vector<std::uint8_t>& out, const FrameRecord& f, const ColorTable& table) {
  out.assign(kPaletteEnd, 0);
  const char signature[] = "GIF89a";
  for (std::size_t i = 0; i < 6; ++i) out[i] = static_cast<std::uint8_t>(signature[i]);
  PutWord(out, 6, f.Width);
  PutWord(out, 8, f.Height);
  out[10] = 0x87;
  for (std::size_t i = 0; i < static_cast<std::size_t>(table.Count); ++i) {
    const std::uint32_t color = table.Colors[i];
    out[kPaletteStart + 3 * i] = static_cast<std::uint8_t>(color >> 16);
    out[kPaletteStart + 3 * i + 1] = static_cast<std::uint8_t>(color >> 8);
    out[kPaletteStart + 3 * i + 2] = static_cast<std::uint8_t>(color);
  }
}

void WriteTransparency(std::vector<std::uint8_t>& out, const FrameRecord& f) {
  const std::uint8_t block[] = {0x21, 0xF9, 0x04, 0x01, 0x00, 0x00, f.TransparentIndex, 0x00};
  out.insert(out.end(), std::begin(block), std::end(block));
}

void WriteDescriptor(std::vector<std::uint8_t>& out, const FrameRecord& f) {
  out.push_back(0x2C);
  AppendWord(out, 0);
  AppendWord(out, 0);
  AppendWord(out, f.Width);
  AppendWord(out, f.Height);
  out.push_back(0);  // no local table, not interlaced
}

}  // namespace

std::vector<std::uint8_t> FrameToPicture(const GifAnimation& gif, std::int32_t frame) {
  if (frame < 1 || frame > gif.FrameCount()) return {};
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(frame - 1)];
  if (!IsInStrip(gif, f)) return {};

  std::vector<std::uint8_t> out;
  out.reserve(static_cast<std::size_t>(f.Width) * static_cast<std::size_t>(f.Height) + 800);
  WriteHeader(out, f, gif.ColorTables[static_cast<std::size_t>(f.ColorTable)]);
  if (f.TransparentFlag == 1) WriteTransparency(out, f);
  WriteDescriptor(out, f);
  const IndexImage image{gif.Strip.Row(0) + f.StripX, f.Width, f.Height, gif.Strip.Stride};
  LzwEncode(image, kMinCodeSize, out);
  out.push_back(0x3B);
  return out;
}

}  // namespace quillet
