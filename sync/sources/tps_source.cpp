// The TPS source: its description, its field maps, its stages as data and their creators,
// with the export's tables, columns and note words.
//
// The stages run on the shared engine (SyncEngine::runStage); what is written here is what
// TPS has of its own.
#include "sync/sources/tps_source.hpp"

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
#include "host/work_code_object.hpp"
#include "records/lookups.hpp"
#include "sync/cls_import_tps_information.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {

const SourceDescription& tpsSourceDescription() {
  static const SourceDescription description = [] {
    SourceDescription d;
    d.word = "TPS";
    d.crossReferences = &tpsCrossReferenceWords();
    d.clientKey = {{"ClientID"}};
    d.wizardForm = "frmTPSWizard";
    d.fileDialogExtension = "mdb";
    d.fileDialogTitle = "Open the TPS Export file created by TPS";
    d.fileDialogFilter = "TPS Export File (*.mdb)|*.mdb|All Files (*.*)|*.*";
    d.openFileRefusal =
        "You must open the TPS Export file, usually names 'Export.mdb' in order to continue.";
    d.treeClass = "clsTPSContactTree";
    d.treeRootText = "TPS Contacts";
    d.treeClientsStatement =
        "SELECT Clients.ClientID, Clients.Name, Clients.InActive FROM Clients;";
    d.treeNameColumn = "Name";
    d.treeInactiveColumn = "InActive";
    return d;
  }();
  return description;
}

