// The cross-reference get and save operations, once for all sources.
#include "sync/cross_reference.hpp"

#include <string>
#include <string_view>

#include "db/database_service.hpp"
#include "db/variant.hpp"
#include "frame/module_state.hpp"
#include "frame/platform_timer.hpp"
#include "frame/procedure.hpp"
#include "host/general_utilities.hpp"
#include "host/legacy_text.hpp"

namespace lf {
namespace {

// The recordset and the two columns of one kind of pair.
struct PairColumns {
  std::int32_t CrossReferenceTables::*handle;
  std::string_view ledgerfolioColumn;
  const std::string& sourceColumn;
};

PairColumns pairColumns(const CrossReferenceWords& w, CrossReferenceKind kind) {
  switch (kind) {
    case CrossReferenceKind::Employee:
      return {&CrossReferenceTables::userEntries, "UserIDNum", w.userIDColumn};
    case CrossReferenceKind::CompanyClient:
      return {&CrossReferenceTables::clients, "CompanyID", w.clientIDColumn};
    case CrossReferenceKind::ContactClient:
      return {&CrossReferenceTables::clients, "ContactID", w.clientIDColumn};
    case CrossReferenceKind::ContactContact:
      return {&CrossReferenceTables::clients, "ContactID", w.contactIDColumn};
    case CrossReferenceKind::InvoiceItem:
      return {&CrossReferenceTables::workCodeEntries, "InvoiceItemIDNum", w.paragraphIDColumn};
    case CrossReferenceKind::BillingCategory:
      return {&CrossReferenceTables::workCodeEntries, "BillingCategoryIDNum",
              w.billingCategoryIDColumn};
    case CrossReferenceKind::Workcode:
      return {&CrossReferenceTables::workCodeEntries, "WorkcodeIDNum", w.workcodeIDColumn};
    case CrossReferenceKind::Invoice:
      return {&CrossReferenceTables::invoiceEntries, "InvoiceIDNum", w.invoiceIDColumn};
    case CrossReferenceKind::Deposit:
      return {&CrossReferenceTables::invoiceEntries, "DepositIDNum", w.cashIDColumn};
    case CrossReferenceKind::Docket:
      break;
  }
  return {&CrossReferenceTables::timeEntries, "DocketIDNum", w.timeIDColumn};
}

// Keeps the host's window alive during long runs; it has no other effect.
void pumpEvents(int times) {
  for (int i = 0; i < times; ++i) pumpTimerEvents(0);
}

// An ID as the legacy run-time converts a stored value to a 32-bit integer.
long toLongID(const Variant& value) {
  return static_cast<long>(value.toLong());
}

}  // namespace

CrossReferenceWords CrossReferenceWords::forSource(std::string_view sourceWord,
                                                   std::string_view engineClass) {
  const std::string s(sourceWord);
  CrossReferenceWords w;
  w.sourceWord = s;
  w.engineClass = std::string(engineClass);
  w.firmColumn = s + "DBID";
  w.userEntriesTable = s + "UserEntries";
  w.clientsTable = s + "Clients";
  w.invoiceEntriesTable = s + "InvoiceEntries";
  w.timeEntriesTable = s + "TimeEntries";
  w.workCodeEntriesTable = s + "WorkCodeEntries";
  w.userIDColumn = s + "UserID";
  w.clientIDColumn = s + "ClientID";
  w.contactIDColumn = s + "ContactID";
  w.invoiceIDColumn = s + "InvoiceID";
  w.cashIDColumn = s + "CashID";
  w.timeIDColumn = s + "TimeID";
  w.workcodeIDColumn = s + "WorkcodeID";
  w.paragraphIDColumn = s + "ParagraphID";
  w.billingCategoryIDColumn = s + "BillingCategoryID";
  return w;
}

const CrossReferenceWords& tpsCrossReferenceWords() {
  static const CrossReferenceWords words =
      CrossReferenceWords::forSource("TPS", "clsImportTPSInformation");
  return words;
}

const CrossReferenceWords& cchPracticeCrossReferenceWords() {
  static const CrossReferenceWords words =
      CrossReferenceWords::forSource("CCHPractice", "clsImportCCHPracticeInfo");
  return words;
}

const CrossReferenceWords& balabossCrossReferenceWords() {
  static const CrossReferenceWords words =
      CrossReferenceWords::forSource("Balaboss", "clsImportBalabossInfo");
  return words;
}

const CrossReferenceWords& bill4TimeCrossReferenceWords() {
  static const CrossReferenceWords words = [] {
    CrossReferenceWords w = CrossReferenceWords::forSource("Balaboss", "clsImportBill4Time");
    w.sourceWord = "Bill4Time";
    return w;
  }();
  return words;
}

CrossReferenceTables::CrossReferenceTables(const CrossReferenceWords& words) : words_(words) {}

std::string CrossReferenceTables::selectStatement(std::string_view table,
                                                  std::string_view firmID) const {
  const std::string t(table);
  return "SELECT " + t + ".* From " + t + " WHERE " + t + "." + words_.firmColumn + " = '" +
         std::string(firmID) + "';";
}

void CrossReferenceTables::open(std::string_view firmID, DatabaseService* db) {
  close();
  db_ = db != nullptr ? db : moduleState().DatabaseReference;
  firmID_ = std::string(firmID);
  if (db_ == nullptr) return;
  auto openTable = [&](const std::string& table) {
    return db_->openRecordset(selectStatement(table, firmID_), kCursorKeyset, kLockOptimistic);
  };
  userEntries = openTable(words_.userEntriesTable);
  clients = openTable(words_.clientsTable);
  invoiceEntries = openTable(words_.invoiceEntriesTable);
  timeEntries = openTable(words_.timeEntriesTable);
  workCodeEntries = openTable(words_.workCodeEntriesTable);
}

void CrossReferenceTables::close() {
  for (std::int32_t* handle :
       {&userEntries, &clients, &invoiceEntries, &timeEntries, &workCodeEntries}) {
    ignoreErrors([&] {
      if (db_ != nullptr && *handle != 0 && db_->isRecordsetOpen(*handle))
        db_->closeRecordset(*handle);
    });
    *handle = 0;
  }
}

namespace {

// The operation's name in the label: the TPS name with the source's word in its place.
std::string procedureLabel(const CrossReferenceWords& words, std::string_view tpsName) {
  return "Ledgerfolio.exe-" + words.engineClass + "-" +
         replaceAll(tpsName, "TPS", words.sourceWord, false);
}

}  // namespace

long CrossReferenceTables::getLedgerfolioID(CrossReferenceKind kind, std::string_view sourceID,
                                            int pumps) {
  long result = -1;
  pumpEvents(pumps);
  if (db_ == nullptr) return result;
  const PairColumns pair = pairColumns(words_, kind);
  const std::int32_t handle = this->*pair.handle;
  if (!db_->findRecord(handle, pair.sourceColumn, sourceID)) return result;
  const Variant value = db_->getField(handle, pair.ledgerfolioColumn);
  if (!GeneralUtilities::isBlank(value)) result = toLongID(value);
  return result;
}

std::string CrossReferenceTables::getSourceID(CrossReferenceKind kind, long ledgerfolioID,
                                              int pumps) {
  std::string result;
  pumpEvents(pumps);
  if (db_ == nullptr) return result;
  const PairColumns pair = pairColumns(words_, kind);
  const std::int32_t handle = this->*pair.handle;
  if (!db_->findRecord(handle, pair.ledgerfolioColumn, std::to_string(ledgerfolioID)))
    return result;
  const Variant value = db_->getField(handle, pair.sourceColumn);
  if (!GeneralUtilities::isBlank(value)) result = value.toString();
  return result;
}

void CrossReferenceTables::save(CrossReferenceKind kind, long ledgerfolioID,
                                std::string_view sourceID) {
  pumpEvents(4);
  if (db_ == nullptr) return;
  const PairColumns pair = pairColumns(words_, kind);
  const std::int32_t handle = this->*pair.handle;
  const std::string id = std::to_string(ledgerfolioID);
  const std::string now = Date::now().toIso();
  if (db_->findRecord(handle, pair.ledgerfolioColumn, id)) {
    db_->setField(handle, words_.firmColumn, firmID_);
    db_->setField(handle, pair.sourceColumn, sourceID);
    db_->setField(handle, "DateLastSync", now);
    return;
  }
  db_->addNewRecord(handle);
  db_->setNewField(handle, words_.firmColumn, firmID_);
  db_->setNewField(handle, pair.ledgerfolioColumn, id);
  db_->setNewField(handle, pair.sourceColumn, sourceID);
  db_->setNewField(handle, "DateLastSync", now);
  db_->updateRecord(handle);
}

// --- The operations by their TPS names ------------------------------------------------------
// Each runs under its own label; a failed get keeps -1 and the caller takes the new-row path.

namespace {

// The TPS names of a kind's get and save. The first get of the family pumps six times, the
// others four.
struct KindOperations {
  std::string_view get;
  std::string_view save;
  int pumps;
};

KindOperations operationsOf(CrossReferenceKind kind) {
  using K = CrossReferenceKind;
  switch (kind) {
    case K::Employee:
      return {"getEmployeeIDFromTPSEmployeeID", "saveEmployeeIDAndTPSEmployeeID", 6};
    case K::CompanyClient:
      return {"getCompanyIDFromTPSClientIDOnly", "saveCompanyIDAndTPSClientID", 4};
    case K::ContactClient:
      return {"getContactIDFromTPSClientIDOnly", "saveContactIDAndTPSClientID", 4};
    case K::ContactContact:
      return {"getContactIDFromTPSContactIDOnly", "saveContactIDAndTPSContactID", 4};
    case K::InvoiceItem:
      return {"getInvoiceItemIDFromTPSParagraphID", "saveInvoiceItemIDAndTPSParagraphID", 4};
    case K::BillingCategory:
      return {"getBillingCategoryIDFromTPSServiceCategoryID",
              "saveBillingCategoryIDAndTPSServiceCategoryID", 4};
    case K::Workcode:
      return {"getWorkcodeIDFromTPSWorkcodeID", "saveWorkcodeIDAndTPSWorkcodeID", 4};
    case K::Invoice:
      return {"getInvoiceIDFromTPSInvoiceID", "saveInvoiceIDAndTPSInvoiceID", 4};
    case K::Deposit:
      return {"getDepositIDFromTPSDepositID", "saveDepositIDAndTPSDepositID", 4};
    case K::Docket:
      break;
  }
  return {"getDocketIDFromTPSTimeID", "saveDocketIDAndTPSTimeID", 4};
}

}  // namespace

long CrossReferenceTables::find(CrossReferenceKind kind, std::string_view sourceID) {
  const KindOperations operations = operationsOf(kind);
  long result = -1;
  procedure(procedureLabel(words_, operations.get),
            [&] { result = getLedgerfolioID(kind, sourceID, operations.pumps); });
  return result;
}

void CrossReferenceTables::store(CrossReferenceKind kind, long ledgerfolioID,
                                 std::string_view sourceID) {
  procedure(procedureLabel(words_, operationsOf(kind).save),
            [&] { save(kind, ledgerfolioID, sourceID); });
}

#define LF_CROSS_REFERENCE_GET(name, kind)                     \
  long CrossReferenceTables::name(std::string_view sourceID) { \
    return find(kind, sourceID);                               \
  }

LF_CROSS_REFERENCE_GET(getEmployeeIDFromTPSEmployeeID, CrossReferenceKind::Employee)
LF_CROSS_REFERENCE_GET(getInvoiceItemIDFromTPSParagraphID, CrossReferenceKind::InvoiceItem)
LF_CROSS_REFERENCE_GET(getBillingCategoryIDFromTPSServiceCategoryID,
                       CrossReferenceKind::BillingCategory)
LF_CROSS_REFERENCE_GET(getWorkcodeIDFromTPSWorkcodeID, CrossReferenceKind::Workcode)
LF_CROSS_REFERENCE_GET(getInvoiceIDFromTPSInvoiceID, CrossReferenceKind::Invoice)
LF_CROSS_REFERENCE_GET(getDepositIDFromTPSDepositID, CrossReferenceKind::Deposit)
LF_CROSS_REFERENCE_GET(getDocketIDFromTPSTimeID, CrossReferenceKind::Docket)
LF_CROSS_REFERENCE_GET(getCompanyIDFromTPSClientIDOnly, CrossReferenceKind::CompanyClient)
LF_CROSS_REFERENCE_GET(getContactIDFromTPSClientIDOnly, CrossReferenceKind::ContactClient)
LF_CROSS_REFERENCE_GET(getContactIDFromTPSContactIDOnly, CrossReferenceKind::ContactContact)
#undef LF_CROSS_REFERENCE_GET

#define LF_CROSS_REFERENCE_REVERSE_GET(name, kind)                                             \
  long CrossReferenceTables::name(long ledgerfolioID) {                                        \
    long result = -1;                                                                          \
    procedure(procedureLabel(words_, #name), [&] {                                             \
      const std::string id = getSourceID(kind, ledgerfolioID, 4);                              \
      if (!id.empty() && GeneralUtilities::isNumeric(id)) result = static_cast<long>(val(id)); \
    });                                                                                        \
    return result;                                                                             \
  }

LF_CROSS_REFERENCE_REVERSE_GET(getTPSClientIDFromCompanyID, CrossReferenceKind::CompanyClient)
LF_CROSS_REFERENCE_REVERSE_GET(getTPSClientIDFromContactID, CrossReferenceKind::ContactClient)
#undef LF_CROSS_REFERENCE_REVERSE_GET

#define LF_CROSS_REFERENCE_SAVE(name, kind)                                        \
  void CrossReferenceTables::name(long ledgerfolioID, std::string_view sourceID) { \
    store(kind, ledgerfolioID, sourceID);                                          \
  }

LF_CROSS_REFERENCE_SAVE(saveEmployeeIDAndTPSEmployeeID, CrossReferenceKind::Employee)
LF_CROSS_REFERENCE_SAVE(saveCompanyIDAndTPSClientID, CrossReferenceKind::CompanyClient)
LF_CROSS_REFERENCE_SAVE(saveContactIDAndTPSClientID, CrossReferenceKind::ContactClient)
LF_CROSS_REFERENCE_SAVE(saveContactIDAndTPSContactID, CrossReferenceKind::ContactContact)
LF_CROSS_REFERENCE_SAVE(saveInvoiceItemIDAndTPSParagraphID, CrossReferenceKind::InvoiceItem)
LF_CROSS_REFERENCE_SAVE(saveBillingCategoryIDAndTPSServiceCategoryID,
                        CrossReferenceKind::BillingCategory)
LF_CROSS_REFERENCE_SAVE(saveWorkcodeIDAndTPSWorkcodeID, CrossReferenceKind::Workcode)
LF_CROSS_REFERENCE_SAVE(saveInvoiceIDAndTPSInvoiceID, CrossReferenceKind::Invoice)
LF_CROSS_REFERENCE_SAVE(saveDepositIDAndTPSDepositID, CrossReferenceKind::Deposit)
LF_CROSS_REFERENCE_SAVE(saveDocketIDAndTPSTimeID, CrossReferenceKind::Docket)
#undef LF_CROSS_REFERENCE_SAVE

}  // namespace lf
