// The CANTAX and Dr. Tax wizards as forms that clsImportInfo opens (frmImportCANTAXT1,
// frmImportCANTAXT2Plus, frmImportDrTaxT1, frmImportDrTaxT2), run at the terminal.
#pragma once

namespace lf {

// Registers the four forms' openers; the component's wiring calls it once.
void registerCANTAXForms();

}  // namespace lf
