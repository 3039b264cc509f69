// The cross-reference tables of the sync engines: get and save on the five open recordsets
// of one firm.
#include "sync/cross_reference.hpp"

#include <string>

#include "db/database_service.hpp"
#include "frame/module_state.hpp"
#include "frame/procedure.hpp"
#include "host/general_utilities.hpp"

namespace lf {
namespace {

struct KindColumns {
  std::int32_t CrossReferenceTables::*table;
  std::string ledgerfolio;
  const std::string CrossReferenceWords::*source;
};

KindColumns columnsOf(CrossReferenceKind kind) {
  using T = CrossReferenceTables;
  using W = CrossReferenceWords;
  switch (kind) {
    case CrossReferenceKind::Employee:
      return {&T::userEntries, "UserIDNum", &W::userIDColumn};
    case CrossReferenceKind::CompanyClient:
      return {&T::clients, "CompanyID", &W::clientIDColumn};
    case CrossReferenceKind::ContactClient:
      return {&T::clients, "ContactID", &W::clientIDColumn};
    case CrossReferenceKind::ContactContact:
      return {&T::clients, "ContactID", &W::contactIDColumn};
    case CrossReferenceKind::InvoiceItem:
      return {&T::workCodeEntries, "InvoiceItemIDNum", &W::paragraphIDColumn};
    case CrossReferenceKind::BillingCategory:
      return {&T::workCodeEntries, "BillingCategoryIDNum", &W::billingCategoryIDColumn};
    case CrossReferenceKind::Workcode:
      return {&T::workCodeEntries, "WorkcodeIDNum", &W::workcodeIDColumn};
    case CrossReferenceKind::Invoice:
      return {&T::invoiceEntries, "InvoiceIDNum", &W::invoiceIDColumn};
    case CrossReferenceKind::Deposit:
      return {&T::invoiceEntries, "DepositIDNum", &W::cashIDColumn};
    case CrossReferenceKind::Docket:
      return {&T::timeEntries, "DocketIDNum", &W::timeIDColumn};
  }
  return {&T::clients, "CompanyID", &W::clientIDColumn};
}

void pump(int times) {
  (void)times;  // the stand-alone host has no window to keep alive
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
    CrossReferenceWords w = CrossReferenceWords::forSource("Balaboss", "clsImportBill4TimeInfo");
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
  db_ = db != nullptr ? db : moduleState().DatabaseReference;
  firmID_ = std::string(firmID);
  auto openOne = [&](const std::string& table) {
    return db_->openRecordset(selectStatement(table, firmID), kCursorKeyset, kLockOptimistic);
  };
  userEntries = openOne(words_.userEntriesTable);
  clients = openOne(words_.clientsTable);
  invoiceEntries = openOne(words_.invoiceEntriesTable);
  timeEntries = openOne(words_.timeEntriesTable);
  workCodeEntries = openOne(words_.workCodeEntriesTable);
}

void CrossReferenceTables::close() {
  for (std::int32_t* h : {&userEntries, &clients, &invoiceEntries, &timeEntries, &workCodeEntries}) {
    try {
      if (db_ != nullptr && *h != 0 && db_->isRecordsetOpen(*h)) db_->closeRecordset(*h);
    } catch (...) {
    }
    *h = 0;
  }
}

long CrossReferenceTables::getLedgerfolioID(CrossReferenceKind kind, std::string_view sourceID,
                                            int pumps) {
  long result = -1;
  const KindColumns c = columnsOf(kind);
  procedure("Ledgerfolio.exe-" + words_.engineClass + "-get" + c.ledgerfolio, [&] {
    pump(pumps);
    if (db_ == nullptr) return;
    const std::int32_t h = this->*c.table;
    if (!db_->findRecord(h, words_.*c.source, sourceID)) return;
    Variant v = db_->getField(h, c.ledgerfolio);
    if (GeneralUtilities::isBlank(v)) return;
    result = static_cast<long>(v.toLong());
  });
  return result;
}

std::string CrossReferenceTables::getSourceID(CrossReferenceKind kind, long ledgerfolioID,
                                              int pumps) {
  std::string result;
  const KindColumns c = columnsOf(kind);
  procedure("Ledgerfolio.exe-" + words_.engineClass + "-getSourceIDOf" + c.ledgerfolio, [&] {
    pump(pumps);
    if (db_ == nullptr) return;
    const std::int32_t h = this->*c.table;
    if (!db_->findRecord(h, c.ledgerfolio, std::to_string(ledgerfolioID))) return;
    Variant v = db_->getField(h, words_.*c.source);
    if (GeneralUtilities::isBlank(v)) return;
    result = v.toString();
  });
  return result;
}

void CrossReferenceTables::save(CrossReferenceKind kind, long ledgerfolioID,
                                std::string_view sourceID) {
  const KindColumns c = columnsOf(kind);
  procedure("Ledgerfolio.exe-" + words_.engineClass + "-save" + c.ledgerfolio, [&] {
    pump(4);
    if (db_ == nullptr) return;
    const std::int32_t h = this->*c.table;
    const std::string id = std::to_string(ledgerfolioID);
    const std::string now = Date::now().toIso();
    if (db_->findRecord(h, c.ledgerfolio, id)) {
      db_->setField(h, words_.firmColumn, firmID_);
      db_->setField(h, words_.*c.source, sourceID);
      db_->setField(h, "DateLastSync", now);
    } else {
      db_->addNewRecord(h);
      db_->setNewField(h, words_.firmColumn, firmID_);
      db_->setNewField(h, c.ledgerfolio, id);
      db_->setNewField(h, words_.*c.source, sourceID);
      db_->setNewField(h, "DateLastSync", now);
      db_->updateRecord(h);
    }
  });
}

long CrossReferenceTables::getEmployeeIDFromTPSEmployeeID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::Employee, id, 6);
}
long CrossReferenceTables::getInvoiceItemIDFromTPSParagraphID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::InvoiceItem, id);
}
long CrossReferenceTables::getBillingCategoryIDFromTPSServiceCategoryID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::BillingCategory, id);
}
long CrossReferenceTables::getWorkcodeIDFromTPSWorkcodeID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::Workcode, id);
}
long CrossReferenceTables::getInvoiceIDFromTPSInvoiceID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::Invoice, id);
}
long CrossReferenceTables::getDepositIDFromTPSDepositID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::Deposit, id);
}
long CrossReferenceTables::getDocketIDFromTPSTimeID(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::Docket, id);
}
long CrossReferenceTables::getCompanyIDFromTPSClientIDOnly(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::CompanyClient, id, 6);
}
long CrossReferenceTables::getContactIDFromTPSClientIDOnly(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::ContactClient, id);
}
long CrossReferenceTables::getContactIDFromTPSContactIDOnly(std::string_view id) {
  return getLedgerfolioID(CrossReferenceKind::ContactContact, id);
}

