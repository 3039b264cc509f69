// The message box service (MsgboxClass): messages and yes/no questions for the user.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// Message kinds in use.
enum MessageKind : int {
  kMessageInformation = 1,
  kMessageValidation = 3,  // wizards' validation messages, the sync's yes/no questions
  kMessageTaxQuestion = 4,
  kMessageFileLocation = 9,
  kMessageWrongPassword = 16,
};

// Answers of ask; Cancel only from a question that offers it (askYesNoCancel).
enum MessageAnswer : int { kAnswerYes = 0, kAnswerNo = 1, kAnswerCancel = 2 };

class MessageBox {
 public:
  virtual ~MessageBox() = default;
  virtual void show(std::string_view text, int kind) = 0;
  // 0 means yes.
  virtual int ask(std::string_view text, int kind) = 0;
  // A question with Yes, No and Cancel. A box that knows no Cancel answers as ask does.
  virtual int askYesNoCancel(std::string_view text, int kind) { return ask(text, kind); }
  // Whether the answers given before the run press Cancel on a form showing this text (a
  // password, a year, a waiting dialog), whose own front end would ask otherwise. A press goes
  // into the run report as the form's answer.
  virtual bool pressesCancel(std::string_view /*formText*/, int /*kind*/) { return false; }
};

}  // namespace lf
