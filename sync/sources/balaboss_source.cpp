// The Balaboss source: its description, its field maps, its stages as data and their creators,
// with the export's tables, columns and words.
//
// The stages run on the shared engine (SyncEngine::runStage); what is written here is what
// Balaboss has of its own.
#include "sync/sources/balaboss_source.hpp"

#include <string>
#include <vector>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/docket_object.hpp"
#include "records/lookups.hpp"
#include "sync/cls_import_balaboss_info.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {

const SourceDescription& balabossSourceDescription() {
  static const SourceDescription description = [] {
    SourceDescription d;
    d.word = "Balaboss";
    d.crossReferences = &balabossCrossReferenceWords();
    d.clientKey = {{"autClientID"}};
    d.wizardForm = "frmBalabossWizard";
    d.fileDialogExtension = "add";
    d.fileDialogTitle = "Open the Balaboss Database file";
    d.fileDialogFilter = "Balaboss Converted Database File (*.lfd)|*.add|All Files (*.*)|*.*";
    d.openFileRefusal =
        "You must open the Balaboss Export file, usually names 'Export.mdb' in order to continue.";
    d.treeClass = "clsBalabossContactTree";
    d.treeRootText = "Balaboss Contacts";
    d.treeClientsStatement = "SELECT tblClient.autClientID, tblClient.strCompany FROM tblClient;";
    d.treeNameColumn = "strCompany";
    return d;
  }();
  return description;
}

std::string balabossEmail(const FieldValues& v) {
  // Intended: only the "#mailto:" marks go; the rest of a mail link stays as it is.
  std::string text = v[0];
  const std::string mark = "#mailto:";
  for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
    text.erase(at, mark.size());
  return GeneralUtilities::trim(text);
}

std::optional<Date> balabossYearEnd(std::string_view text, long thisYear) {
  // "Jun 30,  2025": the day and month before the cut, the year after it (this year when
  // the text has none).
  const std::string trimmed = GeneralUtilities::trim(std::string(text));
  const size_t cut = trimmed.find(",  ");
  const std::string dayMonth = GeneralUtilities::trim(trimmed.substr(0, cut));
  std::string year =
      cut == std::string::npos ? std::string() : GeneralUtilities::trim(trimmed.substr(cut + 3));
  if (dayMonth.empty()) return std::nullopt;
  if (year.empty()) year = std::to_string(thisYear);
  if (std::optional<Date> date = DateUtilities::parseDateText(dayMonth + ", " + year)) return date;
  // A whole date before the cut ("2024-03-31") stands as it is.
  return DateUtilities::parseDateText(dayMonth);
}

