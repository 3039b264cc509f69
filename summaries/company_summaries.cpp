// The company summaries of modFormatAddresses: the business page of a company or of the firm,
// and the company's contact panel.
#include "summaries/company_summaries.hpp"

#include <optional>
#include <string_view>

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "records/enumerations.hpp"
#include "records/lookups.hpp"
#include "summaries/address_blocks.hpp"
#include "summaries/cls_client_addr_bk_cat_txt.hpp"
#include "summaries/contact_summaries.hpp"
#include "summaries/rtf_summary_text.hpp"
#include "summaries/summary_records.hpp"

namespace lf {
namespace {

bool blank(const Variant& value) {
  return GeneralUtilities::isBlank(value);
}

// The alternate address as a block, titled with its name when it has one.
void writeAlternateAddress(RtfSummaryText& out, DatabaseService& db, std::int32_t h) {
  if (!anyNotBlank(db, h, {"AltAddress", "AltCity", "AltProvince", "AltPostalCode", "AltCountry"}))
    return;
  AddressFields fields;
  fields.Street = fieldText(db, h, "AltAddress");
  fields.City = fieldText(db, h, "AltCity");
  fields.Province = fieldText(db, h, "AltProvince");
  fields.PostalCode = fieldText(db, h, "AltPostalCode");
  fields.Country = fieldText(db, h, "AltCountry");
  std::string name = fieldText(db, h, "AltAddressName");
  out.block(GeneralUtilities::isBlank(name)
                ? std::string(R"(\b\pard\fi0\li0\ri0 Alternate Address:\b0\par)")
                : R"(\b\pard\fi0\li0\ri0 Address ()" + name + R"():\b0\par)",
            createAddress(fields, false, false));
}

void writeParentAndSubsidiaries(RtfSummaryText& out, DatabaseService& db, std::int32_t h, long id) {
  long parent = static_cast<long>(db.getField(h, "CompanyNum").toLong());
  if (validCompanyID(parent)) {
    RecordsetScope parentRow(db,
                             "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies "
                             "WHERE Companies.CompanyID=" +
                                 std::to_string(parent) + ";",
                             kLockReadOnly);
    if (db.hasRecord(parentRow))
      out.line(R"(\b Associated Parent Company:\b0  )", db.getField(parentRow, "CompanyName"));
  }
  RecordsetScope subsidiaries(db,
                              "SELECT Companies.CompanyName, Companies.CompanyNum FROM Companies "
                              "WHERE CompanyNum = " +
                                  std::to_string(id) + ";",
                              kLockReadOnly);
  long count = db.recordCount(subsidiaries);
  if (count <= 0) return;
  db.hasRecord(subsidiaries);
  if (count == 1) {
    out.line(R"(\b Associated Subsidiary Company: \b0 )", db.getField(subsidiaries, "CompanyName"));
    return;
  }
  out.heading(R"(\b Associated Subsidiary Companies\b0\par)");
  for (; !db.isEOF(subsidiaries); db.moveNext(subsidiaries))
    out.line("", db.getField(subsidiaries, "CompanyName"));
}

// The client's own custom fields, ClientCustom1 to ClientCustom5 of OtherInfo under the
// practice's names; a name left at its default ("Custom 1:") hides its row.
void writeClientCustomFields(RtfSummaryText& out, DatabaseService& db, long companyID) {
  long clientDataID = getClientDataIDFromCompanyID(companyID);
  if (clientDataID <= 0) return;
  RecordsetScope other(
      db,
      "SELECT OtherInfo.* FROM OtherInfo WHERE OtherInfoID=" + std::to_string(clientDataID) + ";",
      kLockReadOnly);
  RecordsetScope names(db,
                       "SELECT CustomFields.CustomName1, CustomFields.CustomName2, "
                       "CustomFields.CustomName3, CustomFields.CustomName4, "
                       "CustomFields.CustomName5 FROM CustomFields;",
                       kLockReadOnly);
  if (!db.hasRecord(other)) return;
  bool haveNames = db.hasRecord(names);
  for (int n = 1; n <= 5; ++n) {
    std::string number = std::to_string(n);
    std::string name = haveNames ? fieldText(db, names, "CustomName" + number) : std::string();
    if (name == "Custom " + number + ":") continue;
    out.line(R"(\b )" + name + R"(\b0  )", db.getField(other, "ClientCustom" + number));
  }
}

}  // namespace

std::string saveCompanyRTF(long companyID, long firmID) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveCompanyRTF", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    bool isFirm = false;
    long id = -1;
    std::optional<RecordsetScope> record;
    if (validFirmID(firmID)) {
      isFirm = true;
      id = firmID;
      record.emplace(*db, firmStatement(firmID), kLockOptimistic);
    } else if (validCompanyID(companyID)) {
      id = companyID;
      record.emplace(*db, companyStatement(companyID), kLockOptimistic);
    } else {
      return;
    }
    RecordsetScope labels(*db, "SELECT CustomAddressFields.* FROM CustomAddressFields;",
                          kLockReadOnly);
    RecordsetScope notes(*db,
                         "SELECT CompaniesNotes.* FROM CompaniesNotes WHERE "
                         "CompaniesNotes.CompanyNum=" +
                             std::to_string(id) + ";",
                         kLockOptimistic);
    if (!db->hasRecord(*record)) return;
    std::int32_t h = *record;
    auto f = [&](std::string_view field) { return db->getField(h, field); };

