// Statements whose failure has no effect, as in a handler that passes over
// errors: the next statement runs.
#pragma once

namespace quillet {

template <class F>
void PassOver(F&& statement) {
  try {
    statement();
  } catch (...) {
  }
}

}  // namespace quillet
