// clsImportBill4TimeInfo: the engine of a one-way, re-runnable synchronisation from a
// Bill4Time export database into the practice database.
//
// It is the shared sync engine (SyncEngine) with the Bill4Time tables and stages, made from
// the Balaboss engine and keeping its cross-reference tables (with the firm ID "123"), so a
// Balaboss run sees Bill4Time rows as its own. What differs: deleted clients and contacts are
// left out by the statements; staff come from the time entries, with their rates by how often
// they were used, and the run does not import them; there are no work codes and no deposit
// table: a deposit is made once for each invoice whose Paid Status is "PAID". The
// description, field maps, stages and creators live in sync/sources/bill4time_source.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "sync/bill4time_import_options.hpp"
#include "sync/sources/bill4time_source.hpp"
#include "sync/sync_engine.hpp"

namespace lf {

class clsImportBill4TimeInfo : public SyncEngine {
 public:
  clsImportBill4TimeInfo();
  ~clsImportBill4TimeInfo() override;

  // --- The choices under their Bill4Time names -----------------------------------------------
  bool syncObjectsContacts() const { return options_.syncObjectsContacts; }
  bool syncObjectsTimeEntries() const { return options_.syncObjectsTimeEntries; }
  bool syncObjectsInvoices() const { return options_.syncObjectsInvoices; }
  // Has no effect on the run: the source has no work codes.
  bool syncObjectsWorkCodes() const { return options_.syncObjectsWorkCodes; }
  void setBill4TimeDatabaseLocation(const std::string& location) { setDatabaseLocation(location); }
  const std::string& bill4timeDatabaseLocation() const {
    return options_.bill4timeDatabaseLocation;
  }
  bool useBill4TimeDatabase() const { return options_.useBill4TimeDatabase; }
  Bill4TimeImportOptions& options() { return options_; }
  const Bill4TimeImportOptions& options() const { return options_; }

  // Opens the wizard on this engine; returns when it is finished or cancelled.
  void openBill4TimeImportForm();
  std::function<void(clsImportBill4TimeInfo& engine)> runWizard;
  // The run. The result stays false in all cases.
  bool importBill4TimeInformation() { return importInformation(); }

  // --- Stages ----------------------------------------------------------------------------
  // Not called by the run: the host may call it on the recordsets of a run with contacts.
  void importBill4TimeUsers() { runStage(staff_); }
  void importBill4TimeBusinessClients() { runStage(businessClients_); }
  void importBill4TimePersonalClients() { runStage(personalClients_); }
  void importBill4TimeWIPEntries() { runStage(wipEntries_); }
  void importBill4TimeInvoices() { runStage(invoices_); }
  // Deleted clients are left out by the statements; this does nothing beyond its trace.
  void fixBill4TimeDeletedClients();

  // --- Source database and firm ----------------------------------------------------------
  bool openBill4TimeDatabase() { return openDatabase(); }
  void closeBill4TimeDatabase() { closeDatabase(); }
  // Intended: the Balaboss firm ID, so that the Balaboss cross-references are shared.
  std::string getBill4TimeUniqueID() const { return "123"; }

  // --- Statements -------------------------------------------------------------------------
  // Time entries ready for billing or pending a ticket close, in the time entry range.
  std::string getBill4TimeWIPQuery();
  std::string getBill4TimeARQuery();
  // There is no deposit table: the text comes back as it was given.
  std::string getBill4TimeDepositQuery(const std::string& sql) const { return sql; }

  // The UserBillingRateID of a staff member's rate; -1 when there is none.
  long getBillingRate(long userID, double rate);

  // --- Recordsets of a run ----------------------------------------------------------------
  void initializeDataRecordsets() override;
  void closeDataRecordsets() override;

  // Source handles.
  std::int32_t rsStaff = 0, rsClients = 0, rsContacts = 0, rsInvoices = 0, rsTimeEntries = 0,
               rsWIPQuery = 0;
  // Target handles (the five cross-reference ones are in crossReferences()).
  std::int32_t rsAccountantEmployeeInfo = 0, rsCompanies = 0, rsTargetContacts = 0,
               rsMainBusinessList = 0, rsCompaniesNotes = 0, rsTargetInvoices = 0, rsDeposits = 0,
               rsDockets = 0, rsCustomInvoiceDockets = 0;

  // --- Creators and look-ups of the stages -------------------------------------------------
  long createNewBill4TimeEmployeeAsEmployeeInLedgerfolio(const std::string& userID, long firmID,
                                                         long employeeID);
  long createNewBill4TimeClientAsCompanyInLedgerfolio(const std::string& clientID, long companyID);
  long createNewBill4TimeClientAsContactInLedgerfolio(const std::string& clientID, long contactID,
                                                      long companyID, long categoryID);
  long createNewBill4TimeContactAsContactInLedgerfolio(const std::string& contactID, long companyID,
                                                       long ledgerfolioContactID);
  long createNewBill4TimeTimeAsDocketInLedgerfolio(const std::string& entryID, long docketID);
  long createNewBill4TimeInvoiceAsInvoiceInLedgerfolio(const std::string& invoiceKey,
                                                       long invoiceID);
  // Joins the dockets of the invoice's time entries (those that name it in Invoice Id and
  // were brought across) to the invoice's dockets. Nothing when the run has no time entries.
  void linkBill4TimeInvoiceDockets(const std::string& invoiceKey, long invoiceID);
  // The deposit of a paid invoice with its one payment; made once per source invoice (the
  // deposit's cross-reference carries the invoice's ID). Answers the deposit, or -1.
  long createNewLedgerfolioDepositAsDeposit(const std::string& invoiceKey, long invoiceID,
                                            long companyID, long contactID, float amount);
  // The client's Client Name in the export; empty when not found.
  std::string getBill4TimeClientNameFromBill4TimeClientID(const std::string& clientID);

 protected:
  std::string readSourceFirmID() override { return getBill4TimeUniqueID(); }
  long progressTotal() override;
  std::vector<StageGroup> runOrder() override;

 private:
  void describeStages();
  void importBill4TimeClientContacts(const std::string& clientID, long companyID);

  Bill4TimeImportOptions options_;
  SyncStage staff_, businessClients_, clientContacts_, personalClients_, wipEntries_, invoices_;
  long personalCategory_ = -1;
  long contactsCompany_ = -1;
};

}  // namespace lf
