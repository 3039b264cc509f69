// clsImportBusinessTextFile.ImportData: companies, and one contact each, from the mapped grid.
#include <initializer_list>
#include <map>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/locale_service.hpp"
#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/default_contacts.hpp"
#include "records/lookups.hpp"
#include "records/name_parsing.hpp"
#include "summaries/company_summaries.hpp"
#include "summaries/contact_summaries.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/duplicate_question.hpp"
#include "text/person_columns.hpp"
#include "text/value_vocabularies.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;
// Company information: the company rows and the client-data rows (numbers, dates, the
// enumerated columns) of the catalogue.
bool isCompanyTag(std::string_view tag) {
  return tag == "CompanyInfo" || tag == "ClientInfo";
}
constexpr std::string_view kCompanyNotes = "CompanyNotes";
constexpr std::string_view kContactInfo = "ContactInfo";
constexpr std::string_view kContactNotes = "ContactNotes";
constexpr std::string_view kLineBreak = "\r\n";
constexpr int kNumberLength = 50;
constexpr int kJoinedAddressLength = 255;

struct CompanyIdentity {
  std::string businessNumber, gstNumber, payrollNumber, federalCorpNumber;
  std::string companyName, corporateName, clientID;

  std::string name() const { return GU::isBlank(companyName) ? corporateName : companyName; }
  std::string eventName() const {
    for (const std::string* text : {&companyName, &corporateName, &clientID, &businessNumber})
      if (!GU::isBlank(*text)) return *text;
    return {};
  }
};

CompanyIdentity readCompanyIdentity(const ColumnMapping& mapping, const ImportGrid& grid, int row) {
  CompanyIdentity company;
  const std::map<std::string_view, std::string CompanyIdentity::*> holders = {
      {"BUSINESSNUMBER", &CompanyIdentity::businessNumber},
      {"GSTNUMBER", &CompanyIdentity::gstNumber},
      {"PAYROLLNUMBER", &CompanyIdentity::payrollNumber},
      {"FEDERALCORPNUMBER", &CompanyIdentity::federalCorpNumber},
      {"COMPANYNAME", &CompanyIdentity::companyName},
      {"CORPORATENAME", &CompanyIdentity::corporateName},
      {"CLIENTID", &CompanyIdentity::clientID},
  };
  for (int col = 1; col < grid.cols(); ++col) {
    const FieldItem* item = mapping.columnItem(col);
    if (item == nullptr || !isCompanyTag(item->tableTag)) continue;
    const auto holder = holders.find(mapping.columnKey(col));
    if (holder != holders.end()) company.*(holder->second) = GU::trim(grid.textMatrix(row, col));
  }
  // The business number from the first of the other three numbers, then the other three
  // from the business number with their program suffixes.
  if (GU::isBlank(company.businessNumber)) {
    for (const std::string* other :
         {&company.gstNumber, &company.payrollNumber, &company.federalCorpNumber}) {
      if (GU::isBlank(*other)) continue;
      std::string suffix;
      bool valid = false;
      company.businessNumber = GU::parseBusinessNumber(*other, suffix, valid);
      break;
    }
  }
  if (!GU::isBlank(company.businessNumber)) {
    if (GU::isBlank(company.gstNumber)) company.gstNumber = company.businessNumber + " RT0001";
    if (GU::isBlank(company.payrollNumber))
      company.payrollNumber = company.businessNumber + " RP0001";
    if (GU::isBlank(company.federalCorpNumber))
      company.federalCorpNumber = company.businessNumber + " RC0001";
  }
  return company;
}

bool keyIn(std::string_view key, std::initializer_list<std::string_view> keys) {
  for (std::string_view k : keys)
    if (k == key) return true;
  return false;
}

// A year-end or incorporation date: a date text as it is; otherwise a month abbreviation and a
// two-digit day ("Dec31") in the current year.
std::optional<Date> companyDate(std::string_view cell) {
  const std::string text = GU::trim(cell);
  if (auto date = DateUtilities::parseDateText(text)) return date;
  const std::string monthDay = text.substr(0, std::min<size_t>(3, text.size())) + ", " +
                               (text.size() > 3 ? text.substr(3, 2) : std::string()) + " " +
                               std::to_string(Date::today().year());
  return DateUtilities::parseDateText(monthDay);
}

