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

// Answers of ask.
enum MessageAnswer : int { kAnswerYes = 0, kAnswerNo = 1 };

class MessageBox {
 public:
  virtual ~MessageBox() = default;
  virtual void show(std::string_view text, int kind) = 0;
  // 0 means yes.
  virtual int ask(std::string_view text, int kind) = 0;
};

}  // namespace lf
