// Drawing surface of a form, in the form's twips.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/system_colours.h"
#include "core/units.h"

namespace quillet {

struct Font {
  std::string name = "Tahoma";
  double size = 8.25;  // points
  bool bold = false;
  bool operator==(const Font&) const = default;
};

// Pixels of a picture, row by row from the top, as 0xAARRGGBB.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};
using PicturePtr = std::shared_ptr<const Picture>;

// 256 colours as 0x00RRGGBB, a palette for 8-bit pixels.
using Palette = std::array<std::uint32_t, 256>;

// Retained pictures (ui/retained_picture.h).
class IndexedPicture;
class ArgbSurface;
struct PictureRect;

enum class TextAlign { kLeft = 0, kRight = 1, kCenter = 2 };

// Colours handed to a painter may name a system colour (top bit set); the
// painter resolves them through its host.
class Painter {
 public:
  virtual ~Painter() = default;
  virtual void FillRect(const TwipsRect& rect, Colour colour) = 0;
  // Text wrapped into `rect`.
  virtual void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                        TextAlign align) = 0;
  // Text with its top left at (x, y), one line per line break, no wrapping.
  virtual void DrawTextAt(int x, int y, std::string_view text, const Font& font, Colour colour) = 0;
  // A line one pixel wide from (x1, y1) up to, not including, (x2, y2).
  virtual void DrawLine(int x1, int y1, int x2, int y2, Colour colour) = 0;
  // Draws the picture scaled to `dest`.
  virtual void DrawPicture(const Picture& picture, const TwipsRect& dest) = 0;
  // Part `source` of a retained picture scaled to `dest`; the indexed one in
  // `colours` with index `transparent` (-1 for none) see-through. A host
  // that keeps no copy of its own draws them as pictures (the default).
  virtual void DrawIndexed(const IndexedPicture& picture, const PictureRect& source, const Palette& colours,
                           int transparent, const TwipsRect& dest);
  virtual void DrawSurface(const ArgbSurface& surface, const PictureRect& source, const TwipsRect& dest);
  // What is drawn until the matching PopLayer goes onto a layer over `rect`,
  // first filled with `fill` and clipped to `rect`. PopLayer puts the layer
  // on the surface; with a key, every pixel of exactly that colour is left
  // out, so what lies under the layer shows there.
  virtual void PushLayer(const TwipsRect& rect, Colour fill) = 0;
  virtual void PopLayer(std::optional<Colour> key) = 0;
  // A push button in the system's visual style (state 1 normal, 2 hot,
  // 3 pressed, 4 disabled); false when the host has no style to draw with.
  virtual bool DrawThemedButton(const TwipsRect& /*rect*/, int /*state*/) { return false; }
  // The colour actually drawn for `colour`; the default is the classic scheme.
  virtual Colour Resolve(Colour colour) const { return ResolveColour(colour); }
};

}  // namespace quillet
