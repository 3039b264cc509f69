// Answering the Profile import wizards' pages from an answers file.
#include "tax/profile_wizard_answers.hpp"

#include "tax/profile_import_wizard.hpp"

namespace lf {

namespace {

// Presses Next and answers whether the wizard reached the page.
bool nextTo(ProfileImportWizard& wizard, int page) {
  wizard.cmdNext_Click();
  return wizard.isOpen() && wizard.freStep() == page;
}

}  // namespace

bool runProfileT1WizardFromAnswers(frmImportProfileT1& wizard, const ProfileT1Answers& answers) {
  if (!wizard.isOpen()) wizard.Initialize();
  if (!answers.folder.empty()) wizard.txtFileLocation = answers.folder;
  if (!nextTo(wizard, frmImportProfileT1::kFilesPage)) return false;
  if (answers.selectByYear || answers.selectNotInLedgerfolio) {
    wizard.chkSelectFiles[0] = answers.selectNotInLedgerfolio;
    wizard.chkSelectFiles[1] = answers.selectByYear;
    wizard.cboSelectYear = std::to_string(answers.selectYear);
    wizard.cmdSelectAll_Click(1);
  }
  if (!nextTo(wizard, frmImportProfileT1::kOptionsPage)) return false;
  for (int option : answers.options)
    wizard.ProfileImport.chkOption[static_cast<size_t>(option)] = true;
  wizard.ProfileImport.optCouplesReturn = answers.couples;
  wizard.ProfileImport.chkImprtBusinessInformation = answers.business;
  if (!nextTo(wizard, frmImportProfileT1::kDuplicatesPage)) return false;
  wizard.contactDuplicates().setCheckingOn(answers.duplicateCheck);
  wizard.contactDuplicates().setAction(answers.action);
  if (answers.year) wizard.cboYear = std::to_string(*answers.year);
  wizard.cmdFinish_Click();
  return wizard.finished();
}

bool runProfileT2WizardFromAnswers(frmImportProfileT2& wizard, const ProfileT2Answers& answers) {
  if (!wizard.isOpen()) wizard.Initialize();
  if (!answers.folder.empty()) wizard.txtFileLocation = answers.folder;
  if (!nextTo(wizard, frmImportProfileT2::kFilesPage)) return false;
  if (answers.selectMostRecent || answers.selectNotInLedgerfolio) {
    wizard.chkSelectFiles[0] = answers.selectNotInLedgerfolio;
    wizard.chkSelectFiles[1] = answers.selectMostRecent;
    wizard.cmdSelectAll_Click(1);
  }
  if (!nextTo(wizard, frmImportProfileT2::kOptionsPage)) return false;
  wizard.cboProfileAddress =
      frmImportProfileT2::profileAddressItems()[static_cast<size_t>(answers.address)];
  if (!nextTo(wizard, frmImportProfileT2::kDuplicatesPage)) return false;
  wizard.companyDuplicates().setCheckingOn(answers.duplicateCheck);
  wizard.companyDuplicates().setMatchBy(answers.matchBy);
  wizard.companyDuplicates().setAction(answers.action);
  wizard.cmdFinish_Click();
  return wizard.finished();
}

}  // namespace lf
