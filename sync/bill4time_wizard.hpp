// frmBill4TimeWizard: the wizard that sets up a Bill4Time sync: the sync wizard's step machine on
// the Bill4Time description and contact tree, with the Bill4Time names of its file handlers.
#pragma once

#include "sync/bill4time_import_options.hpp"
#include "sync/sync_wizard.hpp"

namespace lf {

class frmBill4TimeWizard : public SyncWizard {
 public:
  // REQUIRES: engine outlives the wizard.
  frmBill4TimeWizard(Bill4TimeImportOptions& engine, SyncWizardHooks hooks);

  void cmdOpenBill4TimeFile_Click(FileDialog& dialog) { cmdOpenFile_Click(dialog); }
  void cmdOpenBill4TimeFile(const std::string& chosenPath) { cmdOpenFile(chosenPath); }
};

}  // namespace lf
