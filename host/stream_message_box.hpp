// A message box on a text stream pair: messages are written out, yes/no questions are read
// back as a line ("y"/"yes" is yes; anything else, or the end of input, is no).
#pragma once

#include <istream>
#include <ostream>

#include "host/message_box.hpp"

namespace lf {

class StreamMessageBox : public MessageBox {
 public:
  StreamMessageBox(std::istream& in, std::ostream& out) : in_(in), out_(out) {}
  void show(std::string_view text, int kind) override;
  int ask(std::string_view text, int kind) override;

 private:
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace lf