// The company value pass: client-data columns on the main row, company columns on the
// company's own row (the main selection also holds Clients.ClientID, which would shadow
// Companies.ClientID). Answers the notes holder.
std::string writeCompanyValues(DatabaseService& db, std::int32_t mainRow, std::int32_t companyRow,
                               const ColumnMapping& mapping, const ImportGrid& grid, int row,
                               const CompanyIdentity& company, bool captions) {
  std::string notes;
  std::string address[3], altAddress[3];
  for (int col = 1; col < grid.cols(); ++col) {
    const std::string_view cell = grid.textMatrix(row, col);
    const FieldItem* item = mapping.columnItem(col);
    const std::string key = mapping.columnKey(col);
    if (item == nullptr || item->tableTag == kCompanyNotes) {
      if (GU::isBlank(cell)) continue;
      if (item == nullptr && captions) notes += GU::trim(grid.textMatrix(kCaptionRow, col)) + ": ";
      notes += GU::trim(cell);
      notes += kLineBreak;
      continue;
    }
    if (!isCompanyTag(item->tableTag) || GU::isBlank(cell)) continue;
    const std::int32_t handle = item->tableTag == "CompanyInfo" ? companyRow : mainRow;
    const std::string cut = cutToLength(cell, item->maxLength);
    if (key.size() == 8 && key.starts_with("ADDRESS") && key[7] >= '1' && key[7] <= '3') {
      address[key[7] - '1'] = cell;
    } else if (key.size() == 11 && key.starts_with("ALTADDRESS") && key[10] >= '1' &&
               key[10] <= '3') {
      altAddress[key[10] - '1'] = cell;
    } else if (keyIn(key, {"YEARENDDATE", "INCORPORATIONDATE"})) {
      if (const auto date = companyDate(cell))
        db.setField(handle, item->databaseField, date->toIso());
    } else if (isVocabularyKey(key)) {
      if (const auto number = vocabularyValue(key, cell))
        db.setField(handle, item->databaseField, std::to_string(*number));
    } else if (keyIn(key, {"ALTPHONENUMBER", "OFFICENUMBER", "FAXNUMBER"})) {
      db.setField(handle, item->databaseField,
                  cutToLength(GU::formatPhoneNumber(cell), item->maxLength));
    } else if (key.size() == 14 && key.starts_with("COMPANYCUSTOM")) {
      db.setField(handle, "Custom" + key.substr(13), cut);
    } else if (!keyIn(key, {"BUSINESSNUMBER", "GSTNUMBER", "PAYROLLNUMBER", "FEDERALCORPNUMBER"})) {
      db.setField(handle, item->databaseField, cut);
    }
  }
  auto join = [](const std::string(&lines)[3]) {
    std::string joined;
    for (const std::string& line : lines) {
      if (GU::isBlank(line)) continue;
      if (!joined.empty()) joined += ", ";
      joined += GU::trim(line);
    }
    return cutToLength(joined, kJoinedAddressLength);
  };
  if (const std::string joined = join(address); !GU::isBlank(joined))
    db.setField(companyRow, "Address", joined);
  if (const std::string joined = join(altAddress); !GU::isBlank(joined))
    db.setField(companyRow, "AltAddress", joined);
  const std::pair<std::string_view, const std::string*> numbers[] = {
      {"BusinessNumber", &company.businessNumber},
      {"GSTNumber", &company.gstNumber},
      {"PayrollNumber", &company.payrollNumber},
      {"FederalCorpNumber", &company.federalCorpNumber},
  };
  for (const auto& [column, number] : numbers)
    if (!GU::isBlank(*number)) db.setField(mainRow, column, cutToLength(*number, kNumberLength));
  return notes;
}

}  // namespace

