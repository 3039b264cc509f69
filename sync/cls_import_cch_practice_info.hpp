// clsImportCCHPracticeInfo: the engine of a one-way, re-runnable synchronisation from a CCH
// Practice export database into the practice database.
//
// It is the shared sync engine (SyncEngine) with the CCH Practice words, recordsets and stages;
// what differs from the other sources: a client is known by ClientID and Engagement together;
// the money stages (WIP, AR, CASH) read fixed statements and keep a row only when its date is
// in the wizard's range, row by row; time entries run before invoices; work codes come in
// three passes (bill codes, categories, work codes); and invoices are settled from their
// deposits at the end of the run (closeAllPaidInvoices). The description, field maps, stages
// and creators live in sync/sources/cch_practice_source.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sync/cch_practice_import_options.hpp"
#include "sync/sources/cch_practice_source.hpp"
#include "sync/sync_engine.hpp"

namespace lf {

class clsImportCCHPracticeInfo : public SyncEngine {
 public:
  clsImportCCHPracticeInfo();
  ~clsImportCCHPracticeInfo() override;

  // --- The choices under their CCH Practice names --------------------------------------------
  bool syncObjectsContacts() const { return options_.syncObjectsContacts; }
  bool syncObjectsTimeEntries() const { return options_.syncObjectsTimeEntries; }
  bool syncObjectsInvoices() const { return options_.syncObjectsInvoices; }
  bool syncObjectsWorkCodes() const { return options_.syncObjectsWorkCodes; }
  void setCCHPracticeDatabaseLocation(const std::string& location) {
    setDatabaseLocation(location);
  }
  const std::string& cCHPracticeDatabaseLocation() const {
    return options_.cCHPracticeDatabaseLocation;
  }
  bool useCCHPracticeDatabase() const { return options_.useCCHPracticeDatabase; }
  void setImportOnlyNewEntries(bool value) { options_.importOnlyNewEntries = value; }
  bool importOnlyNewEntries() const { return options_.importOnlyNewEntries; }
  // Filters in importCCHPracticeWIPEntries, not in the WIP statement.
  void setImportOnlyWIPTimeEntries(bool value) { options_.importOnlyWIPTimeEntries = value; }
  bool importOnlyWIPTimeEntries() const { return options_.importOnlyWIPTimeEntries; }
  CCHPracticeImportOptions& options() { return options_; }
  const CCHPracticeImportOptions& options() const { return options_; }

  // Opens the wizard on this engine; returns when it is finished or cancelled.
  void openCCHPracticeImportForm();
  std::function<void(clsImportCCHPracticeInfo& engine)> runWizard;
  // The run. The result stays false in all cases.
  bool importCCHPracticeInformation() { return importInformation(); }

  // --- Stages ----------------------------------------------------------------------------
  void importCCHPracticeUsers() { runStage(staff_); }
  void importCCHPracticeBusinessClients() { runStage(businessClients_); }
  void importCCHPracticePersonalClients() { runStage(personalClients_); }
  // Bill codes as invoice paragraphs, categories as billing categories, then work codes.
  void importCCHPracticeWorkCodes() {
    runStage(billCodes_);
    runStage(categories_);
    runStage(workCodes_);
  }
  void importCCHPracticeWIPEntries() { runStage(wipEntries_); }
  void importCCHPracticeInvoices() { runStage(invoices_); }
  void importCCHPracticeDeposits() { runStage(deposits_); }

  // --- Source database and firm ----------------------------------------------------------
  bool openCCHPracticeDatabase() { return openDatabase(); }
  void closeCCHPracticeDatabase() { closeDatabase(); }
  // FirmID of the first Firm row, "Unknown" when there is none or it is blank, cut to 255
  // characters.
  std::string getCCHPracticeUniqueID();

