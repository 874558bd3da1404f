#include "ui/ui.h"

#include <algorithm>

#include "ui/form.h"

namespace quillet {

void Ui::EndProgram() {
  ended_ = true;
  // Unloading may open or close other forms; walk a copy.
  const auto open = open_forms_;
  for (Form* form : open) {
    if (std::find(open_forms_.begin(), open_forms_.end(), form) != open_forms_.end()) form->Unload();
  }
  QuitEventLoop();
}

void Ui::EndAtOnce() {
  ended_ = true;
  QuitEventLoop();
}

void Ui::ReportNoThrow(std::string_view what) noexcept {
  try {
    ReportError(what);
  } catch (...) {
  }
}

}  // namespace quillet
