// The message box of lfimport. show prints to stderr; ask prompts on a terminal, or takes its
// answer from the answers given (by a part of the question's text), or the stated default.
// An answer may be Cancel: a question with a Cancel button takes it, a yes/no question takes
// it as No, and a form with a Cancel button (pressesCancel) is cancelled by it. Every message
// and answer goes into the run report.
#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "host/message_box.hpp"

namespace lf {

class RunReport;

class TerminalMessageBox : public MessageBox {
 public:
  TerminalMessageBox(RunReport* report, std::ostream* out, bool interactive,
                     int defaultAnswer = kAnswerYes);

  // A question whose text contains the key is answered so (kAnswerYes, kAnswerNo or
  // kAnswerCancel), first match wins.
  void addAnswer(std::string key, int answer) { answers_.emplace_back(std::move(key), answer); }
  void setInput(std::istream* in) { in_ = in; }

  void show(std::string_view text, int kind) override;
  int ask(std::string_view text, int kind) override;
  // At the terminal "c" (or the end of input, as closing the box) is Cancel.
  int askYesNoCancel(std::string_view text, int kind) override;
  bool pressesCancel(std::string_view formText, int kind) override;

 private:
  int answer(std::string_view text, int kind, bool offersCancel);
  const std::pair<std::string, int>* givenAnswer(std::string_view text) const;

  RunReport* report_;
  std::ostream* out_;
  std::istream* in_ = nullptr;
  bool interactive_;
  int defaultAnswer_;
  std::vector<std::pair<std::string, int>> answers_;
};

}  // namespace lf
