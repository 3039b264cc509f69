// The Profile import wizards as forms that clsImportInfo opens (frmImportProfileT1,
// frmImportProfileT2), run at the terminal with the terminal's password question.
#pragma once

namespace lf {

// Registers the two forms' openers; the component's wiring calls it once.
void registerProfileForms();

}  // namespace lf