namespace {

namespace rec = syncrecords;
using G = GeneralUtilities;
using namespace sourcerows;
using fields::trimmed;

// --- Field maps -------------------------------------------------------------------------------

constexpr FieldMapping kStaffFields[] = {
    {{"strKeyPersonCode"}, "UserName"},
    {{"strKPFirst"}, "FirstName"},
    {{"strKPLast"}, "LastName"},
};

// A business client (tblClient to Companies), besides its name, legal form, key persons and
// client-data block.
constexpr FieldMapping kCompanyFields[] = {
    {{"strClientNo"}, "ClientID"},
    {{"strAlternate"}, "CorporateName"},
    {{"strAddress"}, "Address"},
    {{"strCity"}, "City"},
    {{"strProvState"}, "Province"},
    {{"strPostalCode"}, "PostalCode"},
    {{"strPhoneNo"}, "OfficeNumber"},
    {{"strFaxNo"}, "FaxNumber"},
    {{"strEMail"}, "Email", balabossEmail},
};

// A personal client (tblClient to Contacts).
constexpr FieldMapping kPersonalClientFields[] = {
    {{"strAddress"}, "BusinessAddress"},
    {{"strCity"}, "BusinessCity"},
    {{"strProvState"}, "BusinessProvince"},
    {{"strPostalCode"}, "BusinessPostalCode"},
    {{"strPhoneNo"}, "BusinessPhone_Main"},
    {{"strFaxNo"}, "BusinessPhone_Fax"},
    {{"strEMail"}, "BusinessEmail", balabossEmail},
};

// A contact of a business client (tblContact to Contacts), and its address and telephone rows.
constexpr FieldMapping kContactFields[] = {
    {{"strContactFirst"}, "FirstName"},
    {{"strContactLast"}, "LastName"},
    {{"strMx"}, "NamePrefix"},
    {{"strTitle"}, "BusinessJobTitle"},
};
constexpr FieldMapping kContactAddressFields[] = {
    {{"strAddress"}, "HomeAddress"},
    {{"strCity"}, "HomeCity"},
    {{"strProvState"}, "HomeProvince"},
    {{"strPostalCode"}, "HomePostalCode"},
};
constexpr FieldMapping kContactPhoneFields[] = {
    {{"strPhoneNo"}, "HomePhone_Main"},
};

constexpr FieldMapping kParagraphFields[] = {
    {{"memStdPara"}, "CustomItemName"},
    {{"memStdPara"}, "DescriptionClient"},
};

constexpr FieldMapping kCategoryFields[] = {
    {{"strSvcCategoryName"}, "BillingCategoryName"},
};

constexpr FieldMapping kBillingJobCodeFields[] = {
    {{"strSvcCodeDescr"}, "BillingJobCodeName"},
    {{"strSvcCode"}, "BillingJobCode"},
};

constexpr FieldMapping kNonBillingJobCodeFields[] = {
    {{"strSvcCodeDescr"}, "NonBillingJobCodeName"},
    {{"strSvcCode"}, "NonBillingJobCode"},
};

// An invoice's number and dates; its amounts are computed.
constexpr FieldMapping kInvoiceFields[] = {
    {{"strInvoiceNo"}, "InvoiceNum"},
    {{"dtmInvDate"}, "InvoiceDate"},
    {{"dtmInvDate"}, "InvoiceDueDate"},
};

// A deposit's note and dates; its subject, amount and type are written apart.
constexpr FieldMapping kDepositFields[] = {
    {{"memStdPara"}, "Notes", trimmed},
    {{"dtmTrans"}, "DateReceived"},
    {{"dtmTrans"}, "DateDeposited"},
};

constexpr FieldMap kFieldMaps[] = {
    {"tblKeyPerson", "AccountantEmployeeInfo", kStaffFields},
    {"tblClient", "Companies", kCompanyFields},
    {"tblClient", "Contacts", kPersonalClientFields},
    {"tblContact", "Contacts", kContactFields},
    {"tblContactAddress", "Contacts", kContactAddressFields},
    {"tblContactPhone", "Contacts", kContactPhoneFields},
    {"tblTBStdPara", "CustomInvoiceDockets", kParagraphFields},
    {"tblTBSvcCategory", "BillingCategories", kCategoryFields},
    {"tblTBSvcCode", "BillingJobCodes", kBillingJobCodeFields},
    {"tblTBSvcCode", "NonBillingJobCodes", kNonBillingJobCodeFields},
    {"tblTBInv", "Invoices", kInvoiceFields},
    {"tblTBInvTrans", "Deposits", kDepositFields},
};

// The deposit key: a transaction and its line.
const std::vector<std::string> kDepositKey = {"autInvTransID", "lngLineNo"};

}  // namespace

std::span<const FieldMap> balabossFieldMaps() {
  return kFieldMaps;
}

// --- The stages -------------------------------------------------------------------------------

