// clsImportTPSInformation: the engine of a one-way, re-runnable synchronisation from a TPS
// export database into the practice database.
//
// The host creates it, sets the services, and calls openTPSImportForm; the wizard sets the
// export location (which opens the source and reads the firm identity), fills the choices
// (options()) and calls importTPSInformation. The run opens every recordset once, counts the
// work and runs the stages in a fixed order: staff, clients and invoice paragraphs; work
// codes; invoices and deposits; time entries. Each source row is looked up in the
// cross-reference tables of its firm, so a re-run finds what an earlier run imported.
// The shared engine (SyncEngine) runs the stages; the source's description, stages, field
// maps and creators live in sync/sources/tps_source.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "sync/cross_reference.hpp"
#include "sync/sources/tps_source.hpp"
#include "sync/sync_engine.hpp"
#include "sync/tps_import_options.hpp"

namespace lf {

class clsImportTPSInformation : public SyncEngine {
 public:
  clsImportTPSInformation();
  ~clsImportTPSInformation() override;

  // --- The choices under their TPS names ---------------------------------------------------
  bool syncObjectsContacts() const { return options_.syncObjectsContacts; }
  bool syncObjectsTimeEntries() const { return options_.syncObjectsTimeEntries; }
  bool syncObjectsInvoices() const { return options_.syncObjectsInvoices; }
  bool syncObjectsWorkCodes() const { return options_.syncObjectsWorkCodes; }
  void setTPSDatabaseLocation(const std::string& location) { setDatabaseLocation(location); }
  const std::string& TPSDatabaseLocation() const { return options_.TPSDatabaseLocation; }
  bool useTPSDatabase() const { return options_.useTPSDatabase; }
  void setUseTPSDatabase(bool value) { options_.useTPSDatabase = value; }
  void setImportCategory(long category) { options_.importCategory = category; }
  long importCategory() const { return options_.importCategory; }
  void setImportOnlyNewEntries(bool value) { options_.importOnlyNewEntries = value; }
  bool importOnlyNewEntries() const { return options_.importOnlyNewEntries; }
  void setImportOnlyWIPTimeEntries(bool value) { options_.importOnlyWIPTimeEntries = value; }
  bool importOnlyWIPTimeEntries() const { return options_.importOnlyWIPTimeEntries; }
  long importOption() const { return options_.importOption; }
  void setImportOption(long value) { options_.importOption = value; }
  // The wizard's fields (the mvar... fields, the collections and the friend setters).
  TPSImportOptions& options() { return options_; }
  const TPSImportOptions& options() const { return options_; }

  // Opens the wizard on this engine; returns when it is finished or cancelled.
  void openTPSImportForm();
  // How openTPSImportForm runs the wizard (terminal or answers file); set by the host.
  std::function<void(clsImportTPSInformation& engine)> runWizard;
  // The run. The result stays false in all cases.
  bool importTPSInformation() { return importInformation(); }

  // --- Stages ----------------------------------------------------------------------------
  void importTPSUsers() { runStage(staff_); }
  void importTPSBusinessClients() { runStage(businessClients_); }
  void importTPSPersonalClients() { runStage(personalClients_); }
  void importTPSInvoiceParagraphs() { runStage(invoiceParagraphs_); }
  void importTPSWorkCodes() {
    runStage(parentWorkCodes_);
    runStage(childWorkCodes_);
  }
  void importTPSTimeEntries() { runStage(timeEntries_); }
  void importTPSInvoices() { runStage(invoices_); }
  void importTPSDeposits() { runStage(deposits_); }

  // --- Source database and firm ----------------------------------------------------------
  bool openTPSDatabase() { return openDatabase(); }
  void closeTPSDatabase() { closeDatabase(); }
  // The name of the first active Firm row, "Unknown" when there is none or it is blank,
  // cut to 255 characters.
  std::string getTPSUniqueID();

  // --- The filtered statements ------------------------------------------------------------
  std::string getTPSTimeQuery();
  std::string getTPSInvoicesQuery();
  std::string getTPSDepositQuery();

  // --- Recordsets of a run ----------------------------------------------------------------
  void initializeDataRecordsets() override;
  void closeDataRecordsets() override;

