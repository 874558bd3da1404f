// A painter that writes down what a form draws, for tests to read.
#pragma once

#include <string>
#include <vector>

#include "ui/painter.h"

namespace quillet::testing {

class RecordingPainter : public Painter {
 public:
  struct Op {
    enum Kind { kFill, kText, kPicture } kind;
    TwipsRect rect;
    std::string text;  // the text drawn
    Colour colour = 0;
    Font font;
  };
  void FillRect(const TwipsRect& rect, Colour colour) override { ops.push_back({Op::kFill, rect, {}, colour, {}}); }
  void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                TextAlign) override {
    ops.push_back({Op::kText, rect, std::string(text), colour, font});
  }
  void DrawPicture(const Picture&, const TwipsRect& dest) override { ops.push_back({Op::kPicture, dest, {}, 0, {}}); }

  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& op : ops)
      if (op.kind == Op::kText) out.push_back(op.text);
    return out;
  }
  std::vector<Op> ops;
};

}  // namespace quillet::testing
