// Marks laid over a drive card: the drop marker while files are dragged over
// it and the eject buttons under the pointer. Their outline pixels are
// blended with the card's face, which lies behind them.
#pragma once

#include "canvas.h"

namespace quillet::art {

// 24 x 24, laid over the card at (6, 0).
Picture DropMarker();

// 64 x 48, laid over the card at (115, 0). The window ends about 42 px
// further right, so the button is drawn in the picture's left part and the
// rest stays see-through.
Picture EjectDisc();
Picture EjectUsb();

}  // namespace quillet::art
