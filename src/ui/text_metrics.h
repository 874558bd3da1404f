// Measuring text in the host's real fonts, in twips.
#pragma once

#include <string_view>

#include "ui/painter.h"

namespace quillet {

struct TwipsSize {
  int width = 0;
  int height = 0;
  bool operator==(const TwipsSize&) const = default;
};

class TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  // The extent of `text` drawn with DrawTextAt: the widest line, and one
  // line height for each line (an empty text still has one line's height).
  [[nodiscard]] virtual TwipsSize Measure(const Font& font, std::string_view text) = 0;
};

}  // namespace quillet