namespace {

namespace rec = syncrecords;
using G = GeneralUtilities;
using fields::displayName;
using fields::firstEmail;
using fields::secondEmail;
using fields::telephone;
using fields::trimmed;
using fields::validDate;

constexpr const char* kCrLf = "\r\n";

// --- Field maps -------------------------------------------------------------------------------

// A staff member's own columns (Employees).
constexpr FieldMapping kStaffFields[] = {
    {{"LoginName"}, "UserName"},
    {{"EmployeeType"}, "EmployeeType"},
    {{"SIN"}, "SocialInsuranceNumber"},
};

// A person of the export's Contacts: staff members and contacts of business clients.
constexpr FieldMapping kPersonFields[] = {
    {{"Title"}, "NamePrefix"},
    {{"NickName", "FirstName", "LastName"}, "DisplayName", displayName},
    {{"HomeTelephoneNumber"}, "HomePhone_Main"},
    {{"MobileTelephoneNumber"}, "HomePhone_Cell"},
    {{"HomeAddressStreet"}, "HomeAddress"},
    {{"HomeAddressCity"}, "HomeCity"},
    {{"HomeAddressState"}, "HomeProvince"},
    {{"HomeAddressPostalCode"}, "HomePostalCode"},
    {{"HomeAddressCountry"}, "HomeCountry"},
    {{"WebPage"}, "BusinessWebSite"},
    {{"Birthday"}, "Birthday", validDate},
    {{"JobTitle"}, "BusinessJobTitle"},
    {{"CompanyName"}, "BusinessName"},
    {{"Department"}, "BusinessDepartment"},
    {{"OfficeLocation"}, "BusinessOffice"},
    {{"BusinessTelephoneNumber"}, "BusinessPhone_Main"},
    {{"BusinessFaxNumber"}, "BusinessPhone_Fax"},
    {{"Email1Address", "Email2Address", "Email3Address"}, "BusinessEmail", firstEmail},
    {{"Email1Address", "Email2Address", "Email3Address"}, "PersonalEmail", secondEmail},
};

// A business client (Clients to Companies), besides its name, category and legal form.
constexpr FieldMapping kCompanyFields[] = {
    {{"Industry"}, "IndustryType"},
    {{"ClientCode"}, "ClientID"},
    {{"Street1"}, "Address"},
    {{"City1"}, "City"},
    {{"State1"}, "Province"},
    {{"Zip1"}, "PostalCode"},
    {{"Country1"}, "Country"},
    {{"AreaCode1", "Phone1", "Ext1"}, "OfficeNumber", telephone},
    {{"AreaCodeFax", "Fax", "ExtFax"}, "FaxNumber", telephone},
    {{"Email", "Email2"}, "Email", firstEmail},
    {{"WebPage"}, "WebSite"},
};

// A personal client (Clients to Contacts).
constexpr FieldMapping kPersonalClientFields[] = {
    {{"ClientCode"}, "ClientID"},
    {{"Street1"}, "BusinessAddress"},
    {{"City1"}, "BusinessCity"},
    {{"State1"}, "BusinessProvince"},
    {{"Zip1"}, "BusinessPostalCode"},
    {{"Country1"}, "BusinessCountry"},
    {{"Street2"}, "HomeAddress"},
    {{"City2"}, "HomeCity"},
    {{"State2"}, "HomeProvince"},
    {{"Zip2"}, "HomePostalCode"},
    {{"Country2"}, "HomeCountry"},
    {{"AreaCode1", "Phone1", "Ext1"}, "BusinessPhone_Main", telephone},
    {{"AreaCode2", "Phone2", "Ext2"}, "BusinessPhone_Cell", telephone},
    {{"AreaCodeFax", "Fax", "ExtFax"}, "BusinessPhone_Fax", telephone},
    {{"AreaCode3", "Phone3", "Ext3"}, "HomePhone_Main", telephone},
    {{"AreaCode4", "Phone4", "Ext4"}, "HomePhone_Cell", telephone},
    {{"Email", "Email2"}, "BusinessEmail", firstEmail},
    {{"Email", "Email2"}, "PersonalEmail", secondEmail},
    {{"WebPage"}, "BusinessWebSite"},
    {{"SIN"}, "SocialInsuranceNumber"},
};

constexpr FieldMapping kParagraphFields[] = {
    {{"ParCode"}, "CustomItemName"},
    {{"Description"}, "DescriptionClient"},
};

// An invoice's number and dates; its amounts are computed.
constexpr FieldMapping kInvoiceFields[] = {
    {{"InvoiceNum"}, "InvoiceNum"},
    {{"BillDate"}, "InvoiceDate"},
    {{"BillDate"}, "InvoiceDueDate"},
};

// A deposit's dates and notes; its amount is computed.
constexpr FieldMapping kDepositFields[] = {
    {{"PayDate"}, "DateReceived"},
    {{"PayDate"}, "DateDeposited"},
    {{"Description"}, "Notes", trimmed},
};

constexpr FieldMap kFieldMaps[] = {
    {"Employees", "AccountantEmployeeInfo", kStaffFields},
    {"Contacts", "AccountantEmployeeInfo", kPersonFields},
    {"Contacts", "Contacts", kPersonFields},
    {"Clients", "Companies", kCompanyFields},
    {"Clients", "Contacts", kPersonalClientFields},
    {"Paragraphs", "CustomInvoiceDockets", kParagraphFields},
    {"Invoices", "Invoices", kInvoiceFields},
    {"Payments", "Deposits", kDepositFields},
};

// --- Helpers ---------------------------------------------------------------------------------

using namespace sourcerows;

// The person fields of a source contact (staff members and contacts of business clients).
void writeSourceContactFields(DatabaseService& source, std::int32_t rsContacts, DatabaseService& db,
                              std::int32_t target) {
  writeFields(source, rsContacts, db, target, kPersonFields);
  // Intended: this note is built and then dropped, as it always was; "3rd Email Address: "
  // labels the profession too.
  auto src = [&](std::string_view f) { return SyncEngine::readText(source, rsContacts, f); };
  const std::string third = src("Email3Address");
  std::string note;
  if (!src("Profession").empty()) addNoteItem(note, "3rd Email Address: " + src("Profession"));
  if (!third.empty()) addNoteItem(note, "3rd Email Address: " + third);
  const std::string other = rec::createAddress(
      src("OtherAddressStreet"), src("OtherAddressCity"), src("OtherAddressState"),
      src("OtherAddressPostalCode"), src("OtherAddressCountry"));
  if (!other.empty()) addNoteItem(note, std::string("TPS Other Address:") + kCrLf + other);
  (void)note;
}

}  // namespace

