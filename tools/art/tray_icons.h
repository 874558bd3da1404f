// The program's own icon (window and notification area) and the hand cursor
// of the eject buttons. Unlike the GIFs these keep soft alpha, so their edge
// is smooth on any background.
#pragma once

#include "canvas.h"

namespace quillet::art {

// The side bar in miniature: three drive cards with their meters, drawn
// afresh for each size (16, 32 or 48) so that every edge falls on a pixel.
Picture AppIcon(int size);

// 32 x 32, a pointing hand; its hot spot is the fingertip below.
Picture HandCursor();
constexpr int kHandHotX = 8;
constexpr int kHandHotY = 1;

}  // namespace quillet::art
