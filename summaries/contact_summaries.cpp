// The contact summaries of modFormatAddresses: personal, business (and its spreading to the
// companies the contact is default contact of) and personal-tax pages in RTF.
#include "summaries/contact_summaries.hpp"

#include <array>
#include <string_view>

#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/locale_service.hpp"
#include "records/lookups.hpp"
#include "summaries/address_blocks.hpp"
#include "summaries/rtf_summary_text.hpp"
#include "summaries/summary_records.hpp"

namespace lf {
namespace {

// The spouse section of a summary is written when any of these columns holds a value.
bool hasSpouseInformation(DatabaseService& db, std::int32_t handle) {
  return anyNotBlank(
      db, handle,
      {"SpouseName", "SpouseGender", "SpouseBirthday", "SpouseSIN", "SpouseEmail",
       "SpousePhone_Main", "SpousePhone_Cell", "SpouseAddress", "SpouseCity", "SpousePostalCode"});
}

constexpr std::string_view kLongDate = "mmmm dd, yyyy";
constexpr std::string_view kShortDate = "mmm d, yyyy";
constexpr std::string_view kMoney = "$#,##0.00;$-#,##0.00";
constexpr std::string_view kAddressTitle = R"(\b\pard\fi0\li0\ri0 Address:\b0\par)";

// One labelled line of a summary: the label as it stands in the RTF, the column it shows.
struct SummaryLine {
  std::string_view label;
  std::string_view column;
};

template <std::size_t N>
void writeLines(RtfSummaryText& out, DatabaseService& db, std::int32_t handle,
                const std::array<SummaryLine, N>& lines) {
  for (const SummaryLine& line : lines) out.line(line.label, db.getField(handle, line.column));
}

// The business phone lines, alike in the business and personal-tax summaries.
constexpr std::array<SummaryLine, 9> kBusinessPhoneLines{{
    {R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0   )", "BusinessPhone_Main"},
    {R"(\b\pard\fi-1100\li1100\ri0 Alternate Phone:\b0   )", "BusinessAltPhoneNumber"},
    {R"(\b\pard\fi-1100\li1100\ri0 Cell Phone:\b0     )", "BusinessPhone_Cell"},
    {R"(\b\pard\fi-1100\li1100\ri0 Fax:\b0  \tab         )", "BusinessPhone_Fax"},
    {R"(\b\pard\fi-1100\li1100\ri0 Pager:\b0  \tab         )", "BusinessPhone_Pager"},
    {R"(\b\pard\fi0\li0\ri0 Email:\b0  \tab         )", "BusinessEmail"},
    {R"(\b Web Site:\b0        )", "BusinessWebSite"},
    {R"(\b FaceBook:\b0        )", "BusinessFaceBookURL"},
    {R"(\b Twitter:\b0        )", "BusinessTwitterAccount"},
}};

// The company lines, alike in the business and personal-tax summaries.
constexpr std::array<SummaryLine, 4> kBusinessCompanyLines{{
    {R"(\b\pard\fi-1425\li1425\ri0 Company Name:\b0   )", "BusinessName"},
    {R"(\b\pard\fi-800\li800\ri0 Job Title:\b0   )", "BusinessJobTitle"},
    {R"(\b\pard\fi-1050\li1050\ri0 Department:\b0   )", "BusinessDepartment"},
    {R"(\b\pard\fi-600\li600\ri0 Office:\b0   )", "BusinessOffice"},
}};

// The labels of the spouse section; the personal and personal-tax summaries pad them
// differently after the label.
struct SpouseLabels {
  std::array<SummaryLine, 4> contact;  // name, main phone, cell phone, email
  std::string_view gender;
  std::string_view birthday;
  std::string_view sin;
  std::string_view ssn;
};

constexpr SpouseLabels kPersonalSpouseLabels{
    {{{R"(\b Name:\b0  )", "SpouseName"},
      {R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0\tab )", "SpousePhone_Main"},
      {R"(\b\pard\fi-1100\li1100\ri0 Cell Phone:\b0  \tab )", "SpousePhone_Cell"},
      {R"(\b\pard\fi0\li0\ri0 Email:\b0  \tab\tab )", "SpouseEmail"}}},
    R"(\b Gender:\b0  \tab )",
    R"(\b Birthday:\b0  \tab )",
    R"(\b SIN:\b0  \tab )",
    R"(\b SSN:\b0  \tab )"};

constexpr SpouseLabels kPersonalTaxSpouseLabels{
    {{{R"(\b Name:\b0   )", "SpouseName"},
      {R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0   )", "SpousePhone_Main"},
      {R"(\b\pard\fi-1100\li1100\ri0 Cell Phone:\b0   )", "SpousePhone_Cell"},
      {R"(\b\pard\fi0\li0\ri0 Email:\b0   )", "SpouseEmail"}}},
    R"(\b Gender:\b0   )",
    R"(\b Birthday:\b0   )",
    R"(\b SIN:\b0   )",
    R"(\b SSN:\b0   )"};

bool inCanada() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr && locale->getCountryMode() == kCountryCanada;
}

// The spouse section, when the contact has spouse information.
void writeSpouseInformation(RtfSummaryText& out, DatabaseService& db, std::int32_t handle,
                            long contactID, long employeeID, const SpouseLabels& labels) {
  if (!hasSpouseInformation(db, handle)) return;
  out.sectionBreak();
  out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Spouse Information\b0  \par)");
  writeLines(out, db, handle, labels.contact);
  out.sectionBreak();
  out.block(kAddressTitle,
            createPersonalSpouseContactAddress(contactID, false, employeeID, true, false, false));
  out.sectionBreak();
  out.line(labels.gender, db.getField(handle, "SpouseGender"));
  out.dateLine(labels.birthday, db.getField(handle, "SpouseBirthday"), kLongDate);
  out.line(inCanada() ? labels.sin : labels.ssn, db.getField(handle, "SpouseSIN"));
}