std::span<const FieldMap> tpsFieldMaps() {
  return kFieldMaps;
}

// --- The stages -------------------------------------------------------------------------------

void clsImportTPSInformation::describeStages() {
  using K = CrossReferenceKind;
  using T = clsImportTPSInformation;

  // Staff details are brought across on every run, whatever importOnlyNewEntries says.
  staff_ = scanStage("staff", "importTPSUsers", &rsEmployees, "EmployeeID", K::Employee);
  staff_.onlyNewEntriesApply = staff_.stepsProgress = false;
  staff_.create = [this](const std::string& id, long known) {
    return createNewTPSEmployeeAsEmployeeInLedgerfolio(id, practiceFirmID(), known);
  };
  staff_.afterRows = [](long reachedCreator) {
    if (reachedCreator > 0) forceFirstUserToBeAnAdminUser();
  };

  businessClients_ =
      clientStage("business clients", "importTPSBusinessClients", &options_.companyCollection,
                  K::CompanyClient, ClientRole::Company);
  businessClients_.create = creator(this, &T::createNewTPSClientAsCompanyInLedgerfolio);
  businessClients_.afterSave = [this](const std::string& id, long company) {
    importTPSClientContacts(id, company);
  };
  // The contacts of a business client are part of its record, each found as a client is.
  clientContacts_ = scanStage("business clients", "importTPSBusinessClients", &rsClientContacts,
                              "ContactID", K::ContactContact);
  clientContacts_.clientMatch = ClientRole::ContactOfContact;
  clientContacts_.keepsPosition = true;
  clientContacts_.create = [this](const std::string& id, long known) {
    return createNewTPSContactAsContactInLedgerfolio(id, contactsCompany_, known);
  };

  personalClients_ =
      clientStage("personal clients", "importTPSPersonalClients", &options_.contactsCollection,
                  K::ContactClient, ClientRole::ContactOfClient);
  personalClients_.beforeRows = [this] {
    long year = currentPersonalYear();
    personalCategory_ = dropDown() != nullptr ? dropDown()->getCategoryForYear(year, "") : -1;
  };
  personalClients_.create = [this](const std::string& id, long known) {
    return createNewTPSClientAsContactInLedgerfolio(id, known, -1, personalCategory_);
  };

  invoiceParagraphs_ = scanStage("invoice paragraphs", "importTPSInvoiceParagraphs", &rsParagraphs,
                                 "ParagraphID", K::InvoiceItem);
  invoiceParagraphs_.onlyNewEntriesApply = false;
  invoiceParagraphs_.create = creator(this, &T::createNewTPSParagraphAsInvoiceItemInLedgerfolio);

  // Work codes: the parent codes (not counted in the progress), then the child codes.
  parentWorkCodes_ = scanStage("work codes", "importTPSWorkCodes", &rsParentWorkCodes, "WorkID",
                               K::BillingCategory);
  parentWorkCodes_.onlyNewEntriesApply = parentWorkCodes_.stepsProgress = false;
  parentWorkCodes_.create =
      creator(this, &T::createNewTPSServiceCategoryAsBillingCategoryInLedgerfolio);
  childWorkCodes_ =
      scanStage("work codes", "importTPSWorkCodes", &rsChildWorkCodes, "WorkID", K::Workcode);
  childWorkCodes_.onlyNewEntriesApply = false;
  childWorkCodes_.create = creator(this, &T::createNewTPSWorkcodeAsWorkcodeInLedgerfolio);

  invoices_ = scanStage("invoices", "importTPSInvoices", &rsInvoiceQuery, "InvoiceID", K::Invoice);
  // Intended: invoice 1 is the export's placeholder and never imports.
  invoices_.rowFilter = [](const SourceRow& row) -> std::optional<std::string> {
    if (row.key == "1") return "invoice 1 is the export's placeholder";
    return std::nullopt;
  };
  invoices_.progressCaption = "Importing TPS Invoice {} of {}";
  invoices_.create = creator(this, &T::createNewTPSInvoiceAsInvoiceInLedgerfolio);

  deposits_ = scanStage("deposits", "importTPSDeposits", &rsPaymentQuery, "PaymentID", K::Deposit);
  deposits_.progressCaption = "Importing TPS deposit {} of {}";
  deposits_.keepsPosition = true;
  deposits_.create = creator(this, &T::createNewTPSDepositAsDepositInLedgerfolio);

  timeEntries_ =
      scanStage("time entries", "importTPSTimeEntries", &rsTimeQuery, "TimeID", K::Docket);
  timeEntries_.progressCaption = "Importing TPS Time Entry {} of {}";
  timeEntries_.create = [this](const std::string& id, long known) {
    long docket = known, company = -1, contact = -1;
    return createNewTPSTimeAsDocketInLedgerfolio(id, docket, company, contact);
  };

  // Client matching: where each role finds its candidate in the export, and the columns that
  // describe it to the duplicate finder. In the order of ClientRole.
  clientCandidates = {{
      {"getCompanyIDFromTPSClientID",
       K::CompanyClient,
       &rsClients,
       {"ClientID"},
       {.companyName = "Name", .clientCode = "ClientCode"},
       6},
      {"getContactIDFromTPSClientID",
       K::ContactClient,
       &rsClients,
       {"ClientID"},
       {.displayName = "Name", .clientCode = "ClientCode"}},
      {"getContactIDFromTPSContactID",
       K::ContactContact,
       &rsContacts,
       {"autContactID"},
       {.firstName = "strContactFirst", .lastName = "strContactLast"}},
  }};
  clientCreators = {
      .company =
          [this](const std::string& id, long company) {
            return createNewTPSClientAsCompanyInLedgerfolio(id, company);
          },
      .contact =
          [this](const std::string& id, long contact, long company, long category) {
            return createNewTPSClientAsContactInLedgerfolio(id, contact, company, category);
          },
      .name = [this](const std::string& id) { return getTPSClientNameFromTPSClientID(id); },
  };
}