  // Source handles.
  std::int32_t rsEmployees = 0, rsClients = 0, rsClientContacts = 0, rsContacts = 0,
               rsInvoiceQuery = 0, rsInvoices = 0, rsTimeQuery = 0, rsTimes = 0, rsPaymentQuery = 0,
               rsPayments = 0, rsChildWorkCodes = 0, rsParentWorkCodes = 0, rsParagraphs = 0;
  // Target handles (the five cross-reference ones are in crossReferences()).
  std::int32_t rsAccountantEmployeeInfo = 0, rsCompanies = 0, rsTargetContacts = 0,
               rsMainBusinessList = 0, rsCompaniesNotes = 0, rsTargetInvoices = 0, rsDeposits = 0,
               rsDockets = 0, rsCustomInvoiceDockets = 0;

  // --- Creators and look-ups of the stages -------------------------------------------------
  long createNewTPSEmployeeAsEmployeeInLedgerfolio(const std::string& tpsEmployeeID, long firmID,
                                                   long employeeID);
  long createNewTPSParagraphAsInvoiceItemInLedgerfolio(const std::string& tpsParagraphID,
                                                       long invoiceItemID);
  long createNewTPSServiceCategoryAsBillingCategoryInLedgerfolio(const std::string& tpsID,
                                                                 long billingCategoryID);
  long createNewTPSWorkcodeAsWorkcodeInLedgerfolio(const std::string& tpsID, long workcodeID);
  // Client matching (SyncEngine::matchClient) in the three roles.
  long getCompanyIDFromTPSClientID(const std::string& id, bool& check, bool& isNew) {
    return matchClient(ClientRole::Company, id, check, isNew);
  }
  long getContactIDFromTPSClientID(const std::string& id, bool& check, bool& isNew) {
    return matchClient(ClientRole::ContactOfClient, id, check, isNew);
  }
  long getContactIDFromTPSContactID(const std::string& id, bool& check, bool& isNew) {
    return matchClient(ClientRole::ContactOfContact, id, check, isNew);
  }
  long createNewTPSClientAsCompanyInLedgerfolio(const std::string& tpsClientID, long companyID);
  long createNewTPSClientAsContactInLedgerfolio(const std::string& tpsClientID, long contactID,
                                                long companyID, long categoryID);
  long createNewTPSContactAsContactInLedgerfolio(const std::string& tpsContactID, long companyID,
                                                 long contactID);
  long createNewTPSTimeAsDocketInLedgerfolio(const std::string& tpsTimeID, long& docketID,
                                             long& companyID, long& contactID);
  long createNewTPSInvoiceAsInvoiceInLedgerfolio(const std::string& tpsInvoiceID, long invoiceID);
  void adjustInvoiceAmount(long invoiceID, double adjustment);
  long createNewTPSDepositAsDepositInLedgerfolio(const std::string& tpsPaymentID, long depositID);
  // The client's Name and the child work code's Name in the export; empty when not found.
  std::string getTPSClientNameFromTPSClientID(const std::string& tpsClientID) {
    return lookUpSource("getTPSClientNameFromTPSClientID", rsClients, "ClientID", tpsClientID,
                        "Name");
  }
  std::string getTPSWorkCodeNameFromTPSWorkCodeID(const std::string& tpsWorkCodeID) {
    return lookUpSource("getTPSWorkCodeNameFromTPSWorkCodeID", rsChildWorkCodes, "WorkID",
                        tpsWorkCodeID, "Name");
  }

 protected:
  std::string readSourceFirmID() override { return getTPSUniqueID(); }
  long progressTotal() override;
  std::vector<StageGroup> runOrder() override;

 private:
  // The stages as data (sync/sources/tps_source.cpp).
  void describeStages();
  // A statement under the invoices' date range, run under the operation's label.
  std::string invoiceRangeQuery(std::string_view operation, std::string sql,
                                std::string_view column);
  // The contacts of a business client, each through client matching and its creator.
  void importTPSClientContacts(const std::string& tpsClientID, long companyID);

  TPSImportOptions options_;
  SyncStage staff_, businessClients_, clientContacts_, personalClients_, invoiceParagraphs_,
      parentWorkCodes_, childWorkCodes_, invoices_, deposits_, timeEntries_;
  long personalCategory_ = -1;  // the personal clients' category of the running stage
  long contactsCompany_ = -1;   // the company whose contacts are being synchronised
};

}  // namespace lf
