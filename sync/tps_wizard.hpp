// frmTPSWizard: the wizard that sets up a TPS sync: the sync wizard's step machine on the TPS
// description and the TPS contact tree, with the TPS names of its hooks and file handlers.
//
// Steps are numbered as the dialog's frames: 0 what to sync, 1 introduction, 2 export file,
// 3 business clients, 8 personal clients, 5 time entry dates, 7 invoice dates, 6 category,
// 4 finish (see SyncWizard).
#pragma once

#include <functional>
#include <string>

#include "sync/sync_wizard.hpp"
#include "sync/tps_contact_tree.hpp"
#include "sync/tps_import_options.hpp"

namespace lf {

// The wizard's hooks under their TPS names.
struct TPSWizardHooks : SyncWizardHooks {
  TPSWizardHooks() = default;
  TPSWizardHooks(const TPSWizardHooks& other) : SyncWizardHooks(other) {}
  TPSWizardHooks& operator=(const TPSWizardHooks& other) {
    SyncWizardHooks::operator=(other);
    return *this;
  }

  // The same hooks as setDatabaseLocation and importInformation.
  std::function<void(const std::string& path)>& setTPSDatabaseLocation = setDatabaseLocation;
  std::function<void()>& importTPSInformation = importInformation;
};

class frmTPSWizard : public SyncWizard {
 public:
  // REQUIRES: engine outlives the wizard.
  frmTPSWizard(TPSImportOptions& engine, TPSWizardHooks hooks);

  void cmdOpenTPSFile_Click(FileDialog& dialog) { cmdOpenFile_Click(dialog); }
  void cmdOpenTPSFile(const std::string& chosenPath) { cmdOpenFile(chosenPath); }
};

}  // namespace lf
