// clsImportBill4TimeInfo: firm identity, statements, recordsets, progress total and the order
// of the stage groups of a Bill4Time sync.
#include "sync/cls_import_bill4time_info.hpp"

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "sync/close_paid_invoices.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_values.hpp"

namespace lf {

using namespace sourcerows;

clsImportBill4TimeInfo::clsImportBill4TimeInfo()
    : SyncEngine(bill4TimeSourceDescription(), options_) {
  defaultSyncDates(options_, Date::today());
  storeDocketsThrough(rsDockets);
  describeStages();
}

clsImportBill4TimeInfo::~clsImportBill4TimeInfo() {
  endEngine();
}

void clsImportBill4TimeInfo::openBill4TimeImportForm() {
  procedure(label("openBill4TimeImportForm"), [&] {
    if (runWizard) runWizard(*this);
  });
}

void clsImportBill4TimeInfo::fixBill4TimeDeletedClients() {
  procedure(label("fixBill4TimeDeletedClients"), [] {});
}

std::string clsImportBill4TimeInfo::getBill4TimeWIPQuery() {
  std::string sql =
      "SELECT TimeEntries.*, TimeEntries.[Entry Date], TimeEntries.Status "
      "From TimeEntries "
      "WHERE TimeEntries.Status Like 'Ready For Billing' OR TimeEntries.Status Like 'Pending "
      "Ticket Close'";
  procedure(label("getBill4TimeWIPQuery"), [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (!options_.mvarUseTimeEntryDateRange || db == nullptr) return;
    const std::string start = db->formatDateForSql(options_.mvarTimeEntriesSynchStartRange);
    const std::string end = db->formatDateForSql(options_.mvarTimeEntriesSynchEndRange);
    switch (options_.mvarTimeEntriesSynchDateRangeType) {
      case kSynchOnDate:
        // Intended: no opening bracket, so the database refuses this statement.
        sql += " AND TimeEntries.[Entry Date] = #" + start + "#)";
        break;
      case kSynchOnOrAfter:
        sql += " AND (TimeEntries.[Entry Date] >= #" + start + "#)";
        break;
      case kSynchOnOrBefore:
        sql += " AND (TimeEntries.[Entry Date] <= #" + start + "#)";
        break;
      case kSynchBetween:
        sql += " AND (TimeEntries.[Entry Date] >= #" + start +
               "# And TimeEntries.[Entry Date] <= #" + end + "#)";
        break;
      default:
        break;
    }
  });
  return sql + ";";
}

std::string clsImportBill4TimeInfo::getBill4TimeARQuery() {
  std::string sql = "SELECT Invoices.* FROM Invoices";
  procedure(label("getBill4TimeARQuery"), [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (options_.mvarUseInvoiceDateRange && db != nullptr)
      sql +=
          dateRangeClause(*db, "Invoices.[Invoice Date]", options_.mvarInvoicesSynchDateRangeType,
                          options_.mvarInvoicesSynchStartRange, options_.mvarInvoicesSynchEndRange);
  });
  return sql + ";";
}

long clsImportBill4TimeInfo::getBillingRate(long userID, double rate) {
  long result = -1;
  procedure(label("getBillingRate"), [&] {
    if (!practiceOpen()) return;
    DatabaseService& db = practice();
    RecordsetScope rates(db,
                         "SELECT UserBillingRates.UserBillingRateID, UserBillingRates.UserIDNum, "
                         "UserBillingRates.UserBillingRate "
                         "From UserBillingRates "
                         "WHERE UserBillingRates.UserIDNum=" +
                             idText(userID) +
                             " AND UserBillingRates.UserBillingRate=" + numberText(rate) + ";",
                         kLockReadOnly);
    if (db.hasRecord(rates) && !db.isEOF(rates))
      result = static_cast<long>(db.getField(rates, "UserBillingRateID").toLong());
  });
  return result;
}

long clsImportBill4TimeInfo::progressTotal() {
  DatabaseService* source = sourceDatabase();
  long total = 0;
  if (options_.syncObjectsContacts)
    total += options_.companyCollection.count() + options_.contactsCollection.count();
  if (source == nullptr) return total;
  if (options_.syncObjectsInvoices && source->isRecordsetOpen(rsInvoices))
    total += source->recordCount(rsInvoices);
  if (options_.syncObjectsTimeEntries && source->isRecordsetOpen(rsWIPQuery))
    total += source->recordCount(rsWIPQuery);
  return total;
}

std::vector<SyncEngine::StageGroup> clsImportBill4TimeInfo::runOrder() {
  // The deleted-client pass runs whatever is chosen (its group is the open export, which every
  // run has); the staff stage is not run: the time entries take the staff the
  // cross-reference knows.
  return {
      {&SyncOptions::useDatabase, {[this] { fixBill4TimeDeletedClients(); }}},
      {&SyncOptions::syncObjectsContacts,
       {[this] { importBill4TimeBusinessClients(); },
        [this] { importBill4TimePersonalClients(); }}},
      {&SyncOptions::syncObjectsTimeEntries, {[this] { importBill4TimeWIPEntries(); }}},
      {&SyncOptions::syncObjectsInvoices,
       {[this] { importBill4TimeInvoices(); },
        [this] {
          commitRecords();
          closeAllPaidInvoices();
        }}},
  };
}

void clsImportBill4TimeInfo::initializeDataRecordsets() {
  procedure(label("initializeDataRecordsets"), [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    if (dropDown != nullptr) setPracticeFirmID(dropDown->getFirmID());
    closeDataRecordsets();
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr || !db->isOpen()) return;

    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->isOpen()) {
      auto openSource = [&](const std::string& sql) {
        return source->openRecordset(sql, kCursorKeyset, kLockReadOnly);
      };
      const bool money = options_.syncObjectsTimeEntries || options_.syncObjectsInvoices;
      if (options_.syncObjectsContacts)
        rsStaff = openSource(
            "SELECT TimeEntries.User, TimeEntries.[User Id] "
            "From TimeEntries "
            "GROUP BY TimeEntries.User, TimeEntries.[User Id] "
            "ORDER BY TimeEntries.User, TimeEntries.[User Id];");
      if (options_.syncObjectsContacts || money)
        rsClients = openSource(
            "SELECT Clients.* FROM Clients "
            "WHERE Clients.[Client Status] Not Like 'Deleted';");
      if (options_.syncObjectsContacts)
        rsContacts =
            openSource("SELECT Contacts.* FROM Contacts WHERE Contacts.Status Not Like 'Deleted';");
      if (options_.syncObjectsInvoices) rsInvoices = openSource(getBill4TimeARQuery());
      if (options_.syncObjectsTimeEntries) {
        rsTimeEntries = openSource("SELECT TimeEntries.* FROM TimeEntries;");
        // The refusal of the on-date statement goes to the error service, and the run goes on
        // without time entries.
        resumeNext([&] { rsWIPQuery = openSource(getBill4TimeWIPQuery()); });
      }
    }

    openPracticeRecordsets(
        *db, {rsAccountantEmployeeInfo, rsCompanies, rsMainBusinessList, rsCompaniesNotes,
              rsTargetContacts, rsCustomInvoiceDockets, rsTargetInvoices, rsDeposits, rsDockets});
  });
}

void clsImportBill4TimeInfo::closeDataRecordsets() {
  closeRecordsets(
      {&rsStaff, &rsClients, &rsContacts, &rsInvoices, &rsTimeEntries, &rsWIPQuery},
      {&rsAccountantEmployeeInfo, &rsCompanies, &rsTargetContacts, &rsMainBusinessList,
       &rsCompaniesNotes, &rsTargetInvoices, &rsDeposits, &rsDockets, &rsCustomInvoiceDockets});
}

}  // namespace lf