std::string contactName(long contactID) {
  ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
  return dropDown != nullptr ? dropDown->getContactName(contactID) : std::string();
}

std::string notesStatement(long id) {
  return "SELECT ContactsNotes.* FROM ContactsNotes WHERE ContactNum=" + std::to_string(id) + ";";
}

// The rows of a statement as a list of names: a heading and one name a line for several rows,
// one labelled line for a single row.
template <class NameOf>
void writeNameList(RtfSummaryText& out, DatabaseService& db, const std::string& sql,
                   std::string_view manyHeading, std::string_view oneLabel, NameOf nameOf,
                   bool breakFirst) {
  RecordsetScope rows(db, sql, kLockReadOnly);
  long count = db.recordCount(rows);
  if (count <= 0) return;
  if (breakFirst) out.sectionBreak();
  db.hasRecord(rows);
  if (count == 1) {
    out.line(oneLabel, nameOf(rows));
    return;
  }
  out.heading(manyHeading);
  for (; !db.isEOF(rows); db.moveNext(rows)) out.line("", nameOf(rows));
}

void writeFamily(RtfSummaryText& out, DatabaseService& db, long id) {
  writeNameList(
      out, db,
      "SELECT ContactLinks.ContactIDNum, ContactLinks.ContactNum FROM ContactLinks WHERE "
      "ContactLinks.ContactNum = " +
          std::to_string(id) + ";",
      R"(\b\pard\fi0\li0\ri0 Family Members\b0\par)", R"(\b\pard\fi0\li0\ri0 Family Member: \b0 )",
      [&](std::int32_t h) {
        return contactName(static_cast<long>(db.getField(h, "ContactIDNum").toLong()));
      },
      true);
}

void writeAssociatedCompanies(RtfSummaryText& out, DatabaseService& db, long id) {
  writeNameList(
      out, db,
      "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, Companies.CompanyName "
      "FROM ContactLinks INNER JOIN Companies ON ContactLinks.CompanyNum = Companies.CompanyID "
      "WHERE ContactLinks.ContactIDNum=" +
          std::to_string(id) + " AND Not ContactLinks.CompanyNum Is Null;",
      R"(\b\pard\fi0\li0\ri0 Other Associated Companies: \b0\par)",
      R"(\b\pard\fi0\li0\ri0 Associated Company: \b0 )",
      [&](std::int32_t h) { return fieldText(db, h, "CompanyName"); }, false);
}

