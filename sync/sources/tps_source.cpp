// The TPS source: the stages of a TPS sync and their creators, with the export's tables,
// columns, field maps and note words.
//
// Each stage scans its driving recordset (or key list); each source record runs through
// syncRecord, so its target rows and its cross-reference row are committed together.
#include <fmt/format.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/docket_object.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/work_code_object.hpp"
#include "records/lookups.hpp"
#include "sync/cls_import_tps_information.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {
namespace {

// Mode 3 of a duplicate finder: the user is shown the likely matches and may take one.
void askForChosenMatch(DuplicateFinder& finder, long& result, bool& isNew) {
  finder.setDuplicateCheckEnabled(true);
  finder.setSearchMode(3);
  finder.runSearch();
  if (finder.hasChosenMatch()) {
    result = finder.getChosenMatchID();
    isNew = false;
  }
}

namespace rec = syncrecords;
using G = GeneralUtilities;

constexpr const char* kCrLf = "\r\n";

DatabaseService& practice() {
  return *moduleState().DatabaseReference;
}

bool practiceOpen() {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen();
}

std::string idText(long id) {
  return std::to_string(id);
}

// A number as the service takes it in a text: no trailing zeros.
std::string numberText(double value) {
  return fmt::format("{}", value);
}

// Writes the value with setField unless it is blank.
void putField(DatabaseService& db, std::int32_t handle, std::string_view field,
              const std::string& value) {
  if (G::isBlank(value)) return;
  db.setField(handle, field, value);
}

// A trimmed text that is a valid date, as the service takes it; empty otherwise.
std::string validDateText(const std::string& text) {
  if (G::isBlank(text)) return {};
  auto date = DateUtilities::parseDateText(G::trim(text));
  return date ? date->toIso() : std::string();
}

long currentPersonalYear() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getCurrentPersonalYear() : Date::today().year();
}

ClientDropDownService* dropDown() {
  return moduleState().clientDropDownCtrlReference;
}

// Adds one item of a note, followed by two line breaks.
void addNoteItem(std::string& note, const std::string& item) {
  note += item;
  note += kCrLf;
  note += kCrLf;
}

// Updated when the record was known and is written again, created when it is new, skipped
// when the creator wrote nothing (its result is no record).
SyncOutcome outcomeOf(long known, long result) {
  if (result <= 0) return SyncOutcome::Skipped;
  return known > 0 ? SyncOutcome::Updated : SyncOutcome::Created;
}

// The person fields of a source contact (staff members and contacts of business clients).
void writeSourceContactFields(DatabaseService& source, std::int32_t rsContacts, DatabaseService& db,
                              std::int32_t target) {
  auto src = [&](std::string_view f) { return SyncEngine::readText(source, rsContacts, f); };
  putField(db, target, "NamePrefix", src("Title"));
  const std::string nick = src("NickName"), first = src("FirstName"), last = src("LastName");
  if (!nick.empty() && !last.empty())
    putField(db, target, "DisplayName", nick + " " + last);
  else if (!first.empty() && !last.empty())
    putField(db, target, "DisplayName", first + " " + last);
  putField(db, target, "HomePhone_Main", src("HomeTelephoneNumber"));
  putField(db, target, "HomePhone_Cell", src("MobileTelephoneNumber"));
  putField(db, target, "HomeAddress", src("HomeAddressStreet"));
  putField(db, target, "HomeCity", src("HomeAddressCity"));
  putField(db, target, "HomeProvince", src("HomeAddressState"));
  putField(db, target, "HomePostalCode", src("HomeAddressPostalCode"));
  putField(db, target, "HomeCountry", src("HomeAddressCountry"));
  putField(db, target, "BusinessWebSite", src("WebPage"));
  putField(db, target, "Birthday", validDateText(src("Birthday")));
  putField(db, target, "BusinessJobTitle", src("JobTitle"));
  putField(db, target, "BusinessName", src("CompanyName"));
  putField(db, target, "BusinessDepartment", src("Department"));
  putField(db, target, "BusinessOffice", src("OfficeLocation"));
  putField(db, target, "BusinessPhone_Main", src("BusinessTelephoneNumber"));
  putField(db, target, "BusinessPhone_Fax", src("BusinessFaxNumber"));
  std::string e1 = src("Email1Address"), e2 = src("Email2Address"), e3 = src("Email3Address");
  sortEmailAddresses(e1, e2, e3);
  putField(db, target, "BusinessEmail", e1);
  putField(db, target, "PersonalEmail", e2);

  // Intended: this note is built and then dropped, as it always was; "3rd Email Address: "
  // labels the profession too.
  std::string note;
  if (!src("Profession").empty()) addNoteItem(note, "3rd Email Address: " + src("Profession"));
  if (!e3.empty()) addNoteItem(note, "3rd Email Address: " + e3);
  const std::string other = rec::createAddress(
      src("OtherAddressStreet"), src("OtherAddressCity"), src("OtherAddressState"),
      src("OtherAddressPostalCode"), src("OtherAddressCountry"));
  if (!other.empty()) addNoteItem(note, std::string("TPS Other Address:") + kCrLf + other);
  (void)note;
}

}  // namespace

// --- Staff ------------------------------------------------------------------------------------

void clsImportTPSInformation::importTPSUsers() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSUsers", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    bool anyDone = false;
    scan(source, rsEmployees, [&] {
      syncRecord("staff", [&] {
        const std::string id = readText(source, rsEmployees, "EmployeeID");
        if (id.empty()) return SyncOutcome::Skipped;
        const long known = xref_.getEmployeeIDFromTPSEmployeeID(id);
        // Staff details are brought across on every run, whatever importOnlyNewEntries says.
        const long employee =
            createNewTPSEmployeeAsEmployeeInLedgerfolio(id, practiceFirmID_, known);
        beforeCrossReference();
        xref_.saveEmployeeIDAndTPSEmployeeID(employee, id);
        anyDone = true;
        return outcomeOf(known, employee);
      });
      pumpEvents(2);
    });
    if (anyDone) forceFirstUserToBeAnAdminUser();
  });
}

