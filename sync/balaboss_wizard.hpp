// frmBalabossWizard: the wizard that sets up a Balaboss sync: the sync wizard's step machine on the
// Balaboss description and contact tree, with the Balaboss names of its file handlers.
#pragma once

#include "sync/balaboss_import_options.hpp"
#include "sync/sync_wizard.hpp"

namespace lf {

class frmBalabossWizard : public SyncWizard {
 public:
  // REQUIRES: engine outlives the wizard.
  frmBalabossWizard(BalabossImportOptions& engine, SyncWizardHooks hooks);

  void cmdOpenBalabossFile_Click(FileDialog& dialog) { cmdOpenFile_Click(dialog); }
  void cmdOpenBalabossFile(const std::string& chosenPath) { cmdOpenFile(chosenPath); }
};

}  // namespace lf
