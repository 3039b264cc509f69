// frmCCHPracticeWizard: the wizard that sets up a CCH Practice sync: the sync wizard's step
// machine on the CCH Practice description and contact tree, with the CCH Practice names of its
// file handlers.
#pragma once

#include "sync/cch_practice_import_options.hpp"
#include "sync/sync_wizard.hpp"

namespace lf {

class frmCCHPracticeWizard : public SyncWizard {
 public:
  // REQUIRES: engine outlives the wizard.
  frmCCHPracticeWizard(CCHPracticeImportOptions& engine, SyncWizardHooks hooks);

  void cmdOpenCCHPracticeFile_Click(FileDialog& dialog) { cmdOpenFile_Click(dialog); }
  void cmdOpenCCHPracticeFile(const std::string& chosenPath) { cmdOpenFile(chosenPath); }
};

}  // namespace lf
