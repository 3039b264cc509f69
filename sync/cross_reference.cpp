// The cross-reference get and save operations, once for all sources.
#include "sync/cross_reference.hpp"

#include <string>
#include <string_view>

#include "base/general_utilities.hpp"
#include "base/legacy_text.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "base/variant.hpp"
#include "db/database_service.hpp"
#include "frame/platform_timer.hpp"

namespace lf {
namespace {

// The recordset and the two columns of one kind of pair.
struct PairColumns {
  std::int32_t CrossReferenceTables::*handle;
  std::string_view ledgerfolioColumn;
  std::string CrossReferenceWords::*sourceColumn;
};

PairColumns pairColumns(CrossReferenceKind kind) {
  using T = CrossReferenceTables;
  using W = CrossReferenceWords;
  // In the order of CrossReferenceKind.
  static const PairColumns kPairs[] = {
      {&T::userEntries, "UserIDNum", &W::userIDColumn},
      {&T::clients, "CompanyID", &W::clientIDColumn},
      {&T::clients, "ContactID", &W::clientIDColumn},
      {&T::clients, "ContactID", &W::contactIDColumn},
      {&T::workCodeEntries, "InvoiceItemIDNum", &W::paragraphIDColumn},
      {&T::workCodeEntries, "BillingCategoryIDNum", &W::billingCategoryIDColumn},
      {&T::workCodeEntries, "WorkcodeIDNum", &W::workcodeIDColumn},
      {&T::invoiceEntries, "InvoiceIDNum", &W::invoiceIDColumn},
      {&T::invoiceEntries, "DepositIDNum", &W::cashIDColumn},
      {&T::timeEntries, "DocketIDNum", &W::timeIDColumn}};
  return kPairs[static_cast<int>(kind)];
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
  return {s,
          std::string(engineClass),
          s + "DBID",
          s + "UserEntries",
          s + "Clients",
          s + "InvoiceEntries",
          s + "TimeEntries",
          s + "WorkCodeEntries",
          s + "UserID",
          s + "ClientID",
          s + "ContactID",
          s + "InvoiceID",
          s + "CashID",
          s + "TimeID",
          s + "WorkcodeID",
          s + "ParagraphID",
          s + "BillingCategoryID"};
}

const CrossReferenceWords& crossReferenceWords(SyncSource source) {
  static const CrossReferenceWords words[] = {
      CrossReferenceWords::forSource("TPS", "clsImportTPSInformation"),
      CrossReferenceWords::forSource("CCHPractice", "clsImportCCHPracticeInfo"),
      CrossReferenceWords::forSource("Balaboss", "clsImportBalabossInfo"),
      [] {
        CrossReferenceWords w = CrossReferenceWords::forSource("Balaboss", "clsImportBill4Time");
        w.sourceWord = "Bill4Time";
        return w;
      }(),
  };
  return words[static_cast<int>(source)];
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
  const PairColumns pair = pairColumns(kind);
  const std::int32_t handle = this->*pair.handle;
  if (!db_->findRecord(handle, words_.*pair.sourceColumn, sourceID)) return result;
  const Variant value = db_->getField(handle, pair.ledgerfolioColumn);
  if (!GeneralUtilities::isBlank(value)) result = toLongID(value);
  return result;
}

std::string CrossReferenceTables::getSourceID(CrossReferenceKind kind, long ledgerfolioID,
                                              int pumps) {
  std::string result;
  pumpEvents(pumps);
  if (db_ == nullptr) return result;
  const PairColumns pair = pairColumns(kind);
  const std::int32_t handle = this->*pair.handle;
  if (!db_->findRecord(handle, pair.ledgerfolioColumn, std::to_string(ledgerfolioID)))
    return result;
  const Variant value = db_->getField(handle, words_.*pair.sourceColumn);
  if (!GeneralUtilities::isBlank(value)) result = value.toString();
  return result;
}

void CrossReferenceTables::save(CrossReferenceKind kind, long ledgerfolioID,
                                std::string_view sourceID) {
  pumpEvents(4);
  if (db_ == nullptr) return;
  const PairColumns pair = pairColumns(kind);
  const std::int32_t handle = this->*pair.handle;
  const std::string id = std::to_string(ledgerfolioID);
  const std::string now = Date::now().toIso();
  if (db_->findRecord(handle, pair.ledgerfolioColumn, id)) {
    db_->setField(handle, words_.firmColumn, firmID_);
    db_->setField(handle, words_.*pair.sourceColumn, sourceID);
    db_->setField(handle, "DateLastSync", now);
    return;
  }
  db_->addNewRecord(handle);
  db_->setNewField(handle, words_.firmColumn, firmID_);
  db_->setNewField(handle, pair.ledgerfolioColumn, id);
  db_->setNewField(handle, words_.*pair.sourceColumn, sourceID);
  db_->setNewField(handle, "DateLastSync", now);
  db_->updateRecord(handle);
}

// --- The operations by their TPS names ------------------------------------------------------
// Each runs under its own label; a failed get keeps -1 and the caller takes the new-row path.

// Every kind's get and save by their TPS names, in the order of CrossReferenceKind: the list
// both defines the named operations and gives find and store their labels.
#define LF_CROSS_REFERENCE_OPERATIONS(X)                                                 \
  X(Employee, getEmployeeIDFromTPSEmployeeID, saveEmployeeIDAndTPSEmployeeID)            \
  X(CompanyClient, getCompanyIDFromTPSClientIDOnly, saveCompanyIDAndTPSClientID)         \
  X(ContactClient, getContactIDFromTPSClientIDOnly, saveContactIDAndTPSClientID)         \
  X(ContactContact, getContactIDFromTPSContactIDOnly, saveContactIDAndTPSContactID)      \
  X(InvoiceItem, getInvoiceItemIDFromTPSParagraphID, saveInvoiceItemIDAndTPSParagraphID) \
  X(BillingCategory, getBillingCategoryIDFromTPSServiceCategoryID,                       \
    saveBillingCategoryIDAndTPSServiceCategoryID)                                        \
  X(Workcode, getWorkcodeIDFromTPSWorkcodeID, saveWorkcodeIDAndTPSWorkcodeID)            \
  X(Invoice, getInvoiceIDFromTPSInvoiceID, saveInvoiceIDAndTPSInvoiceID)                 \
  X(Deposit, getDepositIDFromTPSDepositID, saveDepositIDAndTPSDepositID)                 \
  X(Docket, getDocketIDFromTPSTimeID, saveDocketIDAndTPSTimeID)

namespace {

struct KindOperations {
  std::string_view get;
  std::string_view save;
};

KindOperations operationsOf(CrossReferenceKind kind) {
#define LF_NAMES(kind, get, save) {#get, #save},
  static const KindOperations kOperations[] = {LF_CROSS_REFERENCE_OPERATIONS(LF_NAMES)};
#undef LF_NAMES
  return kOperations[static_cast<int>(kind)];
}

}  // namespace

long CrossReferenceTables::find(CrossReferenceKind kind, std::string_view sourceID) {
  long result = -1;
  // The first get of the family pumps six times, the others four.
  const int pumps = kind == CrossReferenceKind::Employee ? 6 : 4;
  procedure(procedureLabel(words_, operationsOf(kind).get),
            [&] { result = getLedgerfolioID(kind, sourceID, pumps); });
  return result;
}

void CrossReferenceTables::store(CrossReferenceKind kind, long ledgerfolioID,
                                 std::string_view sourceID) {
  procedure(procedureLabel(words_, operationsOf(kind).save),
            [&] { save(kind, ledgerfolioID, sourceID); });
}

#define LF_DEFINE(kind, get, save)                                                 \
  long CrossReferenceTables::get(std::string_view sourceID) {                      \
    return find(CrossReferenceKind::kind, sourceID);                               \
  }                                                                                \
  void CrossReferenceTables::save(long ledgerfolioID, std::string_view sourceID) { \
    store(CrossReferenceKind::kind, ledgerfolioID, sourceID);                      \
  }
LF_CROSS_REFERENCE_OPERATIONS(LF_DEFINE)
#undef LF_DEFINE
#undef LF_CROSS_REFERENCE_OPERATIONS

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

}  // namespace lf