void clsImportBalabossInfo::describeStages() {
  using K = CrossReferenceKind;
  using T = clsImportBalabossInfo;

  // The creators search the recordset their stage scans: every scanned stage keeps its place
  // around its creator.
  auto scanning = [](SyncStage stage) {
    stage.keepsPosition = true;
    return stage;
  };

  // Staff details are brought across on every run, whatever importOnlyNewEntries says.
  staff_ = scanning(
      scanStage("staff", "importBalabossUsers", &rsKeyPersons, "strKeyPersonCode", K::Employee));
  staff_.onlyNewEntriesApply = staff_.stepsProgress = false;
  staff_.create = [this](const std::string& code, long known) {
    return createNewBalabossEmployeeAsEmployeeInLedgerfolio(code, practiceFirmID(), known);
  };
  staff_.afterRows = [](long reachedCreator) {
    if (reachedCreator > 0) forceFirstUserToBeAnAdminUser();
  };

  businessClients_ =
      clientStage("business clients", "importBalabossBusinessClients", &options_.companyCollection,
                  K::CompanyClient, ClientRole::Company);
  businessClients_.create = creator(this, &T::createNewBalabossClientAsCompanyInLedgerfolio);
  businessClients_.afterSave = [this](const std::string& id, long company) {
    importBalabossClientContacts(id, company);
  };
  clientContacts_ = scanStage("business clients", "importBalabossBusinessClients", &rsContacts,
                              "autContactID", K::ContactContact);
  clientContacts_.clientMatch = ClientRole::ContactOfContact;
  clientContacts_.create = [this](const std::string& id, long known) {
    return createNewBalabossContactAsContactInLedgerfolio(id, contactsCompany_, known);
  };

  personalClients_ =
      clientStage("personal clients", "importBalabossPersonalClients", &options_.contactsCollection,
                  K::ContactClient, ClientRole::ContactOfClient);
  personalClients_.beforeRows = [this] {
    long year = currentPersonalYear();
    personalCategory_ = dropDown() != nullptr ? dropDown()->getCategoryForYear(year, "") : -1;
  };
  personalClients_.create = [this](const std::string& id, long known) {
    return createNewBalabossClientAsContactInLedgerfolio(id, known, -1, personalCategory_);
  };

  // Work codes in three passes; known codes are written again on every run.
  paragraphs_ = scanning(scanStage("invoice paragraphs", "importBalabossWorkCodes", &rsStdParas,
                                   "autStdParaID", K::InvoiceItem));
  paragraphs_.onlyNewEntriesApply = false;
  paragraphs_.create = creator(this, &T::createNewBalabossParagraphAsInvoiceItemInLedgerfolio);
  categories_ = scanning(scanStage("billing categories", "importBalabossWorkCodes",
                                   &rsSvcCategories, "autSvcCategoryID", K::BillingCategory));
  categories_.onlyNewEntriesApply = false;
  categories_.create = creator(this, &T::createNewBalabossCategoryAsBillingCategoryInLedgerfolio);
  serviceCodes_ = scanning(
      scanStage("work codes", "importBalabossWorkCodes", &rsSvcCodes, "autSvcCodeID", K::Workcode));
  serviceCodes_.onlyNewEntriesApply = false;
  serviceCodes_.create = creator(this, &T::createNewBalabossWorkcodeAsWorkcodeInLedgerfolio);
  // The billing and non-billing tables number their rows apart while their IDs share one
  // cross-reference column: a service code is found again by its code in its table.
  serviceCodes_.findKnown = [this](const std::string& id) {
    return getWorkcodeIDFromBalabossSvcCodeID(id);
  };

  // The money stages are driven by the dated statements; the creators read the whole tables.
  wipEntries_ = scanning(
      scanStage("time entries", "importBalabossWIPEntries", &rsWIPQuery, "autWIPID", K::Docket));
  wipEntries_.progressCaption = "Importing Balaboss WIP Entry {} of {}";
  wipEntries_.create = creator(this, &T::createNewBalabossTimeAsDocketInLedgerfolio);

  invoices_ =
      scanning(scanStage("invoices", "importBalabossInvoices", &rsARQuery, "autInvID", K::Invoice));
  invoices_.progressCaption = "Importing Balaboss Invoice {} of {}";
  invoices_.create = creator(this, &T::createNewBalabossInvoiceAsInvoiceInLedgerfolio);

  deposits_ = scanning(scanStage("deposits", "importBalabossDeposits", &rsDepositQuery,
                                 "autInvTransID", K::Deposit));
  deposits_.keyColumns = kDepositKey;
  deposits_.progressCaption = "Importing Balaboss deposit {} of {}";
  deposits_.create = creator(this, &T::createNewBalabossDepositAsDepositInLedgerfolio);

  // Client matching: where each role finds its candidate in the export. In the order of
  // ClientRole.
  clientCandidates = {{
      {"getCompanyIDFromBalabossClientID",
       K::CompanyClient,
       &rsClients,
       {"autClientID"},
       {.companyName = "strCompany", .clientCode = "strClientNo"},
       6},
      {"getContactIDFromBalabossClientID",
       K::ContactClient,
       &rsClients,
       {"autClientID"},
       {.displayName = "strCompany", .clientCode = "strClientNo"}},
      {"getContactIDFromBalabossContactID",
       K::ContactContact,
       &rsContacts,
       {"autContactID"},
       {.firstName = "strContactFirst", .lastName = "strContactLast"}},
  }};
  clientCreators = {
      .company =
          [this](const std::string& id, long company) {
            return createNewBalabossClientAsCompanyInLedgerfolio(id, company);
          },
      .contact =
          [this](const std::string& id, long contact, long company, long category) {
            return createNewBalabossClientAsContactInLedgerfolio(id, contact, company, category);
          },
      .name =
          [this](const std::string& id) { return getBalabossClientNameFromBalabossClientID(id); },
  };
}

