// The cost of one frame change of the GIF player in the headless host: step
// one frame and paint it, for the side bar's spinner and for a 1024 x 768
// animation composed on a canvas. Two painters: the recording one of the
// headless host (which keeps a copy of each picture so tests can read it),
// and one that keeps nothing, which leaves the control's own work.
#include <cstdio>

#include "frame_bench_common.h"
#include "ui/display_list.h"
#include "ui/retained_picture.h"

QUILLET_FRAME_BENCH_COUNT_ALLOCATIONS

namespace {

// Takes what it is given and keeps nothing.
class NullPainter : public quillet::Painter {
 public:
  void FillRect(const quillet::TwipsRect&, quillet::Colour) override {}
  void DrawText(const quillet::TwipsRect&, std::string_view, const quillet::Font&, quillet::Colour,
                quillet::TextAlign) override {}
  void DrawTextAt(int, int, std::string_view, const quillet::Font&, quillet::Colour) override {}
  void DrawLine(int, int, int, int, quillet::Colour) override {}
  void DrawPicture(const quillet::Picture&, const quillet::TwipsRect&) override {}
  void PushLayer(const quillet::TwipsRect&, quillet::Colour) override {}
  void PopLayer(std::optional<quillet::Colour>) override {}
  void DrawIndexed(const quillet::IndexedPicture&, const quillet::PictureRect&, const quillet::Palette&, int,
                   const quillet::TwipsRect&) override {}
  void DrawSurface(const quillet::ArgbSurface&, const quillet::PictureRect&, const quillet::TwipsRect&) override {}
};

}  // namespace

int main() {
  const struct {
    const char* name;
    frame_bench::Bytes bytes;
    int frames, rounds;
  } animations[] = {{"spinner 32 x 32", frame_bench::ReadFile(QUILLET_SOURCE_DIR "/resources/spinner.gif"), 2000, 5},
                    {"1024 x 768 on a canvas", frame_bench::LargeAnimation(), 64, 5}};
  for (const auto& a : animations) {
    quillet::DisplayList recording;
    const auto recorded = frame_bench::Measure(a.bytes, recording, a.frames, a.rounds, [&] { recording.Clear(); });
    NullPainter null;
    const auto own = frame_bench::Measure(a.bytes, null, a.frames, a.rounds);
    std::printf("%s: recording painter %.2f us and %.1f allocations a frame change; control alone %.2f us and %.1f allocations\n",
                a.name, recorded.micros_per_frame, recorded.allocations_per_frame, own.micros_per_frame,
                own.allocations_per_frame);
  }
  return 0;
}
