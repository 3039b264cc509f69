// The part the three batch imports of opening balances share (clsImportWIP,
// clsImportInvoices, clsImportARAgedSummaries): the sync engine run over one flat table of a
// prepared database instead of a practice system's export.
//
// What it gives them: the prepared database ("Import" in the place of a source's word in
// every operation and caption), the CCH Practice cross-reference tables, which the batch
// imports share with the CCH Practice sync by design, clients known by ClientID alone and
// named by ClientName, the client of a row found through the cross-reference or, for one that
// is not there yet, made on the spot after the question "<name>: Is this a business client?"
// (through the message box service), and the recordsets of a run. A class adds its stages and
// creators. The rows of a prepared table are read in place: a creator works on the driving
// row in hand.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "sync/sync_engine.hpp"

namespace lf {

// The description of a batch import whose operations carry the engine class given (labels
// "Ledgerfolio.exe-clsImportWIP-..."): the word "Import", the CCH Practice cross-reference
// tables under the operation names with "Import" ("getCompanyIDFromImportClientID"), clients
// keyed by ClientID. REQUIRES: words outlives the description.
SourceDescription batchImportDescription(const CrossReferenceWords& words);
// The CCH Practice cross-reference words with "Import" as the word of the operations and the
// engine class given.
CrossReferenceWords batchImportCrossReferenceWords(std::string_view engineClass);

class BatchImportEngine : public SyncEngine {
 public:
  ~BatchImportEngine() override;

  SyncOptions& options() { return options_; }
  const SyncOptions& options() const { return options_; }

  // --- The prepared database ----------------------------------------------------------------
  // Stores the path; when the file exists opens it and reads its key (getImportUniqueID).
  void setImportDatabaseLocation(const std::string& location) { setDatabaseLocation(location); }
  const std::string& importDatabaseLocation() const { return options_.databaseLocation; }
  bool useImportDatabase() const { return options_.useDatabase; }
  bool openImportDatabase() { return openDatabase(); }
  void closeImportDatabase() { closeDatabase(); }
  // The key of the cross-reference rows: FirmID of the first row of the prepared database's
  // Firm table, as a CCH Practice export has it, so that a prepared database cut from an
  // export finds the clients its sync brought in; "Unknown" without one; 255 characters at
  // most.
  std::string getImportUniqueID();

  // The run. The result stays false in all cases.
  bool ImportImportInformation() { return importInformation(); }

  // --- Clients ------------------------------------------------------------------------------
  long getCompanyIDFromImportClientID(const std::string& clientID) {
    return crossReferences().find(CrossReferenceKind::CompanyClient, clientID);
  }
  long getContactIDFromImportClientID(const std::string& clientID) {
    return crossReferences().find(CrossReferenceKind::ContactClient, clientID);
  }
  void saveCompanyIDAndImportClientID(long companyID, const std::string& clientID) {
    crossReferences().store(CrossReferenceKind::CompanyClient, companyID, clientID);
  }
  // A new (or the given) company named by the row's ClientName, in the import category.
  long createNewImportClientAsCompanyInLedgerfolio(const std::string& clientID, long companyID);
  // A new (or the given) contact named by the row's ClientName, a personal client of the
  // current personal-tax category unless a category is given.
  long createNewImportClientAsContactInLedgerfolio(const std::string& clientID, long contactID,
                                                   long companyID, long categoryID);

  // --- Recordsets of a run ------------------------------------------------------------------
  void initializeDataRecordsets() override;
  void closeDataRecordsets() override;

  // The prepared table (source) and the practice tables (target).
  std::int32_t rsImport = 0;
  std::int32_t rsAccountantEmployeeInfo = 0, rsCompanies = 0, rsMainBusinessList = 0,
               rsCompaniesNotes = 0, rsContacts = 0, rsCustomInvoiceDockets = 0, rsInvoices = 0,
               rsDeposits = 0, rsDockets = 0;

 protected:
  // REQUIRES: description outlives the engine. `statement` reads the prepared table; the run
  // has one stage group, the time entries' (WIP) or the invoices'.
  BatchImportEngine(const SourceDescription& description, std::string statement,
                    bool SyncOptions::*group);

  std::string readSourceFirmID() override { return getImportUniqueID(); }
  long progressTotal() override;

  // The column of the driving row in hand, empty when blank.
  std::string field(std::string_view column) const;
  // The client of the driving row in hand (ClientID): the known company or contact; an unknown
  // client with a name is made after the question; the driving row stays current. False, a
  // skip with its reason, when the row has no ClientID, or neither a known client nor a name.
  bool clientOfImportRow(long& companyID, long& contactID);
  // The frame of a creator of the driving row in hand: its label, the practice and the
  // prepared database open. Answers the body's result, or `neutral` when it did not run.
  long createFromImportRow(std::string_view procedureName, long neutral,
                           const std::function<long(DatabaseService& db)>& body);

 private:
  SyncOptions options_;
  std::string statement_;
  // The name of the client whose question is being answered, read before the finders move.
  std::string clientName_;
};

}  // namespace lf
