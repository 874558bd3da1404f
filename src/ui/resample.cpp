#include "ui/resample.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillet {
namespace {

// A pixel with its colour premultiplied by alpha; all four in 0..255.
struct Premultiplied {
  float r = 0, g = 0, b = 0, a = 0;
};

// Source pixel `index` contributes `weight` to one result pixel.
struct Tap {
  int index = 0;
  float weight = 0;
};

// For each of `to` result pixels along one axis, the source pixels it reads.
using Taps = std::vector<std::vector<Tap>>;

// Shrinking: a result pixel covers `from / to` source pixels and averages
// them by how much of each it covers.
Taps AreaTaps(int from, int to) {
  Taps taps(static_cast<std::size_t>(to));
  const double step = static_cast<double>(from) / to;
  for (int i = 0; i < to; ++i) {
    const double start = i * step, end = (i + 1) * step;
    for (int s = static_cast<int>(start); s < from && s < end; ++s) {
      const double overlap = std::min<double>(end, s + 1) - std::max<double>(start, s);
      if (overlap > 0) taps[static_cast<std::size_t>(i)].push_back({s, static_cast<float>(overlap / step)});
    }
  }
  return taps;
}

// Enlarging: pixel centres line up ((i + 0.5) * from / to - 0.5); the
// outermost result pixels take the edge pixel alone.
Taps LinearTaps(int from, int to) {
  Taps taps(static_cast<std::size_t>(to));
  for (int i = 0; i < to; ++i) {
    const double centre = std::clamp((i + 0.5) * from / to - 0.5, 0.0, static_cast<double>(from - 1));
    const int left = static_cast<int>(centre);
    const auto right_weight = static_cast<float>(centre - left);
    auto& tap = taps[static_cast<std::size_t>(i)];
    tap.push_back({left, 1.0f - right_weight});
    if (right_weight > 0) tap.push_back({left + 1, right_weight});
  }
  return taps;
}

Taps TapsFor(int from, int to) {
  if (to < from) return AreaTaps(from, to);
  if (to > from) return LinearTaps(from, to);
  Taps same(static_cast<std::size_t>(to));
  for (int i = 0; i < to; ++i) same[static_cast<std::size_t>(i)].push_back({i, 1.0f});
  return same;
}

Premultiplied Unpack(std::uint32_t argb) {
  const float a = static_cast<float>(argb >> 24);
  const float k = a / 255.0f;
  return {static_cast<float>((argb >> 16) & 0xFF) * k, static_cast<float>((argb >> 8) & 0xFF) * k,
          static_cast<float>(argb & 0xFF) * k, a};
}

// Back to straight colour. A pixel left with no alpha is 0: it has no colour.
std::uint32_t Pack(const Premultiplied& p, bool hard_edges) {
  float alpha = std::clamp(p.a, 0.0f, 255.0f);
  if (hard_edges) alpha = alpha >= 127.5f ? 255.0f : 0.0f;
  const auto alpha_byte = static_cast<std::uint32_t>(std::lround(alpha));
  if (alpha_byte == 0 || p.a <= 0) return 0;
  const auto channel = [&](float c) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(c * 255.0f / p.a, 0.0f, 255.0f)));
  };
  return (alpha_byte << 24) | (channel(p.r) << 16) | (channel(p.g) << 8) | channel(p.b);
}

void Accumulate(Premultiplied& sum, const Premultiplied& p, float weight) {
  sum.r += p.r * weight;
  sum.g += p.g * weight;
  sum.b += p.b * weight;
  sum.a += p.a * weight;
}

bool HasHardAlpha(const Picture& picture) {
  return std::all_of(picture.pixels.begin(), picture.pixels.end(), [](std::uint32_t p) {
    const std::uint32_t a = p >> 24;
    return a == 0 || a == 255;
  });
}

}  // namespace

Picture ResamplePicture(const Picture& source, int width, int height) {
  const auto source_count = static_cast<std::size_t>(std::max(source.width, 0)) *
                            static_cast<std::size_t>(std::max(source.height, 0));
  if (width < 1 || height < 1 || source_count == 0 || source.pixels.size() < source_count) return {};
  if (width == source.width && height == source.height) return source;

  const Taps across = TapsFor(source.width, width);
  const Taps down = TapsFor(source.height, height);
  const auto sw = static_cast<std::size_t>(source.width);
  const auto w = static_cast<std::size_t>(width);

  // Rows first: every source row resampled to the new width.
  std::vector<Premultiplied> rows(w * static_cast<std::size_t>(source.height));
  std::vector<Premultiplied> line(sw);
  for (std::size_t y = 0; y < static_cast<std::size_t>(source.height); ++y) {
    for (std::size_t x = 0; x < sw; ++x) line[x] = Unpack(source.pixels[y * sw + x]);
    for (std::size_t x = 0; x < w; ++x)
      for (const Tap& tap : across[x]) Accumulate(rows[y * w + x], line[static_cast<std::size_t>(tap.index)], tap.weight);
  }

  const bool hard_edges = HasHardAlpha(source);
  Picture result{width, height, std::vector<std::uint32_t>(w * static_cast<std::size_t>(height))};
  for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y)
    for (std::size_t x = 0; x < w; ++x) {
      Premultiplied sum;
      for (const Tap& tap : down[y]) Accumulate(sum, rows[static_cast<std::size_t>(tap.index) * w + x], tap.weight);
      result.pixels[y * w + x] = Pack(sum, hard_edges);
    }
  return result;
}

}  // namespace quillet
