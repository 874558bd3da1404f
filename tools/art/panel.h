// The side bar's panel art: the card background of the default theme and the
// handle strip at the bar's right, with the exit and options marks on it.
#pragma once

#include "canvas.h"

namespace quillet::art {

// What the outline of a picture drawn straight on the desktop is blended with.
Rgb DesktopMatte();

// The card's face, which lies behind the drive icons.
Paint CardFace();

// 156 x 48. Cards stand every 43 px, so the next card covers the last five
// rows; the meter bar is drawn into the groove at x 3 to 153, y 34 to 40.
Picture Card();

// 21 x 63, its flat left side against the cards. It shows the exit and
// options marks unlit; the lit pictures below cover them exactly.
Picture HandleStrip();

// 19 x 19, laid over the strip at (1, 1) while the pointer is on it.
Picture ExitLit();

// 19 x 20, laid over the strip at (1, 21) while the pointer is on it.
Picture OptionsLit();

}  // namespace quillet::art
