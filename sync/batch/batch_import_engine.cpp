// The shared part of the batch imports: the prepared database, its key, the client of a row and
// the recordsets of a run.
#include "sync/batch/batch_import_engine.hpp"

#include <utility>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "records/lookups.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"

namespace lf {

namespace rec = syncrecords;
using namespace sourcerows;

CrossReferenceWords batchImportCrossReferenceWords(std::string_view engineClass) {
  CrossReferenceWords words = cchPracticeCrossReferenceWords();
  words.sourceWord = "Import";
  words.engineClass = std::string(engineClass);
  return words;
}

SourceDescription batchImportDescription(const CrossReferenceWords& words) {
  SourceDescription d;
  d.word = "Import";
  d.crossReferences = &words;
  d.clientKey = {{"ClientID"}};
  return d;
}

BatchImportEngine::BatchImportEngine(const SourceDescription& description, std::string statement,
                                     bool SyncOptions::*group)
    : SyncEngine(description, options_), statement_(std::move(statement)) {
  setSyncObjects(false, false, false, false);
  options_.*group = true;
  // A prepared table holds what is to be loaded: no date range applies.
  options_.mvarUseTimeEntryDateRange = options_.mvarUseInvoiceDateRange = false;
  storeDocketsThrough(rsDockets);

  // A client of a row is found in the prepared table by its ClientID and described to the
  // duplicate finders by its ClientName.
  using K = CrossReferenceKind;
  clientCandidates = {{
      {"getCompanyIDFromImportClientID",
       K::CompanyClient,
       &rsImport,
       {"ClientID"},
       {.companyName = "ClientName", .clientCode = "ClientID"},
       6},
      {"getContactIDFromImportClientID",
       K::ContactClient,
       &rsImport,
       {"ClientID"},
       {.displayName = "ClientName", .clientCode = "ClientID"}},
      {"getContactIDFromImportContactID", K::ContactContact},
  }};
  clientCreators = {
      .company =
          [this](const std::string& id, long company) {
            return createNewImportClientAsCompanyInLedgerfolio(id, company);
          },
      .contact =
          [this](const std::string& id, long contact, long company, long category) {
            return createNewImportClientAsContactInLedgerfolio(id, contact, company, category);
          },
      .name = [this](const std::string&) { return clientName_; },
  };
}

BatchImportEngine::~BatchImportEngine() {
  endEngine();
}

std::string BatchImportEngine::getImportUniqueID() {
  std::string result;
  procedure(label("getImportUniqueID"), [&] {
    DatabaseService* source = sourceDatabase();
    if (source == nullptr || !options_.useDatabase) return;
    // A prepared database need not have a Firm table: its absence is no error.
    ignoreErrors([&] {
      std::int32_t rs =
          source->openRecordset("SELECT Firm.FirmID FROM Firm;", kCursorKeyset, kLockReadOnly);
      if (source->hasRecord(rs) && !source->isEOF(rs)) result = readText(*source, rs, "FirmID");
      source->closeRecordset(rs);
    });
  });
  if (GeneralUtilities::isBlank(result)) result = "Unknown";
  return result.substr(0, 255);
}

long BatchImportEngine::progressTotal() {
  DatabaseService* source = sourceDatabase();
  return source != nullptr && rsImport != 0 ? source->recordCount(rsImport) : 0;
}

void BatchImportEngine::initializeDataRecordsets() {
  procedure(label("initializeDataRecordsets"), [&] {
    ClientDropDownService* drop = moduleState().clientDropDownCtrlReference;
    if (drop != nullptr) setPracticeFirmID(drop->getFirmID());
    closeDataRecordsets();
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr || !db->isOpen()) return;
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->isOpen())
      rsImport = source->openRecordset(statement_, kCursorKeyset, kLockReadOnly);
    openPracticeRecordsets(
        *db, {rsAccountantEmployeeInfo, rsCompanies, rsMainBusinessList, rsCompaniesNotes,
              rsContacts, rsCustomInvoiceDockets, rsInvoices, rsDeposits, rsDockets});
    // Staff are made from the WIP rows' employee codes; the contacts group is not run.
    if (rsAccountantEmployeeInfo == 0)
      rsAccountantEmployeeInfo =
          db->openRecordset("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;",
                            kCursorKeyset, kLockOptimistic);
  });
}

void BatchImportEngine::closeDataRecordsets() {
  closeRecordsets({&rsImport},
                  {&rsAccountantEmployeeInfo, &rsCompanies, &rsMainBusinessList, &rsCompaniesNotes,
                   &rsContacts, &rsCustomInvoiceDockets, &rsInvoices, &rsDeposits, &rsDockets});
}

std::string BatchImportEngine::field(std::string_view column) const {
  return readText(*source_, rsImport, column);
}

bool BatchImportEngine::clientOfImportRow(long& companyID, long& contactID) {
  companyID = contactID = -1;
  const std::string client = field("ClientID");
  if (client.empty()) {
    skipBecause("no client");
    return false;
  }
  clientName_ = field("ClientName");
  if (clientName_.empty() && getCompanyIDFromImportClientID(client) == -1 &&
      getContactIDFromImportClientID(client) == -1) {
    skipBecause("client " + client + " is not known and has no name");
    return false;
  }
  // Matching looks the client up in the same table: the row in hand is found again after.
  const std::int32_t position = source_->getPosition(rsImport);
  clientOfSourceRow(client, companyID, contactID);
  source_->setPosition(rsImport, position);
  return true;
}

long BatchImportEngine::createFromImportRow(std::string_view procedureName, long neutral,
                                            const std::function<long(DatabaseService& db)>& body) {
  long result = neutral;
  procedure(label(procedureName), [&] {
    if (!practiceOpen() || !sourceUsable() || rsImport == 0 || source_->isEOF(rsImport)) return;
    result = body(*moduleState().DatabaseReference);
  });
  return result;
}

long BatchImportEngine::createNewImportClientAsCompanyInLedgerfolio(const std::string&,
                                                                    long companyID) {
  long result = -1;
  procedure(label(__func__), [&] {
    if (!practiceOpen() || clientName_.empty()) return;
    DatabaseService& db = practice();
    const long company = companyID > 0 && companyRow(db, rsCompanies, companyID).found()
                             ? companyID
                             : getCompanyIDFromClientDataID(rec::addNewClientDataEntry());
    long category = options_.importCategory;
    if (!validCategoryID(category) && dropDown() != nullptr)
      category = dropDown()->getCurrentCategoryID();
    RowAccess row = companyRow(db, rsCompanies, company);
    if (!row.found()) return;
    db.setField(row, "CategoryNum", idText(category));
    db.setField(row, "CompanyName", clientName_);
    setProgressCaption("Synchronizing " + clientName_);
    rec::saveCompanyRTF(company);
    setRefreshData(true);
    result = company;
  });
  return result;
}

long BatchImportEngine::createNewImportClientAsContactInLedgerfolio(const std::string&,
                                                                    long contactID, long companyID,
                                                                    long categoryID) {
  long result = -1;
  procedure(label(__func__), [&] {
    if (!practiceOpen() || clientName_.empty()) return;
    const long category = personalClientCategory(categoryID, companyID);
    result = storePersonalClientContact(practice(), rsContacts, clientName_, contactID, companyID,
                                        category, 1, nullptr);
  });
  return result;
}

}  // namespace lf
