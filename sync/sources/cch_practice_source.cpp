// The CCH Practice source: its description, its field maps, its stages as data and their
// creators, with the export's tables, columns and note words.
//
// The stages run on the shared engine (SyncEngine::runStage); what is written here is what
// CCH Practice has of its own.
#include "sync/sources/cch_practice_source.hpp"

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
#include "records/lookups.hpp"
#include "sync/cls_import_cch_practice_info.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {

const SourceDescription& cchPracticeSourceDescription() {
  static const SourceDescription description = [] {
    SourceDescription d;
    d.word = "CCHPractice";
    d.crossReferences = &cchPracticeCrossReferenceWords();
    d.clientKey = {{"ClientID", "Engagement"}};
    d.wizardForm = "frmCCHPracticeWizard";
    d.fileDialogExtension = "add";
    d.fileDialogTitle = "Open the CCH Practice Database file";
    d.fileDialogFilter = "CCH Practice Converted Database File (*.lfd)|*.add|All Files (*.*)|*.*";
    d.openFileRefusal =
        "You must open the CCHPractice Export file, usually names 'Export.mdb' in order to "
        "continue.";
    d.treeClass = "clsCCHPracticeContactTree";
    d.treeRootText = "CCH Practice Contacts";
    d.treeClientsStatement = "SELECT Client.ClientID, Client.Engagement, Client.Name1 FROM Client;";
    d.treeNameColumn = "Name1";
    d.formFile = "nvImportlf.dll";
    return d;
  }();
  return description;
}

