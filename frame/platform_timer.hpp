// The platform timers behind clsTimer: SetTimer and KillTimer over Linux timerfds, and the
// event pump that delivers their ticks. A tick is delivered only from pumpTimerEvents, on the
// thread that calls it, so a timer's event runs where the program's loop runs, as a message
// loop would deliver it. Ticks that pile up between two pumps are delivered as one.
//
// The registry is not locked: timers are set, killed and pumped on one thread.
#pragma once

namespace lf {

using TimerProc = void (*)(long timerID);

// Starts a periodic timer of `intervalMs` milliseconds; answers its ID (1 or more), 0 when
// the platform refused. `proc` is called with the ID on each delivered tick.
long SetTimer(long intervalMs, TimerProc proc);
// Stops and forgets a timer; an unknown ID does nothing.
void KillTimer(long timerID);
// Number of live platform timers.
int activeTimerCount();

// Waits up to `timeoutMs` (0: not at all) for ticks and delivers each due timer's tick once.
// Answers the number of ticks delivered.
int pumpTimerEvents(int timeoutMs = 0);

}  // namespace lf