void writeCategories(RtfSummaryText& out, DatabaseService& db, long id) {
  writeNameList(
      out, db,
      "SELECT Categories.CategoryName, ContactLinks.ContactIDNum "
      "FROM Categories INNER JOIN ContactLinks ON Categories.CategoryID = ContactLinks.CategoryNum "
      "WHERE ContactLinks.ContactIDNum=" +
          std::to_string(id) + ";",
      R"(\b\pard\fi0\li0\ri0 Other Associated Categories: \b0\par)",
      R"(\b\pard\fi0\li0\ri0 Associated Category: \b0 )",
      [&](std::int32_t h) { return fieldText(db, h, "CategoryName"); }, false);
}

// The alternate address as a block, titled with its name when it has one.
void writeAlternateAddress(RtfSummaryText& out, DatabaseService& db, std::int32_t h) {
  if (anyNotBlank(db, h, {"AltAddress", "AltCity", "AltProvince", "AltPostalCode", "AltCountry"})) {
    AddressFields fields;
    fields.Street = fieldText(db, h, "AltAddress");
    fields.City = fieldText(db, h, "AltCity");
    fields.Province = fieldText(db, h, "AltProvince");
    fields.PostalCode = fieldText(db, h, "AltPostalCode");
    fields.Country = fieldText(db, h, "AltCountry");
    std::string address = createAddress(fields, false, false);
    if (!GeneralUtilities::isBlank(address)) {
      std::string name = fieldText(db, h, "AltAddressName");
      out.block(GeneralUtilities::isBlank(name)
                    ? std::string(kAddressTitle)
                    : R"(\b\pard\fi0\li0\ri0 Address ()" + name + R"():\b0\par)",
                address);
    }
  }
  out.sectionBreak();
}

// Custom1 to Custom5 under the labels ContactLabel1 to ContactLabel5 of CustomAddressFields.
void writeContactCustomFields(RtfSummaryText& out, DatabaseService& db, std::int32_t h,
                              std::int32_t labels) {
  bool haveLabels = db.hasRecord(labels);
  for (int n = 1; n <= 5; ++n) {
    std::string number = std::to_string(n);
    std::string label = haveLabels ? fieldText(db, labels, "ContactLabel" + number) : std::string();
    out.line(R"(\b )" + label + R"(\b0  )", db.getField(h, "Custom" + number));
  }
}

// The Notes column: the employee row's own, otherwise the contact's ContactsNotes row.
std::string notesOf(DatabaseService& db, const PersonSource& source, std::int32_t notes) {
  if (source.isEmployee) return fieldText(db, *source.record, "Notes");
  return db.hasRecord(notes) ? fieldText(db, notes, "Notes") : std::string();
}

// Stores a contact summary: on the employee row, or on the ContactsNotes row (added when
// missing).
void storeContactSummary(DatabaseService& db, const PersonSource& source, std::int32_t notes,
                         std::string_view column, const std::string& text) {
  if (source.isEmployee)
    db.setField(*source.record, column, text);
  else
    storeOnNotesRow(db, notes, "ContactNum", source.id, column, text);
}

}  // namespace

std::string saveContactPersonalRTF(long contactID, long employeeID) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveContactPersonalRTF", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    PersonSource source = openPersonSource(*db, contactID, employeeID, kLockOptimistic);
    if (!source.record) return;
    RecordsetScope notes(*db, notesStatement(source.id), kLockOptimistic);
    if (!db->hasRecord(*source.record)) return;
    std::int32_t h = *source.record;
    auto f = [&](std::string_view field) { return db->getField(h, field); };

    RtfSummaryText out;
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0\tab )", f("HomePhone_Main"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Cell Phone:\b0  \tab )", f("HomePhone_Cell"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Alternate Phone:\b0   )", f("PersonalAltPhoneNumber"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Fax:\b0  \tab\tab )", f("HomePhone_Fax"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Pager:\b0  \tab\tab )", f("HomePhone_Pager"));
    out.line(R"(\b\pard\fi0\li0\ri0 Email:\b0  \tab\tab )", f("PersonalEmail"));
    out.line(R"(\b Web Site:\b0  \tab )", f("PersonalWebSite"));
    out.line(R"(\b FaceBook:\b0        )", f("PersonalFaceBookURL"));
    out.line(R"(\b Twitter:\b0        )", f("PersonalTwitterAccount"));
    out.sectionBreak();

    out.block(kAddressTitle,
              createPersonalContactAddress(contactID, false, employeeID, true, false, false));
    out.sectionBreak();

    out.line(R"(\b Gender:\b0  \tab )", f("Gender"));
    out.line(R"(\b Language:\b0  )", f("SpokenLanguage"));
    out.dateLine(R"(\b Birthday:\b0  \tab )", f("Birthday"), kLongDate);
    out.dateLine(R"(\b Anniversary:\b0  \tab )", f("Anniversary"), kLongDate);
    out.line(R"(\b Marital Status:\b0  )", f("MaritialStatus"));
    out.block(R"(\b Children:\b0\par)", f("Children").toString());

    writeFamily(out, *db, source.id);

    writeSpouseInformation(out, *db, h, contactID, employeeID, kPersonalSpouseLabels);

    std::string noteText = notesOf(*db, source, notes);
    if (!GeneralUtilities::isBlank(noteText)) {
      out.block(R"(\b Notes:\b0\par)", noteText);
      out.sectionBreak();
    }

    writeAlternateAddress(out, *db, h);

    result = out.finish();
    storeContactSummary(*db, source, notes, "PersonalNotes", result);
  });
  return result;
}

