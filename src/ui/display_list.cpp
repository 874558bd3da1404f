#include "ui/display_list.h"

namespace quillet {

void DisplayList::FillRect(const TwipsRect& rect, Colour colour) {
  Op op;
  op.kind = Op::kFill;
  op.rect = rect;
  op.colour = colour;
  ops.push_back(std::move(op));
}

void DisplayList::DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                           TextAlign align) {
  Op op;
  op.kind = Op::kText;
  op.rect = rect;
  op.text = std::string(text);
  op.colour = colour;
  op.font = font;
  op.align = align;
  ops.push_back(std::move(op));
}

void DisplayList::DrawTextAt(int x, int y, std::string_view text, const Font& font, Colour colour) {
  Op op;
  op.kind = Op::kTextAt;
  op.x1 = x;
  op.y1 = y;
  op.text = std::string(text);
  op.colour = colour;
  op.font = font;
  ops.push_back(std::move(op));
}

void DisplayList::DrawLine(int x1, int y1, int x2, int y2, Colour colour) {
  Op op;
  op.kind = Op::kLine;
  op.x1 = x1;
  op.y1 = y1;
  op.x2 = x2;
  op.y2 = y2;
  op.colour = colour;
  ops.push_back(std::move(op));
}

void DisplayList::DrawPicture(const Picture& picture, const TwipsRect& dest) {
  Op op;
  op.kind = Op::kPicture;
  op.rect = dest;
  op.picture = std::make_shared<const Picture>(picture);
  ops.push_back(std::move(op));
}

void DisplayList::PushLayer(const TwipsRect& rect, Colour fill) {
  Op op;
  op.kind = Op::kPushLayer;
  op.rect = rect;
  op.colour = fill;
  ops.push_back(std::move(op));
}

void DisplayList::PopLayer(std::optional<Colour> key) {
  Op op;
  op.kind = Op::kPopLayer;
  op.key = key;
  ops.push_back(std::move(op));
}

bool DisplayList::DrawThemedButton(const TwipsRect& rect, int state) {
  Op op;
  op.kind = Op::kThemedButton;
  op.rect = rect;
  op.x1 = state;
  ops.push_back(std::move(op));
  return true;
}

void DisplayList::Replay(Painter& target, int dx, int dy) const {
  const auto moved = [dx, dy](TwipsRect r) {
    r.left += dx;
    r.top += dy;
    return r;
  };
  for (const Op& op : ops) {
    switch (op.kind) {
      case Op::kFill: target.FillRect(moved(op.rect), op.colour); break;
      case Op::kText: target.DrawText(moved(op.rect), op.text, op.font, op.colour, op.align); break;
      case Op::kTextAt: target.DrawTextAt(op.x1 + dx, op.y1 + dy, op.text, op.font, op.colour); break;
      case Op::kLine: target.DrawLine(op.x1 + dx, op.y1 + dy, op.x2 + dx, op.y2 + dy, op.colour); break;
      case Op::kPicture:
        if (op.picture) target.DrawPicture(*op.picture, moved(op.rect));
        break;
      case Op::kPushLayer: target.PushLayer(moved(op.rect), op.colour); break;
      case Op::kPopLayer: target.PopLayer(op.key); break;
      case Op::kThemedButton: (void)target.DrawThemedButton(moved(op.rect), op.x1); break;
    }
  }
}

std::vector<std::string> DisplayList::Texts() const {
  std::vector<std::string> out;
  for (const Op& op : ops)
    if (op.kind == Op::kText || op.kind == Op::kTextAt) out.push_back(op.text);
  return out;
}

}  // namespace quillet