    RtfSummaryText out;
    out.line(R"(\b\pard\fi-1375\li1375\ri0 Company Name:\b0  )", f("CompanyName"));
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Corporate Name:\b0  )", f("CorporateName"));
    out.line(R"(\b\pard\fi-1450\li1450\ri0 Client ID:\b0  )", f("ClientID"));
    bool includeContactName = false;
    out.block(R"(\b\pard\fi0\li0\ri0 Address:\b0\par)",
              createCompanyAddress(isFirm ? -1 : companyID, includeContactName, false,
                                   isFirm ? firmID : -1, true, false, false));
    writeAlternateAddress(out, *db, h);
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Main Phone:\b0   )", f("OfficeNumber"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Alternate Phone:\b0   )", f("AltPhoneNumber"));
    out.line(R"(\b\pard\fi-1100\li1100\ri0 Fax:\b0 \tab         )", f("FaxNumber"));
    out.line(R"(\b\pard\fi0\li0\ri0 Email:\b0  \tab         )", f("Email"));
    out.line(R"(\b Web Site:\b0        )", f("WebSite"));
    out.line(R"(\b FaceBook:\b0        )", f("FaceBookURL"));
    out.line(R"(\b Twitter:\b0        )", f("TwitterAccount"));
    if (!blank(f("CompanyType")))
      out.line(R"(\b Company Type:\b0  )", getCompanyTypeStringFromCompanyTypeNum(
                                               static_cast<long>(f("CompanyType").toLong())));
    out.line(R"(\b\pard\fi-1250\li1250\ri0 Industry Type:\b0  )", f("IndustryType"));
    out.line(R"(\b\pard\fi0\li0\ri0 Supervising Partner:\b0       )", f("PartnerName"));
    out.line(R"(\b Managing Accountant:\b0    )", f("AccountantName"));
    writeParentAndSubsidiaries(out, *db, h, id);

    out.block(R"(\b Accountant Information:\b0\par)", f("AccountantInfo").toString());
    out.block(R"(\b Lawyer Information:\b0\par)", f("LawyerInfo").toString());
    out.block(R"(\b Banker Information:\b0\par)", f("BankerInfo").toString());
    out.block(R"(\b Insurance Information:\b0\par)", f("InsuranceInfo").toString());
    out.block(R"(\b Financial Lenders Information:\b0\par)", f("FinancialLendersInfo").toString());
    out.block(R"(\b CRA Information:\b0\par)", f("CRAInfo").toString());

    bool haveLabels = db->hasRecord(labels);
    for (int n = 1; n <= 5; ++n) {
      std::string number = std::to_string(n);
      std::string label =
          haveLabels ? fieldText(*db, labels, "CompanyLabel" + number) : std::string();
      out.line(R"(\b )" + label + R"(\b0  )", f("Custom" + number));
    }
    if (!isFirm) writeClientCustomFields(out, *db, companyID);

    std::string noteText = isFirm ? fieldText(*db, h, "Notes")
                                  : (db->hasRecord(notes) ? fieldText(*db, notes, "Notes") : "");
    out.block(R"(\b Notes:\b0\par)", noteText);

    clsClientAddrBkCatTxt category;
    category.setClientType(2);
    category.setCompanyIDNum(companyID);
    category.setShowMainAddressBookCategory(false);
    category.generateCategoryText();
    out.block(R"(\b\pard\fi0\li0\ri0 Address Book Category Listing:\b0\par)",
              category.CategoryText());

    result = out.finish();
    if (isFirm)
      db->setField(h, "BusinessNotes", result);
    else
      storeOnNotesRow(*db, notes, "CompanyNum", companyID, "BusinessNotes", result);
  });
  return result;
}

std::string saveCompanyContactRTF(long companyID, long contactID) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-saveCompanyContactRTF", [&] {
    if (!validCompanyID(companyID)) return;
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope notes(*db,
                         "SELECT CompaniesNotes.CompanyNum, CompaniesNotes.ContactNotes FROM "
                         "CompaniesNotes WHERE CompanyNum=" +
                             std::to_string(companyID) + ";",
                         kLockOptimistic);
    if (!db->hasRecord(notes)) return;
    result = contactID >= 0 ? saveContactBusinessRTF(contactID, -1, companyID, false)
                            : saveNoDefaultComment();
    db->hasRecord(notes);
    db->setField(notes, "ContactNotes", result);
  });
  return result;
}

}  // namespace lf
