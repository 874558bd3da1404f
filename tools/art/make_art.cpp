// Writes the side bar's pictures as GIF files into one folder: the meter
// bars, the drive icons, the default card background, the handle strip with
// its lit exit and options marks, the quick buttons' icons and the side
// controls. The same bytes come out on every run.
// Usage: make_art OUT_DIR
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "canvas.h"
#include "drive_icons.h"
#include "gif_file.h"
#include "panel.h"
#include "quick_icons.h"

namespace {

using namespace quillet::art;
using quillet::Picture;

// A glossy bar of one colour: a light line on top, a lighter upper half, the
// colour itself from the middle down and a darker last row. It changes only
// from top to bottom, since the bar is stretched sideways and cut to length.
Picture MeterBar(int width, Rgb mid) {
  Canvas canvas(width, 11);
  canvas.Fill(Box(0, 0, width, 11), Vertical({{0.5, Lighter(mid, 0.6)},
                                              {1.5, Lighter(mid, 0.36)},
                                              {4.5, Lighter(mid, 0.2)},
                                              {5.5, mid},
                                              {9.5, Darker(mid, 0.12)},
                                              {10.5, Darker(mid, 0.35)}}));
  return canvas.Finish(mid);
}

// The thin set: the same idea with a softer step, seven rows high.
Picture ThinBar(int width, Rgb mid) {
  Canvas canvas(width, 7);
  canvas.Fill(Box(0, 0, width, 7), Vertical({{0.5, Lighter(mid, 0.45)},
                                             {1.5, Lighter(mid, 0.18)},
                                             {3.5, mid},
                                             {5.5, Darker(mid, 0.1)},
                                             {6.5, Darker(mid, 0.3)}}));
  return canvas.Finish(mid);
}

struct Output {
  const char* file;
  std::function<Picture()> draw;
};

std::vector<Output> Outputs() {
  const Paint card = CardFace();
  return {
      {"bar_blue.gif", [] { return MeterBar(120, Hex(0x2C9EC4)); }},
      {"bar_amber.gif", [] { return MeterBar(120, Hex(0xFCBE6C)); }},
      {"bar_red.gif", [] { return MeterBar(120, Hex(0xFC6A6C)); }},
      {"thin_blue.gif", [] { return ThinBar(128, Hex(0x2C9EC4)); }},
      {"thin_orange.gif", [] { return ThinBar(128, Hex(0xF5962A)); }},
      {"thin_darkred.gif", [] { return ThinBar(128, Hex(0xB02A2A)); }},
      {"drive_system.gif", [card] { return SystemDisk(card); }},
      {"drive_hdd.gif", [card] { return HardDisk(card); }},
      {"drive_cd.gif", [card] { return OpticalDisc(card); }},
      {"drive_removable.gif", [card] { return RemovableDisk(card); }},
      {"normal.gif", [] { return Card(); }},
      {"handle_strip.gif", [] { return HandleStrip(); }},
      {"exit_lit.gif", [] { return ExitLit(); }},
      {"options_lit.gif", [] { return OptionsLit(); }},
      {"lock.gif", [] { return Lock(); }},
      {"search.gif", [] { return Search(); }},
      {"folder.gif", [] { return Folder(); }},
      {"task_manager.gif", [] { return TaskManager(); }},
      {"run.gif", [] { return Run(); }},
      {"pin_gray.gif", [] { return Pin(PinColour::kGray); }},
      {"pin_blue.gif", [] { return Pin(PinColour::kBlue); }},
      {"pin_red.gif", [] { return Pin(PinColour::kRed); }},
      {"power.gif", [] { return Power(); }},
      {"windows_folder.gif", [] { return WindowsFolder(); }},
      {"auto_shutdown.gif", [] { return AutoShutdown(); }},
      {"magnifier.gif", [] { return Magnifier(); }},
      {"run_external.gif", [] { return RunExternal(); }},
  };
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_art OUT_DIR\n");
    return 2;
  }
  try {
    for (const Output& output : Outputs())
      WriteFile(std::string(argv[1]) + "/" + output.file, EncodeGif(output.draw()));
  } catch (const std::exception& e) {
    std::fprintf(stderr, "make_art: %s\n", e.what());
    return 1;
  }
  return 0;
}
