// Real timers and the event loop.
#include <gtest/gtest.h>

#include "ui/timer.h"
#include "ui/win32/win32_ui.h"

namespace quillet::win32 {
namespace {

// Lets events run until `done` or the time is up.
template <class Done>
void PumpUntil(Win32Ui& ui, DWORD timeout_ms, Done done) {
  const DWORD start = ::GetTickCount();
  while (!done() && ::GetTickCount() - start < timeout_ms) {
    ui.DoEvents();
    ::Sleep(5);
  }
}

TEST(Win32TimersTest, TimersTickByTheirOwnIdAndStopEvenFromTheirOwnTick) {
  Win32Ui ui;
  auto& timers = dynamic_cast<Win32Timers&>(ui.Timers());
  Timer fast(timers, 15, true);
  int ticks = 0, slow = 0;
  fast.on_timer = [&] {
    if (++ticks == 3) fast.SetEnabled(false);
  };
  const auto slow_id = timers.StartTimer(400, [&] { ++slow; });
  EXPECT_EQ(timers.Running(), 2u);
  PumpUntil(ui, 3000, [&] { return ticks >= 3; });
  ASSERT_EQ(ticks, 3);
  EXPECT_EQ(timers.Running(), 1u);
  PumpUntil(ui, 3000, [&] { return slow >= 1; });
  EXPECT_EQ(slow, 1);
  EXPECT_EQ(ticks, 3) << "no tick after the stop";
  timers.StopTimer(slow_id);
  timers.StopTimer(slow_id);  // twice is harmless
  EXPECT_EQ(timers.Running(), 0u);
}

// Ended at once before the loop runs, or from a tick; a guard ends a loop that lost the quit.
TEST(Win32TimersTest, EndingTheProgramEndsRunAndDoEventsKeepsTheQuitForIt) {
  for (const bool at_once : {true, false}) {
    Win32Ui ui;
    (void)ui.Timers().StartTimer(3000, [] { ::PostQuitMessage(7); });
    const auto ender = ui.Timers().StartTimer(20, [&] { ui.EndProgram(); });
    if (at_once) {
      ui.Timers().StopTimer(ender);
      ui.EndAtOnce();
      ui.DoEvents();
    }
    EXPECT_EQ(ui.Run(), 0) << (at_once ? "at once" : "from a tick");
    EXPECT_TRUE(ui.Ended());
  }
}

}  // namespace
}  // namespace quillet::win32
