// The launch bar's pictures: the empty slot and the small buttons of the
// bar's window.
#pragma once

#include "canvas.h"

namespace quillet::art {

// 27 x 27, an empty slot. It lies at the top left of a 29 x 29 box of the
// bar's grey 0x626262, so its own edge is that grey and the box's last two
// rows and columns continue it.
Picture LaunchEmpty();

// 10 x 10 buttons on the bar's window, whose key colour is cut out around
// them: their rounded corners are see-through, never blended with the key.
Picture LaunchAdd();
Picture LaunchRemove();
Picture LaunchClose();

}  // namespace quillet::art
