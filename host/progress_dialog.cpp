// The terminal progress bar.
#include "host/progress_dialog.hpp"

#include <unistd.h>

#include <cstdio>

namespace lf {

TerminalProgressDialog::TerminalProgressDialog() : terminal_(isatty(STDERR_FILENO) != 0) {}

void TerminalProgressDialog::setCaption(std::string_view caption) {
  caption_ = std::string(caption);
  lastPercent_ = -1;
  draw();
}

void TerminalProgressDialog::setValue(long value) {
  value_ = value;
  draw();
}

void TerminalProgressDialog::draw() {
  if (!terminal_ || !open_) return;
  long span = maximum_ > minimum_ ? maximum_ - minimum_ : 1;
  int percent = static_cast<int>(100 * (value_ - minimum_) / span);
  if (percent < 0) percent = 0;
  if (percent > 100) percent = 100;
  if (percent == lastPercent_) return;
  lastPercent_ = percent;
  int filled = percent * 30 / 100;
  std::fprintf(stderr, "\r[%-30.*s] %3d%% %-60.60s", filled, "##############################",
               percent, caption_.c_str());
  std::fflush(stderr);
}

void TerminalProgressDialog::showDialog(const std::function<void()>& startProgress) {
  open_ = true;
  draw();
  if (startProgress) startProgress();
  closeDialog();
}

void TerminalProgressDialog::closeDialog() {
  if (open_ && terminal_) std::fprintf(stderr, "\n");
  open_ = false;
}

}  // namespace lf
