// clsImportTPSInformation: firm identity, filtered statements, recordsets, progress total and
// the order of the stage groups of a TPS sync.
#include "sync/cls_import_tps_information.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_utilities.hpp"
#include "records/lookups.hpp"
#include "sync/sync_values.hpp"

namespace lf {

clsImportTPSInformation::clsImportTPSInformation() : SyncEngine(tpsSourceDescription(), options_) {
  defaultTPSImportDates(options_, Date::today());
  storeDocketsThrough(rsDockets);
  describeStages();
}

clsImportTPSInformation::~clsImportTPSInformation() {
  endEngine();
}

void clsImportTPSInformation::openTPSImportForm() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-openSyncForm", [&] {
    if (runWizard) runWizard(*this);
  });
}

std::string clsImportTPSInformation::getTPSUniqueID() {
  std::string result;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSUniqueID", [&] {
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && options_.useTPSDatabase) {
      std::int32_t rs = source->openRecordset("SELECT Firm.Name, Firm.Active FROM Firm;",
                                              kCursorKeyset, kLockReadOnly);
      bool stopped = false;
      if (source->hasRecord(rs)) {
        while (!source->isEOF(rs)) {
          if (readBool(*source, rs, "Active")) {
            stopped = true;
            break;
          }
          source->moveNext(rs);
        }
      }
      if (stopped) result = readText(*source, rs, "Name");
      source->closeRecordset(rs);
    }
  });
  if (GeneralUtilities::isBlank(result)) result = "Unknown";
  return result.substr(0, 255);
}

std::string clsImportTPSInformation::getTPSTimeQuery() {
  std::string sql = "SELECT Times.TimeID, Times.Status, Times.Start FROM Times";
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSTimeQuery", [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (options_.mvarUseTimeEntryDateRange && db != nullptr) {
      sql += dateRangeClause(*db, "Times.Start", options_.mvarTimeEntriesSynchDateRangeType,
                             options_.mvarTimeEntriesSynchStartRange,
                             options_.mvarTimeEntriesSynchEndRange);
      // Intended: an unknown range type adds no WHERE, and this clause then breaks the
      // statement; the wizard never produces such a type.
      if (options_.importOnlyWIPTimeEntries) sql += " AND (Times.Status=0 Or Times.Status=1)";
    } else if (options_.importOnlyWIPTimeEntries) {
      sql += " WHERE Times.Status=0 Or Times.Status=1";
    }
  });
  return sql + ";";
}

std::string clsImportTPSInformation::getTPSInvoicesQuery() {
  return invoiceRangeQuery("getTPSInvoicesQuery",
                           "SELECT Invoices.InvoiceID, Invoices.BillDate FROM Invoices",
                           "Invoices.BillDate");
}

std::string clsImportTPSInformation::getTPSDepositQuery() {
  // Intended: deposits share the invoices' date range.
  return invoiceRangeQuery("getTPSDepositQuery",
                           "SELECT Payments.PaymentID, Payments.PayDate FROM Payments",
                           "Payments.PayDate");
}

std::string clsImportTPSInformation::invoiceRangeQuery(std::string_view operation, std::string sql,
                                                       std::string_view column) {
  procedure(label(operation), [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (options_.mvarUseInvoiceDateRange && db != nullptr)
      sql +=
          dateRangeClause(*db, column, options_.mvarInvoicesSynchDateRangeType,
                          options_.mvarInvoicesSynchStartRange, options_.mvarInvoicesSynchEndRange);
  });
  return sql + ";";
}

long clsImportTPSInformation::progressTotal() {
  DatabaseService* source = sourceDatabase();
  long total = 0;
  if (options_.syncObjectsContacts)
    total += options_.companyCollection.count() + options_.contactsCollection.count();
  if (source == nullptr) return total;
  if (options_.syncObjectsInvoices)
    total += source->recordCount(rsInvoiceQuery) + source->recordCount(rsPaymentQuery);
  if (options_.syncObjectsTimeEntries) total += source->recordCount(rsTimeQuery);
  if (options_.syncObjectsWorkCodes)
    total += source->recordCount(rsChildWorkCodes) + source->recordCount(rsParagraphs);
  return total;
}

std::vector<SyncEngine::StageGroup> clsImportTPSInformation::runOrder() {
  // Staff and clients exist before anything that refers to them, work codes before time
  // entries, invoices before the time entries that may point at them.
  return {
      {&SyncOptions::syncObjectsContacts,
       {[this] { importTPSUsers(); }, [this] { importTPSBusinessClients(); },
        [this] { importTPSPersonalClients(); }, [this] { importTPSInvoiceParagraphs(); }}},
      {&SyncOptions::syncObjectsWorkCodes, {[this] { importTPSWorkCodes(); }}},
      {&SyncOptions::syncObjectsInvoices,
       {[this] { importTPSInvoices(); }, [this] { importTPSDeposits(); }}},
      {&SyncOptions::syncObjectsTimeEntries, {[this] { importTPSTimeEntries(); }}},
  };
}

void clsImportTPSInformation::initializeDataRecordsets() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-initializeDataRecordsets", [&] {
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
      if (options_.syncObjectsContacts) {
        rsEmployees = openSource(
            "SELECT Employees.EmployeeID, Employees.ContactID, Employees.EmployeeType, "
            "Employees.LoginName, Employees.Status, Employees.SIN FROM Employees;");
        rsClientContacts = openSource(
            "SELECT ClientContacts.ClientID, ClientContacts.ContactID, ClientContacts.Primary "
            "FROM ClientContacts;");
        rsClients = openSource("SELECT Clients.* FROM Clients;");
        rsContacts = openSource("SELECT Contacts.* FROM Contacts;");
      }
      if (options_.syncObjectsInvoices) {
        rsInvoiceQuery = openSource(getTPSInvoicesQuery());
        rsInvoices = openSource("SELECT Invoices.* FROM Invoices;");
        rsPaymentQuery = openSource(getTPSDepositQuery());
        rsPayments = openSource("SELECT Payments.* From Payments;");
      }
      if (options_.syncObjectsTimeEntries) {
        rsTimeQuery = openSource(getTPSTimeQuery());
        rsTimes = openSource("SELECT Times.* FROM Times;");
      }
      if (options_.syncObjectsWorkCodes || options_.syncObjectsTimeEntries) {
        rsParentWorkCodes =
            openSource("SELECT WorkCodes.* From WorkCodes WHERE WorkCodes.Parent Is Null;");
        rsChildWorkCodes =
            openSource("SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.Parent Is Null;");
        rsParagraphs = openSource("SELECT Paragraphs.* From Paragraphs;");
      }
    }

    openPracticeRecordsets(
        *db, {rsAccountantEmployeeInfo, rsCompanies, rsMainBusinessList, rsCompaniesNotes,
              rsTargetContacts, rsCustomInvoiceDockets, rsTargetInvoices, rsDeposits, rsDockets});
  });
}

void clsImportTPSInformation::closeDataRecordsets() {
  closeRecordsets(
      {&rsEmployees, &rsClients, &rsClientContacts, &rsContacts, &rsInvoiceQuery, &rsInvoices,
       &rsTimeQuery, &rsTimes, &rsPaymentQuery, &rsPayments, &rsChildWorkCodes, &rsParentWorkCodes,
       &rsParagraphs},
      {&rsAccountantEmployeeInfo, &rsCompanies, &rsTargetContacts, &rsMainBusinessList,
       &rsCompaniesNotes, &rsTargetInvoices, &rsDeposits, &rsDockets, &rsCustomInvoiceDockets});
}

}  // namespace lf