void clsImportTPSInformation::importTPSClientContacts(const std::string& tpsClientID,
                                                      long companyID) {
  if (!validCompanyID(companyID) || !sourceUsable()) return;
  DatabaseService& source = *sourceDatabase();
  if (source.findRecord(rsClientContacts, "ClientID", tpsClientID)) {
    for (; !source.isEOF(rsClientContacts); source.findNext(rsClientContacts)) {
      const std::string contactKey = readText(source, rsClientContacts, "ContactID");
      if (contactKey.empty()) continue;
      const bool primary = readBool(source, rsClientContacts, "Primary");
      contactsCompany_ = companyID;
      const KeyResult contact =
          syncKey(clientContacts_, SourceRow{source, rsClientContacts, contactKey});
      if (primary && contact.saved) rec::setContactAsDefault(*contact.saved, companyID);
    }
  }
  rec::saveCompanyRTF(companyID);
  rec::saveCompanyContactRTF(companyID, rec::getDefaultContactIDFromCompanyID(companyID));
}

// --- Staff ------------------------------------------------------------------------------------

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
        // A staff member without a login is named from the person's names, so that the row
        // exists and the time entries of the staff member point at it.
        std::string name = readText(source, rsEmployees, "LoginName");
        if (name.empty() && hasContact)
          name = joinPresent({readText(source, rsContacts, "FirstName"),
                              readText(source, rsContacts, "MiddleName"),
                              readText(source, rsContacts, "LastName")});

        bool found = false;
        if (employeeID > 0)
          found = db.findRecord(rsAccountantEmployeeInfo, "ContactID", idText(employeeID));
        if (!found) {
          if (name.empty()) {
            skipBecause("no login name and no name of the person");
            return;
          }
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
        writeFields(source, rsEmployees, db, row, kStaffFields);
        if (hasContact) writeSourceContactFields(source, rsContacts, db, row);
        rec::saveEmployeeBusinessRTF(result);
        rec::saveEmployeePersonalRTF(result);
      });
  return result;
}

