#include "launch_art.h"

#include <algorithm>
#include <cmath>

namespace quillet::art {
namespace {

const Rgb kBarGrey = Hex(0x626262);
const Rgb kButtonEdge = Hex(0x2E3136);
const Rgb kWhite{1, 1, 1};

// The outline of the empty slot's well, whose sides run from 2 to 25 with
// corners of radius 3: the corners drawn whole, each side between them in
// three dashes of 3 pixels with gaps of 2, centred, on whole pixels.
Shape WellDashes() {
  return [](double x, double y) {
    const bool across = std::min(y - 2, 25 - y) < std::min(x - 2, 25 - x);  // on the top or bottom side
    const double along = across ? x : y;
    const bool corner = along < 5 || along >= 22;
    const bool dash = along >= 7 && std::fmod(along - 7, 5) < 3;
    return corner || dash ? -1.0 : 1.0;
  };
}

// Pixels of a 6 x 6 cross with its top left at (x, y): two pixels wide at the
// ends, meeting in a 2 x 2 middle, so it stays crisp at this size.
Shape PixelCross(double x, double y) {
  const int rows[6][2] = {{0, 2}, {1, 3}, {2, 4}, {2, 4}, {1, 3}, {0, 2}};  // left stroke's columns a row
  Shape cross = [](double, double) { return 1.0; };
  for (int row = 0; row < 6; ++row) {
    const double top = y + row, left = x + rows[row][0], right = x + rows[row][1];
    cross = Union(cross, Union(Box(left, top, right, top + 1), Box(2 * x + 6 - right, top, 2 * x + 6 - left, top + 1)));
  }
  return cross;
}

// The small button's body; `glyph` is drawn on it in white with a dark shade below.
Picture SmallButton(const Shape& glyph) {
  Canvas canvas(10, 10);
  const Shape body = Box(0, 0, 10, 10, 2.6);
  const Shape face = Box(1, 1, 9, 9, 1.8);
  canvas.Fill(body, Solid(kButtonEdge));
  canvas.Fill(face, Vertical({{1, Hex(0x9A9FA6)}, {4.5, Hex(0x7B8088)}, {9, Hex(0x5B6068)}}));
  canvas.Fill(Intersect(Rim(face, 1), Box(0, 0, 10, 2)), Solid(Hex(0xC4C8CE)));
  canvas.Fill(Offset(glyph, 0, 1), Solid(Hex(0x30343A)), 0.45);
  canvas.Fill(glyph, Solid(kWhite));
  // Corner pixels under half covered drop out; the rest keep the edge's colour.
  return canvas.Finish(kButtonEdge);
}

}  // namespace

Picture LaunchEmpty() {
  Canvas canvas(27, 27);
  canvas.Fill(Box(0, 0, 27, 27), Solid(kBarGrey));
  const Shape well = Box(2, 2, 25, 25, 3);
  // Sunk in a little: a lighter floor with a soft shade under its top edge.
  canvas.Fill(well, Vertical({{2, Hex(0x5E5E5E)}, {4.5, Hex(0x686868)}, {25, Hex(0x6C6C6C)}}));
  canvas.Fill(Intersect(Rim(well, 1), WellDashes()), Solid(Hex(0x8C8C8C)), 0.6);
  const Shape plus = Union(Box(13, 9, 14, 18), Box(9, 13, 18, 14));
  canvas.Fill(plus, Solid(Hex(0x848484)), 0.8);
  return canvas.Finish(kBarGrey);
}

Picture LaunchAdd() { return SmallButton(Union(Box(4, 2, 6, 8), Box(2, 4, 8, 6))); }

Picture LaunchRemove() { return SmallButton(Box(2, 4, 8, 6)); }

Picture LaunchClose() { return SmallButton(PixelCross(2, 2)); }

}  // namespace quillet::art
