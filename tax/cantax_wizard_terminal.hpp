// The terminal front end of the CANTAX and Dr. Tax import wizards: shows each page of the page
// machine (the template, the open export with its modified rows, the first rows of the grid,
// the options, the duplicates and the year), reads one command a line and works the machine's
// controls. Messages go through MsgboxClass, as in every front end.
#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace lf {

class TaxExportImportWizard;

// Initializes the wizard (unless it is open already) and runs it until it finishes or is
// cancelled (also by the end of input). An export given here is opened when its page comes.
// True when it finished.
bool runTaxImportWizardAtTerminal(TaxExportImportWizard& wizard, std::istream& in,
                                  std::ostream& out, const std::string& file = {});

}  // namespace lf