std::string clsImportBalabossInfo::getBalabossClientNameFromBalabossClientID(
    const std::string& clientID) {
  return lookUpSource(__func__, rsClients, "autClientID", clientID, "strCompany");
}

std::string clsImportBalabossInfo::getBalabossKeyPersonName(const std::string& keyPersonCode) {
  std::string result = G::trim(keyPersonCode);
  procedure(label(__func__), [&] {
    DatabaseService* source = sourceDatabase();
    if (source == nullptr || rsKeyPersons == 0 ||
        !source->findRecord(rsKeyPersons, "strKeyPersonCode", result))
      return;
    const std::string name = joinPresent({readText(*source, rsKeyPersons, "strKPFirst"),
                                          readText(*source, rsKeyPersons, "strKPLast")});
    if (!name.empty()) result = name;
  });
  return result;
}

void clsImportBalabossInfo::importBalabossClientContacts(const std::string& clientID,
                                                         long companyID) {
  if (!validCompanyID(companyID) || !sourceUsable()) return;
  DatabaseService& source = *sourceDatabase();
  // The contacts' keys first: each contact's creator finds its own row in the same recordset.
  std::vector<std::string> contacts;
  if (rsContacts != 0 && source.findRecord(rsContacts, "lngClientID", clientID)) {
    for (; !source.isEOF(rsContacts); source.findNext(rsContacts)) {
      const std::string id = readText(source, rsContacts, "autContactID");
      if (!id.empty()) contacts.push_back(id);
    }
  }
  contactsCompany_ = companyID;
  for (const std::string& id : contacts)
    syncKey(clientContacts_, SourceRow{source, rsContacts, id});
  rec::saveCompanyRTF(companyID);
  rec::saveCompanyContactRTF(companyID, rec::getDefaultContactIDFromCompanyID(companyID));
}

// --- Staff ------------------------------------------------------------------------------------

