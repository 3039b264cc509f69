// clsImportTPSInformation: services, source database, filtered statements, recordsets and the
// order of the stages of a TPS sync.
#include "sync/cls_import_tps_information.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_utilities.hpp"
#include "host/practice_docket.hpp"
#include "host/progress_dialog.hpp"
#include "records/lookups.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {

clsImportTPSInformation::clsImportTPSInformation() : xref_(tpsCrossReferenceWords()) {
  defaultTPSImportDates(options_, Date::today());
  // Dockets are stored through the run's open Dockets recordset.
  makeDocketObject = [this]() -> std::unique_ptr<DocketObject> {
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr) return nullptr;
    return std::make_unique<PracticeDocket>(*db, rsDockets);
  };
  ModuleState& state = moduleState();
  if (!state.generalUtilities) state.generalUtilities = std::make_shared<GeneralUtilities>();
  if (!state.dateUtilities) state.dateUtilities = std::make_shared<DateUtilities>();
  state.raiseExitProgram = [this] {
    if (ExitProgram) ExitProgram();
  };
}

clsImportTPSInformation::~clsImportTPSInformation() {
  options_.companyCollection.clearList();
  options_.contactsCollection.clearList();
  ignoreErrors([&] { closeDataRecordsets(); });
  ignoreErrors([&] { closeTPSDatabase(); });
  moduleState().raiseExitProgram = nullptr;
}

void clsImportTPSInformation::setErrorClass(ErrorService* errorClass) {
  ModuleState& state = moduleState();
  state.errorClass = errorClass;
  if (state.generalUtilities) state.generalUtilities->setErrorService(errorClass);
  if (state.dateUtilities) state.dateUtilities->setErrorService(errorClass);
  companyFinder().setErrorService(errorClass);
  contactFinder().setErrorService(errorClass);
  state.errorClassIsSet = true;
}

void clsImportTPSInformation::setMsgboxClass(MessageBox* msgbox) {
  ModuleState& state = moduleState();
  state.MsgboxClass = msgbox;
  companyFinder().setMsgbox(msgbox);
  contactFinder().setMsgbox(msgbox);
  state.msgboxClassIsSet = true;
}

void clsImportTPSInformation::setLocaleReference(LocaleService* locale) {
  moduleState().LocaleReference = locale;
  if (locale != nullptr) {
    companyFinder().setLocale(locale);
    contactFinder().setLocale(locale);
  }
}

void clsImportTPSInformation::setTasksCtrlReference(TasksService* tasks) {
  moduleState().TasksCtrlReference = tasks;
}

void clsImportTPSInformation::setWorkingFolderReference(WorkingFolderService* folder) {
  moduleState().WorkingFolderReference = folder;
}

void clsImportTPSInformation::setClientDropDownCtrlReference(ClientDropDownService* dropDown) {
  ModuleState& state = moduleState();
  state.clientDropDownCtrlReference = nullptr;
  state.clientDropDownCtrlReference = dropDown;
  if (dropDown != nullptr) {
    companyFinder().setDropDown(dropDown);
    contactFinder().setDropDown(dropDown);
  }
}

void clsImportTPSInformation::setDatabaseReference(DatabaseService* db) {
  ModuleState& state = moduleState();
  state.DatabaseReference = db;
  if (db != nullptr) {
    failedToInitializeFlag_ = false;
    if (state.clientDropDownCtrlReference != nullptr)
      options_.importCategory = state.clientDropDownCtrlReference->getCurrentCategoryID();
    companyFinder().setDatabase(db);
    contactFinder().setDatabase(db);
  } else {
    failedToInitializeFlag_ = true;
  }
}

void clsImportTPSInformation::setTPSDatabaseLocation(const std::string& location) {
  options_.TPSDatabaseLocation = location;
  if (FileUtilities::fileExists(location)) {
    options_.useTPSDatabase = openTPSDatabase();
    if (options_.useTPSDatabase) sourceFirmID_ = getTPSUniqueID();
  } else {
    options_.useTPSDatabase = false;
  }
}

void clsImportTPSInformation::setSyncObjects(bool contacts, bool timeEntries, bool invoices,
                                             bool workCodes) {
  options_.syncObjectsContacts = contacts;
  options_.syncObjectsTimeEntries = timeEntries;
  options_.syncObjectsInvoices = invoices;
  options_.syncObjectsWorkCodes = workCodes;
}

void clsImportTPSInformation::openTPSImportForm() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-openSyncForm", [&] {
    if (runWizard) runWizard(*this);
  });
}

bool clsImportTPSInformation::openTPSDatabase() {
  bool result = false;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-openTPSDatabase", [&] {
    result = openSourceDatabase(options_.TPSDatabaseLocation, failedToInitializeFlag_);
  });
  return result;
}

void clsImportTPSInformation::closeTPSDatabase() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-closeTPSDatabase",
            [&] { closeSourceDatabase(); });
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
  std::string sql = "SELECT Invoices.InvoiceID, Invoices.BillDate FROM Invoices";
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSInvoicesQuery", [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (options_.mvarUseInvoiceDateRange && db != nullptr)
      sql +=
          dateRangeClause(*db, "Invoices.BillDate", options_.mvarInvoicesSynchDateRangeType,
                          options_.mvarInvoicesSynchStartRange, options_.mvarInvoicesSynchEndRange);
  });
  return sql + ";";
}