long clsImportTPSInformation::createNewTPSEmployeeAsEmployeeInLedgerfolio(
    const std::string& /*tpsEmployeeID*/, long firmID, long employeeID) {
  long result = employeeID;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSEmployeeAsEmployeeInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        const std::string contactID = readText(source, rsEmployees, "ContactID");
        const bool hasContact =
            !contactID.empty() && source.findRecord(rsContacts, "ContactID", contactID);
        const std::string name = readText(source, rsEmployees, "LoginName");

        bool found = false;
        if (employeeID > 0)
          found = db.findRecord(rsAccountantEmployeeInfo, "ContactID", idText(employeeID));
        if (!found) {
          const std::string type = G::upperCase(readText(source, rsEmployees, "EmployeeType"));
          const long kind =
              (type == "OWNER" || type == "PARTNER" || type == "PRESIDENT" || type == "CEO") ? 1
                                                                                             : 2;
          result = rec::addAccountantEmployee(name, firmID, kind);
        }
        RowAccess row(db, rsAccountantEmployeeInfo, "ContactID", result,
                      "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE "
                      "ContactID=" +
                          idText(result) + ";");
        if (!row.found()) return;
        if (validCompanyID(firmID)) db.setField(row, "CompanyNum", idText(firmID));
        putField(db, row, "UserName", readText(source, rsEmployees, "LoginName"));
        putField(db, row, "EmployeeType", readText(source, rsEmployees, "EmployeeType"));
        putField(db, row, "SocialInsuranceNumber", readText(source, rsEmployees, "SIN"));
        if (hasContact) writeSourceContactFields(source, rsContacts, db, row);
        rec::saveEmployeeBusinessRTF(result);
        rec::saveEmployeePersonalRTF(result);
      });
  return result;
}

// --- Invoice paragraphs and work codes ------------------------------------------------------

void clsImportTPSInformation::importTPSInvoiceParagraphs() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSInvoiceParagraphs", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    // The paragraphs are opened with the work codes; a run without them has none to scan.
    if (!source.isRecordsetOpen(rsParagraphs)) return;
    scan(source, rsParagraphs, [&] {
      syncRecord("invoice paragraphs", [&] {
        const std::string id = readText(source, rsParagraphs, "ParagraphID");
        if (id.empty()) return SyncOutcome::Skipped;
        const long known = xref_.getInvoiceItemIDFromTPSParagraphID(id);
        const long item = createNewTPSParagraphAsInvoiceItemInLedgerfolio(id, known);
        beforeCrossReference();
        xref_.saveInvoiceItemIDAndTPSParagraphID(item, id);
        return outcomeOf(known, item);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    });
  });
}

long clsImportTPSInformation::createNewTPSParagraphAsInvoiceItemInLedgerfolio(
    const std::string& /*tpsParagraphID*/, long invoiceItemID) {
  long result = invoiceItemID;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSParagraphAsInvoiceItemInLedgerfolio",
      [&] {
        if (!practiceOpen() || !options_.useTPSDatabase) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        const std::string code = readText(source, rsParagraphs, "ParCode");
        // Invoice items are kept with the work codes; without them there is no table open.
        if (code.empty() || !db.isRecordsetOpen(rsCustomInvoiceDockets)) return;
        long key = -1;
        if (invoiceItemID > 0 &&
            db.findRecord(rsCustomInvoiceDockets, "CustomInvoiceDocketID", idText(invoiceItemID))) {
          key = invoiceItemID;
        } else {
          db.addNewRecord(rsCustomInvoiceDockets);
          db.setNewField(rsCustomInvoiceDockets, "CustomItemName", code);
          key = static_cast<long>(
              db.getField(rsCustomInvoiceDockets, "CustomInvoiceDocketID").toLong());
          db.updateRecord(rsCustomInvoiceDockets);
        }
        result = key;
        if (db.findRecord(rsCustomInvoiceDockets, "CustomInvoiceDocketID", idText(key))) {
          db.setField(rsCustomInvoiceDockets, "CustomItemName", code);
          putField(db, rsCustomInvoiceDockets, "DescriptionClient",
                   readText(source, rsParagraphs, "Description"));
        }
      });
  return result;
}

void clsImportTPSInformation::importTPSWorkCodes() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSWorkCodes", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    scan(source, rsParentWorkCodes, [&] {
      syncRecord("work codes", [&] {
        const std::string id = readText(source, rsParentWorkCodes, "WorkID");
        if (id.empty()) return SyncOutcome::Skipped;
        const long known = xref_.getBillingCategoryIDFromTPSServiceCategoryID(id);
        const long category = createNewTPSServiceCategoryAsBillingCategoryInLedgerfolio(id, known);
        beforeCrossReference();
        xref_.saveBillingCategoryIDAndTPSServiceCategoryID(category, id);
        return SyncOutcome::Skipped;
      });
      pumpEvents(2);
    });
    scan(source, rsChildWorkCodes, [&] {
      syncRecord("work codes", [&] {
        const std::string id = readText(source, rsChildWorkCodes, "WorkID");
        if (id.empty()) return SyncOutcome::Skipped;
        const long known = xref_.getWorkcodeIDFromTPSWorkcodeID(id);
        const long workcode = createNewTPSWorkcodeAsWorkcodeInLedgerfolio(id, known);
        beforeCrossReference();
        xref_.saveWorkcodeIDAndTPSWorkcodeID(workcode, id);
        return SyncOutcome::Skipped;
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    });
  });
}

long clsImportTPSInformation::createNewTPSServiceCategoryAsBillingCategoryInLedgerfolio(
    const std::string& /*tpsID*/, long /*billingCategoryID*/) {
  // Intended: parent work codes are not brought across; only a cross-reference row with
  // ID 0 is stored for each.
  return 0;
}

long clsImportTPSInformation::createNewTPSWorkcodeAsWorkcodeInLedgerfolio(
    const std::string& /*tpsID*/, long /*workcodeID*/) {
  long result = -1;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-createNewTPSWorkcodeAsWorkcodeInLedgerfolio",
            [&] {
              std::unique_ptr<WorkCodeObject> workCode = makeWorkCodeObject();
              if (!workCode) return;
              workCode->setWorkCodeKind(2);
              workCode->initialize();
              if (practiceOpen() && options_.useTPSDatabase)
                workCode->setWorkCodeName(readText(*sourceDatabase(), rsChildWorkCodes, "Name"));
              // Intended: no work code is created by this source; the cross-reference keeps -1.
            });
  return result;
}

// --- Clients ----------------------------------------------------------------------------------

