// Scaling pictures for drawing: the bar's art is drawn at sizes other than
// its own (a 120 x 11 meter squeezed to 151 x 7, every card enlarged by half
// at 144 DPI), and nearest-neighbour stretching makes that blocky.
#pragma once

#include "ui/painter.h"

namespace quillet {

// `source` at `width` x `height`: each axis averages the covered area when
// it shrinks and interpolates linearly between pixel centres when it grows.
// Colours are weighted by alpha, so see-through pixels lend no colour to
// their neighbours. A source whose alpha is only 0 or 255 (every GIF) keeps
// hard edges: a result pixel is opaque when at least half of what it covers
// is, else fully see-through, so a key-coloured window shows no fringe.
// The source comes back unchanged when the size matches; a size below 1 or
// a source without pixels gives an empty picture.
[[nodiscard]] Picture ResamplePicture(const Picture& source, int width, int height);

}  // namespace quillet
