// The terminal front end of the text import wizards: shows each step of the step machine (the
// file with its guessed delimiter, the first rows of the grid as a table with the assigned
// fields, the numbered field list, the categories), reads one command a line and works the
// machine's controls. Messages go through MsgboxClass, as in every front end.
#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace lf {

class TextImportWizard;

// Initializes the wizard and runs it until it finishes or is cancelled (also by the end of
// input). A file given on the command line is chosen at the start. True when it finished.
bool runTextImportWizardAtTerminal(TextImportWizard& wizard, std::istream& in, std::ostream& out,
                                   const std::string& file = {});

}  // namespace lf
