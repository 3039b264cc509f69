// frmTPSWizard: the wizard that sets up a TPS sync: the sync wizard's step machine on the TPS
// description and the TPS contact tree, with the TPS names of its hooks and file handlers.
//
// Steps are numbered as the dialog's frames: 0 what to sync, 1 introduction, 2 export file,
// 3 business clients, 8 personal clients, 5 time entry dates, 7 invoice dates, 6 category,
// 4 finish (see SyncWizard).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sync/sync_wizard.hpp"
#include "sync/tps_contact_tree.hpp"
#include "sync/tps_import_options.hpp"

namespace lf {

// What the TPS wizard asks of its engine, under the TPS names (see SyncWizardHooks).
struct TPSWizardHooks {
  std::function<void()> importTPSInformation;
  std::function<void(const std::string& path)> setTPSDatabaseLocation;
  std::function<std::vector<WizardCategory>()> categories;
  std::function<DatabaseService*()> sourceDatabase;
  std::function<void(const std::string& caption)> showProgressCaption;
};

class frmTPSWizard : public SyncWizard {
 public:
  // REQUIRES: engine outlives the wizard.
  frmTPSWizard(TPSImportOptions& engine, TPSWizardHooks hooks);

  void cmdOpenTPSFile_Click(FileDialog& dialog) { cmdOpenFile_Click(dialog); }
  void cmdOpenTPSFile(const std::string& chosenPath) { cmdOpenFile(chosenPath); }
};

}  // namespace lf
