// The openers of the CANTAX and Dr. Tax forms.
#include "tax/cantax_forms.hpp"

#include <iostream>
#include <memory>

#include "frame/cls_import_info.hpp"
#include "tax/cantax_wizard_terminal.hpp"
#include "tax/drtax_import_wizard.hpp"

namespace lf {

namespace {

template <class Form>
ImportFormOpener terminalOpener() {
  return [](clsImportInfo& importObject) {
    auto form = std::make_unique<Form>();
    form->Initialize(&importObject);
    runTaxImportWizardAtTerminal(*form, std::cin, std::cerr);
  };
}

}  // namespace

void registerCANTAXForms() {
  registerImportForm("frmImportCANTAXT1", terminalOpener<frmImportCANTAXT1>());
  registerImportForm("frmImportCANTAXT2Plus", terminalOpener<frmImportCANTAXT2Plus>());
  registerImportForm("frmImportDrTaxT1", terminalOpener<frmImportDrTaxT1>());
  registerImportForm("frmImportDrTaxT2", terminalOpener<frmImportDrTaxT2>());
}

}  // namespace lf
