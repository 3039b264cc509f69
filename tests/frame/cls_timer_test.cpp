#include "frame/cls_timer.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "frame/platform_timer.hpp"

namespace lf {
namespace {

// Pumps until the timer has ticked `ticks` times or two seconds have passed.
int pumpUntil(const int& counter, int ticks) {
  for (int k = 0; k < 200 && counter < ticks; ++k) pumpTimerEvents(10);
  return counter;
}

TEST(ClsTimer, DefaultsAreOneSecondAndOff) {
  clsTimer timer;
  EXPECT_EQ(timer.Interval(), 1000);
  EXPECT_FALSE(timer.Enabled());
  EXPECT_EQ(timer.timerID(), 0);
}

TEST(ClsTimer, EnabledTrueTwiceStartsOneTimer) {
  int before = activeTimerCount();
  clsTimer timer;
  timer.setInterval(5);
  timer.setEnabled(true);
  long id = timer.timerID();
  timer.setEnabled(true);
  EXPECT_EQ(timer.timerID(), id);
  EXPECT_EQ(activeTimerCount(), before + 1);
  auto& collection = modTimerClass::timerCollection();
  ASSERT_EQ(collection.count(std::to_string(id)), 1u);
  EXPECT_EQ(collection[std::to_string(id)], &timer);
  timer.setEnabled(false);
  EXPECT_EQ(activeTimerCount(), before);
  EXPECT_EQ(collection.count(std::to_string(id)), 0u);
}

TEST(ClsTimer, IntervalZeroStopsTheTimerAndKeepsTheOldInterval) {
  clsTimer timer;
  timer.setInterval(250);
  EXPECT_TRUE(timer.Enabled());  // a new interval turns the timer on
  timer.setInterval(0);
  EXPECT_FALSE(timer.Enabled());
  EXPECT_EQ(timer.Interval(), 250);
  timer.setInterval(250);  // the present value: nothing happens
  EXPECT_FALSE(timer.Enabled());
}

TEST(ClsTimer, TicksAreRaisedOnThePumpingThread) {
  clsTimer timer;
  int ticks = 0;
  std::thread::id raisedOn;
  timer.Timer = [&] {
    ++ticks;
    raisedOn = std::this_thread::get_id();
  };
  timer.setInterval(5);
  EXPECT_GE(pumpUntil(ticks, 2), 2);
  EXPECT_EQ(raisedOn, std::this_thread::get_id());
}

TEST(ClsTimer, EndOfLifeAndHandlersThatStopTimers) {
  int before = activeTimerCount();
  {
    clsTimer timer;
    timer.setInterval(5);
    EXPECT_EQ(activeTimerCount(), before + 1);
  }
  EXPECT_EQ(activeTimerCount(), before);

  // A handler that turns its own timer off is not raised again.
  clsTimer timer;
  int ticks = 0;
  timer.Timer = [&] {
    ++ticks;
    timer.setEnabled(false);
  };
  timer.setInterval(5);
  pumpUntil(ticks, 1);
  for (int k = 0; k < 5; ++k) pumpTimerEvents(10);
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace lf