namespace {

namespace rec = syncrecords;
using G = GeneralUtilities;
using namespace sourcerows;
using fields::trimmed;
using fields::validDate;

constexpr const char* kCrLf = "\r\n";

// --- Transforms -------------------------------------------------------------------------------

// A telephone from its number and extension.
std::string phoneWithExtension(const FieldValues& v) {
  return composeTelephone("", v[0], v[1]);
}

// Two address lines as one field.
std::string addressLines(const FieldValues& v) {
  if (v[0].empty() || v[1].empty()) return v[0] + v[1];
  return v[0] + kCrLf + v[1];
}

// --- Field maps -------------------------------------------------------------------------------

constexpr FieldMapping kStaffFields[] = {
    {{"FirstName"}, "FirstName"},
    {{"MiddleName"}, "MiddleName"},
    {{"LastName"}, "LastName"},
    {{"PersonalTitle"}, "NamePrefix"},
    {{"SSN"}, "SocialInsuranceNumber"},
    {{"HomePhone"}, "HomePhone_Main"},
    {{"OtherPhone"}, "HomePhone_Cell"},
    {{"Address1", "Address2"}, "HomeAddress", addressLines},
    {{"City"}, "HomeCity"},
    {{"State"}, "HomeProvince"},
    {{"Zip"}, "HomePostalCode"},
    {{"Country"}, "HomeCountry"},
    {{"JobTitle"}, "BusinessJobTitle"},
    {{"WorkEmail"}, "BusinessEmail"},
    {{"HomeEmail"}, "PersonalEmail"},
};

// A business client (Client to Companies), besides its name, legal form and numbers.
constexpr FieldMapping kCompanyFields[] = {
    {{"ClientID"}, "ClientID"},
    {{"Address1"}, "Address"},
    {{"City"}, "City"},
    {{"State"}, "Province"},
    {{"ZIP"}, "PostalCode"},
    {{"Country"}, "Country"},
    {{"Phone", "Extension"}, "OfficeNumber", phoneWithExtension},
    {{"Fax", "FaxExtension"}, "FaxNumber", phoneWithExtension},
    {{"Email"}, "Email"},
    {{"Partner"}, "PartnerName"},
    {{"Manager"}, "AccountantName"},
};

// A personal client (Client to Contacts).
constexpr FieldMapping kPersonalClientFields[] = {
    {{"Address1"}, "BusinessAddress"},
    {{"City"}, "BusinessCity"},
    {{"State"}, "BusinessProvince"},
    {{"Zip"}, "BusinessPostalCode"},
    {{"Country"}, "BusinessCountry"},
    {{"AltAddress1"}, "HomeAddress"},
    {{"AltCity"}, "HomeCity"},
    {{"AltState"}, "HomeProvince"},
    {{"AltZip"}, "HomePostalCode"},
    {{"AltCountry"}, "HomeCountry"},
    {{"Phone", "Extension"}, "BusinessPhone_Main", phoneWithExtension},
    {{"Fax", "FaxExtension"}, "BusinessPhone_Fax", phoneWithExtension},
    {{"Email"}, "BusinessEmail"},
};

// A contact of a business client (CONTACT to Contacts).
constexpr FieldMapping kContactFields[] = {
    {{"FirstName"}, "FirstName"},
    {{"MiddleName"}, "MiddleName"},
    {{"LastName"}, "LastName"},
    {{"Phone"}, "HomePhone_Main"},
    {{"OtherPhone"}, "HomePhone_Cell"},
    {{"Address1"}, "HomeAddress"},
    {{"City"}, "HomeCity"},
    {{"State"}, "HomeProvince"},
    {{"ZIP"}, "HomePostalCode"},
    {{"Country"}, "HomeCountry"},
    {{"JobTitle"}, "BusinessJobTitle"},
    {{"Email"}, "BusinessEmail"},
};

constexpr FieldMapping kBillCodeFields[] = {
    {{"Name"}, "CustomItemName"},
    {{"EnglishMemo"}, "DescriptionClient"},
    {{"DefaultAmount"}, "TotalAmountFinal"},
    {{"DefaultAmount"}, "TotalAmountFinalWithTaxes"},
};

constexpr FieldMapping kCategoryFields[] = {
    {{"Name"}, "BillingCategoryName"},
};

constexpr FieldMapping kBillingJobCodeFields[] = {
    {{"Name"}, "BillingJobCodeName"},
    {{"Workcode"}, "BillingJobCode"},
};

constexpr FieldMapping kNonBillingJobCodeFields[] = {
    {{"Name"}, "NonBillingJobCodeName"},
    {{"Workcode"}, "NonBillingJobCode"},
};

// An invoice's number and dates; its amounts are computed.
constexpr FieldMapping kInvoiceFields[] = {
    {{"InvoiceNumber"}, "InvoiceNum"},
    {{"InvoiceDate"}, "InvoiceDate"},
    {{"InvoiceDate"}, "InvoiceDueDate"},
};

// A deposit's number, dates and texts; its amount and type are written apart.
constexpr FieldMapping kDepositFields[] = {
    {{"CheckNumber"}, "ChequeNumber"},    {{"DateReceived"}, "DateReceived"},
    {{"DatePosted"}, "DateDeposited"},    {{"Description"}, "Subject", trimmed},
    {{"InternalMemo"}, "Notes", trimmed},
};

constexpr FieldMap kFieldMaps[] = {
    {"Staff", "AccountantEmployeeInfo", kStaffFields},
    {"Client", "Companies", kCompanyFields},
    {"Client", "Contacts", kPersonalClientFields},
    {"CONTACT", "Contacts", kContactFields},
    {"BillCode", "CustomInvoiceDockets", kBillCodeFields},
    {"Category", "BillingCategories", kCategoryFields},
    {"WorkCode", "BillingJobCodes", kBillingJobCodeFields},
    {"WorkCode", "NonBillingJobCodes", kNonBillingJobCodeFields},
    {"AR", "Invoices", kInvoiceFields},
    {"CASH", "Deposits", kDepositFields},
};

const std::vector<std::string> kClientKey = {"ClientID", "Engagement"};

}  // namespace

std::span<const FieldMap> cchPracticeFieldMaps() {
  return kFieldMaps;
}

// --- The stages -------------------------------------------------------------------------------

