#include "drives/Form7.h"

namespace quillet {
namespace {

// The spinner is 32 x 32 pixels; the window is its size.
constexpr int kSide = 480;
// How far below and right of the pointer the splash hangs.
constexpr int kPointerGap = 200;

}  // namespace

FormArgs Form7::WindowArgs() {
  FormArgs args;
  args.name = "Form7";
  args.bounds = {0, 0, kSide, kSide};
  args.border = false;
  args.show_in_taskbar = false;
  // The splash only shows; the window the user works in keeps the keys.
  args.activate_on_show = false;
  args.back_color = kKeyColour;
  return args;
}

Form7::Form7(Ui& ui, ResourceService& resources)
    : Form(ui, WindowArgs()),
      Timer1(ui.Timers(), 10, false),
      ucAniGIF1(ui.Timers(), {"ucAniGIF1", {0, 0, kSide, kSide}}),
      DFTrans1(*this) {
  AddVisual(ucAniGIF1);
  if (auto bytes = resources.Resource("GIF", "SPINNER")) (void)ucAniGIF1.LoadAnimatedGIF_Array(std::move(*bytes));
  Timer1.on_timer = [this] { this->ui().Guard([this] { Timer1_Timer(); }); };
  DFTrans1.Resize();
}

Form7::~Form7() { RemoveVisual(ucAniGIF1); }

void Form7::Form_Load() {
  SetBackColor(kKeyColour);
  Timer1.SetEnabled(true);
  // The copy that follows holds the timer up: the splash starts at the pointer.
  Timer1_Timer();
}

void Form7::Timer1_Timer() {
  const ScreenPoint p = ui().PointerPosition();
  Move({p.x + kPointerGap, p.y + kPointerGap, Width(), Height()});
}

}  // namespace quillet
