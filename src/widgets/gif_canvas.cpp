#include "widgets/gif_canvas.h"

#include <algorithm>

namespace quillet {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000u;

const ColorTable* TableOf(const GifAnimation& gif, const FrameRecord& f) {
  const auto index = static_cast<std::size_t>(f.ColorTable);
  return index < gif.ColorTables.size() ? &gif.ColorTables[index] : nullptr;
}

bool ValidFrame(const GifAnimation& gif, std::int32_t frame) {
  if (frame < 1 || frame > gif.FrameCount()) return false;
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(frame - 1)];
  return f.Width > 0 && f.Height > 0 && f.StripX >= 0 && f.StripX + f.Width <= gif.Strip.Width &&
         f.Height <= gif.Strip.Height;
}

// Calls `pixel(x, y, argb)` for each pixel of the frame, in frame coordinates.
template <class F>
void ForEachPixel(const GifAnimation& gif, const FrameRecord& f, F&& pixel) {
  const ColorTable* table = TableOf(gif, f);
  for (std::int32_t y = 0; y < f.Height; ++y) {
    const std::uint8_t* row = gif.Strip.Row(y) + f.StripX;
    for (std::int32_t x = 0; x < f.Width; ++x) {
      const std::uint8_t index = row[x];
      std::uint32_t argb = 0;
      if (!(f.TransparentFlag == 1 && index == f.TransparentIndex))
        argb = kOpaque | (table != nullptr ? table->Colors[index] : 0u);
      pixel(x, y, argb);
    }
  }
}

}  // namespace

Picture FramePicture(const GifAnimation& gif, std::int32_t frame) {
  Picture p;
  if (!ValidFrame(gif, frame)) return p;
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(frame - 1)];
  p.width = f.Width;
  p.height = f.Height;
  p.pixels.assign(static_cast<std::size_t>(f.Width) * static_cast<std::size_t>(f.Height), 0);
  ForEachPixel(gif, f, [&](std::int32_t x, std::int32_t y, std::uint32_t argb) {
    p.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(f.Width) + static_cast<std::size_t>(x)] = argb;
  });
  return p;
}

void MirrorFrames(GifAnimation& gif, int bits, std::int32_t first, std::int32_t last) {
  if ((bits & 3) == 0) return;
  for (std::int32_t n = std::max(first, 1); n <= std::min(last, gif.FrameCount()); ++n) {
    if (!ValidFrame(gif, n)) continue;
    FrameRecord& f = gif.Frames[static_cast<std::size_t>(n - 1)];
    if (bits & 1) {
      for (std::int32_t y = 0; y < f.Height; ++y) {
        std::uint8_t* row = gif.Strip.Row(y) + f.StripX;
        std::reverse(row, row + f.Width);
      }
      f.Left = gif.CanvasWidth - (f.Left + f.Width);
    }
    if (bits & 2) {
      for (std::int32_t y = 0; y < f.Height / 2; ++y)
        std::swap_ranges(gif.Strip.Row(y) + f.StripX, gif.Strip.Row(y) + f.StripX + f.Width,
                         gif.Strip.Row(f.Height - 1 - y) + f.StripX);
      f.Top = gif.CanvasHeight - (f.Top + f.Height);
    }
  }
}

void MirrorPicture(Picture& p, int bits) {
  const auto w = static_cast<std::size_t>(p.width);
  if (bits & 1)
    for (std::size_t y = 0; y < static_cast<std::size_t>(p.height); ++y)
      std::reverse(p.pixels.begin() + static_cast<std::ptrdiff_t>(y * w),
                   p.pixels.begin() + static_cast<std::ptrdiff_t>((y + 1) * w));
  if (bits & 2)
    for (std::size_t y = 0; y < static_cast<std::size_t>(p.height) / 2; ++y)
      std::swap_ranges(p.pixels.begin() + static_cast<std::ptrdiff_t>(y * w),
                       p.pixels.begin() + static_cast<std::ptrdiff_t>((y + 1) * w),
                       p.pixels.begin() + static_cast<std::ptrdiff_t>((static_cast<std::size_t>(p.height) - 1 - y) * w));
}

GifCanvas::GifCanvas(std::int32_t width, std::int32_t height, bool mask, std::size_t max_bytes) : mask_(mask) {
  if (width <= 0 || height <= 0) return;
  const auto pixels = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
  if (pixels > max_bytes / sizeof(std::uint32_t)) return;
  surface_ = ArgbSurface(width, height, !mask);
}