void clsImportCCHPracticeInfo::describeStages() {
  using K = CrossReferenceKind;
  using T = clsImportCCHPracticeInfo;

  // Staff details are brought across on every run, whatever importOnlyNewEntries says.
  staff_ = scanStage("staff", "importCCHPracticeUsers", &rsStaff, "EmpID", K::Employee);
  staff_.onlyNewEntriesApply = staff_.stepsProgress = false;
  staff_.create = [this](const std::string& id, long known) {
    return createNewCCHPracticeEmployeeAsEmployeeInLedgerfolio(id, practiceFirmID(), known);
  };
  staff_.afterRows = [](long reachedCreator) {
    if (reachedCreator > 0) forceFirstUserToBeAnAdminUser();
  };

  businessClients_ =
      clientStage("business clients", "importCCHPracticeBusinessClients",
                  &options_.companyCollection, K::CompanyClient, ClientRole::Company);
  businessClients_.create = creator(this, &T::createNewCCHPracticeClientAsCompanyInLedgerfolio);
  businessClients_.afterSave = [this](const std::string& id, long company) {
    importCCHPracticeClientContacts(id, company);
  };
  // The contacts of a business client are part of its record, each found as a client is.
  clientContacts_ = scanStage("business clients", "importCCHPracticeBusinessClients", &rsContacts,
                              "ContactGUID", K::ContactContact);
  clientContacts_.clientMatch = ClientRole::ContactOfContact;
  clientContacts_.create = [this](const std::string& id, long known) {
    return createNewCCHPracticeContactAsContactInLedgerfolio(id, contactsCompany_, known);
  };

  personalClients_ =
      clientStage("personal clients", "importCCHPracticePersonalClients",
                  &options_.contactsCollection, K::ContactClient, ClientRole::ContactOfClient);
  personalClients_.beforeRows = [this] {
    long year = currentPersonalYear();
    personalCategory_ = dropDown() != nullptr ? dropDown()->getCategoryForYear(year, "") : -1;
  };
  personalClients_.create = [this](const std::string& id, long known) {
    return createNewCCHPracticeClientAsContactInLedgerfolio(id, known, -1, personalCategory_);
  };

  // Work codes in three passes; known codes are written again on every run.
  billCodes_ = scanStage("invoice paragraphs", "importCCHPracticeWorkCodes", &rsBillCodes, "BillID",
                         K::InvoiceItem);
  billCodes_.onlyNewEntriesApply = false;
  billCodes_.create = creator(this, &T::createNewCCHPracticeParagraphAsInvoiceItemInLedgerfolio);
  categories_ = scanStage("billing categories", "importCCHPracticeWorkCodes", &rsCategories,
                          "Category", K::BillingCategory);
  categories_.onlyNewEntriesApply = false;
  categories_.create =
      creator(this, &T::createNewCCHPracticeCategoryAsBillingCategoryInLedgerfolio);
  workCodes_ =
      scanStage("work codes", "importCCHPracticeWorkCodes", &rsWorkCodes, "Workcode", K::Workcode);
  workCodes_.onlyNewEntriesApply = false;
  workCodes_.create = creator(this, &T::createNewCCHPracticeWorkcodeAsWorkcodeInLedgerfolio);
  // The billing and non-billing tables number their rows apart while their IDs share one
  // cross-reference column: a work code is found again by its code in its table.
  workCodes_.findKnown = [this](const std::string& code) {
    return getWorkcodeIDFromCCHPracticeWorkcode(code);
  };

  // The money stages read whole tables and keep the rows of the date range.
  wipEntries_ = scanStage("time entries", "importCCHPracticeWIPEntries", &rsWIP, "ReferenceNumber",
                          K::Docket);
  wipEntries_.progressCaption = "Importing CCH Practice WIP Entry {} of {}";
  wipEntries_.rowFilter = [this, inRange = dateRangeFilter("TranDate", true)](
                              const SourceRow& row) -> std::optional<std::string> {
    if (std::optional<std::string> reason = inRange(row)) return reason;
    // Billed, reversed and the like are not work in progress; every other status is.
    const std::string status = G::trim(row.text("BillingStatus"));
    if (options_.importOnlyWIPTimeEntries && (status == "B" || status == "R" || status == "S"))
      return "billing status " + status + " is not work in progress";
    return std::nullopt;
  };
  wipEntries_.create = creator(this, &T::createNewCCHPracticeTimeAsDocketInLedgerfolio);

  invoices_ =
      scanStage("invoices", "importCCHPracticeInvoices", &rsAR, "ReferenceNumber", K::Invoice);
  invoices_.rowFilter = dateRangeFilter("InvoiceDate", false);
  invoices_.progressCaption = "Importing CCH Practice Invoice {} of {}";
  invoices_.create = creator(this, &T::createNewCCHPracticeInvoiceAsInvoiceInLedgerfolio);

  deposits_ =
      scanStage("deposits", "importCCHPracticeDeposits", &rsCASH, "ReferenceNumber", K::Deposit);
  deposits_.rowFilter = dateRangeFilter("DateApplied", false);
  deposits_.keepsPosition = true;
  deposits_.create = creator(this, &T::createNewCCHPracticeDepositAsDepositInLedgerfolio);

  // Client matching: where each role finds its candidate in the export. In the order of
  // ClientRole.
  clientCandidates = {{
      {"getCompanyIDFromCCHPracticeClientID",
       K::CompanyClient,
       &rsClients,
       kClientKey,
       {.companyName = "Name1", .clientCode = "ClientID"},
       6},
      {"getContactIDFromCCHPracticeClientID",
       K::ContactClient,
       &rsClients,
       kClientKey,
       {.displayName = "Name1", .clientCode = "ClientID"}},
      {"getContactIDFromCCHPracticeContactID",
       K::ContactContact,
       &rsContacts,
       {"ContactGUID"},
       {.firstName = "FirstName", .lastName = "LastName"}},
  }};
  clientCreators = {
      .company =
          [this](const std::string& id, long company) {
            return createNewCCHPracticeClientAsCompanyInLedgerfolio(id, company);
          },
      .contact =
          [this](const std::string& id, long contact, long company, long category) {
            return createNewCCHPracticeClientAsContactInLedgerfolio(id, contact, company, category);
          },
      .name =
          [this](const std::string& id) {
            return getCCHPracticeClientNameFromCCHPracticeClientID(id);
          },
  };
}