// --- Invoice paragraphs and work codes ------------------------------------------------------

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
        if (code.empty()) {
          skipBecause("no paragraph code");
          return;
        }
        // Invoice items are kept with the work codes; without them there is no table open.
        if (!db.isRecordsetOpen(rsCustomInvoiceDockets)) {
          skipBecause("invoice items are written with the work codes");
          return;
        }
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
        if (db.findRecord(rsCustomInvoiceDockets, "CustomInvoiceDocketID", idText(key)))
          writeFields(source, rsParagraphs, db, rsCustomInvoiceDockets, kParagraphFields);
      });
  return result;
}

long clsImportTPSInformation::createNewTPSServiceCategoryAsBillingCategoryInLedgerfolio(
    const std::string& /*tpsID*/, long /*billingCategoryID*/) {
  // Intended: parent work codes are not brought across; only a cross-reference row with
  // ID 0 is stored for each.
  skipBecause("parent work codes are not brought across; the cross-reference keeps 0");
  return 0;
}

long clsImportTPSInformation::createNewTPSWorkcodeAsWorkcodeInLedgerfolio(
    const std::string& /*tpsID*/, long /*workcodeID*/) {
  long result = -1;
  procedure(
      "Ledgerfolio.exe-clsImportTPSInformation-createNewTPSWorkcodeAsWorkcodeInLedgerfolio", [&] {
        std::unique_ptr<WorkCodeObject> workCode = makeWorkCodeObject();
        if (!workCode) return;
        workCode->setWorkCodeKind(2);
        workCode->initialize();
        if (practiceOpen() && options_.useTPSDatabase)
          workCode->setWorkCodeName(readText(*sourceDatabase(), rsChildWorkCodes, "Name"));
        // Intended: no work code is created by this source; the cross-reference keeps -1.
        skipBecause("work codes are not created from this source; the cross-reference keeps -1");
      });
  return result;
}

// --- Clients ----------------------------------------------------------------------------------

long clsImportTPSInformation::createNewTPSClientAsCompanyInLedgerfolio(
    const std::string& tpsClientID, long companyID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
    std::string name = src("Name");
    if (name.empty()) name = src("PrintAs");
    if (name.empty()) return skipBecause("no name");

    // The company found by client matching when it is still there, else a new one.
    const long company = companyID > 0 && companyRow(db, rsCompanies, companyID).found()
                             ? companyID
                             : getCompanyIDFromClientDataID(rec::addNewClientDataEntry());

    long category = options_.importCategory;
    if (!validCategoryID(category) && dropDown() != nullptr)
      category = dropDown()->getCurrentCategoryID();

    RowAccess row = companyRow(db, rsCompanies, company);
    if (row.found()) {
      db.setField(row, "CategoryNum", idText(category));
      db.setField(row, "CompanyName", name);
      const std::string upper = G::upperCase(name);
      auto holds = [&](const char* word) { return upper.find(word) != std::string::npos; };
      if (holds(" LTD") || holds(" INC") || holds(" CORP") || holds(" LLC"))
        db.setField(row, "CompanyType", "1");
      else if (holds(" LLP"))
        db.setField(row, "CompanyType", "2");
      writeFields(source, rsClients, db, row, kCompanyFields);

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
      const std::string email2 = secondEmail({src("Email"), src("Email2"), ""});
      if (!email2.empty()) addNoteItem(note, "2nd Email Address: " + email2);

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
      const std::string yearEndDate = validDate({yearEnd});
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
            auto put = [&](const char* column, const std::string& value) {
              if (!G::isBlank(value)) db.setField(data, column, value);
            };
            put("BusinessNumber", businessNumber);
            put("GSTNumber", gst);
            put("PayrollNumber", payroll);
            put("FederalCorpNumber", corporationNumber);
            put("YearEndDate", yearEndDate);
            put("ONCorpNumber", src("ProvTaxNum"));
            if (!inActive.empty()) db.setField(data, "ActiveStatus", inactive ? "2" : "1");
          }
        }
      } else {
        if (!businessNumber.empty()) addNoteItem(note, "Business Number: " + businessNumber);
        if (!corporationNumber.empty())
          addNoteItem(note, "Corporation Number: " + corporationNumber);
        if (!yearEndDate.empty())
          addNoteItem(
              note, "Year End: " +
                        formatDate(*DateUtilities::parseDateText(G::trim(yearEnd)), "mmm d, yyyy"));
        if (!src("ProvTaxNum").empty())
          addNoteItem(note, "Provincial Tax Number: " + src("ProvTaxNum"));
        if (!inActive.empty())
          addNoteItem(note, inactive ? "Active Status: InActive" : "Active Status: Active");
      }
      if (!src("OtherNum").empty()) addNoteItem(note, "TPS Other Number: " + src("OtherNum"));
      if (readBool(source, rsClients, "Prospect")) addNoteItem(note, "Prospective Client: Yes");
      writeCompanyNote(db, rsCompaniesNotes, company, note);
    }
    setProgressCaption("Synchronizing " + name);
    setRefreshData(true);
    return company;
  };
  return createFromSourceRow(__func__, rsClients, "ClientID", tpsClientID, -1, create);
}