long clsImportTPSInformation::getCompanyIDFromTPSClientID(const std::string& tpsClientID,
                                                          bool& checkFlag, bool& isNew) {
  long result = -1;
  isNew = true;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getCompanyIDFromTPSClientID", [&] {
    pumpEvents(6);
    result = xref_.getCompanyIDFromTPSClientIDOnly(tpsClientID);
    if (result != -1) {
      isNew = false;
      return;
    }
    if (!checkFlag) return;
    DuplicateFinder& finder = companyFinder();
    finder.clearSearch();
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->findRecord(rsClients, "ClientID", tpsClientID)) {
      const std::string name = readText(*source, rsClients, "Name");
      const std::string code = readText(*source, rsClients, "ClientCode");
      if (!name.empty()) finder.setCompanyName(name);
      if (!code.empty()) finder.setClientCode(code);
    }
    for (int mode : {1, 2}) {
      finder.setSearchMode(mode);
      finder.runSearch();
      if (finder.hasAutoMatch()) {
        result = finder.getAutoMatchID();
        isNew = false;
        return;
      }
    }
    askForChosenMatch(finder, result, isNew);
  });
  return result;
}

long clsImportTPSInformation::getContactIDFromTPSClientID(const std::string& tpsClientID,
                                                          bool& checkFlag, bool& isNew) {
  long result = -1;
  isNew = true;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getContactIDFromTPSClientID", [&] {
    pumpEvents(4);
    result = xref_.getContactIDFromTPSClientIDOnly(tpsClientID);
    if (result != -1) {
      isNew = false;
      return;
    }
    if (!checkFlag) return;
    DuplicateFinder& finder = contactFinder();
    finder.clearSearch();
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->findRecord(rsClients, "ClientID", tpsClientID)) {
      const std::string name = readText(*source, rsClients, "Name");
      const std::string code = readText(*source, rsClients, "ClientCode");
      if (!name.empty()) finder.setDisplayName(name);
      if (!code.empty()) finder.setClientCode(code);
    }
    askForChosenMatch(finder, result, isNew);
  });
  return result;
}

long clsImportTPSInformation::getContactIDFromTPSContactID(const std::string& tpsContactID,
                                                           bool& checkFlag, bool& isNew) {
  long result = -1;
  isNew = true;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getContactIDFromTPSContactID", [&] {
    pumpEvents(4);
    result = xref_.getContactIDFromTPSContactIDOnly(tpsContactID);
    if (result != -1) {
      isNew = false;
      return;
    }
    if (!checkFlag) return;
    DuplicateFinder& finder = contactFinder();
    finder.clearSearch();
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->findRecord(rsContacts, "autContactID", tpsContactID)) {
      const std::string first = readText(*source, rsContacts, "strContactFirst");
      const std::string last = readText(*source, rsContacts, "strContactLast");
      if (!first.empty()) finder.setFirstName(first);
      if (!last.empty()) finder.setLastName(last);
      finder.setDisplayName(joinPresent({first, last}));
    }
    askForChosenMatch(finder, result, isNew);
  });
  return result;
}

void clsImportTPSInformation::importTPSBusinessClients() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSBusinessClients", [&] {
    for (const std::string& key : keysOf(options_.companyCollection)) {
      if (G::isBlank(key)) continue;
      syncRecord("business clients", [&] {
        // Read anew for every key, so a choice in the finder's dialog takes effect at once.
        bool check = companyFinder().duplicateCheckEnabled();
        bool isNew = true;
        long company = getCompanyIDFromTPSClientID(key, check, isNew);
        if (options_.importOnlyNewEntries && !isNew) return SyncOutcome::Skipped;
        const bool existed = company != -1;
        company = createNewTPSClientAsCompanyInLedgerfolio(key, company);
        beforeCrossReference();
        xref_.saveCompanyIDAndTPSClientID(company, key);
        if (validCompanyID(company) && options_.useTPSDatabase && sourceDatabase() != nullptr) {
          DatabaseService& source = *sourceDatabase();
          if (source.findRecord(rsClientContacts, "ClientID", key)) {
            while (!source.isEOF(rsClientContacts)) {
              const std::string contactKey = readText(source, rsClientContacts, "ContactID");
              if (!contactKey.empty()) {
                const bool primary = readBool(source, rsClientContacts, "Primary");
                const std::int32_t position = source.getPosition(rsClientContacts);
                bool contactCheck = companyFinder().duplicateCheckEnabled();
                bool contactIsNew = true;
                long contact = getContactIDFromTPSContactID(contactKey, contactCheck, contactIsNew);
                if (!(options_.importOnlyNewEntries && !contactIsNew)) {
                  contact = createNewTPSContactAsContactInLedgerfolio(contactKey, company, contact);
                  beforeCrossReference();
                  xref_.saveContactIDAndTPSContactID(contact, contactKey);
                  if (primary) rec::setContactAsDefault(contact, company);
                }
                source.setPosition(rsClientContacts, position);
              }
              source.findNext(rsClientContacts);
            }
          }
          rec::saveCompanyRTF(company);
          rec::saveCompanyContactRTF(company, rec::getDefaultContactIDFromCompanyID(company));
        }
        return outcomeOf(existed ? 1 : -1, company);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    }
  });
}

void clsImportTPSInformation::importTPSPersonalClients() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSPersonalClients", [&] {
    long year = currentPersonalYear();
    const long category = dropDown() != nullptr ? dropDown()->getCategoryForYear(year, "") : -1;
    for (const std::string& key : keysOf(options_.contactsCollection)) {
      if (G::isBlank(key)) continue;
      syncRecord("personal clients", [&] {
        bool check = companyFinder().duplicateCheckEnabled();
        bool isNew = true;
        long contact = getContactIDFromTPSClientID(key, check, isNew);
        if (options_.importOnlyNewEntries && !isNew) return SyncOutcome::Skipped;
        const bool existed = contact != -1;
        contact = createNewTPSClientAsContactInLedgerfolio(key, contact, -1, category);
        beforeCrossReference();
        xref_.saveContactIDAndTPSClientID(contact, key);
        return outcomeOf(existed ? 1 : -1, contact);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    }
  });
}

