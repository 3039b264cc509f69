// clsImportCCHPracticeInfo: firm identity, recordsets, progress total and the order of the
// stage groups of a CCH Practice sync.
#include "sync/cls_import_cch_practice_info.hpp"

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "records/lookups.hpp"
#include "sync/close_paid_invoices.hpp"

namespace lf {

clsImportCCHPracticeInfo::clsImportCCHPracticeInfo()
    : SyncEngine(cchPracticeSourceDescription(), options_) {
  defaultSyncDates(options_, Date::today());
  storeDocketsThrough(rsDockets);
  describeStages();
}

clsImportCCHPracticeInfo::~clsImportCCHPracticeInfo() {
  endEngine();
}

void clsImportCCHPracticeInfo::openCCHPracticeImportForm() {
  procedure(formLabel("openCCHPracticeImportForm"), [&] {
    if (runWizard) runWizard(*this);
  });
}

std::string clsImportCCHPracticeInfo::getCCHPracticeUniqueID() {
  std::string result;
  procedure(label("getCCHPracticeUniqueID"), [&] {
    DatabaseService* source = sourceDatabase();
    if (source == nullptr || !options_.useCCHPracticeDatabase) return;
    std::int32_t rs =
        source->openRecordset("SELECT Firm.FirmID FROM Firm;", kCursorKeyset, kLockReadOnly);
    if (source->hasRecord(rs) && !source->isEOF(rs)) result = readText(*source, rs, "FirmID");
    source->closeRecordset(rs);
  });
  if (GeneralUtilities::isBlank(result)) result = "Unknown";
  return result.substr(0, 255);
}

long clsImportCCHPracticeInfo::progressTotal() {
  DatabaseService* source = sourceDatabase();
  long total = 0;
  if (options_.syncObjectsContacts)
    total += options_.companyCollection.count() + options_.contactsCollection.count();
  if (source == nullptr) return total;
  if (options_.syncObjectsWorkCodes)
    total += source->recordCount(rsBillCodes) + source->recordCount(rsCategories) +
             source->recordCount(rsWorkCodes);
  if (options_.syncObjectsTimeEntries) total += source->recordCount(rsWIP);
  if (options_.syncObjectsInvoices)
    total += source->recordCount(rsAR) + source->recordCount(rsCASH);
  return total;
}

std::vector<SyncEngine::StageGroup> clsImportCCHPracticeInfo::runOrder() {
  // Intended: time entries come before invoices here, unlike the TPS order. Invoices are
  // settled from the deposits once both are in.
  return {
      {&SyncOptions::syncObjectsContacts,
       {[this] { importCCHPracticeUsers(); }, [this] { importCCHPracticeBusinessClients(); },
        [this] { importCCHPracticePersonalClients(); }}},
      {&SyncOptions::syncObjectsWorkCodes, {[this] { importCCHPracticeWorkCodes(); }}},
      {&SyncOptions::syncObjectsTimeEntries, {[this] { importCCHPracticeWIPEntries(); }}},
      {&SyncOptions::syncObjectsInvoices,
       {[this] { importCCHPracticeInvoices(); }, [this] { importCCHPracticeDeposits(); },
        [this] {
          commitRecords();
          closeAllPaidInvoices();
        }}},
  };
}

void clsImportCCHPracticeInfo::initializeDataRecordsets() {
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
      if (options_.syncObjectsContacts) {
        rsStaff = openSource("Select Staff.* FROM Staff;");
        rsClients = openSource("SELECT Client.* FROM Client;");
        rsContacts = openSource("SELECT Contacts.* FROM CONTACT As Contacts;");
      } else if (options_.syncObjectsTimeEntries || options_.syncObjectsInvoices) {
        // The clients of the money rows are made on the spot when they were not selected.
        rsClients = openSource("SELECT Client.* FROM Client;");
      }
      if (options_.syncObjectsWorkCodes || options_.syncObjectsTimeEntries) {
        rsCategories = openSource("SELECT Category.* FROM Category;");
        rsWorkCodes = openSource("SELECT WorkCode.* FROM WorkCode;");
        rsBillCodes = openSource("SELECT BillCode.* From BillCode;");
      }
      if (options_.syncObjectsTimeEntries) rsWIP = openSource(getCCHPracticeWIPQuery());
      if (options_.syncObjectsInvoices) {
        rsAR = openSource(getCCHPracticeARQuery());
        rsCASH = openSource(getCCHPracticeCASHQuery());
      }
    }

    openPracticeRecordsets(
        *db, {rsAccountantEmployeeInfo, rsCompanies, rsMainBusinessList, rsCompaniesNotes,
              rsTargetContacts, rsCustomInvoiceDockets, rsTargetInvoices, rsDeposits, rsDockets});
    if (options_.syncObjectsWorkCodes) {
      auto openTarget = [&](const std::string& sql) {
        return db->openRecordset(sql, kCursorKeyset, kLockOptimistic);
      };
      rsBillingJobCodes = openTarget("SELECT BillingJobCodes.* FROM BillingJobCodes;");
      rsNonBillingJobCodes = openTarget("SELECT NonBillingJobCodes.* FROM NonBillingJobCodes;");
      rsBillingCategories = openTarget("SELECT BillingCategories.* FROM BillingCategories;");
    }
  });
}

void clsImportCCHPracticeInfo::closeDataRecordsets() {
  closeRecordsets(
      {&rsStaff, &rsClients, &rsContacts, &rsCategories, &rsWorkCodes, &rsBillCodes, &rsWIP, &rsAR,
       &rsCASH},
      {&rsAccountantEmployeeInfo, &rsCompanies, &rsTargetContacts, &rsMainBusinessList,
       &rsCompaniesNotes, &rsTargetInvoices, &rsDeposits, &rsDockets, &rsCustomInvoiceDockets,
       &rsBillingJobCodes, &rsNonBillingJobCodes, &rsBillingCategories});
}

}  // namespace lf
