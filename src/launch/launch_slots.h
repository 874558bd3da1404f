// A launch slot is one settings key with its target and one bitmap file
// with its picture; these are the rules that read and write them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/units.h"
#include "platform/platform.h"
#include "ui/picture_box.h"

namespace quillet {

// The grey of a slot without a colour of the user's.
inline constexpr Colour kSlotGrey = 0x626262;

// A slot's ground: the colour in `text4` unless it is empty or "T".
Colour SlotBackColour(std::string_view text4);
// "<i>Lanuch" of section "Form1".
std::string SlotKey(int index);
// "<program folder>\Launch Bar\<i>.bmp".
std::string SlotBitmapPath(ProcessService& process, int index);
std::string LaunchFolder(ProcessService& process);
// What a shortcut file points at.
std::string GetShortcutTarget(ShellService& shell, std::string_view path);

// Puts the icon on a slot: the box erased, the icon stretched over it, the
// image saved as the slot's bitmap and `target` as its key. Without an icon
// the user hears so and the slot keeps what it had saved. A bitmap that
// can't be written throws.
void CaptureSlot(Platform& platform, PictureBox& box, int index, const std::string& target, const ShellIcon* icon,
                 double twips_per_pixel);

}  // namespace quillet
