// Whole windows made see-through by an alpha, and faded away.
#pragma once

#include "ui/form.h"

namespace quillet {

void SetWindowAlpha(Form& form, int alpha);

// Fades from 255 down by `step`, letting events run after each step, then
// unloads the form. A step of 0 never ends: callers pass a positive step.
void FadeOutAndUnload(Form& form, int step);

}  // namespace quillet
