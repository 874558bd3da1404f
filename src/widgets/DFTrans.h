// Placed on a form, makes one colour of it see-through: every pixel of the
// key colour shows what lies behind the window, and clicks pass through it.
#pragma once

#include "core/units.h"
#include "ui/form.h"

namespace quillet {

class DFTrans {
 public:
  // Takes the parent's back colour, as a control placed on it does.
  explicit DFTrans(Form& parent) : parent_(parent), trans_color_(parent.BackColor()) {}

  Colour TransColor() const { return trans_color_; }
  void SetTransColor(Colour colour) { trans_color_ = colour; }

  // Sited on the form: the form's window is keyed on kKeyColour, the
  // literal, whatever the property says.
  void Resize() {
    parent_.SetColourKey(kKeyColour);
    trans_color_ = parent_.BackColor();
  }

 private:
  Form& parent_;
  Colour trans_color_;
};

}  // namespace quillet
