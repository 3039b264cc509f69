// clsImportWIP: loads work in progress from the WIP table of a prepared database as dockets,
// one a row, on the shared batch import engine.
//
// A row's staff member is found by its EmployeeCode through the staff cross-reference and made
// on its first use; its client as every batch import finds it. The docket takes its date from
// DueDate, its hours from Hours (one hour when that is no number) and its description from
// Activity, Engagement and Project. The table has no key column: a row is known to a re-run by
// its place in the table ("WIP row 3"), so the table must not be reordered between runs.
#pragma once

#include <string>

#include "sync/batch/batch_import_engine.hpp"

namespace lf {

const SourceDescription& importWIPDescription();

class clsImportWIP : public BatchImportEngine {
 public:
  clsImportWIP();

  // The WIP stage: every row of the table, one docket each.
  void ImportImportTimeEntries() { runStage(timeEntries_); }

  // The docket of the driving row in hand; `docketID` is its docket from an earlier run, or -1.
  long createNewImportTimeAsDocketInLedgerfolio(const std::string& rowKey, long docketID);
  // The staff member of an employee code: the one its cross-reference names, else a new one
  // named by the code, with its cross-reference. -1 for a blank code.
  long getEmployeeIDFromImportEmployeeCode(const std::string& employeeCode);

 protected:
  std::vector<StageGroup> runOrder() override;

 private:
  SyncStage timeEntries_;
};

// The description of a WIP row: Activity, Engagement and Project, those present, joined by
// ", ".
std::string importWIPDescriptionText(const std::string& activity, const std::string& engagement,
                                     const std::string& project);

}  // namespace lf
