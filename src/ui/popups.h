// What a form asks its host to show above it: a tool tip over an area of
// the form, and a pop-up menu.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/units.h"

namespace quillet {

struct ToolTip {
  std::string text;
  std::string title;
  int icon = 0;          // 0 none, 1 information, 2 warning, 3 error
  bool balloon = false;
  bool right_to_left = false;
  std::optional<Colour> back_color;
  bool operator==(const ToolTip&) const = default;
};

struct MenuItem {
  int id = 0;  // what the menu returns when the item is chosen; 0 for a separator
  std::string text;
  bool checked = false;
  bool enabled = true;
};

struct PopupMenu {
  std::vector<MenuItem> items;
  int default_item = 0;  // id of the item shown in bold, 0 none
};

// Where a pop-up menu stands against its point.
enum MenuAlign : int { kMenuLeftAlign = 0, kMenuCenterAlign = 4, kMenuRightAlign = 8, kMenuBottomAlign = 0x20 };

}  // namespace quillet