long clsImportTPSInformation::createNewTPSClientAsCompanyInLedgerfolio(
    const std::string& tpsClientID, long companyID) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSClientAsCompanyInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        if (!source.findRecord(rsClients, "ClientID", tpsClientID)) return;
        auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
        std::string name = src("Name");
        if (name.empty()) name = src("PrintAs");
        if (name.empty()) return;

        long company = -1;
        if (companyID > 0) {
          RowAccess existing(
              db, rsCompanies, "CompanyID", companyID,
              "SELECT Companies.* FROM Companies WHERE CompanyID=" + idText(companyID) + ";");
          if (existing.found()) company = companyID;
        }
        if (company == -1) company = getCompanyIDFromClientDataID(rec::addNewClientDataEntry());

        long category = options_.importCategory;
        if (!validCategoryID(category) && dropDown() != nullptr)
          category = dropDown()->getCurrentCategoryID();

        RowAccess row(db, rsCompanies, "CompanyID", company,
                      "SELECT Companies.* FROM Companies WHERE CompanyID=" + idText(company) + ";");
        if (row.found()) {
          db.setField(row, "CategoryNum", idText(category));
          db.setField(row, "CompanyName", name);
          const std::string upper = G::upperCase(name);
          auto holds = [&](const char* word) { return upper.find(word) != std::string::npos; };
          if (holds(" LTD") || holds(" INC") || holds(" CORP") || holds(" LLC"))
            db.setField(row, "CompanyType", "1");
          else if (holds(" LLP"))
            db.setField(row, "CompanyType", "2");
          putField(db, row, "IndustryType", src("Industry"));
          putField(db, row, "ClientID", src("ClientCode"));
          putField(db, row, "Address", src("Street1"));
          putField(db, row, "City", src("City1"));
          putField(db, row, "Province", src("State1"));
          putField(db, row, "PostalCode", src("Zip1"));
          putField(db, row, "Country", src("Country1"));
          putField(db, row, "OfficeNumber",
                   composeTelephone(src("AreaCode1"), src("Phone1"), src("Ext1")));
          putField(db, row, "FaxNumber",
                   composeTelephone(src("AreaCodeFax"), src("Fax"), src("ExtFax")));
          std::string e1 = src("Email"), e2 = src("Email2"), e3;
          sortEmailAddresses(e1, e2, e3);
          putField(db, row, "Email", e1);
          putField(db, row, "WebSite", src("WebPage"));

          std::string note;
          const std::string second = rec::createAddress(src("Street2"), src("City2"), src("State2"),
                                                        src("Zip2"), src("Country2"));
          if (!second.empty()) addNoteItem(note, std::string("TPS 2nd Address:") + kCrLf + second);
          const std::string phone2 = composeTelephone(src("AreaCode2"), src("Phone2"), src("Ext2"));
          const std::string phone3 = composeTelephone(src("AreaCode3"), src("Phone3"), src("Ext3"));
          const std::string phone4 = composeTelephone(src("AreaCode4"), src("Phone4"), src("Ext4"));
          if (!phone2.empty()) addNoteItem(note, "TPS 2nd Phone Number: " + phone2);
          // Intended: "3nd" and "4nd" are the note's own words.
          if (!phone3.empty()) addNoteItem(note, "TPS 3nd Phone Number: " + phone3);
          if (!phone4.empty()) addNoteItem(note, "TPS 4nd Phone Number: " + phone4);
          if (!e2.empty()) addNoteItem(note, "2nd Email Address: " + e2);

          // The client-data block: registration numbers, year end, provincial number, status.
          const bool needsRecord =
              dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord;
          std::string businessNumber, corporationNumber, suffix;
          bool valid = false;
          if (!src("BusinessNum").empty())
            businessNumber = G::parseBusinessNumber(G::trim(src("BusinessNum")), suffix, valid);
          else if (!src("CorporationNum").empty())
            corporationNumber = G::parseCorporationNumber(G::trim(src("CorporationNum")));
          if (!corporationNumber.empty())
            businessNumber = G::parseBusinessNumber(corporationNumber, suffix, valid);
          const std::string yearEnd = src("YearEnd");
          const std::string yearEndDate = validDateText(yearEnd);
          const std::string inActive = src("InActive");
          const bool inactive = !inActive.empty() && readBool(source, rsClients, "InActive");
          if (needsRecord) {
            // Intended: the suffixes are added whether or not there is a business number.
            std::string gst, payroll;
            if (gst.empty()) gst = businessNumber + " RT0001";
            payroll = businessNumber + " RP0001";
            if (corporationNumber.empty()) corporationNumber = businessNumber + " RC0001";
            const long clientData = rec::addNewClientDataEntryForExistingCompany(company);
            if (validClientID(clientData)) {
              RowAccess data(db, rsMainBusinessList, "ClientDataID", clientData,
                             getMainBusinessSQLString(false, 3, clientData));
              if (data.found()) {
                putField(db, data, "BusinessNumber", businessNumber);
                putField(db, data, "GSTNumber", gst);
                putField(db, data, "PayrollNumber", payroll);
                putField(db, data, "FederalCorpNumber", corporationNumber);
                putField(db, data, "YearEndDate", yearEndDate);
                putField(db, data, "ONCorpNumber", src("ProvTaxNum"));
                if (!inActive.empty()) db.setField(data, "ActiveStatus", inactive ? "2" : "1");
              }
            }
          } else {
            if (!businessNumber.empty()) addNoteItem(note, "Business Number: " + businessNumber);
            if (!corporationNumber.empty())
              addNoteItem(note, "Corporation Number: " + corporationNumber);
            if (!yearEndDate.empty())
              addNoteItem(note,
                          "Year End: " + formatDate(*DateUtilities::parseDateText(G::trim(yearEnd)),
                                                    "mmm d, yyyy"));
            if (!src("ProvTaxNum").empty())
              addNoteItem(note, "Provincial Tax Number: " + src("ProvTaxNum"));
            if (!inActive.empty())
              addNoteItem(note, inactive ? "Active Status: InActive" : "Active Status: Active");
          }
          if (!src("OtherNum").empty()) addNoteItem(note, "TPS Other Number: " + src("OtherNum"));
          if (readBool(source, rsClients, "Prospect")) addNoteItem(note, "Prospective Client: Yes");
          if (!G::isBlank(note)) {
            RowAccess notes(
                db, rsCompaniesNotes, "CompanyNum", company,
                "SELECT CompaniesNotes.CompanyNum, CompaniesNotes.Notes FROM CompaniesNotes "
                "WHERE CompanyNum=" +
                    idText(company) + ";");
            if (notes.found()) db.setField(notes, "Notes", rec::convertToRTF(note));
          }
        }
        setProgressCaption(showProgress_, "Synchronizing " + name);
        refreshData_ = true;
        result = company;
      });
  return result;
}

