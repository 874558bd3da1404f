#include "widgets/modFade.h"

#include <cstdint>

namespace quillet {
namespace {
// One alpha for every fade: a fade that starts while another runs takes it over.
std::int16_t fade_alpha = 255;
}  // namespace

void SetWindowAlpha(Form& form, int alpha) { form.SetAlpha(alpha); }

void FadeOutAndUnload(Form& form, int step) {
  fade_alpha = 255;
  for (;;) {
    if (fade_alpha - step > 0) {
      fade_alpha = static_cast<std::int16_t>(fade_alpha - step);
      SetWindowAlpha(form, fade_alpha);
      form.ui().DoEvents();
    } else {
      SetWindowAlpha(form, 0);
      break;
    }
  }
  form.Unload();
}

}  // namespace quillet
