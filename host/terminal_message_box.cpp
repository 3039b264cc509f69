// Messages on stderr, questions on the terminal or from the answers.
#include "host/terminal_message_box.hpp"

#include <iostream>

#include "host/run_report.hpp"

namespace lf {

namespace {

const char* answerWord(int answer) {
  return answer == kAnswerYes ? "yes" : answer == kAnswerCancel ? "cancel" : "no";
}

}  // namespace

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

const std::pair<std::string, int>* TerminalMessageBox::givenAnswer(std::string_view text) const {
  for (const auto& entry : answers_)
    if (text.find(entry.first) != std::string_view::npos) return &entry;
  return nullptr;
}

int TerminalMessageBox::ask(std::string_view text, int kind) {
  return answer(text, kind, false);
}

int TerminalMessageBox::askYesNoCancel(std::string_view text, int kind) {
  return answer(text, kind, true);
}

bool TerminalMessageBox::pressesCancel(std::string_view formText, int kind) {
  const auto* given = givenAnswer(formText);
  if (given == nullptr || given->second != kAnswerCancel) return false;
  if (out_ != nullptr) *out_ << formText << " -> cancel (answers)\n";
  if (report_ != nullptr)
    report_->addQuestion(std::string(formText), kind, kAnswerCancel, "answers");
  return true;
}

int TerminalMessageBox::answer(std::string_view text, int kind, bool offersCancel) {
  int answer = defaultAnswer_;
  std::string by = "default";
  const auto* given = givenAnswer(text);
  if (given != nullptr) {
    answer = given->second;
    by = "answers";
    // A box without a Cancel button cannot be cancelled: the answer Cancel is its No.
    if (answer == kAnswerCancel && !offersCancel) answer = kAnswerNo;
  } else if (interactive_ && in_ != nullptr) {
    for (;;) {
      if (out_ != nullptr) *out_ << text << (offersCancel ? " [y/n/c] " : " [y/n] ") << std::flush;
      std::string line;
      if (!std::getline(*in_, line)) {
        // Closing a box that has a Cancel button cancels it.
        if (offersCancel) {
          answer = kAnswerCancel;
          by = "user";
        }
        break;
      }
      const char c = line.empty() ? '\0' : line[0];
      if (c == 'y' || c == 'Y' || c == 'n' || c == 'N' ||
          (offersCancel && (c == 'c' || c == 'C'))) {
        answer = c == 'y' || c == 'Y'   ? kAnswerYes
                 : c == 'n' || c == 'N' ? kAnswerNo
                                        : kAnswerCancel;
        by = "user";
        break;
      }
    }
  }
  if (by != "user" && out_ != nullptr)
    *out_ << text << " -> " << answerWord(answer) << " (" << by << ")\n";
  if (report_ != nullptr) report_->addQuestion(std::string(text), kind, answer, by);
  return answer;
}

}  // namespace lf
