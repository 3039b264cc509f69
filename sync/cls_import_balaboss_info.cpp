// clsImportBalabossInfo: firm identity, money statements, recordsets, progress total, the
// order of the stage groups of a Balaboss sync, and its two repair operations.
#include "sync/cls_import_balaboss_info.hpp"

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "records/lookups.hpp"
#include "sync/close_paid_invoices.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_values.hpp"

namespace lf {

using namespace sourcerows;

clsImportBalabossInfo::clsImportBalabossInfo() : SyncEngine(balabossSourceDescription(), options_) {
  defaultSyncDates(options_, Date::today());
  storeDocketsThrough(rsDockets);
  describeStages();
}

clsImportBalabossInfo::~clsImportBalabossInfo() {
  endEngine();
}

void clsImportBalabossInfo::openBalabossImportForm() {
  procedure(label("openBalabossImportForm"), [&] {
    if (runWizard) runWizard(*this);
  });
}

std::string clsImportBalabossInfo::getBalabossWIPQuery() {
  return rangeQuery("getBalabossWIPQuery",
                    "SELECT tblTBWIP.autWIPID, tblTBWIP.dtmTrans FROM tblTBWIP",
                    "tblTBWIP.dtmTrans", true);
}

std::string clsImportBalabossInfo::getBalabossARQuery() {
  return rangeQuery("getBalabossARQuery",
                    "SELECT tblTBInv.autInvID, tblTBInv.dtmInvDate FROM tblTBInv",
                    "tblTBInv.dtmInvDate", false);
}

std::string clsImportBalabossInfo::getBalabossDepositQuery() {
  // Deposits share the invoices' date range.
  return rangeQuery("getBalabossDepositQuery",
                    "SELECT tblTBInvTrans.autInvTransID, tblTBInvTrans.lngLineNo, "
                    "tblTBInvTrans.dtmTrans FROM tblTBInvTrans",
                    "tblTBInvTrans.dtmTrans", false);
}

std::string clsImportBalabossInfo::rangeQuery(std::string_view operation, std::string sql,
                                              std::string_view column, bool timeEntryRange) {
  procedure(label(operation), [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr) return;
    if (timeEntryRange && options_.mvarUseTimeEntryDateRange)
      sql += dateRangeClause(*db, column, options_.mvarTimeEntriesSynchDateRangeType,
                             options_.mvarTimeEntriesSynchStartRange,
                             options_.mvarTimeEntriesSynchEndRange);
    else if (!timeEntryRange && options_.mvarUseInvoiceDateRange)
      sql +=
          dateRangeClause(*db, column, options_.mvarInvoicesSynchDateRangeType,
                          options_.mvarInvoicesSynchStartRange, options_.mvarInvoicesSynchEndRange);
  });
  return sql + ";";
}

long clsImportBalabossInfo::progressTotal() {
  DatabaseService* source = sourceDatabase();
  long total = 0;
  if (options_.syncObjectsContacts)
    total += options_.companyCollection.count() + options_.contactsCollection.count();
  if (source == nullptr) return total;
  if (options_.syncObjectsWorkCodes)
    total += source->recordCount(rsStdParas) + source->recordCount(rsSvcCategories) +
             source->recordCount(rsSvcCodes);
  // Intended: the invoice and deposit rows are counted though the run does not import them.
  if (options_.syncObjectsInvoices)
    total += source->recordCount(rsARQuery) + source->recordCount(rsDepositQuery);
  if (options_.syncObjectsTimeEntries) total += source->recordCount(rsWIPQuery);
  return total;
}

std::vector<SyncEngine::StageGroup> clsImportBalabossInfo::runOrder() {
  return {
      {&SyncOptions::syncObjectsContacts,
       {[this] { importBalabossUsers(); }, [this] { importBalabossBusinessClients(); },
        [this] { importBalabossPersonalClients(); }}},
      {&SyncOptions::syncObjectsWorkCodes, {[this] { importBalabossWorkCodes(); }}},
      // Intended: the invoice group only settles the invoices already there; invoices and
      // deposits are imported by a caller that asks for them.
      {&SyncOptions::syncObjectsInvoices, {[this] {
         commitRecords();
         closeAllPaidInvoices();
       }}},
      {&SyncOptions::syncObjectsTimeEntries, {[this] { importBalabossWIPEntries(); }}},
  };
}