long clsImportTPSInformation::createNewTPSClientAsContactInLedgerfolio(
    const std::string& tpsClientID, long contactID, long companyID, long categoryID) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSClientAsContactInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        long category = categoryID;
        if (!validCategoryID(category) && !validCompanyID(companyID)) {
          if (options_.importOption == 2 && validCategoryID(options_.importCategory)) {
            category = options_.importCategory;
          } else if (dropDown() != nullptr) {
            long year = currentPersonalYear();
            category = dropDown()->getCategoryForYear(year, "");
          }
        }
        if (!source.findRecord(rsClients, "ClientID", tpsClientID)) return;
        auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
        std::string name = joinPresent({src("Title"), src("FirstName"), src("Name")});
        if (name.empty()) name = src("First");
        if (name.empty()) return;
        setProgressCaption(showProgress_, "Synchronizing " + name);

        long contact = -1;
        if (contactID > 0) {
          RowAccess existing(
              db, rsTargetContacts, "ContactID", contactID,
              "SELECT Contacts.* FROM Contacts WHERE ContactID=" + idText(contactID) + ";");
          if (existing.found()) contact = contactID;
        }
        if (contact == -1) contact = rec::addNewContact(name);
        if (validCompanyID(companyID)) rec::addContactLink(contact, -1, companyID);
        if (validCategoryID(category)) {
          rec::addContactLink(contact, category, -1);
          if (dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord)
            rec::addNewPersonalTaxClientForExistingContact(
                contact, category, currentPersonalYear(),
                readBool(source, rsClients, "InActive") ? 2 : 1);
        }

        RowAccess row(db, rsTargetContacts, "ContactID", contact,
                      "SELECT Contacts.* FROM Contacts WHERE ContactID=" + idText(contact) + ";");
        if (row.found()) {
          putField(db, row, "ClientID", src("ClientCode"));
          putField(db, row, "BusinessAddress", src("Street1"));
          putField(db, row, "BusinessCity", src("City1"));
          putField(db, row, "BusinessProvince", src("State1"));
          putField(db, row, "BusinessPostalCode", src("Zip1"));
          putField(db, row, "BusinessCountry", src("Country1"));
          putField(db, row, "HomeAddress", src("Street2"));
          putField(db, row, "HomeCity", src("City2"));
          putField(db, row, "HomeProvince", src("State2"));
          putField(db, row, "HomePostalCode", src("Zip2"));
          putField(db, row, "HomeCountry", src("Country2"));
          putField(db, row, "BusinessPhone_Main",
                   composeTelephone(src("AreaCode1"), src("Phone1"), src("Ext1")));
          putField(db, row, "BusinessPhone_Cell",
                   composeTelephone(src("AreaCode2"), src("Phone2"), src("Ext2")));
          putField(db, row, "BusinessPhone_Fax",
                   composeTelephone(src("AreaCodeFax"), src("Fax"), src("ExtFax")));
          putField(db, row, "HomePhone_Main",
                   composeTelephone(src("AreaCode3"), src("Phone3"), src("Ext3")));
          putField(db, row, "HomePhone_Cell",
                   composeTelephone(src("AreaCode4"), src("Phone4"), src("Ext4")));
          std::string e1 = src("Email"), e2 = src("Email2"), e3;
          sortEmailAddresses(e1, e2, e3);
          putField(db, row, "BusinessEmail", e1);
          putField(db, row, "PersonalEmail", e2);
          putField(db, row, "BusinessWebSite", src("WebPage"));
          putField(db, row, "SocialInsuranceNumber", src("SIN"));
        }
        rec::saveContactBusinessRTF(contact);
        rec::saveContactPersonalRTF(contact);
        rec::saveContactPersonalTaxRTF(contact, currentPersonalYear());
        refreshData_ = true;
        result = contact;
      });
  return result;
}

long clsImportTPSInformation::createNewTPSContactAsContactInLedgerfolio(
    const std::string& tpsContactID, long companyID, long contactID) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSContactAsContactInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        if (!source.findRecord(rsContacts, "ContactID", tpsContactID)) return;
        const std::string name = joinPresent({readText(source, rsContacts, "FirstName"),
                                              readText(source, rsContacts, "MiddleName"),
                                              readText(source, rsContacts, "LastName")});
        long contact = -1;
        if (contactID > 0) {
          RowAccess existing(
              db, rsTargetContacts, "ContactID", contactID,
              "SELECT Contacts.* FROM Contacts WHERE ContactID=" + idText(contactID) + ";");
          if (existing.found()) contact = contactID;
        }
        if (contact == -1) contact = rec::addNewContact(name);
        rec::addContactLink(contact, -1, companyID);
        RowAccess row(db, rsTargetContacts, "ContactID", contact,
                      "SELECT Contacts.* FROM Contacts WHERE ContactID=" + idText(contact) + ";");
        if (row.found()) writeSourceContactFields(source, rsContacts, db, row);
        rec::saveContactBusinessRTF(contact);
        rec::saveContactPersonalRTF(contact);
        result = contact;
      });
  return result;
}

std::string clsImportTPSInformation::getTPSClientNameFromTPSClientID(
    const std::string& tpsClientID) {
  std::string result;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSClientNameFromTPSClientID", [&] {
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->findRecord(rsClients, "ClientID", tpsClientID))
      result = readText(*source, rsClients, "Name");
  });
  return result;
}

std::string clsImportTPSInformation::getTPSWorkCodeNameFromTPSWorkCodeID(
    const std::string& tpsWorkCodeID) {
  std::string result;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-getTPSWorkCodeNameFromTPSWorkCodeID", [&] {
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && source->findRecord(rsChildWorkCodes, "WorkID", tpsWorkCodeID))
      result = readText(*source, rsChildWorkCodes, "Name");
  });
  return result;
}

void clsImportTPSInformation::clientOfSourceRow(const std::string& tpsClientID, long& companyID,
                                                long& contactID) {
  bool noCheck = false;
  bool isNew = true;
  companyID = getCompanyIDFromTPSClientID(tpsClientID, noCheck, isNew);
  contactID = getContactIDFromTPSClientID(tpsClientID, noCheck, isNew);
  if (companyID != -1 || contactID != -1) return;
  // The client was not selected for import: the user says what it is, and it is made now.
  MessageBox* box = moduleState().MsgboxClass;
  const int answer =
      box != nullptr
          ? box->ask(getTPSClientNameFromTPSClientID(tpsClientID) + ": Is this a business client?",
                     kMessageValidation)
          : kAnswerNo;
  bool check = companyFinder().duplicateCheckEnabled();
  if (answer == kAnswerYes) {
    companyID = getCompanyIDFromTPSClientID(tpsClientID, check, isNew);
    companyID = createNewTPSClientAsCompanyInLedgerfolio(tpsClientID, companyID);
    beforeCrossReference();
    xref_.saveCompanyIDAndTPSClientID(companyID, tpsClientID);
    contactID = -1;
  } else {
    companyID = -1;
    contactID = getContactIDFromTPSClientID(tpsClientID, check, isNew);
    contactID = createNewTPSClientAsContactInLedgerfolio(tpsClientID, contactID, -1, -1);
    beforeCrossReference();
    xref_.saveContactIDAndTPSClientID(contactID, tpsClientID);
  }
}

