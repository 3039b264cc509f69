// The terminal front end of the Profile import wizards and of their password question: shows
// each page (the folder, the numbered file list with its ticks, the options, the duplicates
// and year), reads one command a line and works the page machine's controls. Messages go
// through MsgboxClass, as in every front end.
#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "tax/profile_automation_layer.hpp"

namespace lf {

class ProfileImportWizard;

// Initializes the wizard and runs it until it finishes or is cancelled (also by the end of
// input). True when it finished.
bool runProfileWizardAtTerminal(ProfileImportWizard& wizard, std::istream& in, std::ostream& out);

// The password question (frmEnterFilePassword) at the terminal: a line is the password, an
// empty line is OK with a blank box (the message, and the question again), "!cancel" or the
// end of input is Cancel. A password is followed by the remember question (y/n).
class ProfilePasswordTerminal : public ProfilePasswordForm {
 public:
  ProfilePasswordTerminal(std::istream& in, std::ostream& out) : in_(in), out_(out) {}
  ProfilePasswordEntry ask(const std::string& title, const std::string& label,
                           const std::string& text) override;

 private:
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace lf