std::string clsImportCCHPracticeInfo::getCCHPracticeClientNameFromCCHPracticeClientID(
    const std::string& clientKey) {
  std::string result;
  procedure(label("getCCHPracticeClientNameFromCCHPracticeClientID"), [&] {
    DatabaseService* source = sourceDatabase();
    if (source != nullptr && findKey(*source, rsClients, kClientKey, clientKey))
      result = readText(*source, rsClients, "Name1");
  });
  return result;
}

void clsImportCCHPracticeInfo::importCCHPracticeClientContacts(const std::string& clientKey,
                                                               long companyID) {
  if (!validCompanyID(companyID) || !sourceUsable()) return;
  DatabaseService& source = *sourceDatabase();
  // The contacts' keys first: each contact's creator finds its own row in the same recordset.
  std::vector<std::string> guids;
  if (rsContacts != 0 && findKey(source, rsContacts, kClientKey, clientKey)) {
    for (; !source.isEOF(rsContacts); source.findNext(rsContacts)) {
      const std::string guid = readText(source, rsContacts, "ContactGUID");
      if (!guid.empty()) guids.push_back(guid);
    }
  }
  contactsCompany_ = companyID;
  for (const std::string& guid : guids)
    syncKey(clientContacts_, SourceRow{source, rsContacts, guid});
  rec::saveCompanyRTF(companyID);
  rec::saveCompanyContactRTF(companyID, rec::getDefaultContactIDFromCompanyID(companyID));
}

// --- Staff ------------------------------------------------------------------------------------

