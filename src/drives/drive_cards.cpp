#include "drives/drive_cards.h"

#include "core/value.h"

namespace quillet {
namespace {
constexpr float kBarLength = 2265;
}

std::string CardText(std::string_view drive, std::string_view label, std::string_view free_text,
                     std::string_view total_text) {
  std::string text = "[";
  text += drive;
  text += "] ";
  text += label;
  text += "\r\n";
  text += free_text;
  text += "GB free of ";
  text += total_text;
  text += "GB";
  return text;
}

std::string CardDrive(std::string_view card_text) {
  return std::string(card_text.substr(std::min<std::size_t>(1, card_text.size()), 2));
}

BarPicture BarPictureFor(int pct) {
  // Exactly 25 passes none of the three tests and keeps what the bar had.
  if (pct > 25) return BarPicture::kPlenty;
  if (pct < 25 && pct > 5) return BarPicture::kLow;
  if (pct < 10) return BarPicture::kCritical;
  return BarPicture::kKeep;
}

std::optional<int> FreePercent(std::string_view free_text, std::string_view total_text) {
  const double total = Val(total_text);
  if (total == 0) return std::nullopt;
  const auto pct = ToInt16(Val(free_text) * 100 / total);
  if (!pct) return std::nullopt;
  return *pct;
}

float BarWidth(std::string_view free_text, std::string_view total_text) {
  const double total = Val(total_text);
  if (total == 0) return kBarLength;
  const double free_share = Val(free_text) * 2265 * 100 / total;
  return static_cast<float>(kBarLength - static_cast<float>(free_share / 100));
}

}  // namespace quillet
