#include "shell/Menu.h"

#include <vector>

#include "launch/Form11.h"
#include "shell/Form1.h"

namespace quillet {
namespace {

constexpr std::uint32_t kIdleMs = 500;

FormArgs MenuArgs() {
  FormArgs args;
  args.name = "Menu";
  args.bounds = {0, 0, 3000, 2000};
  return args;
}

}  // namespace

Menu::Menu(Ui& ui, Form1& form1, Platform& platform)
    : Form(ui, MenuArgs()), Timer1(ui.Timers(), 3000, false), form1_(form1), platform_(platform) {
  Timer1.on_timer = [this] { this->ui().Guard([this] { Timer1_Timer(); }); };
}

PopupMenu Menu::Items() {
  return {{{kMonitorx, "Sleep Monitor"},
           {kReset, "Reset Position"},
           {kQL, "Hide/Show QLaunch"},
           {kHide, "Hide/Show"},
           {kExit, "&Exit"}}};
}

void Menu::Form_Load() { Timer1.SetEnabled(true); }

// Unloading ends a pop-up that still stands; its timer goes with the form.
void Menu::Form_Unload() {
  Timer1.SetEnabled(false);
  ui().EndMenu();
}

void Menu::Timer1_Timer() {
  const auto last_input = platform_.clock.LastInputTick();
  if (!last_input || platform_.clock.TickCount() - *last_input <= kIdleMs) return;
  Timer1.SetEnabled(false);
  Unload();
}

void Menu::ItemClicked(int item) {
  switch (item) {
    case kMonitorx: Monitorx_Click(); break;
    case kReset: reset_Click(); break;
    case kQL: QL_Click(); break;
    case kHide: Hide_Click(); break;
    case kExit: Exit_Click(); break;
    default: break;
  }
}

// The monitor's sleep window is still to come; the menu closes as it will then.
void Menu::Monitorx_Click() {
  Timer1.SetEnabled(false);
  Unload();
}

void Menu::reset_Click() {
  if (platform_.dialogs.MessageBox("Are You Sure ?", kYesNo, "reset position") != kAnswerYes) return;
  form1_.SetTop(0);
  form1_.SetLeft(0);
  // The launch bar follows, loaded if it was closed; beside a bar at the
  // left it stands one width further out than at start.
  Form11& bar = form1_.Form11();
  bar.Load();
  if (ui().Screen().width_twips / 2 < form1_.Left())
    bar.SetLeft(form1_.Left() - bar.Width());
  else
    bar.SetLeft(form1_.Width() + form1_.Left() + bar.Width());
  bar.SetTop(form1_.ImageD(1).Top() + form1_.Top());
}

// Closes an open launch bar, else shows it. The walk goes over the windows
// open when it starts, so the bar it shows isn't met and closed again.
void Menu::QL_Click() {
  Timer1.SetEnabled(false);
  for (Form* form : std::vector<Form*>(ui().OpenForms())) {
    if (form->Name() == "Form11") {
      form->Unload();
      break;
    }
    form1_.Form11().Show();
  }
}

void Menu::Hide_Click() {
  if (form1_.GetWindowState() == kNormal) {
    form1_.SetWindowState(kMinimized);
  } else if (form1_.GetWindowState() == kMinimized) {
    form1_.SetWindowState(kNormal);
    form1_.Show();
    form1_.Invalidate();
  }
  Timer1.SetEnabled(false);
}

void Menu::Exit_Click() { form1_.ExitProgram(false); }

}  // namespace quillet
