// The cards' drive icons, 38 x 47 each. A card draws its icon at its top
// left and its meter bar over the icon's lower part, and its text starts at
// x = 34: so every drawing stays within x 2 to 33 and y 2 to 32. Outline
// pixels are blended with `card`, the card's face behind the icon.
#pragma once

#include "canvas.h"

namespace quillet::art {

Picture SystemDisk(const Paint& card);
Picture HardDisk(const Paint& card);
Picture OpticalDisc(const Paint& card);
Picture RemovableDisk(const Paint& card);

// Silver with a rainbow sheen that turns with the angle, as a pressed disc shows.
Paint DiscSurface(double cx, double cy, double radius);

}  // namespace quillet::art
