// Drawing surface of a form, in the form's twips.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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

enum class TextAlign { kLeft = 0, kRight = 1, kCenter = 2 };

class Painter {
 public:
  virtual ~Painter() = default;
  virtual void FillRect(const TwipsRect& rect, Colour colour) = 0;
  virtual void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                        TextAlign align) = 0;
  // Draws the picture scaled to `dest`.
  virtual void DrawPicture(const Picture& picture, const TwipsRect& dest) = 0;
};

}  // namespace quillet
