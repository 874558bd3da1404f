#pragma once

namespace quillet {

// Button bits and shift state of a mouse event; positions are twips relative
// to the control that receives it.
enum MouseButton : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
// Shift state bits of mouse and key events.
enum ShiftState : int { kShiftMask = 1, kCtrlMask = 2, kAltMask = 4 };

struct MouseArgs {
  int button = 0;
  int shift = 0;
  int x = 0;
  int y = 0;
};

enum class MouseEventKind { kDown, kMove, kUp, kDblClick };
enum class KeyEventKind { kDown, kUp, kPress };

// Key codes the toolkit itself acts on.
enum KeyCode : int {
  kVkTab = 9,
  kVkReturn = 13,
  kVkEscape = 27,
  kVkSpace = 32,
  kVkLeft = 37,
  kVkUp = 38,
  kVkRight = 39,
  kVkDown = 40,
};

// A point on the screen, in twips.
struct ScreenPoint {
  int x = 0, y = 0;
  bool operator==(const ScreenPoint&) const = default;
};

}  // namespace quillet
