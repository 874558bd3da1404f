// The memory bitmap a window paints into before one copy to the screen. It
// is rebuilt only when the window's size changes.
#pragma once

#include <optional>

#include "platform/win32/handles.h"

namespace quillet::win32 {

class BackBuffer {
 public:
  // A memory DC of at least width x height compatible with `target`, or null.
  [[nodiscard]] HDC Prepare(HDC target, int width, int height) noexcept;

 private:
  // Destroyed in reverse: the bitmap leaves the DC before either is deleted.
  UniqueDc dc_;
  UniqueBitmap bitmap_;
  std::optional<ScopedSelectObject> selection_;
  int width_ = 0, height_ = 0;
};

}  // namespace quillet::win32