// --- Invoices and deposits --------------------------------------------------------------------

void clsImportTPSInformation::importTPSInvoices() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSInvoices", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    const long total = source.recordCount(rsInvoiceQuery);
    long number = 0;
    scan(source, rsInvoiceQuery, [&] {
      ++number;
      setProgressCaption(showProgress_,
                         fmt::format("Importing TPS Invoice {} of {}", number, total));
      syncRecord("invoices", [&] {
        const std::string id = readText(source, rsInvoiceQuery, "InvoiceID");
        // Intended: invoice 1 is the export's placeholder and never imports.
        if (id.empty() || id == "1") return SyncOutcome::Skipped;
        const long known = xref_.getInvoiceIDFromTPSInvoiceID(id);
        if (options_.importOnlyNewEntries && known >= 0) return SyncOutcome::Skipped;
        const long invoice = createNewTPSInvoiceAsInvoiceInLedgerfolio(id, known);
        beforeCrossReference();
        xref_.saveInvoiceIDAndTPSInvoiceID(invoice, id);
        return outcomeOf(known, invoice);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    });
  });
}

long clsImportTPSInformation::createNewTPSInvoiceAsInvoiceInLedgerfolio(
    const std::string& tpsInvoiceID, long invoiceID) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSInvoiceAsInvoiceInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        if (!source.findRecord(rsInvoices, "InvoiceID", tpsInvoiceID)) return;
        const std::string client = readText(source, rsInvoices, "ClientID");
        if (client.empty()) return;
        long company = -1, contact = -1;
        clientOfSourceRow(client, company, contact);
        // The question may have moved the Clients cursor; the invoice row is found again.
        source.findRecord(rsInvoices, "InvoiceID", tpsInvoiceID);

        long invoice = -1;
        if (invoiceID > 0 && db.findRecord(rsTargetInvoices, "InvoiceID", idText(invoiceID))) {
          invoice = invoiceID;
        } else {
          db.addNewRecord(rsTargetInvoices);
          db.setNewField(rsTargetInvoices, "CompanyIDNum", idText(company));
          db.setNewField(rsTargetInvoices, "ContactIDNum", idText(contact));
          db.updateRecord(rsTargetInvoices);
          invoice = static_cast<long>(db.getField(rsTargetInvoices, "InvoiceID").toLong());
        }
        if (!db.findRecord(rsTargetInvoices, "InvoiceID", idText(invoice))) return;
        const std::int32_t rs = rsTargetInvoices;
        db.setField(rs, "FirmIDNum", idText(practiceFirmID_));
        db.setField(rs, "CompanyIDNum", idText(company));
        db.setField(rs, "ContactIDNum", idText(contact));
        putField(db, rs, "InvoiceNum", readText(source, rsInvoices, "InvoiceNum"));
        const std::string billDate = readText(source, rsInvoices, "BillDate");
        putField(db, rs, "InvoiceDate", billDate);
        putField(db, rs, "InvoiceDueDate", billDate);

        const float subtotal = parseSourceMoney(readText(source, rsInvoices, "Amount"));
        const float taxes = parseSourceMoney(readText(source, rsInvoices, "Tax1")) +
                            parseSourceMoney(readText(source, rsInvoices, "Tax2")) +
                            parseSourceMoney(readText(source, rsInvoices, "Tax3"));
        const float withTaxes = subtotal + taxes;
        db.setField(rs, "UseAdjustedAmount", "True");
        db.setField(rs, "InvoiceAdjustedAmountSubTotal", numberText(subtotal));
        db.setField(rs, "InvoiceAdjustedAmountTaxDetailID", "-1");
        db.setField(rs, "InvoiceAdjustedAmountTaxes", numberText(taxes));
        db.setField(rs, "InvoiceAdjustedAmountWithTaxes", numberText(withTaxes));
        db.setField(rs, "InvoiceFinalAmountSubTotal", numberText(subtotal));
        db.setField(rs, "InvoiceFinalAmountTaxDetailID", "-1");
        db.setField(rs, "InvoiceFinalAmountTaxes", numberText(taxes));
        db.setField(rs, "InvoiceFinalAmountWithTaxes", numberText(withTaxes));
        db.setField(rs, "InvoiceDiffAmount", "0");

        double paid = 0;
        if (source.findRecord(rsPayments, "InvoiceID", tpsInvoiceID)) {
          while (!source.isEOF(rsPayments)) {
            paid += parseSourceMoney(readText(source, rsPayments, "Amount"));
            source.findNext(rsPayments);
          }
        }
        db.setField(rs, "InvoicePaid", withTaxes <= paid ? "True" : "False");
        db.setField(rs, "InvoiceAmountPaid", numberText(paid));
        db.setField(rs, "DepositTotals", numberText(paid));
        // Intended: invoices of the source count as settled in the receivables.
        db.setField(rs, "ARBalance", "0");
        result = invoice;
      });
  return result;
}

void clsImportTPSInformation::adjustInvoiceAmount(long invoiceID, double adjustment) {
  procedure("Ledgerfolio.exe-clsImportTPSInformation-adjustInvoiceAmount", [&] {
    if (!practiceOpen()) return;
    DatabaseService& db = practice();
    RowAccess row(db, rsTargetInvoices, "InvoiceID", invoiceID,
                  "SELECT Invoices.* FROM Invoices WHERE InvoiceID=" + idText(invoiceID) + ";");
    if (!row.found()) return;
    auto amount = [&](std::string_view f) { return db.getField(row, f).toDouble(); };
    const double subTotal = amount("InvoiceAmountSubTotal");
    db.setField(row, "InvoiceAdjustedAmountSubTotal", numberText(subTotal));
    for (const char* tax : {"1", "2", "3"})
      db.setField(row, std::string("InvoiceAdjustedAmountTax") + tax,
                  numberText(amount(std::string("InvoiceAmountTax") + tax)));
    db.setField(row, "InvoiceAdjustedAmountDue", numberText(amount("InvoiceAmountDue")));
    db.setField(row, "InvoiceAmountSubTotal", numberText(subTotal + adjustment));
    for (const char* tax : {"1", "2", "3"})
      db.setField(row, std::string("InvoiceAmountTax") + tax, "0");
  });
}

