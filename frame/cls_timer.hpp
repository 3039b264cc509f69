// clsTimer: a timer object for code without a timer control. Enabled, it raises its Timer
// event every Interval milliseconds, delivered by pumpTimerEvents on the pumping thread.
// modTimerClass keeps the live timers keyed by the decimal text of their platform timer ID,
// so that the platform callback finds the object to raise.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace lf {

class clsTimer {
 public:
  clsTimer() = default;
  ~clsTimer();  // turns the timer off
  clsTimer(const clsTimer&) = delete;
  clsTimer& operator=(const clsTimer&) = delete;

  long Interval() const { return interval_; }
  // Setting the present value does nothing; a value below 1 turns the timer off and keeps the
  // old interval; any other value turns the timer off, stores the value and turns it on.
  void setInterval(long value);

  bool Enabled() const { return enabled_; }
  // Turning on starts one platform timer and enters the object in the collection; turning
  // off kills it and removes the object. Setting the present value does nothing.
  void setEnabled(bool value);

  long timerID() const { return timerID_; }

  // The Timer event, raised on each tick.
  std::function<void()> Timer;
  void raiseTimer() {
    if (Timer) Timer();
  }

 private:
  long interval_ = 1000;
  bool enabled_ = false;
  long timerID_ = 0;
};

namespace modTimerClass {
// The live timers by the decimal text of their ID; created at first use.
std::map<std::string, clsTimer*>& timerCollection();
// The platform callback: finds the timer by its ID and raises its event.
void timerProc(long timerID);
}  // namespace modTimerClass

}  // namespace lf
