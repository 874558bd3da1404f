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

TEST(Win32TimersTest, ATimerTicksAndCanBeStoppedFromItsOwnTick) {
  Win32Ui ui;
  Timer timer(ui.Timers(), 20, true);
  int ticks = 0;
  timer.on_timer = [&] {
    if (++ticks == 3) timer.SetEnabled(false);
  };
  PumpUntil(ui, 3000, [&] { return ticks >= 3; });
  ASSERT_EQ(ticks, 3);
  PumpUntil(ui, 200, [] { return false; });
  EXPECT_EQ(ticks, 3) << "no tick after the stop";
  EXPECT_FALSE(timer.Enabled());
}

TEST(Win32TimersTest, TimersTickByTheirOwnIdAndAStoppedOneIsGone) {
  Win32Ui ui;
  auto& timers = dynamic_cast<Win32Timers&>(ui.Timers());
  int fast = 0, slow = 0;
  const auto fast_id = timers.StartTimer(15, [&] { ++fast; });
  const auto slow_id = timers.StartTimer(400, [&] { ++slow; });
  EXPECT_NE(fast_id, slow_id);
  EXPECT_EQ(timers.Running(), 2u);
  PumpUntil(ui, 3000, [&] { return fast >= 4; });
  EXPECT_GE(fast, 4);
  EXPECT_EQ(slow, 0);
  timers.StopTimer(fast_id);
  timers.StopTimer(fast_id);  // twice is harmless
  const int fast_then = fast;
  PumpUntil(ui, 3000, [&] { return slow >= 1; });
  EXPECT_EQ(slow, 1);
  EXPECT_EQ(fast, fast_then);
  timers.StopTimer(slow_id);
  EXPECT_EQ(timers.Running(), 0u);
}

TEST(Win32TimersTest, EndingTheProgramEndsRunAndDoEventsKeepsTheQuitForIt) {
  Win32Ui ui;
  // A guard: if the quit were lost, this ends the loop with another code.
  const auto guard = ui.Timers().StartTimer(3000, [] { ::PostQuitMessage(7); });
  ui.EndAtOnce();
  ui.DoEvents();
  EXPECT_EQ(ui.Run(), 0);
  EXPECT_TRUE(ui.Ended());

  Win32Ui second;
  const auto ender = second.Timers().StartTimer(20, [&] { second.EndProgram(); });
  const auto guard2 = second.Timers().StartTimer(3000, [] { ::PostQuitMessage(7); });
  EXPECT_EQ(second.Run(), 0);
  second.Timers().StopTimer(ender);
  second.Timers().StopTimer(guard2);
  ui.Timers().StopTimer(guard);
}

}  // namespace
}  // namespace quillet::win32