std::string saveContactBusinessRTF(long contactID, long employeeID, long companyID,
                                   bool doNotSpread) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveContactBusinessRTF", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    PersonSource source = openPersonSource(*db, contactID, employeeID, kLockOptimistic);
    if (!source.record) return;
    RecordsetScope notes(*db, notesStatement(source.id), kLockOptimistic);
    RecordsetScope labels(*db, "SELECT CustomAddressFields.* FROM CustomAddressFields;",
                          kLockReadOnly);
    if (!db->hasRecord(*source.record)) return;
    std::int32_t h = *source.record;
    auto f = [&](std::string_view field) { return db->getField(h, field); };

    RtfSummaryText out;
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Name:\b0  )", f("DisplayName"));
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Client ID:\b0  )", f("ClientID"));
    writeLines(out, *db, h, kBusinessCompanyLines);
    bool isDefault = validCompanyID(companyID) && contactIsDefaultOfCompany(companyID, contactID);
    out.line(R"(\b Default Contact:\b0  )", isDefault ? "Yes" : "No");
    out.sectionBreak();

    writeLines(out, *db, h, kBusinessPhoneLines);
    out.sectionBreak();

    out.block(kAddressTitle, createBusinessContactAddress(contactID, false, employeeID, companyID,
                                                          true, false, false, false));
    out.line(inCanada() ? R"(\b SIN:\b0  \tab\tab    )" : R"(\b SSN:\b0  \tab\tab    )",
             f("SocialInsuranceNumber"));
    out.line(R"(\b Employee Type:\b0  )", f("EmployeeType"));
    writeAlternateAddress(out, *db, h);
    writeAssociatedCompanies(out, *db, source.id);
    writeContactCustomFields(out, *db, h, labels);

    std::string noteText = notesOf(*db, source, notes);
    if (!GeneralUtilities::isBlank(noteText)) {
      out.block(R"(\b Notes:\b0\par)", noteText);
      out.sectionBreak();
    }
    writeCategories(out, *db, source.id);

    result = out.finish();
    storeContactSummary(*db, source, notes, "BusinessNotes", result);
    source.record->close();
    notes.close();
    labels.close();
    if (!doNotSpread) saveContactBusinessRTFForAllCompanies(contactID, companyID, result);
  });
  return result;
}

void saveContactBusinessRTFForAllCompanies(long contactID, long companyID,
                                           const std::string& rtfText) {
  procedure("Ledgerfolio.exe-modFormatAddresses-saveContactBusinessRTFForAllCompanies", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope links(*db,
                         "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, "
                         "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                         "ContactLinks.ContactIDNum = " +
                             std::to_string(contactID) + ";",
                         kLockReadOnly);
    for (bool more = db->hasRecord(links); more && !db->isEOF(links); db->moveNext(links)) {
      resumeNext([&] {
        long company = static_cast<long>(db->getField(links, "CompanyNum").toLong());
        if (!validCompanyID(company) || !db->getField(links, "DefaultContact").toBool()) return;
        // Only the company's own notes row is read: the whole table would cost every call
        // the size of the practice.
        RecordsetScope companyNotes(*db,
                                    "SELECT CompaniesNotes.CompanyNum, CompaniesNotes.ContactNotes "
                                    "FROM CompaniesNotes WHERE CompaniesNotes.CompanyNum = " +
                                        std::to_string(company) + ";",
                                    kLockOptimistic);
        if (!db->hasRecord(companyNotes)) return;
        // The other companies get the summary built for them; the recursion spreads no further.
        std::string text =
            company == companyID ? rtfText : saveContactBusinessRTF(contactID, -1, company, true);
        db->setField(companyNotes, "ContactNotes", text);
      });
    }
  });
}

