// The terminal front end of the sync wizard: shows each step of the step machine with its
// captions, check boxes and client tree (the pre-checked guesses marked), reads one command a
// line, and presses the machine's buttons. Messages go through MsgboxClass, as in every
// front end, so routes and messages are those of the machine.
#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace lf {

class SyncWizard;

// Initializes the wizard and runs it until it finishes or is cancelled (also by the end of
// input). True when it finished. An export file given on the command line is opened at the
// start, as if chosen on the export file step, which then shows it filled in.
bool runSyncWizardAtTerminal(SyncWizard& wizard, std::istream& in, std::ostream& out,
                             const std::string& exportFile = {});

}  // namespace lf