long clsImportBalabossInfo::createNewBalabossEmployeeAsEmployeeInLedgerfolio(
    const std::string& keyPersonCode, long firmID, long employeeID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsKeyPersons, f); };
    long employee = employeeID;
    // A member made earlier in this run is not in the run's staff recordset: employeeRow
    // finds it all the same.
    if (employeeID <= 0 || !employeeRow(db, rsAccountantEmployeeInfo, employeeID).found()) {
      const std::string name = joinPresent({src("strKPFirst"), src("strKPLast")});
      if (name.empty()) return skipBecause("no name");
      employee = rec::addAccountantEmployee(name, firmID, 2);
    }
    RowAccess row = employeeRow(db, rsAccountantEmployeeInfo, employee);
    if (!row.found()) return -1;
    if (validCompanyID(firmID)) db.setField(row, "CompanyNum", idText(firmID));
    db.setField(row, "ActiveStatus", readBool(source, rsKeyPersons, "ysnCurrent") ? "1" : "2");
    writeFields(source, rsKeyPersons, db, row, kStaffFields);

    // One billing rate a rate column, coded " Rate 1" to " Rate 4"; the first is the default.
    RecordsetScope rates(db,
                         "SELECT UserBillingRates.* FROM UserBillingRates WHERE "
                         "UserBillingRates.UserIDNum=" +
                             idText(employee) + ";",
                         kLockOptimistic);
    for (int i = 1; i <= 4; ++i) {
      const std::string rate = src("curRate" + std::to_string(i));
      if (!rate.empty())
        saveUserBillingRate(db, rates, employee, " Rate " + std::to_string(i),
                            parseSourceMoney(rate), i == 1);
    }
    rec::saveEmployeeBusinessRTF(employee);
    rec::saveEmployeePersonalRTF(employee);
    return employee;
  };
  return createFromSourceRow(__func__, rsKeyPersons, "strKeyPersonCode", keyPersonCode, employeeID,
                             create);
}

// --- Paragraphs, categories and service codes ---------------------------------------------------

long clsImportBalabossInfo::createNewBalabossParagraphAsInvoiceItemInLedgerfolio(
    const std::string& stdParaID, long invoiceItemID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string text = readText(source, rsStdParas, "memStdPara");
    if (text.empty()) return skipBecause("no text");
    const long item = codeRowOf(db, rsCustomInvoiceDockets, "CustomInvoiceDocketID", invoiceItemID,
                                "CustomItemName", text);
    if (item != -1) writeFields(source, rsStdParas, db, rsCustomInvoiceDockets, kParagraphFields);
    return item;
  };
  return createFromSourceRow(__func__, rsStdParas, "autStdParaID", stdParaID, -1, create);
}

long clsImportBalabossInfo::createNewBalabossCategoryAsBillingCategoryInLedgerfolio(
    const std::string& svcCategoryID, long billingCategoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = readText(source, rsSvcCategories, "strSvcCategoryName");
    if (name.empty()) return skipBecause("no name");
    const long category = codeRowOf(db, rsBillingCategories, "BillingCategoryID", billingCategoryID,
                                    "BillingCategoryName", name);
    if (category != -1)
      writeFields(source, rsSvcCategories, db, rsBillingCategories, kCategoryFields);
    return category;
  };
  return createFromSourceRow(__func__, rsSvcCategories, "autSvcCategoryID", svcCategoryID, -1,
                             create);
}

long clsImportBalabossInfo::createNewBalabossWorkcodeAsWorkcodeInLedgerfolio(
    const std::string& svcCodeID, long workcodeID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsSvcCodes, f); };
    if (src("strSvcCodeDescr").empty()) return skipBecause("no name");
    // A code billed by default is a billing job code; every other one a non-billing code.
    const bool billing = readBool(source, rsSvcCodes, "ysnDefaultBill");
    const std::int32_t rs = billing ? rsBillingJobCodes : rsNonBillingJobCodes;
    const long code =
        codeRowOf(db, rs, billing ? "BillingJobCodeID" : "NonBillingJobCodeID", workcodeID,
                  billing ? "BillingJobCodeName" : "NonBillingJobCodeName", src("strSvcCodeDescr"));
    if (code == -1) return -1;
    writeFields(source, rsSvcCodes, db, rs,
                billing ? std::span<const FieldMapping>(kBillingJobCodeFields)
                        : std::span<const FieldMapping>(kNonBillingJobCodeFields));
    db.setField(rs, "BillingType", "1");
    const std::string category = src("lngSvcCategoryID");
    const long billingCategory =
        category.empty() ? -1
                         : crossReferences().find(CrossReferenceKind::BillingCategory, category);
    if (billingCategory > 0) db.setField(rs, "BillingCategoryNum", idText(billingCategory));
    return code;
  };
  return createFromSourceRow(__func__, rsSvcCodes, "autSvcCodeID", svcCodeID, -1, create);
}

