// Colours with the top bit set name a system colour by their low byte.
#pragma once

#include "core/units.h"

namespace quillet {

constexpr Colour kSystemButtonFace = 0x8000000F;
constexpr Colour kSystemWindowFrame = 0x80000006;

// The colour to draw with: system colours resolve to the classic scheme's values.
constexpr Colour ResolveColour(Colour colour) {
  if ((colour & 0x80000000u) == 0) return colour;
  switch (colour & 0xFF) {
    case 5: return Rgb(255, 255, 255);   // window
    case 6: return Rgb(100, 100, 100);   // window frame
    case 8: return Rgb(0, 0, 0);         // window text
    case 15: return Rgb(240, 240, 240);  // button face
    case 16: return Rgb(160, 160, 160);  // button shadow
    case 18: return Rgb(0, 0, 0);        // button text
    case 20: return Rgb(255, 255, 255);  // button highlight
    default: return Rgb(192, 192, 192);
  }
}

}  // namespace quillet
