// Messages and questions on a text stream pair.
#include "host/stream_message_box.hpp"

#include <string>

#include "host/general_utilities.hpp"

namespace lf {

void StreamMessageBox::show(std::string_view text, int /*kind*/) {
  out_ << "! " << text << "\n";
}

int StreamMessageBox::ask(std::string_view text, int /*kind*/) {
  out_ << "? " << text << " [y/n] " << std::flush;
  std::string line;
  if (!std::getline(in_, line)) return kAnswerNo;
  const std::string word = GeneralUtilities::lowerCase(GeneralUtilities::trim(line));
  return word == "y" || word == "yes" ? kAnswerYes : kAnswerNo;
}

}  // namespace lf