long clsImportCCHPracticeInfo::createNewCCHPracticeEmployeeAsEmployeeInLedgerfolio(
    const std::string& /*cchEmployeeID*/, long firmID, long employeeID) {
  long result = employeeID;
  procedure(label(__func__), [&] {
    if (!practiceOpen() || !options_.useCCHPracticeDatabase) return;
    DatabaseService& source = *sourceDatabase();
    DatabaseService& db = practice();
    auto src = [&](std::string_view f) { return readText(source, rsStaff, f); };
    // An EmpID repeated in the export finds the member its first row made, which is not in
    // the run's staff recordset: employeeRow reads it alone.
    if (employeeID <= 0 || !employeeRow(db, rsAccountantEmployeeInfo, employeeID).found()) {
      const std::string name = joinPresent({src("FirstName"), src("MiddleName"), src("LastName")});
      if (name.empty()) {
        skipBecause("no name");
        return;
      }
      const long kind = G::upperCase(G::trim(src("StaffLevel"))) == "ADM" ? 1 : 2;
      result = rec::addAccountantEmployee(name, firmID, kind);
    }
    RowAccess row = employeeRow(db, rsAccountantEmployeeInfo, result);
    if (!row.found()) return;
    if (validCompanyID(firmID)) db.setField(row, "CompanyNum", idText(firmID));
    db.setField(row, "ActiveStatus", G::trim(src("Inactive")) == "F" ? "1" : "2");
    writeFields(source, rsStaff, db, row, kStaffFields);

    // One billing rate a rate column, coded " Rate 1" to " Rate 10"; the first is the default.
    RecordsetScope rates(db,
                         "SELECT UserBillingRates.* FROM UserBillingRates WHERE "
                         "UserBillingRates.UserIDNum=" +
                             idText(result) + ";",
                         kLockOptimistic);
    for (int i = 1; i <= 10; ++i) {
      const std::string rate = src("Rate" + std::to_string(i));
      if (rate.empty()) continue;
      saveUserBillingRate(db, rates, result, " Rate " + std::to_string(i), parseSourceMoney(rate),
                          i == 1);
    }
    rec::saveEmployeeBusinessRTF(result);
    rec::saveEmployeePersonalRTF(result);
  });
  return result;
}

// --- Bill codes, categories and work codes ------------------------------------------------------

long clsImportCCHPracticeInfo::createNewCCHPracticeParagraphAsInvoiceItemInLedgerfolio(
    const std::string& cchBillID, long invoiceItemID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = readText(source, rsBillCodes, "Name");
    if (name.empty()) return skipBecause("no name");
    const long item = codeRowOf(db, rsCustomInvoiceDockets, "CustomInvoiceDocketID", invoiceItemID,
                                "CustomItemName", name);
    if (item != -1) writeFields(source, rsBillCodes, db, rsCustomInvoiceDockets, kBillCodeFields);
    return item;
  };
  return createFromSourceRow(__func__, rsBillCodes, "BillID", cchBillID, -1, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeCategoryAsBillingCategoryInLedgerfolio(
    const std::string& cchCategory, long billingCategoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = readText(source, rsCategories, "Name");
    if (name.empty()) return skipBecause("no name");
    const long category = codeRowOf(db, rsBillingCategories, "BillingCategoryID", billingCategoryID,
                                    "BillingCategoryName", name);
    if (category != -1) writeFields(source, rsCategories, db, rsBillingCategories, kCategoryFields);
    return category;
  };
  return createFromSourceRow(__func__, rsCategories, "Category", cchCategory, -1, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeWorkcodeAsWorkcodeInLedgerfolio(
    const std::string& cchWorkcode, long workcodeID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsWorkCodes, f); };
    if (src("Name").empty()) return skipBecause("no name");
    // "B" is time that is never billed; "C" (chargeable), "N" and anything else are billing
    // codes.
    const bool nonBilling = G::trim(src("Chargeable")) == "B";
    const std::int32_t rs = nonBilling ? rsNonBillingJobCodes : rsBillingJobCodes;
    const char* keyColumn = nonBilling ? "NonBillingJobCodeID" : "BillingJobCodeID";
    const long code =
        codeRowOf(db, rs, keyColumn, workcodeID,
                  nonBilling ? "NonBillingJobCodeName" : "BillingJobCodeName", src("Name"));
    if (code == -1) return -1;
    writeFields(source, rsWorkCodes, db, rs,
                nonBilling ? std::span<const FieldMapping>(kNonBillingJobCodeFields)
                           : std::span<const FieldMapping>(kBillingJobCodeFields));
    db.setField(rs, "BillingType", "1");
    // The category of the code is the billing category its Category row became.
    const std::string category = src("CategoryID");
    const long billingCategory =
        category.empty() ? -1
                         : crossReferences().find(CrossReferenceKind::BillingCategory, category);
    if (billingCategory > 0) db.setField(rs, "BillingCategoryNum", idText(billingCategory));
    return code;
  };
  return createFromSourceRow(__func__, rsWorkCodes, "Workcode", cchWorkcode, -1, create);
}