long clsImportTPSInformation::createNewTPSClientAsContactInLedgerfolio(
    const std::string& tpsClientID, long contactID, long companyID, long categoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    long category = categoryID;
    if (!validCategoryID(category) && !validCompanyID(companyID) && options_.importOption == 2 &&
        validCategoryID(options_.importCategory)) {
      category = options_.importCategory;
    }
    category = personalClientCategory(category, companyID);
    auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
    std::string name = joinPresent({src("Title"), src("FirstName"), src("Name")});
    if (name.empty()) name = src("First");
    if (name.empty()) return skipBecause("no name");
    return storePersonalClientContact(
        db, rsTargetContacts, name, contactID, companyID, category,
        readBool(source, rsClients, "InActive") ? 2 : 1,
        [&](std::int32_t row) { writeFields(source, rsClients, db, row, kPersonalClientFields); });
  };
  return createFromSourceRow(__func__, rsClients, "ClientID", tpsClientID, -1, create);
}

long clsImportTPSInformation::createNewTPSContactAsContactInLedgerfolio(
    const std::string& tpsContactID, long companyID, long contactID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = joinPresent({readText(source, rsContacts, "FirstName"),
                                          readText(source, rsContacts, "MiddleName"),
                                          readText(source, rsContacts, "LastName")});
    const long contact = contactID > 0 && contactRow(db, rsTargetContacts, contactID).found()
                             ? contactID
                             : rec::addNewContact(name);
    rec::addContactLink(contact, -1, companyID);
    RowAccess row = contactRow(db, rsTargetContacts, contact);
    if (row.found()) writeSourceContactFields(source, rsContacts, db, row);
    rec::saveContactBusinessRTF(contact);
    rec::saveContactPersonalRTF(contact);
    return contact;
  };
  return createFromSourceRow(__func__, rsContacts, "ContactID", tpsContactID, -1, create);
}

// --- Invoices and deposits --------------------------------------------------------------------