std::string saveNoDefaultComment() {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveNoDefaultComment", [&] {
    result = std::string(RtfSummaryText::kFontTable) + std::string(RtfSummaryText::kViewKind) +
             R"(\b No Default Contact Selected.\b0  )" + "\\par" + "\r\n" + "}";
  });
  return result;
}

namespace {

// The Profile section of the tax summary: the year's switches choose the items.
void writeProfileInformation(RtfSummaryText& out, DatabaseService& db, long contactID,
                             long taxYear) {
  std::string year = std::to_string(taxYear);
  RecordsetScope settings(db,
                          "SELECT PersonalTaxDataImportInfo.* FROM PersonalTaxDataImportInfo "
                          "WHERE TaxYear = " +
                              year + ";",
                          kLockOptimistic);
  if (!db.hasRecord(settings)) {
    db.addNewRecord(settings);
    db.setNewField(settings, "TaxYear", year);
    db.updateRecord(settings);
    db.hasRecord(settings);
  }
  RecordsetScope profile(db,
                         "SELECT PersonalTaxProfileInfo.* FROM PersonalTaxProfileInfo WHERE "
                         "PersonalTaxProfileInfo.ContactNum=" +
                             std::to_string(contactID) + " AND TaxYear = " + year + ";",
                         kLockOptimistic);
  if (!db.hasRecord(profile)) {
    db.addNewRecord(profile);
    db.setNewField(profile, "TaxYear", year);
    db.setNewField(profile, "ContactNum", std::to_string(contactID));
    db.updateRecord(profile);
    db.hasRecord(profile);
  }
  auto on = [&](std::string_view sw) { return db.getField(settings, sw).toBool(); };
  auto p = [&](std::string_view field) { return db.getField(profile, field); };
  auto money = [&](std::string_view field) {
    Variant v = p(field);
    return GeneralUtilities::isBlank(v) ? std::string() : formatNumber(v.toDouble(), kMoney);
  };
  auto boolean = [&](std::string_view field) {
    return std::string(p(field).toBool() ? "True" : "False");
  };

  out.sectionBreak();
  out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Profile Information\b0  \par)");
  if (!GeneralUtilities::isBlank(p("ProfileFileLocation"))) {
    if (GeneralUtilities::isBlank(p("DateLastSynched")))
      out.append(R"(\b Last Date Synchronized with Profile T1:\b0   Never\par)"
                 "\r\n");
    else
      out.dateLine(R"(\b Last Date Synchronized with Profile T1:\b0   )", p("DateLastSynched"),
                   kShortDate);
  }
  if (on("T1InfoProfileClientStatus")) {
    static constexpr const char* kStatus[] = {"Carried Forward",
                                              "Work In Progress",
                                              "Waiting For Client",
                                              "In Preparer Review",
                                              "In Partner Review",
                                              "Ready To Print",
                                              "Printed",
                                              "Completed",
                                              "Not Filing"};
    long status = static_cast<long>(p("ProfileClientStatus").toLong());
    out.line(R"(\b Profile Client Status:\b0   )",
             status >= 1 && status <= 9 ? kStatus[status - 1] : "Unknown");
  }
  if (on("T1InfoeFileStatus")) {
    static constexpr const char* kEFile[] = {"Eligible",    "Not Eligible", "Ready to transmit",
                                             "Transmitted", "Accepted",     "Not Accepted",
                                             "Paper filed"};
    long status = static_cast<long>(p("EFILEStatus").toLong());
    out.line(R"(\b Profile eFile Status:\b0   )",
             status >= 1 && status <= 7 ? kEFile[status - 1] : "Unknown");
  }
  if (on("T1InfoT5007")) out.line(R"(\b Profile T5007:\b0          )", boolean("T5007"));
  if (on("T1InfoRevenue")) out.line(R"(\b Profile Total Revenue:\b0   )", money("Revenue"));
  if (on("T1InfoEstimatedRefund"))
    out.line(R"(\b Profile Estimated Refund:\b0   )", money("EstimatedRefund"));
  if (on("T1InfoActualRefund"))
    out.line(R"(\b Profile Actual Refund:\b0   )", money("ActualRefund"));
  if (on("T1InfoPaidtoClient")) out.line(R"(\b Paid to Client:\b0   )", money("PaidtoClient"));
  if (on("T1InfoGSTRefund")) out.line(R"(\b Profile GST Refund:\b0   )", money("GST"));
  if (on("T1InfoDiscounted")) out.line(R"(\b Discounted:\b0          )", boolean("Discounted"));
  if (on("T1InfoDeceasedReturn"))
    out.line(R"(\b Deceased Return:\b0          )", boolean("DeceasedReturn"));
  if (on("T1InfoDateReturnCreated"))
    out.dateLine(R"(\b Date Return Created:\b0   )", p("DateCreated"), kShortDate);
  if (on("T1InfoDateReturnSigned"))
    out.dateLine(R"(\b Date Return Signed:\b0   )", p("DateSigned"), kShortDate);
  if (on("T1InfoPreparerName")) out.line(R"(\b Profile Preparer Name:\b0   )", p("PreparerName"));
  if (on("T1InfoPartnerName")) out.line(R"(\b Profile Partner Name:\b0   )", p("PartnerName"));
}

}  // namespace