long clsImportCCHPracticeInfo::getWorkcodeIDFromCCHPracticeWorkcode(
    const std::string& cchWorkcode) {
  long result = -1;
  procedure(label(__func__), [&] {
    DatabaseService* source = sourceDatabase();
    if (!practiceOpen() || source == nullptr ||
        !source->findRecord(rsWorkCodes, "Workcode", cchWorkcode))
      return;
    DatabaseService& db = practice();
    const bool nonBilling = G::trim(readText(*source, rsWorkCodes, "Chargeable")) == "B";
    const std::int32_t rs = nonBilling ? rsNonBillingJobCodes : rsBillingJobCodes;
    if (db.isRecordsetOpen(rs) &&
        db.findRecord(rs, nonBilling ? "NonBillingJobCode" : "BillingJobCode", cchWorkcode))
      result = static_cast<long>(
          db.getField(rs, nonBilling ? "NonBillingJobCodeID" : "BillingJobCodeID").toLong());
  });
  return result;
}

// --- Clients ----------------------------------------------------------------------------------

long clsImportCCHPracticeInfo::createNewCCHPracticeClientAsCompanyInLedgerfolio(
    const std::string& cchClientID, long companyID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
    const std::string name = src("Name1");
    if (name.empty()) return skipBecause("no name");

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
      if (upper.find(" LLP") != std::string::npos || upper.find(" PARTNER") != std::string::npos)
        db.setField(row, "CompanyType", "2");
      writeFields(source, rsClients, db, row, kCompanyFields);

      std::string note;
      const std::string second = rec::createAddress(
          src("AltAddress1"), src("AltCity"), src("AltState"), src("AltZIP"), src("AltCountry"));
      if (!second.empty())
        addNoteItem(note, std::string("CCHPractice 2nd Address:") + kCrLf + second);

      // The client-data block: registration numbers from the federal tax ID, year end and the
      // provincial number.
      const bool needsRecord =
          dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord;
      std::string suffix;
      bool valid = false;
      const std::string federal = G::trim(src("FederalTaxID"));
      const std::string businessNumber =
          federal.empty() ? std::string() : G::parseBusinessNumber(federal, suffix, valid);
      const std::string yearEndDate = validDate({src("YearEnd")});
      if (needsRecord) {
        const long clientData = rec::addNewClientDataEntryForExistingCompany(company);
        if (validClientID(clientData)) {
          RowAccess data(db, rsMainBusinessList, "ClientDataID", clientData,
                         getMainBusinessSQLString(false, 3, clientData));
          if (data.found()) {
            auto put = [&](const char* column, const std::string& value) {
              if (!G::isBlank(value)) db.setField(data, column, value);
            };
            put("BusinessNumber", businessNumber);
            if (!businessNumber.empty()) {
              put("GSTNumber", businessNumber + " RT0001");
              put("PayrollNumber", businessNumber + " RP0001");
              put("FederalCorpNumber", businessNumber + " RC0001");
            }
            put("YearEndDate", yearEndDate);
            put("ONCorpNumber", src("StateTaxID"));
          }
        }
      } else {
        if (!businessNumber.empty()) addNoteItem(note, "Business Number: " + businessNumber);
        if (!yearEndDate.empty())
          addNoteItem(note, "Year End: " + formatDate(*DateUtilities::parseDateText(yearEndDate),
                                                      "mmm d, yyyy"));
        if (!src("StateTaxID").empty())
          addNoteItem(note, "Provincial Tax Number: " + src("StateTaxID"));
      }
      writeCompanyNote(db, rsCompaniesNotes, company, note);
    }
    setProgressCaption("Synchronizing " + name);
    setRefreshData(true);
    return company;
  };
  return createFromSourceRow(__func__, rsClients, kClientKey, cchClientID, -1, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeClientAsContactInLedgerfolio(
    const std::string& cchClientID, long contactID, long companyID, long categoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const long category = personalClientCategory(categoryID, companyID);
    const std::string name = readText(source, rsClients, "Name1");
    if (name.empty()) return skipBecause("no name");
    return storePersonalClientContact(
        db, rsTargetContacts, name, contactID, companyID, category, 1,
        [&](std::int32_t row) { writeFields(source, rsClients, db, row, kPersonalClientFields); });
  };
  return createFromSourceRow(__func__, rsClients, kClientKey, cchClientID, -1, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeContactAsContactInLedgerfolio(
    const std::string& contactGUID, long companyID, long contactID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = joinPresent({readText(source, rsContacts, "FirstName"),
                                          readText(source, rsContacts, "MiddleName"),
                                          readText(source, rsContacts, "LastName")});
    if (name.empty()) return skipBecause("no name");
    const long contact = contactID > 0 && contactRow(db, rsTargetContacts, contactID).found()
                             ? contactID
                             : rec::addNewContact(name);
    rec::addContactLink(contact, -1, companyID);
    RowAccess row = contactRow(db, rsTargetContacts, contact);
    if (row.found()) writeFields(source, rsContacts, db, row, kContactFields);
    rec::saveContactBusinessRTF(contact);
    rec::saveContactPersonalRTF(contact);
    return contact;
  };
  return createFromSourceRow(__func__, rsContacts, "ContactGUID", contactGUID, -1, create);
}

// --- Time entries, invoices and deposits --------------------------------------------------------

long clsImportCCHPracticeInfo::createNewCCHPracticeTimeAsDocketInLedgerfolio(
    const std::string& referenceNumber, long docketID) {
  auto create = [&](DatabaseService& source, DatabaseService&) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsWIP, f); };
    // Without a staff member or a client there is no docket; the cross-reference keeps the
    // docket it was given.
    const std::string employee = src("EmpID");
    if (employee.empty()) {
      skipBecause("no staff member");
      return docketID;
    }
    long company = -1, contact = -1;
    if (!clientOfRecord(rsWIP, "ReferenceNumber", referenceNumber, company, contact))
      return docketID;
    const long user = crossReferences().find(CrossReferenceKind::Employee, employee);

    std::unique_ptr<DocketObject> docket = makeDocketObject();
    if (!docket) return docketID;
    if (docketID <= 0 || !docket->loadDocket(docketID)) docket->newDocket();
    docket->setUserIDNum(user);
    docket->setFirmIDNum(practiceFirmID());
    docket->setCompanyIDNum(company);
    docket->setContactIDNum(contact);
    docket->setBillToCompanyIDNum(company);
    docket->setBillToContactIDNum(contact);
    if (auto start = DateUtilities::parseDateText(src("TranDate"))) docket->setDateTimeFrom(*start);
    // Hours that are not a number leave the docket's default hour.
    double hours = 1.0;
    if (!G::isNumeric(src("Hours")) || !G::parseNumber(src("Hours"), hours)) hours = 1.0;
    docket->setDuration(hours);
    const bool billed = G::trim(src("BillingStatus")) == "B";
    docket->setInvoiced(billed);
    docket->setDocketStatus(billed ? 4 : 0);

    // The subject is the work code's name, else the row's own name, else its description.
    std::string subject;
    const std::string work = src("WorkCode");
    if (!work.empty() && rsWorkCodes != 0 && source.findRecord(rsWorkCodes, "Workcode", work))
      subject = readText(source, rsWorkCodes, "Name");
    if (subject.empty()) subject = src("Name");
    if (subject.empty()) subject = src("Description");
    docket->setSubject(subject.substr(0, 255));
    if (!src("Description").empty()) docket->setTextBody(src("Description"));
    docket->setShowOnInvoice(false);
    docket->setBillingAmount(parseSourceMoney(src("AdjAmount")), 2);
    return docket->saveDocket();
  };
  return createFromSourceRow(__func__, rsWIP, "ReferenceNumber", referenceNumber, docketID, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeInvoiceAsInvoiceInLedgerfolio(
    const std::string& referenceNumber, long invoiceID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    long company = -1, contact = -1;
    if (!clientOfRecord(rsAR, "ReferenceNumber", referenceNumber, company, contact)) return -1;
    const long invoice = clientRowOf(db, rsTargetInvoices, "InvoiceID", invoiceID, practiceFirmID(),
                                     company, contact);
    if (invoice == -1) return -1;
    writeFields(source, rsAR, db, rsTargetInvoices, kInvoiceFields);
    const float taxes = parseSourceMoney(readText(source, rsAR, "Tax1")) +
                        parseSourceMoney(readText(source, rsAR, "Tax2")) +
                        parseSourceMoney(readText(source, rsAR, "Tax3"));
    writeInvoiceAmounts(db, rsTargetInvoices,
                        parseSourceMoney(readText(source, rsAR, "FinalBillAmt")), taxes);
    // Paid, deposit totals and balance are settled from the deposits at the end of the run.
    return invoice;
  };
  return createFromSourceRow(__func__, rsAR, "ReferenceNumber", referenceNumber, -1, create);
}