void clsImportBusinessTextFile::importContact(int row, long company) {
  DatabaseService& db = *moduleState().DatabaseReference;
  const PersonIdentity person = readPersonIdentity(mapping, grid, row, kContactInfo);
  if (!person.hasName()) return;
  bool create = true;
  bool import = true;
  long contact = findDuplicatePerson(contactDuplicatesControl, person, create, import);
  if (create) {
    contact = addNewContact(person.newContactName(), -1, company);
    const std::string spouse = person.spouseNameForContact();
    if (!spouse.empty()) addSpouseNameToContact(contact, spouse);
  }
  if (!import) return;
  const std::string id = std::to_string(contact);
  RecordsetScope contactRow(
      db, "SELECT Contacts.* FROM Contacts WHERE Contacts.ContactID=" + id + ";", kLockOptimistic);
  if (!db.hasRecord(contactRow)) return;
  ContactValueOptions options;
  options.requiredTag = kContactInfo;
  options.notesTag = kContactNotes;
  options.canada = moduleState().LocaleReference == nullptr ||
                   moduleState().LocaleReference->getCountryMode() == 1;
  const std::string notes = writeContactValues(db, contactRow, mapping, grid, row, options);
  contactRow.close();
  appendNotes(db, "SELECT ContactsNotes.* FROM ContactsNotes WHERE ContactNum=" + id + ";", notes);
  saveContactPersonalRTF(contact, -1);
  saveContactPersonalTaxRTF(contact, -1, -1);
  saveContactBusinessRTF(contact, -1, company, false);
  addContactLink(contact, -1, company, -1, "", false);
  if (contactDuplicatesControl != nullptr)
    contactDuplicatesControl->addContact(contact, person.firstName, person.lastName, person.sin,
                                         person.clientID);
}

RowOutcome clsImportBusinessTextFile::importRow(int row, std::string& skipReason) {
  DatabaseService& db = *moduleState().DatabaseReference;
  const CompanyIdentity identity = readCompanyIdentity(mapping, grid, row);
  if (GU::isBlank(identity.companyName) && GU::isBlank(identity.corporateName) &&
      GU::isBlank(identity.clientID) && GU::isBlank(identity.businessNumber)) {
    skipReason = "no company name, corporate name, client ID or business number";
    return RowOutcome::Skipped;
  }
  bool create = true;
  bool import = true;
  long company = -1;
  long clientData = -1;
  ImportDuplicatesControl* duplicates = companyDuplicatesControl;
  if (duplicates != nullptr && duplicates->checkingOn()) {
    duplicates->clearSearch();
    duplicates->setBusinessNumber(identity.businessNumber);
    duplicates->setName(identity.name());
    duplicates->setCorporateName(identity.corporateName);
    duplicates->setClientID(identity.clientID);
    duplicates->runSearch();
    company = duplicates->matchByFirstTest() > 0 ? duplicates->matchByFirstTest()
                                                 : duplicates->matchBySecondTest();
    if (company >= 1) {
      clientData = getClientDataIDFromCompanyID(company);
      decideOnDuplicate(duplicates->getAction(), identity.name(), create, import);
    }
  }
  if (create) {
    clientData = addNewClientDataEntry();
    company = getCompanyIDFromClientDataID(clientData);
  }
  if (!import) {
    skipReason = "an existing client, not updated";
    return RowOutcome::Skipped;
  }
  if (ImportingClientName) ImportingClientName(identity.eventName());

  RecordsetScope main(db, getMainBusinessSQLString(false, 3, clientData), kLockOptimistic);
  if (!db.hasRecord(main)) {
    skipReason = "no client record";
    return RowOutcome::Skipped;
  }
  db.setField(main, "CategoryNum", std::to_string(importCategory));
  db.setField(main, "ShowThisClient", showThisClient ? "True" : "False");
  RecordsetScope companyRow(db,
                            "SELECT Companies.* FROM Companies WHERE Companies.CompanyID=" +
                                std::to_string(company) + ";",
                            kLockOptimistic);
  const std::string notes = writeCompanyValues(db, main, companyRow, mapping, grid, row, identity,
                                               reader.firstRowFieldNames);
  companyRow.close();
  main.close();
  appendNotes(db,
              "SELECT CompaniesNotes.* FROM CompaniesNotes WHERE CompaniesNotes.CompanyNum=" +
                  std::to_string(company) + ";",
              notes);

  importContact(row, getCompanyIDFromClientDataID(clientData));

  saveCompanyRTF(company, -1);
  saveCompanyContactRTF(company, getDefaultContactIDFromCompanyID(company));
  if (duplicates != nullptr)
    duplicates->addCompany(company, identity.name(), identity.businessNumber, identity.clientID);
  if (finishImportingClient) finishImportingClient(identity.eventName());
  return create ? RowOutcome::Created : RowOutcome::Updated;
}

void clsImportBusinessTextFile::ImportData(bool& succeeded) {
  importSuccessful = importSelectedRows(
      [this] { setupCategoryParameters(); },
      [this](int row, std::string& skipReason) { return importRow(row, skipReason); }, counters,
      eventPump);
  succeeded = importSuccessful;
}

}  // namespace lf
