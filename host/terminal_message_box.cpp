// Messages on stderr, questions on the terminal or from the answers.
#include "host/terminal_message_box.hpp"

#include <iostream>

#include "host/run_report.hpp"

namespace lf {

TerminalMessageBox::TerminalMessageBox(RunReport* report, std::ostream* out, bool interactive,
                                       int defaultAnswer)
    : report_(report),
      out_(out),
      in_(&std::cin),
      interactive_(interactive),
      defaultAnswer_(defaultAnswer) {}

void TerminalMessageBox::show(std::string_view text, int kind) {
  if (out_ != nullptr) *out_ << text << "\n";
  if (report_ != nullptr) report_->addMessage(std::string(text), kind);
}

int TerminalMessageBox::ask(std::string_view text, int kind) {
  int answer = defaultAnswer_;
  std::string by = "default";
  bool found = false;
  for (const auto& [key, given] : answers_) {
    if (std::string_view(text).find(key) != std::string_view::npos) {
      answer = given;
      by = "answers";
      found = true;
      break;
    }
  }
  if (!found && interactive_ && in_ != nullptr) {
    for (;;) {
      if (out_ != nullptr) *out_ << text << " [y/n] " << std::flush;
      std::string line;
      if (!std::getline(*in_, line)) break;
      if (!line.empty() && (line[0] == 'y' || line[0] == 'Y')) {
        answer = kAnswerYes;
        by = "user";
        break;
      }
      if (!line.empty() && (line[0] == 'n' || line[0] == 'N')) {
        answer = kAnswerNo;
        by = "user";
        break;
      }
    }
  } else if (out_ != nullptr) {
    *out_ << text << " -> " << (answer == kAnswerYes ? "yes" : "no") << " (" << by << ")\n";
  }
  if (report_ != nullptr) report_->addQuestion(std::string(text), kind, answer, by);
  return answer;
}

}  // namespace lf
