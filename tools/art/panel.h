// The side bar's panel art: the card background of the default theme, the
// handle strip at the bar's right and the exit button over the strip's top.
#pragma once

#include "canvas.h"

namespace quillet::art {

// The card's face, which lies behind the drive icons.
Paint CardFace();

// 156 x 48. Cards stand every 43 px, so the next card covers the last five
// rows; the meter bar is drawn into the groove at x 3 to 153, y 34 to 40.
Picture Card();

// 21 x 63, its flat left side against the cards.
Picture HandleStrip();

// 20 x 21, drawn over the strip at (1, 1).
Picture ExitButton();

}  // namespace quillet::art