void GifCanvas::Mirror(int bits) {
  if ((bits & 3) == 0) return;
  MirrorPicture(surface_.Edit(), bits);
  surface_.TouchAll();
}

GifCanvas::Rect GifCanvas::Clip(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) const {
  const Picture& canvas = surface_.Pixels();
  const auto edge = [](std::int64_t from, std::int64_t size, std::int32_t limit) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(from + std::max<std::int64_t>(size, 0), 0, limit));
  };
  Rect r;
  r.left = static_cast<std::int32_t>(std::clamp<std::int64_t>(left, 0, canvas.width));
  r.top = static_cast<std::int32_t>(std::clamp<std::int64_t>(top, 0, canvas.height));
  r.right = std::max(r.left, edge(left, width, canvas.width));
  r.bottom = std::max(r.top, edge(top, height, canvas.height));
  return r;
}

void GifCanvas::Draw(const GifAnimation& gif, const FrameRecord& f) {
  Picture& canvas = surface_.Edit();
  Touch(Clip(f.Left, f.Top, f.Width, f.Height));
  const auto width = static_cast<std::size_t>(canvas.width);
  ForEachPixel(gif, f, [&](std::int32_t x, std::int32_t y, std::uint32_t argb) {
    const std::int32_t cx = f.Left + x, cy = f.Top + y;
    if (argb == 0 || cx < 0 || cy < 0 || cx >= canvas.width || cy >= canvas.height) return;
    canvas.pixels[static_cast<std::size_t>(cy) * width + static_cast<std::size_t>(cx)] = argb;
  });
}

void GifCanvas::ComposeBefore(const GifAnimation& gif, std::int32_t frame) {
  if (!Exists() || !ValidFrame(gif, frame)) return;
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(frame - 1)];
  Picture& canvas = surface_.Edit();
  const auto width = static_cast<std::size_t>(canvas.width);
  if (frame == 1) {
    std::fill(canvas.pixels.begin(), canvas.pixels.end(), 0u);
    surface_.TouchAll();
  }
  if (f.Disposal == 3) {
    saved_rect_ = Clip(f.Left, f.Top, f.Width, f.Height);
    saved_.clear();
    for (std::int32_t y = saved_rect_.top; y < saved_rect_.bottom; ++y) {
      const auto row = canvas.pixels.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * width);
      saved_.insert(saved_.end(), row + saved_rect_.left, row + saved_rect_.right);
    }
  }
  Draw(gif, f);
}

void GifCanvas::Backfill(const GifAnimation& gif, std::int32_t frame, std::int32_t width, std::int32_t height,
                         std::uint32_t pixel) {
  if (!Exists() || !ValidFrame(gif, frame)) return;
  const Rect r = Clip(0, 0, width, height);
  Picture& canvas = surface_.Edit();
  Touch(r);
  for (std::int32_t y = r.top; y < r.bottom; ++y) {
    const auto row = canvas.pixels.begin() + static_cast<std::ptrdiff_t>(y) * canvas.width;
    std::fill(row + r.left, row + r.right, pixel);
  }
  Draw(gif, gif.Frames[static_cast<std::size_t>(frame - 1)]);
}

void GifCanvas::ComposeAfter(const GifAnimation& gif, std::int32_t frame) {
  if (!Exists() || !ValidFrame(gif, frame)) return;
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(frame - 1)];
  Picture& canvas = surface_.Edit();
  const auto width = static_cast<std::size_t>(canvas.width);
  if (f.Disposal == 2) {
    const Rect r = Clip(f.Left, f.Top, f.Width, f.Height);
    Touch(r);
    for (std::int32_t y = r.top; y < r.bottom; ++y)
      std::fill_n(canvas.pixels.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * width +
                                                                        static_cast<std::size_t>(r.left)),
                  r.right - r.left, 0u);
  } else if (f.Disposal == 3) {
    Touch(saved_rect_);
    auto source = saved_.begin();
    const auto span = static_cast<std::ptrdiff_t>(saved_rect_.right - saved_rect_.left);
    for (std::int32_t y = saved_rect_.top; y < saved_rect_.bottom && source + span <= saved_.end(); ++y) {
      std::copy(source, source + span,
                canvas.pixels.begin() +
                    static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * width +
                                                static_cast<std::size_t>(saved_rect_.left)));
      source += span;
    }
  }
}

}  // namespace quillet