void clsImportBalabossInfo::initializeDataRecordsets() {
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
        rsKeyPersons = openSource("Select tblKeyPerson.* FROM tblKeyPerson;");
      // The clients of the money rows are made on the spot when they were not selected.
      if (options_.syncObjectsContacts || money)
        rsClients = openSource("SELECT tblClient.* FROM tblClient;");
      if (options_.syncObjectsContacts) {
        rsContacts = openSource("SELECT tblContact.* FROM tblContact;");
        rsContactAddresses = openSource("SELECT tblContactAddress.* FROM tblContactAddress;");
        rsContactPhones = openSource("SELECT tblContactPhone.* FROM tblContactPhone;");
      }
      if (options_.syncObjectsWorkCodes || options_.syncObjectsTimeEntries) {
        rsSvcCategories = openSource("SELECT tblTBSvcCategory.* FROM tblTBSvcCategory;");
        rsSvcCodes = openSource("SELECT tblTBSvcCode.* FROM tblTBSvcCode;");
        rsStdParas = openSource("SELECT tblTBStdPara.* From tblTBStdPara;");
      }
      if (options_.syncObjectsInvoices) {
        rsARQuery = openSource(getBalabossARQuery());
        rsInvoices = openSource("SELECT tblTBInv.* From tblTBInv;");
        rsDepositQuery = openSource(getBalabossDepositQuery());
        rsInvoiceTrans = openSource("SELECT tblTBInvTrans.* From tblTBInvTrans;");
        rsTransTypes = openSource("SELECT tblTBTransType.* From tblTBTransType;");
      }
      if (options_.syncObjectsTimeEntries) {
        rsWIPQuery = openSource(getBalabossWIPQuery());
        rsWIP = openSource("SELECT tblTBWIP.* FROM tblTBWIP;");
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

void clsImportBalabossInfo::closeDataRecordsets() {
  closeRecordsets(
      {&rsKeyPersons, &rsClients, &rsContacts, &rsContactAddresses, &rsContactPhones,
       &rsSvcCategories, &rsSvcCodes, &rsStdParas, &rsInvoices, &rsInvoiceTrans, &rsTransTypes,
       &rsWIP, &rsWIPQuery, &rsARQuery, &rsDepositQuery},
      {&rsAccountantEmployeeInfo, &rsCompanies, &rsTargetContacts, &rsMainBusinessList,
       &rsCompaniesNotes, &rsTargetInvoices, &rsDeposits, &rsDockets, &rsCustomInvoiceDockets,
       &rsBillingJobCodes, &rsNonBillingJobCodes, &rsBillingCategories});
}

// --- Repairs -----------------------------------------------------------------------------------

void clsImportBalabossInfo::fixBusinessClients() {
  procedure(label("fixBusinessClients"), [&] {
    if (!practiceOpen() || !sourceUsable()) return;
    DatabaseService& source = *sourceDatabase();
    DatabaseService& db = practice();
    // Outside a run the recordsets it reads are opened here and closed at the end.
    const bool ownRecordsets = rsClients == 0;
    if (ownRecordsets) {
      rsClients =
          source.openRecordset("SELECT tblClient.* FROM tblClient;", kCursorKeyset, kLockReadOnly);
      rsKeyPersons = source.openRecordset("Select tblKeyPerson.* FROM tblKeyPerson;", kCursorKeyset,
                                          kLockReadOnly);
    }
    const bool ownCrossReferences = crossReferences().clients == 0;
    if (ownCrossReferences) crossReferences().open(sourceFirmID(), &db);

    std::vector<long> companies;
    {
      RecordsetScope list(db, getMainBusinessSQLString(false, 3, -1), kLockReadOnly);
      scan(db, list, [&] { companies.push_back(db.getField(list, "CompanyID").toLong()); });
    }
    for (long company : companies) {
      resumeNext([&] {
        const std::string clientID =
            crossReferences().getSourceID(CrossReferenceKind::CompanyClient, company);
        if (clientID.empty() || !source.findRecord(rsClients, "autClientID", clientID)) return;
        const std::string partner = readText(source, rsClients, "strKeyPerson1Code");
        const std::string accountant = readText(source, rsClients, "strKeyPerson2Code");
        RowAccess row = companyRow(db, rsCompanies, company);
        if (!row.found()) return;
        if (!GeneralUtilities::isBlank(partner))
          db.setField(row, "PartnerName", getBalabossKeyPersonName(partner));
        if (!GeneralUtilities::isBlank(accountant))
          db.setField(row, "AccountantName", getBalabossKeyPersonName(accountant));
      });
    }
    if (ownCrossReferences) crossReferences().close();
    if (ownRecordsets) {
      ignoreErrors([&] { source.closeRecordset(rsClients); });
      ignoreErrors([&] { source.closeRecordset(rsKeyPersons); });
      rsClients = rsKeyPersons = 0;
    }
  });
}

void clsImportBalabossInfo::fixInvoiceFirm() {
  procedure(label("fixInvoiceFirm"), [&] {
    if (!practiceOpen()) return;
    DatabaseService& db = practice();
    RecordsetScope invoices(db, "SELECT Invoices.* FROM Invoices;", kLockOptimistic);
    scan(db, invoices, [&] { db.setField(invoices, "FirmIDNum", "1"); });
  });
}

}  // namespace lf