void clsImportTPSInformation::importTPSDeposits() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSDeposits", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    const long total = source.recordCount(rsPaymentQuery);
    long number = 0;
    scan(source, rsPaymentQuery, [&] {
      ++number;
      setProgressCaption(showProgress_,
                         fmt::format("Importing TPS deposit {} of {}", number, total));
      syncRecord("deposits", [&] {
        const std::string id = readText(source, rsPaymentQuery, "PaymentID");
        if (id.empty()) return SyncOutcome::Skipped;
        const long known = xref_.getDepositIDFromTPSDepositID(id);
        if (options_.importOnlyNewEntries && known != -1) return SyncOutcome::Skipped;
        const std::int32_t position = source.getPosition(rsPaymentQuery);
        const long deposit = createNewTPSDepositAsDepositInLedgerfolio(id, known);
        source.setPosition(rsPaymentQuery, position);
        beforeCrossReference();
        xref_.saveDepositIDAndTPSDepositID(deposit, id);
        return outcomeOf(known, deposit);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    });
  });
}

long clsImportTPSInformation::createNewTPSDepositAsDepositInLedgerfolio(
    const std::string& tpsPaymentID, long depositID) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSDepositAsDepositInLedgerfolio", [&] {
        if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
        DatabaseService& source = *sourceDatabase();
        DatabaseService& db = practice();
        // Only added to, never searched: the statement selects no row, so that opening it does
        // not read the whole table for every deposit.
        RecordsetScope payments(db,
                                "SELECT DepositPayments.* From DepositPayments WHERE "
                                "DepositPayments.DepositID=-1;",
                                kLockOptimistic);
        if (!source.findRecord(rsPayments, "PaymentID", tpsPaymentID)) return;
        const std::string client = readText(source, rsPayments, "ClientID");
        const std::string sourceInvoice = readText(source, rsPayments, "InvoiceID");
        const long invoice =
            sourceInvoice.empty() ? -1 : xref_.getInvoiceIDFromTPSInvoiceID(sourceInvoice);
        if (client.empty()) return;
        long company = -1, contact = -1;
        clientOfSourceRow(client, company, contact);
        source.findRecord(rsPayments, "PaymentID", tpsPaymentID);

        long deposit = -1;
        if (depositID > 0 && db.findRecord(rsDeposits, "DepositID", idText(depositID))) {
          deposit = depositID;
        } else {
          db.addNewRecord(rsDeposits);
          db.setNewField(rsDeposits, "CompanyIDNum", idText(company));
          db.setNewField(rsDeposits, "ContactIDNum", idText(contact));
          db.setNewField(rsDeposits, "TotalAmount", "0");
          db.updateRecord(rsDeposits);
          deposit = static_cast<long>(db.getField(rsDeposits, "DepositID").toLong());
        }
        if (!db.findRecord(rsDeposits, "DepositID", idText(deposit))) return;
        const float amount = parseSourceMoney(readText(source, rsPayments, "Amount"));
        const std::string payDate = readText(source, rsPayments, "PayDate");
        db.setField(rsDeposits, "FirmIDNum", idText(practiceFirmID_));
        db.setField(rsDeposits, "CompanyIDNum", idText(company));
        db.setField(rsDeposits, "ContactIDNum", idText(contact));
        db.setField(rsDeposits, "DateCreated", Date::now().toIso());
        putField(db, rsDeposits, "DateReceived", payDate);
        putField(db, rsDeposits, "DateDeposited", payDate);
        db.setField(rsDeposits, "TotalAmount", numberText(amount));
        putField(db, rsDeposits, "Notes", G::trim(readText(source, rsPayments, "Description")));

        // Intended: a re-run that rewrites the deposit adds a further payment row.
        db.addNewRecord(payments);
        db.setNewField(payments, "DepositIDNum", idText(deposit));
        db.setNewField(payments, "InvoiceIDNum", idText(invoice));
        db.setNewField(payments, "Amount", numberText(amount));
        db.updateRecord(payments);
        result = deposit;
      });
  return result;
}

// --- Time entries -----------------------------------------------------------------------------