long clsImportTPSInformation::createNewTPSInvoiceAsInvoiceInLedgerfolio(
    const std::string& tpsInvoiceID, long invoiceID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    long company = -1, contact = -1;
    if (!clientOfRecord(rsInvoices, "InvoiceID", tpsInvoiceID, "ClientID", company, contact))
      return -1;
    const long invoice = clientRowOf(db, rsTargetInvoices, "InvoiceID", invoiceID, practiceFirmID(),
                                     company, contact);
    if (invoice == -1) return -1;
    const std::int32_t rs = rsTargetInvoices;
    writeFields(source, rsInvoices, db, rs, kInvoiceFields);

    const float subtotal = parseSourceMoney(readText(source, rsInvoices, "Amount"));
    const float taxes = parseSourceMoney(readText(source, rsInvoices, "Tax1")) +
                        parseSourceMoney(readText(source, rsInvoices, "Tax2")) +
                        parseSourceMoney(readText(source, rsInvoices, "Tax3"));
    const float withTaxes = subtotal + taxes;
    writeInvoiceAmounts(db, rs, subtotal, taxes);

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
    return invoice;
  };
  return createFromSourceRow(__func__, rsInvoices, "InvoiceID", tpsInvoiceID, -1, create);
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

long clsImportTPSInformation::createNewTPSDepositAsDepositInLedgerfolio(
    const std::string& tpsPaymentID, long depositID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    // Only added to, never searched: the statement selects no row, so that opening it does
    // not read the whole table for every deposit.
    RecordsetScope payments(db,
                            "SELECT DepositPayments.* From DepositPayments WHERE "
                            "DepositPayments.DepositID=-1;",
                            kLockOptimistic);
    const std::string sourceInvoice = readText(source, rsPayments, "InvoiceID");
    const long invoice =
        sourceInvoice.empty() ? -1 : crossReferences().getInvoiceIDFromTPSInvoiceID(sourceInvoice);
    long company = -1, contact = -1;
    if (!clientOfRecord(rsPayments, "PaymentID", tpsPaymentID, "ClientID", company, contact))
      return -1;
    const long deposit = clientRowOf(db, rsDeposits, "DepositID", depositID, practiceFirmID(),
                                     company, contact, {{"TotalAmount", "0"}});
    if (deposit == -1) return -1;
    const float amount = parseSourceMoney(readText(source, rsPayments, "Amount"));
    db.setField(rsDeposits, "DateCreated", Date::now().toIso());
    db.setField(rsDeposits, "TotalAmount", numberText(amount));
    writeFields(source, rsPayments, db, rsDeposits, kDepositFields);

    // Intended: a re-run that rewrites the deposit adds a further payment row.
    db.addNewRecord(payments);
    db.setNewField(payments, "DepositIDNum", idText(deposit));
    db.setNewField(payments, "InvoiceIDNum", idText(invoice));
    db.setNewField(payments, "Amount", numberText(amount));
    db.updateRecord(payments);
    return deposit;
  };
  return createFromSourceRow(__func__, rsPayments, "PaymentID", tpsPaymentID, -1, create);
}

// --- Time entries -----------------------------------------------------------------------------

long clsImportTPSInformation::createNewTPSTimeAsDocketInLedgerfolio(const std::string& tpsTimeID,
                                                                    long& docketID, long& companyID,
                                                                    long& contactID) {
  auto create = [&](DatabaseService& source, DatabaseService&) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsTimes, f); };
    const std::string employee = src("EmployeeID");
    if (employee.empty()) {
      skipBecause("no staff member");
      return docketID;
    }
    if (!clientOfRecord(rsTimes, "TimeID", tpsTimeID, "ClientID", companyID, contactID))
      return docketID;
    const long user = crossReferences().getEmployeeIDFromTPSEmployeeID(employee);

    std::unique_ptr<DocketObject> docket = makeDocketObject();
    if (!docket) return docketID;
    if (docketID <= 0 || !docket->loadDocket(docketID)) docket->newDocket();
    docket->setUserIDNum(user);
    docket->setFirmIDNum(practiceFirmID());
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
      const long found = crossReferences().getInvoiceIDFromTPSInvoiceID(sourceInvoice);
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
    docketID = docket->saveDocket();
    if (invoice != -1) createNewTPSTimeAsInvoiceDocketInLedgerfolio(docketID, invoice);
    return docketID;
  };
  return createFromSourceRow(__func__, rsTimes, "TimeID", tpsTimeID, docketID, create);
}

}  // namespace lf
