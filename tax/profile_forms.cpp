// The openers of the Profile import forms.
#include "tax/profile_forms.hpp"

#include <iostream>
#include <memory>

#include "frame/cls_import_info.hpp"
#include "tax/profile_import_wizard.hpp"
#include "tax/profile_wizard_terminal.hpp"

namespace lf {

namespace {

template <class Form>
ImportFormOpener terminalOpener() {
  return [](clsImportInfo& importObject) {
    auto form = std::make_unique<Form>();
    ProfilePasswordTerminal passwords(std::cin, std::cerr);
    form->ProfileImport.setPasswordForm(&passwords);
    form->Initialize(&importObject);
    runProfileWizardAtTerminal(*form, std::cin, std::cerr);
  };
}

}  // namespace

void registerProfileForms() {
  registerImportForm("frmImportProfileT1", terminalOpener<frmImportProfileT1>());
  registerImportForm("frmImportProfileT2", terminalOpener<frmImportProfileT2>());
}

}  // namespace lf
