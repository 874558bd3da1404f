// The copy splash: a small spinner that hangs below right of the pointer
// while dropped files are copied.
#pragma once

#include "platform/resources.h"
#include "ui/form.h"
#include "ui/timer.h"
#include "widgets/DFTrans.h"
#include "widgets/ucAniGIF.h"

namespace quillet {

class Form7 : public Form {
 public:
  Form7(Ui& ui, ResourceService& resources);
  ~Form7() override;

  // Borderless, out of the task bar, as small as the spinner.
  static FormArgs WindowArgs();

  Timer Timer1;
  ucAniGIF ucAniGIF1;
  DFTrans DFTrans1;

 protected:
  void Form_Load() override;

 private:
  void Timer1_Timer();
};

}  // namespace quillet