long clsImportCCHPracticeInfo::createNewCCHPracticeDepositAsDepositInLedgerfolio(
    const std::string& referenceNumber, long depositID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsCASH, f); };
    const std::string arReference = src("ARReference");
    const long invoice =
        arReference.empty() ? -1 : crossReferences().find(CrossReferenceKind::Invoice, arReference);
    long company = -1, contact = -1;
    if (!clientOfRecord(rsCASH, "ReferenceNumber", referenceNumber, company, contact)) return -1;
    const long deposit = clientRowOf(db, rsDeposits, "DepositID", depositID, practiceFirmID(),
                                     company, contact, {{"TotalAmount", "0"}});
    if (deposit == -1) return -1;
    const float amount = parseSourceMoney(src("OriginalAmount"));
    db.setField(rsDeposits, "DateCreated", Date::now().toIso());
    db.setField(rsDeposits, "TotalAmount", numberText(amount));
    db.setField(rsDeposits, "DepositType", "1");
    writeFields(source, rsCASH, db, rsDeposits, kDepositFields);

    // The deposit's one payment of its invoice; a reversed deposit pays nothing. A re-run
    // rewrites the payment instead of adding another.
    const std::string reversed = G::trim(src("Reversed"));
    const bool isReversed = reversed == "R" || reversed == "r";
    RecordsetScope payments(db,
                            "SELECT DepositPayments.* From DepositPayments WHERE "
                            "DepositPayments.DepositIDNum=" +
                                idText(deposit) + ";",
                            kLockOptimistic);
    const std::string paid = numberText(isReversed ? 0.0f : amount);
    if (db.hasRecord(payments) && !db.isEOF(payments)) {
      db.setField(payments, "InvoiceIDNum", idText(invoice));
      db.setField(payments, "Amount", paid);
    } else {
      db.addNewRecord(payments);
      db.setNewField(payments, "DepositIDNum", idText(deposit));
      db.setNewField(payments, "InvoiceIDNum", idText(invoice));
      db.setNewField(payments, "Amount", paid);
      db.updateRecord(payments);
    }
    return deposit;
  };
  return createFromSourceRow(__func__, rsCASH, "ReferenceNumber", referenceNumber, -1, create);
}

}  // namespace lf
