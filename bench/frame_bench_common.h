// What the frame-change benchmarks share: the two animations, a timer
// service that never fires (frames are stepped by hand), a count of heap
// allocations, and the measured loop: step one frame, paint it.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "ui/painter.h"
#include "ui/timer_service.h"
#include "widgets/gif/lzw.h"
#include "widgets/ucAniGIF.h"

namespace frame_bench {

using Bytes = std::vector<std::uint8_t>;

// Heap allocations made so far; counted by the replaced operator new of the
// benchmark's own executable (QUILLET_FRAME_BENCH_COUNT_ALLOCATIONS below).
inline std::atomic<long long>& Allocations() {
  static std::atomic<long long> count{0};
  return count;
}

class NoTimers : public quillet::TimerService {
 public:
  TimerId StartTimer(std::uint32_t, std::function<void()>) override { return ++last_; }
  void StopTimer(TimerId) override {}

 private:
  TimerId last_ = 0;
};

inline Bytes ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A 1024 x 768 animation that needs a canvas: a full first frame, then
// frames of 256 x 192 that wander over it, drawn with a see-through colour
// and kept (disposal 1), every fourth one restored afterwards (disposal 3).
inline Bytes LargeAnimation(int frames = 16) {
  constexpr int kWidth = 1024, kHeight = 768, kPatch = 256, kPatchHeight = 192;
  const auto lo = [](int v) { return static_cast<std::uint8_t>(v & 0xFF); };
  const auto hi = [](int v) { return static_cast<std::uint8_t>((v >> 8) & 0xFF); };
  Bytes out = {'G', 'I', 'F', '8', '9', 'a', lo(kWidth), hi(kWidth), lo(kHeight), hi(kHeight), 0xF7, 0, 0}, pixels;
  for (int i = 0; i < 256; ++i) out.insert(out.end(), {lo(i), lo(i * 3), lo(255 - i)});
  out.insert(out.end(), {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0});
  for (int f = 0; f < frames; ++f) {
    const bool first = f == 0;
    const int w = first ? kWidth : kPatch, h = first ? kHeight : kPatchHeight;
    const int left = first ? 0 : (f * 97) % (kWidth - kPatch), top = first ? 0 : (f * 61) % (kHeight - kPatchHeight);
    const int disposal = first ? 1 : (f % 4 == 0 ? 3 : 1);
    out.insert(out.end(), {0x21, 0xF9, 4, static_cast<std::uint8_t>(disposal << 2 | (first ? 0 : 1)), 4, 0, 255, 0});
    out.insert(out.end(), {0x2C, lo(left), hi(left), lo(top), hi(top), lo(w), hi(w), lo(h), hi(h), 0});
    pixels.clear();
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        pixels.push_back(!first && (x / 16 + y / 16) % 3 == 0 ? 255 : static_cast<std::uint8_t>((x + y + f * 9) % 255));
    quillet::LzwEncode(quillet::IndexImage{pixels.data(), w, h, w}, 8, out);
  }
  out.push_back(0x3B);
  return out;
}

struct Result {
  double micros_per_frame = 0;
  double allocations_per_frame = 0;
};

// Loads `bytes` into a control of its canvas's size, then steps and paints
// `frames` frames after a warm-up of one loop; the best of `rounds` counts.
// `after_paint` runs after each paint (a host's copy to the screen).
inline Result Measure(const Bytes& bytes, quillet::Painter& painter, int frames, int rounds,
                      const std::function<void()>& after_paint = {}) {
  NoTimers timers;
  quillet::ucAniGIF gif(timers, {.name = "bench", .bounds = {0, 0, 15, 15}});
  gif.SetStretch(4);  // the control takes the canvas's size: drawn 1:1
  gif.SetDelayAnimation(0);
  if (!gif.LoadAnimatedGIF_Array(bytes)) {
    std::printf("the animation did not load\n");
    std::exit(1);
  }
  gif.SetAction(2);
  const auto step = [&] {
    gif.SetAction(3);
    gif.Paint(painter);
    if (after_paint) after_paint();
  };
  for (int i = 0; i < gif.FrameCount() + 1; ++i) step();
  Result best{1e300, 0};
  for (int round = 0; round < rounds; ++round) {
    const long long allocations = Allocations().load();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < frames; ++i) step();
    const std::chrono::duration<double, std::micro> spent = std::chrono::steady_clock::now() - start;
    const double per_frame = spent.count() / frames;
    if (per_frame < best.micros_per_frame)
      best = {per_frame, static_cast<double>(Allocations().load() - allocations) / frames};
  }
  return best;
}

}  // namespace frame_bench

// Counts every heap allocation of the executable that includes this once.
#define QUILLET_FRAME_BENCH_COUNT_ALLOCATIONS                           \
  void* operator new(std::size_t size) {                                \
    frame_bench::Allocations().fetch_add(1, std::memory_order_relaxed); \
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;          \
    throw std::bad_alloc();                                             \
  }                                                                     \
  void operator delete(void* p) noexcept { std::free(p); }              \
  void operator delete(void* p, std::size_t) noexcept { std::free(p); }
