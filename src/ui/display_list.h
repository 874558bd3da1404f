// A surface that keeps what is drawn on it, to be put on a real surface
// later, moved by an offset: an owner-drawn control draws once when it
// changes and its container replays the drawing at every paint. Tests read
// the kept operations to see what was drawn, where, in which colour and order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/painter.h"

namespace quillet {

class DisplayList : public Painter {
 public:
  struct Op {
    enum Kind { kFill, kText, kTextAt, kLine, kPicture, kPushLayer, kPopLayer, kThemedButton };
    Kind kind = kFill;
    TwipsRect rect;          // fill, text, picture, themed button: the rectangle; layer: its bounds
    int x1 = 0, y1 = 0;      // text at: its origin; line: its start; themed button: x1 the state
    int x2 = 0, y2 = 0;      // line: its end
    std::string text;
    Colour colour = 0;       // as given, system colours unresolved; layer: its fill
    Font font;
    TextAlign align = TextAlign::kLeft;
    PicturePtr picture;
    std::optional<Colour> key;  // pop layer: the colour left out
    bool operator==(const Op&) const = default;
  };

  void FillRect(const TwipsRect& rect, Colour colour) override;
  void DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                TextAlign align) override;
  void DrawTextAt(int x, int y, std::string_view text, const Font& font, Colour colour) override;
  void DrawLine(int x1, int y1, int x2, int y2, Colour colour) override;
  void DrawPicture(const Picture& picture, const TwipsRect& dest) override;
  void PushLayer(const TwipsRect& rect, Colour fill) override;
  void PopLayer(std::optional<Colour> key) override;
  bool DrawThemedButton(const TwipsRect& rect, int state) override;

  // Draws every kept operation on `target`, moved by (dx, dy).
  void Replay(Painter& target, int dx = 0, int dy = 0) const;
  void Clear() { ops.clear(); }
  bool Empty() const { return ops.empty(); }

  // The texts drawn, in order.
  std::vector<std::string> Texts() const;

  std::vector<Op> ops;
};

}  // namespace quillet