  // --- The money statements: fixed; the date range applies row by row ---------------------
  std::string getCCHPracticeWIPQuery() const { return "SELECT WIP.* FROM WIP;"; }
  std::string getCCHPracticeARQuery() const { return "SELECT AR.* FROM AR;"; }
  std::string getCCHPracticeCASHQuery() const { return "SELECT CASH.* FROM CASH;"; }

  // --- Recordsets of a run ----------------------------------------------------------------
  void initializeDataRecordsets() override;
  void closeDataRecordsets() override;

  // Source handles.
  std::int32_t rsStaff = 0, rsClients = 0, rsContacts = 0, rsCategories = 0, rsWorkCodes = 0,
               rsBillCodes = 0, rsWIP = 0, rsAR = 0, rsCASH = 0;
  // Target handles (the five cross-reference ones are in crossReferences()).
  std::int32_t rsAccountantEmployeeInfo = 0, rsCompanies = 0, rsTargetContacts = 0,
               rsMainBusinessList = 0, rsCompaniesNotes = 0, rsTargetInvoices = 0, rsDeposits = 0,
               rsDockets = 0, rsCustomInvoiceDockets = 0, rsBillingJobCodes = 0,
               rsNonBillingJobCodes = 0, rsBillingCategories = 0;

  // --- Creators and look-ups of the stages -------------------------------------------------
  long createNewCCHPracticeEmployeeAsEmployeeInLedgerfolio(const std::string& cchEmployeeID,
                                                           long firmID, long employeeID);
  long createNewCCHPracticeParagraphAsInvoiceItemInLedgerfolio(const std::string& cchBillID,
                                                               long invoiceItemID);
  long createNewCCHPracticeCategoryAsBillingCategoryInLedgerfolio(const std::string& cchCategory,
                                                                  long billingCategoryID);
  long createNewCCHPracticeWorkcodeAsWorkcodeInLedgerfolio(const std::string& cchWorkcode,
                                                           long workcodeID);
  long createNewCCHPracticeClientAsCompanyInLedgerfolio(const std::string& cchClientID,
                                                        long companyID);
  long createNewCCHPracticeClientAsContactInLedgerfolio(const std::string& cchClientID,
                                                        long contactID, long companyID,
                                                        long categoryID);
  long createNewCCHPracticeContactAsContactInLedgerfolio(const std::string& contactGUID,
                                                         long companyID, long contactID);
  long createNewCCHPracticeTimeAsDocketInLedgerfolio(const std::string& referenceNumber,
                                                     long docketID);
  long createNewCCHPracticeInvoiceAsInvoiceInLedgerfolio(const std::string& referenceNumber,
                                                         long invoiceID);
  long createNewCCHPracticeDepositAsDepositInLedgerfolio(const std::string& referenceNumber,
                                                         long depositID);
  // The row of a work code in the job-code table its Chargeable column chooses, found by its
  // code; -1 when there is none.
  long getWorkcodeIDFromCCHPracticeWorkcode(const std::string& cchWorkcode);
  // Whether the docket of a WIP row is known from an earlier run.
  long getDocketIDFromCCHPracticeWIPID(const std::string& referenceNumber) {
    return crossReferences().find(CrossReferenceKind::Docket, referenceNumber);
  }
  // The client's Name1 in the export (key "ClientID,Engagement"); empty when not found.
  std::string getCCHPracticeClientNameFromCCHPracticeClientID(const std::string& clientKey);

 protected:
  std::string readSourceFirmID() override { return getCCHPracticeUniqueID(); }
  long progressTotal() override;
  std::vector<StageGroup> runOrder() override;

 private:
  void describeStages();
  // The contacts of a business client, each through client matching and its creator.
  void importCCHPracticeClientContacts(const std::string& clientKey, long companyID);

  CCHPracticeImportOptions options_;
  SyncStage staff_, businessClients_, clientContacts_, personalClients_, billCodes_, categories_,
      workCodes_, wipEntries_, invoices_, deposits_;
  long personalCategory_ = -1;
  long contactsCompany_ = -1;
};

}  // namespace lf
