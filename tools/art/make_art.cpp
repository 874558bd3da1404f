// Writes the side bar's pictures as GIF files into RESOURCES_DIR/art: the
// meter bars, the drive icons, the default card background, the handle strip
// with its lit exit and options marks, the quick buttons' icons, the side
// controls, the marks laid over a card and the launch bar's empty slot and
// buttons; and into RESOURCES_DIR itself the program's icon and the eject
// buttons' hand cursor. The same bytes come out on every run.
// Usage: make_art RESOURCES_DIR
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "canvas.h"
#include "card_marks.h"
#include "drive_icons.h"
#include "gif_file.h"
#include "ico_file.h"
#include "launch_art.h"
#include "panel.h"
#include "quick_icons.h"
#include "tray_icons.h"

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
  std::string file;  // under RESOURCES_DIR
  std::function<std::vector<std::uint8_t>()> bytes;
};

Output Gif(const char* file, std::function<Picture()> draw) {
  return {std::string("art/") + file, [draw = std::move(draw)] { return EncodeGif(draw()); }};
}

std::vector<Output> Outputs() {
  const Paint card = CardFace();
  return {
      Gif("bar_blue.gif", [] { return MeterBar(120, Hex(0x2C9EC4)); }),
      Gif("bar_amber.gif", [] { return MeterBar(120, Hex(0xFCBE6C)); }),
      Gif("bar_red.gif", [] { return MeterBar(120, Hex(0xFC6A6C)); }),
      Gif("thin_blue.gif", [] { return ThinBar(128, Hex(0x2C9EC4)); }),
      Gif("thin_orange.gif", [] { return ThinBar(128, Hex(0xF5962A)); }),
      Gif("thin_darkred.gif", [] { return ThinBar(128, Hex(0xB02A2A)); }),
      Gif("drive_system.gif", [card] { return SystemDisk(card); }),
      Gif("drive_hdd.gif", [card] { return HardDisk(card); }),
      Gif("drive_cd.gif", [card] { return OpticalDisc(card); }),
      Gif("drive_removable.gif", [card] { return RemovableDisk(card); }),
      Gif("normal.gif", [] { return Card(); }),
      Gif("handle_strip.gif", [] { return HandleStrip(); }),
      Gif("exit_lit.gif", [] { return ExitLit(); }),
      Gif("options_lit.gif", [] { return OptionsLit(); }),
      Gif("lock.gif", [] { return Lock(); }),
      Gif("search.gif", [] { return Search(); }),
      Gif("folder.gif", [] { return Folder(); }),
      Gif("task_manager.gif", [] { return TaskManager(); }),
      Gif("run.gif", [] { return Run(); }),
      Gif("pin_gray.gif", [] { return Pin(PinColour::kGray); }),
      Gif("pin_blue.gif", [] { return Pin(PinColour::kBlue); }),
      Gif("pin_red.gif", [] { return Pin(PinColour::kRed); }),
      Gif("power.gif", [] { return Power(); }),
      Gif("windows_folder.gif", [] { return WindowsFolder(); }),
      Gif("auto_shutdown.gif", [] { return AutoShutdown(); }),
      Gif("magnifier.gif", [] { return Magnifier(); }),
      Gif("run_external.gif", [] { return RunExternal(); }),
      Gif("drop_marker.gif", [] { return DropMarker(); }),
      Gif("eject_disc.gif", [] { return EjectDisc(); }),
      Gif("eject_usb.gif", [] { return EjectUsb(); }),
      Gif("launch_empty.gif", [] { return LaunchEmpty(); }),
      Gif("launch_add.gif", [] { return LaunchAdd(); }),
      Gif("launch_remove.gif", [] { return LaunchRemove(); }),
      Gif("launch_close.gif", [] { return LaunchClose(); }),
      {"Quillet.ico", [] { return EncodeIcon({AppIcon(16), AppIcon(32), AppIcon(48)}); }},
      {"hand.cur", [] { return EncodeCursor(HandCursor(), kHandHotX, kHandHotY); }},
  };
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_art RESOURCES_DIR\n");
    return 2;
  }
  try {
    for (const Output& output : Outputs())
      WriteFile(std::string(argv[1]) + "/" + output.file, output.bytes());
  } catch (const std::exception& e) {
    std::fprintf(stderr, "make_art: %s\n", e.what());
    return 1;
  }
  return 0;
}