std::string saveContactPersonalTaxRTF(long contactID, long taxYear, long employeeID) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveContactPersonalTaxRTF", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    PersonSource source = openPersonSource(*db, contactID, employeeID, kLockOptimistic);
    if (!source.record) return;
    if (!db->hasRecord(*source.record)) return;
    std::int32_t h = *source.record;
    auto f = [&](std::string_view field) { return db->getField(h, field); };
    bool canada = inCanada();

    // 1. Who the client is.
    RtfSummaryText out;
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Name:\b0  )", f("DisplayName"));
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Client ID:\b0  )", f("ClientID"));
    out.line(canada ? R"(\b SIN:\b0   )" : R"(\b SSN:\b0   )", f("SocialInsuranceNumber"));
    out.line(R"(\b\pard\fi0\li0\ri0 Supervising Partner:\b0       )", f("PartnerName"));
    out.line(R"(\b Managing Accountant:\b0    )", f("AccountantName"));

    // 2. Personal information.
    std::string homeAddress =
        createPersonalContactAddress(contactID, false, employeeID, true, false, false);
    bool anyPersonal = anyNotBlank(*db, h,
                                   {"HomePhone_Main",
                                    "HomePhone_Cell",
                                    "PersonalAltPhoneNumber",
                                    "HomePhone_Fax",
                                    "HomePhone_Pager",
                                    "PersonalEmail",
                                    "PersonalWebSite",
                                    "PersonalFaceBookURL",
                                    "PersonalTwitterAccount",
                                    "HomeAddress",
                                    "HomeCity",
                                    "HomeProvince",
                                    "HomePostalCode",
                                    "HomeCountry",
                                    "Gender",
                                    "SpokenLanguage",
                                    "Birthday",
                                    "Anniversary",
                                    "MaritialStatus",
                                    "Children"});
    if (anyPersonal) {
      out.sectionBreak();
      out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Personal Information\b0  \par)");
      out.line(R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0   )", f("HomePhone_Main"));
      out.line(R"(\b\pard\fi-1100\li1100\ri0 Cell Phone:\b0   )", f("HomePhone_Cell"));
      out.line(R"(\b\pard\fi-1100\li1100\ri0 Alternate Phone:\b0   )", f("PersonalAltPhoneNumber"));
      out.line(R"(\b\pard\fi-1100\li1100\ri0 Fax:\b0   )", f("HomePhone_Fax"));
      out.line(R"(\b\pard\fi-1100\li1100\ri0 Pager:\b0   )", f("HomePhone_Pager"));
      out.line(R"(\b\pard\fi0\li0\ri0 Email:\b0   )", f("PersonalEmail"));
      out.line(R"(\b Web Site:\b0   )", f("PersonalWebSite"));
      out.line(R"(\b FaceBook:\b0        )", f("PersonalFaceBookURL"));
      out.line(R"(\b Twitter:\b0        )", f("PersonalTwitterAccount"));
      out.sectionBreak();
      out.block(kAddressTitle, homeAddress);
      out.sectionBreak();
      out.line(R"(\b Gender:\b0   )", f("Gender"));
      out.line(R"(\b Language:\b0   )", f("SpokenLanguage"));
      out.dateLine(R"(\b Birthday:\b0   )", f("Birthday"), kLongDate);
      out.dateLine(R"(\b Anniversary:\b0   )", f("Anniversary"), kLongDate);
      out.line(R"(\b Marital Status:\b0   )", f("MaritialStatus"));
      out.block(R"(\b Children:\b0\par)", f("Children").toString());
    }

    // 3. Spouse information.
    writeSpouseInformation(out, *db, h, contactID, employeeID, kPersonalTaxSpouseLabels);

    // 4. Family members.
    writeFamily(out, *db, source.id);

    // 5. Profile information, when the year's settings ask for it.
    if (getShowProfileT1InfoInSummary(taxYear))
      writeProfileInformation(out, *db, source.id, taxYear);

    // 6. Business information.
    std::string businessAddress =
        createBusinessContactAddress(contactID, false, employeeID, -1, true, false, false, false);
    if (!GeneralUtilities::isBlank(businessAddress) ||
        anyNotBlank(*db, h,
                    {"BusinessName", "BusinessJobTitle", "BusinessDepartment", "BusinessOffice",
                     "BusinessPhone_Main", "BusinessAltPhoneNumber", "BusinessPhone_Cell",
                     "BusinessPhone_Fax", "BusinessPhone_Pager", "BusinessEmail", "BusinessWebSite",
                     "BusinessFaceBookURL", "BusinessTwitterAccount", "EmployeeType"})) {
      out.sectionBreak();
      out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Business Information\b0  \par)");
      writeLines(out, *db, h, kBusinessCompanyLines);
      out.sectionBreak();
      writeLines(out, *db, h, kBusinessPhoneLines);
      out.sectionBreak();
      out.block(kAddressTitle, businessAddress);
      out.line(R"(\b Employee Type:\b0   )", f("EmployeeType"));
    }

    // 7. The alternate address.
    out.sectionBreak();
    writeAlternateAddress(out, *db, h);

    // 8. Custom information.
    if (anyNotBlank(*db, h, {"Custom1", "Custom2", "Custom3", "Custom4", "Custom5"})) {
      RecordsetScope labels(
          *db,
          "SELECT CustomAddressFields.ContactLabel1, CustomAddressFields.ContactLabel2, "
          "CustomAddressFields.ContactLabel3, CustomAddressFields.ContactLabel4, "
          "CustomAddressFields.ContactLabel5 FROM CustomAddressFields;",
          kLockReadOnly);
      out.sectionBreak();
      out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Custom Information\b0  \par)");
      writeContactCustomFields(out, *db, h, labels);
    }

    // 9. Notes.
    {
      RecordsetScope notes(*db,
                           "SELECT ContactsNotes.ContactNum, ContactsNotes.Notes FROM "
                           "ContactsNotes WHERE ContactNum=" +
                               std::to_string(source.id) + ";",
                           kLockReadOnly);
      std::string noteText = db->hasRecord(notes) ? fieldText(*db, notes, "Notes") : "";
      if (!GeneralUtilities::isBlank(noteText)) {
        out.sectionBreak();
        out.sectionHeader(R"(\b\pard\fi-1450\li1450\ri0 Notes\b0  \par)");
        out.block("", noteText);
      }
    }

    // 10. Categories.
    out.sectionBreak();
    writeCategories(out, *db, source.id);

    // 11. Store.
    result = out.finish();
    if (source.isEmployee)
      db->setField(h, "PersonalTaxNotes", result);
    else
      putPersonalTaxClientSummaryNotes(source.id, taxYear, result);
  });
  return result;
}

}  // namespace lf
