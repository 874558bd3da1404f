// The hidden form that holds the tray icon's menu; it is loaded for one
// pop-up and closes itself once the user has been idle.
#pragma once

#include "platform/platform.h"
#include "ui/form.h"
#include "ui/popups.h"
#include "ui/timer.h"

namespace quillet {

class Form1;

class Menu : public Form {
 public:
  enum Item : int { kMonitorx = 1, kReset, kQL, kHide, kExit };

  Menu(Ui& ui, Form1& form1, Platform& platform);

  // The menu bar's items in order, as a pop-up.
  static PopupMenu Items();
  void ItemClicked(int item);

  Timer Timer1;

 protected:
  void Form_Load() override;
  void Form_Unload() override;

 private:
  void Timer1_Timer();
  void Monitorx_Click();
  void reset_Click();
  void QL_Click();
  void Hide_Click();
  void Exit_Click();

  Form1& form1_;
  Platform& platform_;
};

}  // namespace quillet
