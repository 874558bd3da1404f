#include "ui/timer.h"

#include <gtest/gtest.h>

#include "headless/headless_ui.h"

namespace quillet::testing {
namespace {

struct Counted {
  VirtualTimers clock;
  Timer timer;
  int ticks = 0;
  Counted(std::uint32_t interval, bool enabled) : timer(clock, interval, enabled) {
    timer.on_timer = [this] { ++ticks; };
  }
};

TEST(Timer, TicksEveryIntervalWhileEnabled) {
  Counted t(2000, true);
  t.clock.Advance(1999);
  EXPECT_EQ(t.ticks, 0);
  t.clock.Advance(1);
  EXPECT_EQ(t.ticks, 1);
  t.clock.Advance(6000);
  EXPECT_EQ(t.ticks, 4);
  t.timer.SetEnabled(false);
  t.clock.Advance(10000);
  EXPECT_EQ(t.ticks, 4);
}

TEST(Timer, EnablingARunningTimerKeepsItsDeadlineButANewIntervalRestartsIt) {
  Counted t(2000, true);
  t.clock.Advance(1500);
  t.timer.SetEnabled(true);
  t.clock.Advance(500);
  EXPECT_EQ(t.ticks, 1);
  t.clock.Advance(1500);
  t.timer.SetInterval(2000);
  t.clock.Advance(500);
  EXPECT_EQ(t.ticks, 1);
  t.clock.Advance(1500);
  EXPECT_EQ(t.ticks, 2);
}

TEST(Timer, IntervalZeroStopsTicksWithoutDisabling) {
  Counted t(0, true);
  t.clock.Advance(100000);
  EXPECT_EQ(t.ticks, 0);
  EXPECT_TRUE(t.timer.Enabled());
  t.timer.SetInterval(30000);
  t.clock.Advance(30000);
  EXPECT_EQ(t.ticks, 1);
}

TEST(Timer, AHandlerMayStopItsOwnTimer) {
  VirtualTimers clock;
  Timer timer(clock, 1000, true);
  int ticks = 0;
  timer.on_timer = [&] {
    ++ticks;
    timer.SetEnabled(false);
  };
  clock.Advance(5000);
  EXPECT_EQ(ticks, 1);
  EXPECT_EQ(clock.Running(), 0u);
}

TEST(Timer, DestroyingATimerStopsIt) {
  VirtualTimers clock;
  {
    Timer t(clock, 100, true);
  }
  EXPECT_EQ(clock.Running(), 0u);
}

}  // namespace
}  // namespace quillet::testing