long clsImportBalabossInfo::getWorkcodeIDFromBalabossSvcCodeID(const std::string& svcCodeID) {
  long result = -1;
  procedure(label(__func__), [&] {
    DatabaseService* source = sourceDatabase();
    if (!practiceOpen() || source == nullptr ||
        !source->findRecord(rsSvcCodes, "autSvcCodeID", svcCodeID))
      return;
    DatabaseService& db = practice();
    const bool billing = readBool(*source, rsSvcCodes, "ysnDefaultBill");
    const std::int32_t rs = billing ? rsBillingJobCodes : rsNonBillingJobCodes;
    const std::string code = readText(*source, rsSvcCodes, "strSvcCode");
    if (!code.empty() && db.isRecordsetOpen(rs) &&
        db.findRecord(rs, billing ? "BillingJobCode" : "NonBillingJobCode", code))
      result = static_cast<long>(
          db.getField(rs, billing ? "BillingJobCodeID" : "NonBillingJobCodeID").toLong());
  });
  return result;
}

// --- Clients ----------------------------------------------------------------------------------

long clsImportBalabossInfo::createNewBalabossClientAsCompanyInLedgerfolio(
    const std::string& clientID, long companyID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
    const std::string name = src("strCompany");
    if (name.empty()) return skipBecause("no name");

    const long company = companyID > 0 && companyRow(db, rsCompanies, companyID).found()
                             ? companyID
                             : getCompanyIDFromClientDataID(rec::addNewClientDataEntry());
    long category = options_.importCategory;
    if (!validCategoryID(category) && dropDown() != nullptr)
      category = dropDown()->getCurrentCategoryID();

    // The key persons and the client-data block are read before the look-ups move the row.
    const std::string partner = src("strKeyPerson1Code");
    const std::string accountant = src("strKeyPerson2Code");
    const std::optional<Date> yearEnd = balabossYearEnd(src("strYearEnd"), Date::today().year());
    const bool active = readBool(source, rsClients, "ysnActive");
    const std::string permanentNote = src("memPermNote");

    RowAccess row = companyRow(db, rsCompanies, company);
    if (row.found()) {
      db.setField(row, "CategoryNum", idText(category));
      db.setField(row, "CompanyName", name);
      const std::string upper = G::upperCase(name);
      if (upper.find(" LLP") != std::string::npos || upper.find(" PARTNER") != std::string::npos)
        db.setField(row, "CompanyType", "2");
      writeFields(source, rsClients, db, row, kCompanyFields);
      if (!partner.empty()) db.setField(row, "PartnerName", getBalabossKeyPersonName(partner));
      if (!accountant.empty())
        db.setField(row, "AccountantName", getBalabossKeyPersonName(accountant));

      std::string note = permanentNote;
      const bool needsRecord =
          dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord;
      if (needsRecord) {
        const long clientData = rec::addNewClientDataEntryForExistingCompany(company);
        if (validClientID(clientData)) {
          RowAccess data(db, rsMainBusinessList, "ClientDataID", clientData,
                         getMainBusinessSQLString(false, 3, clientData));
          if (data.found()) {
            if (yearEnd) db.setField(data, "YearEndDate", yearEnd->toIso());
            db.setField(data, "ActiveStatus", active ? "1" : "2");
          }
        }
      } else if (yearEnd) {
        addNoteItem(note, "Year End: " + formatDate(*yearEnd, "mmm d, yyyy"));
      }
      writeCompanyNote(db, rsCompaniesNotes, company, note);
    }
    setProgressCaption("Synchronizing " + name);
    setRefreshData(true);
    return company;
  };
  return createFromSourceRow(__func__, rsClients, "autClientID", clientID, -1, create);
}

