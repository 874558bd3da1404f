// The cost of one frame change of the GIF player in the Win32 host: step one
// frame, paint it through the GDI painter into a window's back buffer and
// copy that to the window, for the spinner and a 1024 x 768 animation on a
// canvas. Also the heap allocations and the GDI handles that the host's
// owners hold, before and after the frames.
//
// Usage: frame_bench_win.exe SPINNER.GIF   (run by bench/wine/frame_bench.sh)
#include <cstdio>

#include "../frame_bench_common.h"
#include "platform/win32/handles.h"
#include "ui/win32/back_buffer.h"
#include "ui/win32/gdi_painter.h"

QUILLET_FRAME_BENCH_COUNT_ALLOCATIONS

namespace {

using namespace quillet::win32;

UniqueWindow MakeWindow(int width, int height) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = ::DefWindowProcW;
  wc.hInstance = ::GetModuleHandleW(nullptr);
  wc.lpszClassName = L"FrameBench";
  ::RegisterClassW(&wc);
  UniqueWindow window(::CreateWindowExW(WS_EX_TOOLWINDOW, wc.lpszClassName, L"frame bench", WS_POPUP | WS_VISIBLE, 0, 0,
                                        width, height, nullptr, nullptr, wc.hInstance, nullptr));
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&msg);
  return window;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const struct {
    const char* name;
    frame_bench::Bytes bytes;
    int width, height, frames, rounds;
  } animations[] = {{"spinner 32 x 32", frame_bench::ReadFile(argv[1]), 32, 32, 2000, 5},
                    {"1024 x 768 on a canvas", frame_bench::LargeAnimation(), 1024, 768, 64, 5}};
  for (const auto& a : animations) {
    if (a.bytes.empty()) return 1;
    const UniqueWindow window = MakeWindow(a.width, a.height);
    const WindowDc screen(window.get());
    BackBuffer buffer;
    const HDC memory = buffer.Prepare(screen.get(), a.width, a.height);
    if (memory == nullptr) return 1;
    FontCache fonts;
    const HandleCounts before = LiveHandles();
    GdiPainter painter(memory, PixelScale(96), fonts);
    const auto shown = frame_bench::Measure(a.bytes, painter, a.frames, a.rounds, [&] {
      ::BitBlt(screen.get(), 0, 0, a.width, a.height, memory, 0, 0, SRCCOPY);
    });
    const auto buffered = frame_bench::Measure(a.bytes, painter, a.frames, a.rounds);
    const HandleCounts after = LiveHandles();
    std::printf("%s: %.2f us and %.1f heap allocations a frame change (%.2f us into the back buffer alone);"
                " GDI handles held: %ld before, %ld after\n",
                a.name, shown.micros_per_frame, shown.allocations_per_frame, buffered.micros_per_frame, before.gdi,
                after.gdi);
  }
  return 0;
}
