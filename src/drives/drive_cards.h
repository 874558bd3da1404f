// What a drive card shows, worked out from a drive's texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Vertical step from one card to the next, and the window above the cards.
constexpr int kCardStep = 645;

// "[C:] SYSTEM\r\n12.34GB free of 931.32GB". Characters 2 and 3 are the
// card's drive, the only record of it the card handlers have.
std::string CardText(std::string_view drive, std::string_view label, std::string_view free_text,
                     std::string_view total_text);

// The drive a card text names ("C:"), read back from characters 2 and 3.
std::string CardDrive(std::string_view card_text);

// Which picture the meter bar takes for the free share in percent.
enum class BarPicture { kKeep, kPlenty, kLow, kCritical };
BarPicture BarPictureFor(int pct);

// The free share in percent of the two-decimal texts, rounded half to even
// to a 16-bit integer; nothing when that fails.
std::optional<int> FreePercent(std::string_view free_text, std::string_view total_text);

// The used share of 2265 twips, from the two-decimal texts, in single precision.
float BarWidth(std::string_view free_text, std::string_view total_text);

}  // namespace quillet
