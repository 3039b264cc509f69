// Polls the terminal on standard input without waiting.
#include "frame/input_state.hpp"

#include <poll.h>
#include <unistd.h>

namespace lf {

bool getInputState() {
  if (isatty(STDIN_FILENO) == 0) return false;
  pollfd fd{STDIN_FILENO, POLLIN, 0};
  return poll(&fd, 1, 0) > 0 && (fd.revents & POLLIN) != 0;
}

}  // namespace lf
