// The launch bar: a floating column of the user's programs beside the side
// bar, one slot a picture box, filled by dropping a file on it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "ui/control_array.h"
#include "ui/form.h"
#include "ui/picture_box.h"
#include "ui/visual.h"
#include "widgets/Caption.h"
#include "widgets/DFTrans.h"

namespace quillet {

class Form1;

class Form11 : public Form {
 public:
  Form11(Ui& ui, Form1& form1, Platform& platform);
  ~Form11() override;

  // Borderless, out of the task bar, see-through on the key colour.
  static FormArgs WindowArgs();

  quillet::Caption Caption1;  // the drag strip
  Image Image13;  // add a slot
  Image Image14;  // remove the last slot
  Image Image1;   // close the bar
  ControlArray<PictureBox> p;  // the slots, from 1
  DFTrans DFTrans1;

  // Handlers, as the window's controls raise them.
  void Image13_Click();
  void Image14_Click();
  void Image1_Click();
  void p_MouseDown(int index, const MouseArgs& args);
  void p_MouseMove(int index);
  void p_OLEDragDrop(int index, const std::vector<std::string>& files);

 protected:
  void Form_Load() override;

 private:
  void WireSlot(PictureBox& box, int index);
  void ResetToDesign();
  void PlaceBeside();
  // Sets a box's picture to the saved bitmap of its slot; false when there is none.
  bool LoadSlotBitmap(PictureBox& box, int index);
  void StackBelow(int index);
  void Caption1_MouseMove(const MouseArgs& args);
  std::string Setting(std::string_view section, std::string_view key, std::string_view fallback = {});

  Form1& form1_;
  Platform& platform_;
  std::int16_t grab_x_ = 0, grab_y_ = 0;  // where the strip was last seen under a free pointer
};

}  // namespace quillet