long clsImportBalabossInfo::createNewBalabossClientAsContactInLedgerfolio(
    const std::string& clientID, long contactID, long companyID, long categoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const long category = personalClientCategory(categoryID, companyID);
    const std::string name = readText(source, rsClients, "strCompany");
    if (name.empty()) return skipBecause("no name");
    return storePersonalClientContact(
        db, rsTargetContacts, name, contactID, companyID, category, 1,
        [&](std::int32_t row) { writeFields(source, rsClients, db, row, kPersonalClientFields); });
  };
  return createFromSourceRow(__func__, rsClients, "autClientID", clientID, -1, create);
}

long clsImportBalabossInfo::createNewBalabossContactAsContactInLedgerfolio(
    const std::string& contactID, long companyID, long ledgerfolioContactID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const std::string name = joinPresent({readText(source, rsContacts, "strContactFirst"),
                                          readText(source, rsContacts, "strContactLast")});
    if (name.empty()) return skipBecause("no name");
    const long contact =
        ledgerfolioContactID > 0 && contactRow(db, rsTargetContacts, ledgerfolioContactID).found()
            ? ledgerfolioContactID
            : rec::addNewContact(name);
    rec::addContactLink(contact, -1, companyID);
    RowAccess row = contactRow(db, rsTargetContacts, contact);
    if (row.found()) {
      writeFields(source, rsContacts, db, row, kContactFields);
      // The contact's address and telephone are rows of their own tables.
      if (rsContactAddresses != 0 &&
          source.findRecord(rsContactAddresses, "lngContactID", contactID))
        writeFields(source, rsContactAddresses, db, row, kContactAddressFields);
      if (rsContactPhones != 0 && source.findRecord(rsContactPhones, "lngContactID", contactID))
        writeFields(source, rsContactPhones, db, row, kContactPhoneFields);
    }
    rec::saveContactBusinessRTF(contact);
    rec::saveContactPersonalRTF(contact);
    return contact;
  };
  return createFromSourceRow(__func__, rsContacts, "autContactID", contactID, -1, create);
}

// --- Time entries, invoices and deposits --------------------------------------------------------

long clsImportBalabossInfo::createNewBalabossTimeAsDocketInLedgerfolio(const std::string& wipID,
                                                                       long docketID) {
  auto create = [&](DatabaseService& source, DatabaseService&) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsWIP, f); };
    const std::string employee = src("strKPCode");
    if (employee.empty()) {
      skipBecause("no staff member");
      return docketID;
    }
    long company = -1, contact = -1;
    if (!clientOfRecord(rsWIP, "autWIPID", wipID, "lngClientID", company, contact)) return docketID;
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
    if (auto start = DateUtilities::parseDateText(src("dtmTrans"))) docket->setDateTimeFrom(*start);
    // Hours that are not a number leave the docket's default hour.
    double hours = 1.0;
    if (!G::isNumeric(src("curHoursQty")) || !G::parseNumber(src("curHoursQty"), hours))
      hours = 1.0;
    docket->setDuration(hours);
    docket->setInvoiced(false);
    docket->setDocketStatus(0);

    // The subject is the service code's description, else the note.
    std::string subject;
    const std::string code = src("lngSvcCodeID");
    if (!code.empty() && rsSvcCodes != 0 && source.findRecord(rsSvcCodes, "autSvcCodeID", code))
      subject = readText(source, rsSvcCodes, "strSvcCodeDescr");
    if (subject.empty()) subject = src("memNote");
    docket->setSubject(subject.substr(0, 255));
    if (!src("memNote").empty()) docket->setTextBody(src("memNote"));
    docket->setShowOnInvoice(false);
    docket->setBillingAmount(parseSourceMoney(src("curAmount")), 2);
    return docket->saveDocket();
  };
  return createFromSourceRow(__func__, rsWIP, "autWIPID", wipID, docketID, create);
}

