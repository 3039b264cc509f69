// Timers on timerfd, delivered by poll.
#include "frame/platform_timer.hpp"

#include <poll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <map>
#include <vector>

namespace lf {
namespace {

struct PlatformTimer {
  int fd;
  TimerProc proc;
};

std::map<long, PlatformTimer>& registry() {
  static std::map<long, PlatformTimer> timers;
  return timers;
}

long nextID = 1;

}  // namespace

long SetTimer(long intervalMs, TimerProc proc) {
  if (intervalMs < 1) intervalMs = 1;
  int fd = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
  if (fd < 0) return 0;
  itimerspec setting{};
  setting.it_interval.tv_sec = intervalMs / 1000;
  setting.it_interval.tv_nsec = (intervalMs % 1000) * 1000000L;
  setting.it_value = setting.it_interval;
  if (timerfd_settime(fd, 0, &setting, nullptr) != 0) {
    close(fd);
    return 0;
  }
  long id = nextID++;
  registry()[id] = PlatformTimer{fd, proc};
  return id;
}

void KillTimer(long timerID) {
  auto it = registry().find(timerID);
  if (it == registry().end()) return;
  close(it->second.fd);
  registry().erase(it);
}

int activeTimerCount() {
  return static_cast<int>(registry().size());
}

int pumpTimerEvents(int timeoutMs) {
  std::vector<pollfd> fds;
  std::vector<long> ids;
  for (const auto& [id, timer] : registry()) {
    fds.push_back(pollfd{timer.fd, POLLIN, 0});
    ids.push_back(id);
  }
  if (fds.empty()) return 0;
  if (poll(fds.data(), fds.size(), timeoutMs) <= 0) return 0;
  std::vector<long> due;
  for (size_t k = 0; k < fds.size(); ++k) {
    if ((fds[k].revents & POLLIN) == 0) continue;
    std::uint64_t expirations = 0;
    if (read(fds[k].fd, &expirations, sizeof expirations) == sizeof expirations)
      due.push_back(ids[k]);
  }
  // A handler may kill any timer, its own included: look each one up again.
  int delivered = 0;
  for (long id : due) {
    auto it = registry().find(id);
    if (it == registry().end()) continue;
    TimerProc proc = it->second.proc;
    if (proc != nullptr) proc(id);
    ++delivered;
  }
  return delivered;
}

}  // namespace lf
