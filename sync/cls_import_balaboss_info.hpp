// clsImportBalabossInfo: the engine of a one-way, re-runnable synchronisation from a Balaboss
// export database into the practice database.
//
// It is the shared sync engine (SyncEngine) with the Balaboss words, recordsets and stages;
// what differs from the other sources: the firm ID is the fixed text "123", so every Balaboss
// export (and every Bill4Time export) shares one set of cross-reference rows; the invoice
// group of a run only settles the invoices already there (closeAllPaidInvoices) while the
// invoice and deposit stages stay public operations for a caller that asks for them; time
// entries come last; and two repair operations (fixBusinessClients, fixInvoiceFirm) are
// called by no stage. The description, field maps, stages and creators live in
// sync/sources/balaboss_source.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "sync/balaboss_import_options.hpp"
#include "sync/sources/balaboss_source.hpp"
#include "sync/sync_engine.hpp"

namespace lf {

class clsImportBalabossInfo : public SyncEngine {
 public:
  clsImportBalabossInfo();
  ~clsImportBalabossInfo() override;

  // --- The choices under their Balaboss names ------------------------------------------------
  bool syncObjectsContacts() const { return options_.syncObjectsContacts; }
  bool syncObjectsTimeEntries() const { return options_.syncObjectsTimeEntries; }
  bool syncObjectsInvoices() const { return options_.syncObjectsInvoices; }
  bool syncObjectsWorkCodes() const { return options_.syncObjectsWorkCodes; }
  void setBalabossDatabaseLocation(const std::string& location) { setDatabaseLocation(location); }
  const std::string& balabossDatabaseLocation() const { return options_.balabossDatabaseLocation; }
  bool useBalabossDatabase() const { return options_.useBalabossDatabase; }
  BalabossImportOptions& options() { return options_; }
  const BalabossImportOptions& options() const { return options_; }

  // Opens the wizard on this engine; returns when it is finished or cancelled.
  void openBalabossImportForm();
  std::function<void(clsImportBalabossInfo& engine)> runWizard;
  // The run. The result stays false in all cases.
  bool importBalabossInformation() { return importInformation(); }

  // --- Stages ----------------------------------------------------------------------------
  void importBalabossUsers() { runStage(staff_); }
  void importBalabossBusinessClients() { runStage(businessClients_); }
  void importBalabossPersonalClients() { runStage(personalClients_); }
  // Standard paragraphs as invoice items, service categories as billing categories, then
  // service codes as job codes.
  void importBalabossWorkCodes() {
    runStage(paragraphs_);
    runStage(categories_);
    runStage(serviceCodes_);
  }
  void importBalabossWIPEntries() { runStage(wipEntries_); }
  // Not called by the run; they work on the recordsets of a run with invoices chosen.
  void importBalabossInvoices() { runStage(invoices_); }
  void importBalabossDeposits() { runStage(deposits_); }

  // Repairs no stage calls. fixBusinessClients sets the partner and accountant names of every
  // business client that came from this source from the key person codes of its export row;
  // fixInvoiceFirm sets the firm of every invoice of the practice to 1. Both open what they
  // need themselves.
  void fixBusinessClients();
  void fixInvoiceFirm();

  // --- Source database and firm ----------------------------------------------------------
  bool openBalabossDatabase() { return openDatabase(); }
  void closeBalabossDatabase() { closeDatabase(); }
  // Intended: always "123", so that all Balaboss sources share one set of cross-references.
  std::string getBalabossUniqueID() const { return "123"; }

  // --- The money statements: the date range goes into the SQL --------------------------------
  std::string getBalabossWIPQuery();
  std::string getBalabossARQuery();
  std::string getBalabossDepositQuery();

  // --- Recordsets of a run ----------------------------------------------------------------
  void initializeDataRecordsets() override;
  void closeDataRecordsets() override;

  // Source handles.
  std::int32_t rsKeyPersons = 0, rsClients = 0, rsContacts = 0, rsContactAddresses = 0,
               rsContactPhones = 0, rsSvcCategories = 0, rsSvcCodes = 0, rsStdParas = 0,
               rsInvoices = 0, rsInvoiceTrans = 0, rsTransTypes = 0, rsWIP = 0, rsWIPQuery = 0,
               rsARQuery = 0, rsDepositQuery = 0;
  // Target handles (the five cross-reference ones are in crossReferences()).
  std::int32_t rsAccountantEmployeeInfo = 0, rsCompanies = 0, rsTargetContacts = 0,
               rsMainBusinessList = 0, rsCompaniesNotes = 0, rsTargetInvoices = 0, rsDeposits = 0,
               rsDockets = 0, rsCustomInvoiceDockets = 0, rsBillingJobCodes = 0,
               rsNonBillingJobCodes = 0, rsBillingCategories = 0;

  // --- Creators and look-ups of the stages -------------------------------------------------
  long createNewBalabossEmployeeAsEmployeeInLedgerfolio(const std::string& keyPersonCode,
                                                        long firmID, long employeeID);
  long createNewBalabossParagraphAsInvoiceItemInLedgerfolio(const std::string& stdParaID,
                                                            long invoiceItemID);
  long createNewBalabossCategoryAsBillingCategoryInLedgerfolio(const std::string& svcCategoryID,
                                                               long billingCategoryID);
  long createNewBalabossWorkcodeAsWorkcodeInLedgerfolio(const std::string& svcCodeID,
                                                        long workcodeID);
  long createNewBalabossClientAsCompanyInLedgerfolio(const std::string& clientID, long companyID);
  long createNewBalabossClientAsContactInLedgerfolio(const std::string& clientID, long contactID,
                                                     long companyID, long categoryID);
  long createNewBalabossContactAsContactInLedgerfolio(const std::string& contactID, long companyID,
                                                      long ledgerfolioContactID);
  long createNewBalabossTimeAsDocketInLedgerfolio(const std::string& wipID, long docketID);
  long createNewBalabossInvoiceAsInvoiceInLedgerfolio(const std::string& invID, long invoiceID);
  long createNewBalabossDepositAsDepositInLedgerfolio(const std::string& transKey, long depositID);
  // The job code of a service code in the table its ysnDefaultBill chooses, found by its
  // code; -1 when there is none.
  long getWorkcodeIDFromBalabossSvcCodeID(const std::string& svcCodeID);
  // The client's strCompany in the export; empty when not found.
  std::string getBalabossClientNameFromBalabossClientID(const std::string& clientID);
  // "First Last" of a key person code in the export; the code itself when the export has no
  // such key person.
  std::string getBalabossKeyPersonName(const std::string& keyPersonCode);

 protected:
  std::string readSourceFirmID() override { return getBalabossUniqueID(); }
  long progressTotal() override;
  std::vector<StageGroup> runOrder() override;

 private:
  void describeStages();
  // The contacts of a business client, each through client matching and its creator.
  void importBalabossClientContacts(const std::string& clientID, long companyID);
  // The date clause of a money statement under the range of its kind.
  std::string rangeQuery(std::string_view operation, std::string sql, std::string_view column,
                         bool timeEntryRange);

  BalabossImportOptions options_;
  SyncStage staff_, businessClients_, clientContacts_, personalClients_, paragraphs_, categories_,
      serviceCodes_, wipEntries_, invoices_, deposits_;
  long personalCategory_ = -1;
  long contactsCompany_ = -1;
};

}  // namespace lf