std::string clsImportTPSInformation::getTPSDepositQuery() {
  std::string sql = "SELECT Payments.PaymentID, Payments.PayDate FROM Payments";
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSDepositQuery", [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    // Intended: deposits share the invoices' date range.
    if (options_.mvarUseInvoiceDateRange && db != nullptr)
      sql +=
          dateRangeClause(*db, "Payments.PayDate", options_.mvarInvoicesSynchDateRangeType,
                          options_.mvarInvoicesSynchStartRange, options_.mvarInvoicesSynchEndRange);
  });
  return sql + ";";
}

bool clsImportTPSInformation::databaseUsable() const {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen() && options_.useTPSDatabase && sourceDatabase() != nullptr;
}

bool clsImportTPSInformation::importTPSInformation() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSInformation", [&] {
    const bool anyGroup = options_.syncObjectsContacts || options_.syncObjectsTimeEntries ||
                          options_.syncObjectsInvoices || options_.syncObjectsWorkCodes;
    if (showProgress_ && !anyGroup) return;
    runUnderProgress(showProgress_, "Importing TPS information, please wait ...",
                     [this] { importFromTPSProgress_StartProgress(); });
  });
  return false;
}

void clsImportTPSInformation::importFromTPSProgress_StartProgress() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importFromTPSProgress_StartProgress", [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    bool paused = true;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
    companyFinder().setDuplicateCheckEnabled(options_.duplicateCheckEnabled);
    initializeDataRecordsets();

    DatabaseService* source = sourceDatabase();
    long total = 0;
    if (options_.syncObjectsContacts)
      total += options_.companyCollection.count() + options_.contactsCollection.count();
    if (source != nullptr) {
      if (options_.syncObjectsInvoices)
        total += source->recordCount(rsInvoiceQuery) + source->recordCount(rsPaymentQuery);
      if (options_.syncObjectsTimeEntries) total += source->recordCount(rsTimeQuery);
      if (options_.syncObjectsWorkCodes)
        total += source->recordCount(rsChildWorkCodes) + source->recordCount(rsParagraphs);
    }
    setProgressMaximum(total);

    if (options_.syncObjectsContacts) {
      importTPSUsers();
      importTPSBusinessClients();
      importTPSPersonalClients();
      importTPSInvoiceParagraphs();
    }
    if (options_.syncObjectsWorkCodes) importTPSWorkCodes();
    if (options_.syncObjectsInvoices) {
      importTPSInvoices();
      importTPSDeposits();
    }
    if (options_.syncObjectsTimeEntries) importTPSTimeEntries();

    closeDataRecordsets();
    if (progress() != nullptr) progress()->closeDialog();
    paused = false;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
  });
}

void clsImportTPSInformation::initializeDataRecordsets() {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-initializeDataRecordsets", [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    if (dropDown != nullptr) practiceFirmID_ = dropDown->getFirmID();
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

    auto openTarget = [&](const std::string& sql) {
      return db->openRecordset(sql, kCursorKeyset, kLockOptimistic);
    };
    xref_.open(sourceFirmID_, db);
    rsCompanies = openTarget("SELECT Companies.* FROM Companies;");
    rsMainBusinessList = openTarget(getMainBusinessSQLString(false, 3, -1));
    rsCompaniesNotes =
        openTarget("SELECT CompaniesNotes.CompanyNum, CompaniesNotes.Notes FROM CompaniesNotes;");
    rsTargetContacts = openTarget("SELECT Contacts.* FROM Contacts;");
    if (options_.syncObjectsContacts)
      rsAccountantEmployeeInfo =
          openTarget("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;");
    if (options_.syncObjectsWorkCodes)
      rsCustomInvoiceDockets =
          openTarget("SELECT CustomInvoiceDockets.* FROM CustomInvoiceDockets;");
    if (options_.syncObjectsInvoices) {
      rsTargetInvoices = openTarget("SELECT Invoices.* FROM Invoices;");
      rsDeposits = openTarget("SELECT Deposits.* FROM Deposits;");
    }
    if (options_.syncObjectsTimeEntries) rsDockets = openTarget("SELECT Dockets.* FROM Dockets;");
  });
}

void clsImportTPSInformation::closeDataRecordsets() {
  DatabaseService* db = moduleState().DatabaseReference;
  if (db == nullptr) return;
  bool open = false;
  ignoreErrors([&] { open = db->isOpen(); });
  if (!open) return;
  auto closeOn = [](DatabaseService* on, std::int32_t& handle) {
    ignoreErrors([&] {
      if (on != nullptr && on->isRecordsetOpen(handle)) on->closeRecordset(handle);
    });
    handle = 0;
  };
  DatabaseService* source = sourceDatabase();
  for (std::int32_t* h : {&rsEmployees, &rsClients, &rsClientContacts, &rsContacts, &rsInvoiceQuery,
                          &rsInvoices, &rsTimeQuery, &rsTimes, &rsPaymentQuery, &rsPayments,
                          &rsChildWorkCodes, &rsParentWorkCodes, &rsParagraphs})
    closeOn(source, *h);
  ignoreErrors([&] { xref_.close(); });
  for (std::int32_t* h :
       {&rsAccountantEmployeeInfo, &rsCompanies, &rsTargetContacts, &rsMainBusinessList,
        &rsCompaniesNotes, &rsTargetInvoices, &rsDeposits, &rsDockets, &rsCustomInvoiceDockets})
    closeOn(db, *h);
}

}  // namespace lf