long CrossReferenceTables::getTPSClientIDFromCompanyID(long companyID) {
  const std::string id = getSourceID(CrossReferenceKind::CompanyClient, companyID);
  return !id.empty() && GeneralUtilities::isNumeric(id) ? std::stol(id) : -1;
}
long CrossReferenceTables::getTPSClientIDFromContactID(long contactID) {
  const std::string id = getSourceID(CrossReferenceKind::ContactClient, contactID);
  return !id.empty() && GeneralUtilities::isNumeric(id) ? std::stol(id) : -1;
}

void CrossReferenceTables::saveEmployeeIDAndTPSEmployeeID(long id, std::string_view source) {
  save(CrossReferenceKind::Employee, id, source);
}
void CrossReferenceTables::saveCompanyIDAndTPSClientID(long id, std::string_view source) {
  save(CrossReferenceKind::CompanyClient, id, source);
}
void CrossReferenceTables::saveContactIDAndTPSClientID(long id, std::string_view source) {
  save(CrossReferenceKind::ContactClient, id, source);
}
void CrossReferenceTables::saveContactIDAndTPSContactID(long id, std::string_view source) {
  save(CrossReferenceKind::ContactContact, id, source);
}
void CrossReferenceTables::saveInvoiceItemIDAndTPSParagraphID(long id, std::string_view source) {
  save(CrossReferenceKind::InvoiceItem, id, source);
}
void CrossReferenceTables::saveBillingCategoryIDAndTPSServiceCategoryID(long id,
                                                                        std::string_view source) {
  save(CrossReferenceKind::BillingCategory, id, source);
}
void CrossReferenceTables::saveWorkcodeIDAndTPSWorkcodeID(long id, std::string_view source) {
  save(CrossReferenceKind::Workcode, id, source);
}
void CrossReferenceTables::saveInvoiceIDAndTPSInvoiceID(long id, std::string_view source) {
  save(CrossReferenceKind::Invoice, id, source);
}
void CrossReferenceTables::saveDepositIDAndTPSDepositID(long id, std::string_view source) {
  save(CrossReferenceKind::Deposit, id, source);
}
void CrossReferenceTables::saveDocketIDAndTPSTimeID(long id, std::string_view source) {
  save(CrossReferenceKind::Docket, id, source);
}

}  // namespace lf
