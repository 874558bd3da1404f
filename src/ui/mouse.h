#pragma once

namespace quillet {

// Button bits and shift state of a mouse event; positions are twips relative
// to the control that receives it.
enum MouseButton : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

struct MouseArgs {
  int button = 0;
  int shift = 0;
  int x = 0;
  int y = 0;
};

}  // namespace quillet