long clsImportBalabossInfo::createNewBalabossInvoiceAsInvoiceInLedgerfolio(const std::string& invID,
                                                                           long invoiceID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    long company = -1, contact = -1;
    if (!clientOfRecord(rsInvoices, "autInvID", invID, "lngClientID", company, contact)) return -1;
    const long invoice = clientRowOf(db, rsTargetInvoices, "InvoiceID", invoiceID, practiceFirmID(),
                                     company, contact);
    if (invoice == -1) return -1;
    writeFields(source, rsInvoices, db, rsTargetInvoices, kInvoiceFields);
    writeInvoiceAmounts(db, rsTargetInvoices,
                        parseSourceMoney(readText(source, rsInvoices, "curTotal")),
                        parseSourceMoney(readText(source, rsInvoices, "curTax1")));
    return invoice;
  };
  return createFromSourceRow(__func__, rsInvoices, "autInvID", invID, -1, create);
}

long clsImportBalabossInfo::createNewBalabossDepositAsDepositInLedgerfolio(
    const std::string& transKey, long depositID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsInvoiceTrans, f); };
    const std::string invID = src("lngInvID");
    const float left = parseSourceMoney(src("curLeftCol"));
    const float right = parseSourceMoney(src("curRightCol"));
    std::string subject;
    const std::string type = src("lngTBTransTypeID");
    if (!type.empty() && rsTransTypes != 0 &&
        source.findRecord(rsTransTypes, "autTBTransTypeID", type))
      subject = joinPresent({readText(source, rsTransTypes, "strTransTypeDescr"),
                             readText(source, rsTransTypes, "strTransTypeDescr2")});
    if (invID.empty()) return skipBecause("no invoice");
    const long invoice = crossReferences().find(CrossReferenceKind::Invoice, invID);
    // The client is the invoice's, read from the export's invoice row.
    long company = -1, contact = -1;
    if (rsInvoices == 0 || !source.findRecord(rsInvoices, "autInvID", invID))
      return skipBecause("invoice not in the export");
    if (!clientOfRecord(rsInvoices, "autInvID", invID, "lngClientID", company, contact)) return -1;
    if (!findKey(source, rsInvoiceTrans, kDepositKey, transKey)) return -1;
    const long deposit = clientRowOf(db, rsDeposits, "DepositID", depositID, practiceFirmID(),
                                     company, contact, {{"TotalAmount", "0"}});
    if (deposit == -1) return -1;
    // A payment stands in the right (credit) column; a row with only a left amount is taken by
    // that.
    const float amount = right != 0.0f ? right : left;
    db.setField(rsDeposits, "DateCreated", Date::now().toIso());
    db.setField(rsDeposits, "TotalAmount", numberText(amount));
    db.setField(rsDeposits, "DepositType", "1");
    if (!subject.empty()) db.setField(rsDeposits, "Subject", subject);
    writeFields(source, rsInvoiceTrans, db, rsDeposits, kDepositFields);

    // The deposit's one payment of its invoice; a re-run rewrites it instead of adding another.
    RecordsetScope payments(db,
                            "SELECT DepositPayments.* From DepositPayments WHERE "
                            "DepositPayments.DepositIDNum=" +
                                idText(deposit) + ";",
                            kLockOptimistic);
    if (db.hasRecord(payments) && !db.isEOF(payments)) {
      db.setField(payments, "InvoiceIDNum", idText(invoice));
      db.setField(payments, "Amount", numberText(amount));
    } else {
      db.addNewRecord(payments);
      db.setNewField(payments, "DepositIDNum", idText(deposit));
      db.setNewField(payments, "InvoiceIDNum", idText(invoice));
      db.setNewField(payments, "Amount", numberText(amount));
      db.updateRecord(payments);
    }
    return deposit;
  };
  return createFromSourceRow(__func__, rsInvoiceTrans, kDepositKey, transKey, -1, create);
}

}  // namespace lf