void clsImportTPSInformation::importTPSTimeEntries() {
  StageCommit commit(*this);
  procedure("Ledgerfolio.exe-clsImportTPSInformation-importTPSTimeEntries", [&] {
    if (!options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    const long total = source.recordCount(rsTimeQuery);
    long number = 0;
    scan(source, rsTimeQuery, [&] {
      ++number;
      setProgressCaption(showProgress_,
                         fmt::format("Importing TPS Time Entry {} of {}", number, total));
      syncRecord("time entries", [&] {
        const std::string id = readText(source, rsTimeQuery, "TimeID");
        if (id.empty()) return SyncOutcome::Skipped;
        long docket = xref_.getDocketIDFromTPSTimeID(id);
        if (options_.importOnlyNewEntries && docket != -1) return SyncOutcome::Skipped;
        const long known = docket;
        long company = -1, contact = -1;
        docket = createNewTPSTimeAsDocketInLedgerfolio(id, docket, company, contact);
        beforeCrossReference();
        xref_.saveDocketIDAndTPSTimeID(docket, id);
        return outcomeOf(known, docket);
      });
      stepProgress(showProgress_);
      pumpEvents(2);
    });
  });
}

long clsImportTPSInformation::createNewTPSTimeAsDocketInLedgerfolio(const std::string& tpsTimeID,
                                                                    long& docketID, long& companyID,
                                                                    long& contactID) {
  long result = docketID;
  procedure("Ledgerfolio.exe-clsImportTPSInformation-createNewTPSTimeAsDocketInLedgerfolio", [&] {
    if (!practiceOpen() || !options_.useTPSDatabase || sourceDatabase() == nullptr) return;
    DatabaseService& source = *sourceDatabase();
    if (!source.findRecord(rsTimes, "TimeID", tpsTimeID)) return;
    auto src = [&](std::string_view f) { return readText(source, rsTimes, f); };
    const std::string client = src("ClientID");
    const std::string employee = src("EmployeeID");
    if (client.empty() || employee.empty()) return;
    const long user = xref_.getEmployeeIDFromTPSEmployeeID(employee);
    clientOfSourceRow(client, companyID, contactID);
    source.findRecord(rsTimes, "TimeID", tpsTimeID);

    std::unique_ptr<DocketObject> docket = makeDocketObject();
    if (!docket) return;
    if (docketID <= 0 || !docket->loadDocket(docketID)) docket->newDocket();
    docket->setUserIDNum(user);
    docket->setFirmIDNum(practiceFirmID_);
    docket->setCompanyIDNum(companyID);
    docket->setContactIDNum(contactID);
    docket->setBillToCompanyIDNum(companyID);
    docket->setBillToContactIDNum(contactID);
    if (auto start = DateUtilities::parseDateText(src("Start"))) docket->setDateTimeFrom(*start);
    double hours = 1.0;
    if (double minutes = 0; G::isNumeric(src("Minute")) && G::parseNumber(src("Minute"), minutes))
      hours = minutes / 60.0;
    docket->setDuration(hours);

    long invoice = -1;
    const std::string sourceInvoice = src("InvoiceID");
    const bool billed = !sourceInvoice.empty();
    if (billed) {
      docket->setInvoiced(true);
      const long found = xref_.getInvoiceIDFromTPSInvoiceID(sourceInvoice);
      if (validInvoiceID(found)) invoice = found;
    }
    long status = 0;
    if (billed) status = src("Status") == "2" ? 3 : 4;
    docket->setDocketStatus(status);

    std::string subject;
    const std::string work = src("WorkID");
    if (!work.empty() && source.findRecord(rsChildWorkCodes, "WorkID", work))
      subject = readText(source, rsChildWorkCodes, "Name").substr(0, 255);
    else
      subject = src("Description").substr(0, 255);
    docket->setSubject(subject);
    if (!src("Description").empty()) docket->setTextBody(src("Description"));
    docket->setShowOnInvoice(false);
    docket->setBillingAmount(parseSourceMoney(src("Amount")), 2);
    const float mark = parseSourceMoney(src("Mark"));
    if (mark > 0) docket->setAdjustmentUp(mark);
    if (mark < 0) docket->setAdjustmentDown(-mark);
    result = docket->saveDocket();
    docketID = result;
    if (invoice != -1) createNewTPSTimeAsInvoiceDocketInLedgerfolio(result, invoice);
  });
  return result;
}

void clsImportTPSInformation::createNewTPSTimeAsInvoiceDocketInLedgerfolio(long docketID,
                                                                           long invoiceID) {
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSTimeAsInvoiceDocketInLedgerfolio", [&] {
        if (!practiceOpen()) return;
        DatabaseService& db = practice();
        RecordsetScope invoiceDockets(
            db,
            "SELECT InvoiceDockets.* FROM InvoiceDockets WHERE InvoiceDockets.InvoiceIDNum=" +
                idText(invoiceID) + ";",
            kLockOptimistic);
        RowAccess docket(db, rsDockets, "DocketID", docketID,
                         "SELECT Dockets.* FROM Dockets WHERE DocketID=" + idText(docketID) + ";");
        if (!docket.found()) return;
        db.setField(docket, "DocketLocked", "True");
        db.setField(docket, "Invoiced", "True");
        db.setField(docket, "DocketStatus", db.getField(docket, "DocketStatus").toString());
        const bool exists = db.findRecord(invoiceDockets, "DocketIDNum", idText(docketID));
        static const char* const kDocketColumns[] = {
            "UserIDNum", "BillingProjectIDNum", "BillToCompanyIDNum", "CompanyIDNum",
            "ContactIDNum", "BillToCompanyIDNum", "ScheduleIDNum", "TaskIDNum", "ApptIDNum",
            "ToDoIDNum", "RecurAnnually", "WasInterrupted", "WasPaused", "IsInterrupt",
            "DocketStatus", "DocketLocked", "Invoiced", "ShowOnInvoice", "RepeatNum",
            "UserGroupNum", "Subject", "DateFrom", "TimeFrom", "TimeTo", "UsedRealTime",
            "RealTimeFrom", "RealTimeTo", "OriginalRealTimeFrom", "OriginalRealTimeTo",
            "RoundedTimeFrom", "RoundedTimeTo", "BeforeAppointmentText", "AppointmentText",
            "AfterAppointmentText", "TextBody", "NotesFlag", "SchemeID", "TitleBackColour",
            // The further columns of the docket table.
            "FirmIDNum", "BillToContactIDNum", "BillingRateIDNum", "DateCreated", "TotalTimeReal",
            "TotalTimeRounded", "TotalTimeAdjusted", "TotalTimeFinal", "TotalAmountReal",
            "TotalAmountAdjusted", "TotalAmountFinal", "BillingJobRate", "DescriptionClient",
            "DescriptionInternal", "TitleText", "Custom1", "Custom2", "Custom3", "Custom4",
            "Custom5", "DocketBillingType", "TaskType", "Status1", "Status2", "Status3", "Status4",
            "Status5", "notifyType", "ReminderPeriod", "BackColour", "ForeColour",
            "TitleForeColour", "UseAdjustedAmount", "UseAdjustedTime", "BillableTime", "Private",
            "Remind", "ClientNotifiedFlag", "hideInTasks"};
        std::vector<std::pair<const char*, std::string>> copied;
        for (const char* column : kDocketColumns) {
          Variant value = db.getField(docket, column);
          if (G::isBlank(value)) continue;
          copied.emplace_back(
              column, value.kind() == Variant::Kind::Boolean ? (value.toBool() ? "True" : "False")
                      : value.kind() == Variant::Kind::Date  ? value.toDate()->toIso()
                                                             : value.toString());
        }
        // A new invoice docket takes the copied columns in the one row it adds; an existing
        // one has them written over.
        if (!exists) {
          db.addNewRecord(invoiceDockets);
          db.setNewField(invoiceDockets, "InvoiceIDNum", idText(invoiceID));
          db.setNewField(invoiceDockets, "DocketIDNum", idText(docketID));
          for (const auto& [column, text] : copied) db.setNewField(invoiceDockets, column, text);
          db.updateRecord(invoiceDockets);
          return;
        }
        db.setField(invoiceDockets, "InvoiceIDNum", idText(invoiceID));
        db.setField(invoiceDockets, "DocketIDNum", idText(docketID));
        for (const auto& [column, text] : copied) db.setField(invoiceDockets, column, text);
      });
}

}  // namespace lf
