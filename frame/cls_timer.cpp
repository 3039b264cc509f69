// clsTimer's setters and modTimerClass's collection and callback.
#include "frame/cls_timer.hpp"

#include "frame/platform_timer.hpp"

namespace lf {

namespace modTimerClass {

std::map<std::string, clsTimer*>& timerCollection() {
  static std::map<std::string, clsTimer*> collection;
  return collection;
}

void timerProc(long timerID) {
  auto& collection = timerCollection();
  auto it = collection.find(std::to_string(timerID));
  if (it != collection.end()) it->second->raiseTimer();
}

}  // namespace modTimerClass

clsTimer::~clsTimer() {
  setEnabled(false);
}

void clsTimer::setInterval(long value) {
  if (value == interval_) return;
  if (value < 1) {
    setEnabled(false);
    return;
  }
  // A new interval also turns a stopped timer on; that is how the object behaves.
  setEnabled(false);
  interval_ = value;
  setEnabled(true);
}

void clsTimer::setEnabled(bool value) {
  if (value == enabled_) return;
  if (value) {
    timerID_ = SetTimer(interval_, &modTimerClass::timerProc);
    if (timerID_ == 0) return;
    modTimerClass::timerCollection()[std::to_string(timerID_)] = this;
    enabled_ = true;
  } else {
    KillTimer(timerID_);
    modTimerClass::timerCollection().erase(std::to_string(timerID_));
    timerID_ = 0;
    enabled_ = false;
  }
}

}  // namespace lf
