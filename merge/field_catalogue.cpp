// The merge field catalogue: builds FieldList (and the pick lists when they are set) for the
// object's ListType and MergeFieldListUse, in the locale's country and province.
//
// Row order is part of the contract: keys follow it, the first of two rows with the same
// name wins a look-up, and the text imports show the rows in this order.
#include <array>
#include <string>

#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/locale_service.hpp"
#include "merge/catalogue_words.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf {
namespace {

constexpr std::string_view kContactInfo = "ContactInfo";
constexpr std::string_view kContactNotes = "ContactNotes";
constexpr std::string_view kCompanyInfo = "CompanyInfo";
constexpr std::string_view kCompanyNotes = "CompanyNotes";
constexpr std::string_view kClientInfo = "ClientInfo";
constexpr std::string_view kSoftwareInfo = "SoftwareInfo";
constexpr std::string_view kFirmInfo = "FirmInfo";
constexpr std::string_view kAppointInfo = "AppointInfo";
constexpr std::string_view kTaskInfo = "TaskInfo";
constexpr std::string_view kDocketInfo = "DocketInfo";

// The families of custom fields whose five names the firm sets.
enum CustomFamily {
  kCustomClient,
  kCustomContact,
  kCustomCompany,
  kCustomFirm,
  kCustomAppointment,
  kCustomTaskSchedule,
  kCustomTaskCalendar,
  kCustomTimeEntry,
};

struct CustomFamilyInfo {
  const char* sql;
  const char* labelColumn;    // followed by 1..5
  const char* databaseField;  // followed by 1..5
  const char* fixedName;      // followed by 1..5
  const char* sample;         // followed by 1..5
  std::string_view tag;
};

constexpr const char* kCompanyLabelsSql =
    "SELECT CustomAddressFields.CompanyLabel1, CustomAddressFields.CompanyLabel2, "
    "CustomAddressFields.CompanyLabel3, CustomAddressFields.CompanyLabel4, "
    "CustomAddressFields.CompanyLabel5 FROM CustomAddressFields;";

const CustomFamilyInfo kCustomFamilies[] = {
    {"SELECT CustomFields.CustomName1, CustomFields.CustomName2, CustomFields.CustomName3, "
     "CustomFields.CustomName4, CustomFields.CustomName5 FROM CustomFields;",
     "CustomName", "ClientCustom", "Custom Field ", "Custom Info ", kClientInfo},
    {"SELECT CustomAddressFields.ContactLabel1, CustomAddressFields.ContactLabel2, "
     "CustomAddressFields.ContactLabel3, CustomAddressFields.ContactLabel4, "
     "CustomAddressFields.ContactLabel5 FROM CustomAddressFields;",
     "ContactLabel", "ContactCustom", "Contact Custom Field ", "Contact Custom Info ",
     kContactInfo},
    {kCompanyLabelsSql, "CompanyLabel", "CompanyCustom", "Company Custom Field ",
     "Company Custom Info ", kCompanyInfo},
    {kCompanyLabelsSql, "CompanyLabel", "FirmCustom", "Your Company Custom Field ",
     "Company Custom Info ", kFirmInfo},
    {"SELECT CustomFields.ApptCustomName1, CustomFields.ApptCustomName2, "
     "CustomFields.ApptCustomName3, CustomFields.ApptCustomName4, CustomFields.ApptCustomName5 "
     "FROM CustomFields;",
     "ApptCustomName", "ApptCustom", "Custom Appt Field ", "Custom Appt Info ", kAppointInfo},
    {"SELECT CustomFields.RemittanceLabel1, CustomFields.RemittanceLabel2, "
     "CustomFields.RemittanceLabel3, CustomFields.RemittanceLabel4, "
     "CustomFields.RemittanceLabel5 FROM CustomFields;",
     "RemittanceLabel", "ScheduleCustom", "Custom Task Field ", "Custom Task Info ", kTaskInfo},
    {"SELECT CustomFields.TaskCustomName1, CustomFields.TaskCustomName2, "
     "CustomFields.TaskCustomName3, CustomFields.TaskCustomName4, CustomFields.TaskCustomName5 "
     "FROM CustomFields;",
     "TaskCustomName", "TaskCustom", "Custom Task Calendar Field ", "Custom Task Info ", kTaskInfo},
    {"SELECT CustomFields.DocketCustomName1, CustomFields.DocketCustomName2, "
     "CustomFields.DocketCustomName3, CustomFields.DocketCustomName4, "
     "CustomFields.DocketCustomName5 FROM CustomFields;",
     "DocketCustomName", "DocketCustom", "Custom Time Entry Field ", "Custom Time Entry Info ",
     kDocketInfo},
};

constexpr std::int16_t kDate = kFieldDate;
constexpr std::int16_t kTime = kFieldTime;
constexpr std::int16_t kMoney = kFieldMoney;
constexpr std::int16_t kYesNo = kFieldYesNo;
constexpr std::int16_t kDuration = kFieldDuration;
constexpr std::int16_t kText = kFieldText;

}  // namespace

void clsInsertFieldsInRTB::addListEntry(ListBoxControl* box, bool noListBox,
                                        std::string_view text) {
  if (noListBox || box == nullptr) return;
  box->AddItem(std::string(text));
  box->setItemData(box->NewIndex(), -1);
}

void clsInsertFieldsInRTB::addHeading(bool noListBox, std::string_view text) {
  if (ShowListCategoryHeaders) addListEntry(ListBox, noListBox, text);
}

void clsInsertFieldsInRTB::addBlank(bool noListBox) {
  if (ShowListCategoryHeaders) addListEntry(ListBox, noListBox, "");
}

void clsInsertFieldsInRTB::addField(lf::FieldList& list, bool noListBox,
                                    std::string_view databaseField, std::string_view displayName,
                                    std::string_view tableTag, std::int16_t type,
                                    std::string_view sample, std::int16_t length,
                                    std::string_view listText) {
  ++itemCounter_;
  FieldItem item;
  item.key = itemCounter_;
  item.databaseField = databaseField;
  item.displayName = displayName;
  item.tableTag = tableTag;
  item.fieldType = type;
  item.sampleValue = sample;
  item.maxLength = length;
  list.add(std::move(item));
  ListBoxControl* box = tableTag == kFirmInfo ? ListBox2 : ListBox;
  if (!noListBox && box != nullptr) {
    box->AddItem(std::string(listText.empty() ? displayName : listText));
    box->setItemData(box->NewIndex(), itemCounter_);
  }
}

void clsInsertFieldsInRTB::createDefaultFieldListStructure(bool& noListBox, bool& clearListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createDefaultFieldListStructure", [&] {
    noListBox = ListBox == nullptr;
    fieldList_.clear();
    ++listBuild_;
    itemCounter_ = 0;
    if (!noListBox && clearListBox) ListBox->Clear();
    if (!noListBox && mergeFieldListUse_ == kUseColumnChooser)
      addListEntry(ListBox, noListBox, "Not Assigned");

    const int type = ListType;
    auto is = [type](std::initializer_list<int> kinds) {
      for (int k : kinds)
        if (k == type) return true;
      return false;
    };

    if (type == 5) {
      addHeading(noListBox, "[Appointment Info]");
      createAppointmentInfoFieldListStructure(fieldList_, noListBox);
    } else if (type == 8) {
      addHeading(noListBox, "[Task Info]");
      createTaskInfoFieldListStructure(fieldList_, noListBox);
    } else if (type == 6) {
      addHeading(noListBox, "[Time Entry Info]");
      createDocketInfoFieldListStructure(fieldList_, noListBox);
    }

    if (is({1, 2, 5, 6, 8})) {
      if (is({5, 8})) addBlank(noListBox);  // no blank after the time entry rows: intended
      addHeading(noListBox, "[Company Address Info]");
      createCompanyInfoFieldListStructure(fieldList_, noListBox);
    }

    if (is({1, 5, 6, 8})) {
      addBlank(noListBox);
      addHeading(noListBox, "[Default Contact Name]");
    } else if (is({2, 3})) {
      addBlank(noListBox);
      addHeading(noListBox, "[Contact Name]");
    }

    if (is({1, 2, 3, 5, 6, 8})) addContactNameRows(noListBox);

    if (is({1, 2, 5, 6, 8})) {
      addBlank(noListBox);
      addHeading(noListBox, "[Company Accounting Info]");
      addAccountingRows(noListBox);
      addCustomRows(fieldList_, noListBox, kCustomClient);
      addBlank(noListBox);
      addHeading(noListBox, "[Company Software Info]");
      addSoftwareRows(noListBox);
    }

    if (is({1, 2, 3, 5, 6, 8})) {
      addBlank(noListBox);
      addHeading(noListBox, "[More Contact Info]");
      addMoreContactRows(noListBox);
    }

    if (type == 3 && companyID >= 0) {
      addBlank(noListBox);
      addHeading(noListBox, "[Company Info]");
      createCompanyInfoFieldListStructure(fieldList_, noListBox);
    }

    if (!noListBox) {
      ListBox->Refresh();
      yieldToMessageQueue(2);
    }
    createAccountantFieldListStructure(noListBox, clearListBox);
  });
}

void clsInsertFieldsInRTB::addCustomRows(lf::FieldList& list, bool noListBox, int family) {
  const CustomFamilyInfo& info = kCustomFamilies[family];
  std::array<std::string, 5> names;
  for (int n = 1; n <= 5; ++n) names[n - 1] = info.fixedName + std::to_string(n);

  DatabaseService* db = moduleState().DatabaseReference;
  // A failed read resumes (on the error service's say) with the fixed names.
  if (db != nullptr && db->isOpen())
    resumeNext([&] {
      std::int32_t rs = db->openRecordset(info.sql, kCursorKeyset, kLockReadOnly);
      if (db->hasRecord(rs)) {
        for (int n = 1; n <= 5; ++n) {
          std::string label = db->getField(rs, info.labelColumn + std::to_string(n)).toString();
          if (!label.empty() && label.back() == ':') label.pop_back();
          if (label == "Custom " + std::to_string(n)) continue;  // the default label: fixed name
          names[n - 1] = family == kCustomFirm ? "Your " + label : label;
        }
      }
      db->closeRecordset(rs);
    });
  for (int n = 1; n <= 5; ++n)
    addField(list, noListBox, info.databaseField + std::to_string(n), names[n - 1], info.tag, kText,
             info.sample + std::to_string(n), 255);
}

void clsInsertFieldsInRTB::addContactNameRows(bool noListBox) {
  const bool chooser = mergeFieldListUse_ == kUseColumnChooser;
  auto add = [&](std::string_view field, std::string_view name, std::string_view sample,
                 std::int16_t length) {
    addField(fieldList_, noListBox, field, name, kContactInfo, kText, sample, length);
  };
  add("DisplayName", chooser ? "Contact Full Name" : "Contact Display Name", "Jane Smith", 255);
  if (!chooser) add("ContactAndSpouseName", "Contact & Spouse Name", "John & Jane Smith", 255);
  add("ClientID", "Client ID", "SMI-1001", 50);
  add("NamePrefix", "Contact Name Prefix", "Mrs.", 50);
  add("FirstName", "Contact First Name", "Jane", 100);
  add("MiddleName", "Contact Middle Name", "Anne", 100);
  add("LastName", "Contact Last Name", "Smith", 100);
  add("NameSuffix", "Contact Name Suffix", "Jr.", 50);
}

void clsInsertFieldsInRTB::addAccountingRows(bool noListBox) {
  const std::string todayText = formatDate(today(), "mmm d, yyyy");
  auto add = [&](std::string_view field, std::string_view name, std::int16_t type,
                 std::string_view sample, std::int16_t length, std::string_view listText = {}) {
    addField(fieldList_, noListBox, field, name, kClientInfo, type, sample, length, listText);
  };
  if (merge::localeCountryMode() != kCountryCanada) {
    // The list-box text has two blanks where the display name has one: intended.
    add("EIN", "Federal Employer Identification Number", kText, "12-3456789", 50,
        "Federal Employer Identification  Number");
    add("SellersPermitNum", "Sellers Permit Number", kText, "SR-123-456789", 50);
    add("USYearEndDate", "Year End Date", kDate, "12/31", -1);
    add("SoSFileNum", "Secretary of State File Number", kText, "C1234567", 50);
    add("USIncorporationDate", "Incorporation Date", kDate, todayText, -1);
    add("PropertyTaxNum", "Property Tax Number", kText, "PT-998877", 50);
    add("Form637RegNum", "Form 637 Registration Number", kText, "637-55123", 50);
    add("TCN", "Terminal Control Number", kText, "T-59-TX-1234", 50);
    add("TerminalName", "Terminal Name", kText, "Gulf Coast Terminal", 150);
    add("TerminalLocation", "Terminal Location", kText, "Houston, TX", 250);
    add("AlcoholNum", "Alcohol Number", kText, "AL-445566", 50);
    return;
  }
  const int province = merge::localeProvinceIndex();
  const std::string salesTax = merge::salesTaxWord(province, today());
  const std::string provincialTax = merge::provincialTaxWord(province);
  const std::string board = merge::boardWord(province);
  const std::string yearEnd = "03/31/" + std::to_string(today().year());
  add("BusinessNumber", "Business Number", kText, "12345 6789 RC0001", 50);
  add("RC59Permission", "RC59 Permission Level", kText, "Full", 50);
  add("RC59Status", "RC59 Form Status", kText, "Completed", 50);
  add("GSTNumber", salesTax + " Number", kText, "12345 6789 RT0001", 50);
  add("GSTFilingMethod", salesTax + " Filing Method", kText, "Quick Method", 50);
  add("PSTNumber", provincialTax + " Number", kText, "PST-1234-5678", 50);
  add("PayrollNumber", "Payroll Number", kText, "12345 6789 RP0001", 50);
  add("PayrollRegisteredAs", "Payroll Registered As", kText, "Smith Holdings Inc.", 255);
  add("YearEndDate", "Year End Date", kDate, yearEnd, -1);
  add("FederalCorpNumber", "Federal Corp. Tax Number", kText, "123456789", 50);
  add("ONCorpNumber", merge::provinceWord(province) + " Corp. Tax Number", kText, "1234567", 50);
  if (province == 3) add("MCBS", "ON Corp. MCBS Number", kText, "987654321", 50);
  if (province == 8) add("MCBS", "Quebec ID Number", kText, "1234567890", 50);
  add("IncorporationDate", "Incorporation Date", kDate, todayText, -1);
  add("FinancialStatements", "Financial Statements", kText, "Review Engagement", 50);
  add("CorporationType", "Corporation Type", kText, "CCPC", 50);
  add("CorporationLevel", "Corporation Level", kText, "Federal Corporation", 50);
  add("CharitableNum", "Charitable Number", kText, "12345 6789 RR0001", 50);
  add("WSIBNumber", province == 8 ? std::string("NEQ Number") : board + " Number", kText, "1234567",
      50);
  if (province == 3) add("WSIBFirmNumber", board + " Firm Number", kText, "7654321", 50);
  add("WSIBPremiumRate", board + " Premium Rate", kText, "$2.98", 50);
  add("Coverage", board + " Coverage", kText, "Optional", 50);
  add("EHTNumber", "EHT Number", kText, "EHT-123456", 50);
  add("EHTPremiumRate", "EHT Premium Rate", kText, "1.95%", 50);
  add("NameRenewalDate", "Name Renewal Date", kDate, todayText, -1);
  add("LawSocietyMemberNumber", "Law Society Member Number", kText, "LSM-24680", 50);
}

void clsInsertFieldsInRTB::addSoftwareRows(bool noListBox) {
  auto add = [&](std::string_view field, std::string_view name, std::string_view sample,
                 std::int16_t length) {
    addField(fieldList_, noListBox, field, name, kSoftwareInfo, kText, sample, length);
  };
  add("SoftwareName", "Software Name", "Ledger Plus Accounting", 255);
  add("SoftwareSerialNumber", "Software Serial Number", "LP-2040-88213", 50);
  add("SoftwareVersion", "Software Version", "2012.1", 50);
  add("SoftwareAccountNumber", "Software Account Number", "ACCT-5521", 50);
  add("FileSavedAs", "Data File Saved As", "SmithHoldings2012.dat", 255);
  add("UserName", "User Name", "jsmith", 255);
  add("Password", "Password", "Secret123", 255);
}

void clsInsertFieldsInRTB::addMoreContactRows(bool noListBox) {
  const bool canada = merge::localeCountryMode() == kCountryCanada;
  const bool chooser = mergeFieldListUse_ == kUseColumnChooser;
  const std::string todayText = formatDate(today(), "mmm d, yyyy");
  auto add = [&](std::string_view field, std::string_view name, std::string_view sample,
                 std::int16_t length, std::int16_t type = kText) {
    addField(fieldList_, noListBox, field, name, kContactInfo, type, sample, length);
  };
  // One address group: the plain address (or lines 1 to 3 in the column chooser), city,
  // state or province, zip or postal code, abbreviated province (Canada, not the chooser),
  // country.
  auto addAddress = [&](const std::string& fieldPrefix, const std::string& namePrefix,
                        std::int16_t length, std::int16_t cityLength, std::string_view street) {
    if (!chooser) {
      add(fieldPrefix + "Address", namePrefix + " Address", street, length);
    } else {
      for (int n = 1; n <= 3; ++n)
        add(fieldPrefix + "Address" + std::to_string(n),
            namePrefix + " Address " + std::to_string(n),
            n == 1 ? street : std::string_view(n == 2 ? "Suite 200" : "PO Box 12"), length);
    }
    add(fieldPrefix + "City", namePrefix + " City", canada ? "Toronto" : "Chicago", cityLength);
    add(fieldPrefix + "Province", namePrefix + (canada ? " Province" : " State"),
        canada ? "Ontario" : "Illinois", 50);
    add(fieldPrefix + "PostalCode", namePrefix + (canada ? " Postal Code" : " Zip Code"),
        canada ? "M5V 2T6" : "60601", 50);
    if (canada && !chooser)
      add(fieldPrefix + "AbbreviatedProvince", namePrefix + " Abbreviated Province", "ON", 50);
    add(fieldPrefix + "Country", namePrefix + " Country", canada ? "Canada" : "USA", 50);
  };

  add("SocialInsuranceNumber", canada ? "Contact SIN" : "Contact SSN",
      canada ? "987 630 098" : "078-05-1120", 20);
  add("PartnerName", "Supervising Partner", "Robert Brown", 255);
  add("AccountantName", "Managing Accountant", "Susan Lee", 255);
  add("EmployeeType", "Contact Employee Type", "Owner", 50);
  add("PercentageOwnership", "Contact Percentage Ownership", "50", -1);  // no length given
  add("BusinessName", "Contact Business Name", "Smith Holdings Inc.", 255);
  add("BusinessJobTitle", "Contact Job Title", "President", 150);
  add("BusinessDepartment", "Contact Business Department", "Administration", 100);
  add("BusinessOffice", "Contact Business Office", "Head Office", 100);
  add("BusinessPhone_Main", "Contact Business Phone", "(416) 555-0100", 50);
  add("BusinessAltPhoneNumber", "Contact Business Alt. Phone", "(416) 555-0101", 50);
  add("BusinessPhone_Cell", "Contact Business Cell", "(416) 555-0102", 50);
  add("BusinessPhone_Pager", "Contact Business Pager", "(416) 555-0103", 50);
  add("BusinessPhone_Fax", "Contact Business Fax", "(416) 555-0104", 50);
  addAddress("Business", "Contact Business", 255, 50, "100 King Street West");
  add("BusinessWebSite", "Contact Business Web Site", "www.smithholdings.example", 255);
  add("BusinessEmail", "Contact Business Email", "jane@smithholdings.example", 255);
  add("BusinessFaceBookURL", "Contact Business FaceBook URL", "www.facebook.example/smithholdings",
      255);
  add("BusinessTwitterAccount", "Contact Business Twitter Account", "@smithholdings", 255);
  add("HomePhone_Main", "Contact Personal Phone", "(416) 555-0200", 50);
  add("HomePhone_Cell", "Contact Personal Cell", "(416) 555-0201", 50);
  add("HomePhone_Pager", "Contact Personal Pager", "(416) 555-0202", 50);
  add("HomePhone_Fax", "Contact Personal Fax", "(416) 555-0203", 50);
  add("PersonalWebSite", "Contact Personal Web Site", "www.janesmith.example", 255);
  add("PersonalEmail", "Contact Personal Email", "jane.smith@mail.example", 255);
  add("PersonalFaceBookURL", "Contact Personal FaceBook URL", "www.facebook.example/janesmith",
      255);
  add("PersonalTwitterAccount", "Contact Personal Twitter Account", "@janesmith", 255);
  addAddress("Home", "Contact Home", 255, 50, "25 Maple Avenue");
  add("Children", "Contact Children", "Emily, Jack", 255);
  add("Gender", "Contact Gender", "Female", 50);
  add("Birthday", "Contact Birthday", todayText, -1, kDate);
  add("Anniversary", "Contact Anniversary", todayText, -1, kDate);
  add("SpokenLanguage", "Contact Spoken Language", "English", 50);
  add("MaritialStatus", "Contact Marital Status", "Married", 50);
  add("SpouseNamePrefix", "Spouse Name Prefix", "Mr.", 50);
  add("SpouseFirstName", "Spouse First Name", "John", 100);
  add("SpouseMiddleName", "Spouse Middle Name", "Paul", 100);
  add("SpouseLastName", "Spouse Last Name", "Smith", 100);
  add("SpouseNameSuffix", "Spouse Name Suffix", "Sr.", 50);
  add("SpouseName", "Spouse Display Name", "John Smith", 150);
  add("SpouseEmail", "Spouse Personal Email", "john.smith@mail.example", 255);
  add("SpousePhone_Main", "Spouse Home Phone", "(416) 555-0300", 50);
  add("SpousePhone_Cell", "Spouse Personal Cell", "(416) 555-0301", 50);
  addAddress("Spouse", "Spouse Home", 50, 50, "25 Maple Avenue");
  add("SpouseGender", "Spouse Gender", "Male", 50);
  // Text, not a date: the spouse's birthday takes no date format. Intended.
  add("SpouseBirthday", "Spouse Birthday", todayText, -1, kText);
  add("SpouseSIN", canada ? "Spouse SIN" : "Spouse SSN", canada ? "987 630 099" : "078-05-1121",
      20);
  addAddress("Alt", "Contact Alternate", 255, 50, "400 Lakeshore Road");
  addCustomRows(fieldList_, noListBox, kCustomContact);
  addField(fieldList_, noListBox, "Notes", "Contact Notes", kContactNotes, kText,
           "Prefers e-mail in the morning.", -1);
}

void clsInsertFieldsInRTB::createCompanyInfoFieldListStructure(lf::FieldList& list,
                                                               bool noListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createCompanyInfoFieldListStructure", [&] {
    const bool canada = merge::localeCountryMode() == kCountryCanada;
    const bool chooser = mergeFieldListUse_ == kUseColumnChooser;
    auto add = [&](std::string_view field, std::string_view name, std::string_view sample,
                   std::int16_t length) {
      addField(list, noListBox, field, name, kCompanyInfo, kText, sample, length);
    };
    add("CompanyName", "Company Name", "Smith Holdings", 255);
    add("ClientID", "Client ID", "SMI-1001", 255);
    add("CorporateName", "Corporate Name", "Smith Holdings Inc.", 255);
    add("CompanyType", "Company Type", "Corporation", 50);
    add("IndustryType", "Industry Type", "Retail", 100);
    // Address group of the company; the alternate group has its own lengths.
    auto addAddress = [&](const std::string& fieldPrefix, const std::string& namePrefix,
                          std::int16_t streetLength, std::int16_t cityLength,
                          std::int16_t restLength, std::string_view street) {
      if (!chooser) {
        add(fieldPrefix + "Address", namePrefix + "Address", street, streetLength);
      } else {
        for (int n = 1; n <= 3; ++n)
          add(fieldPrefix + "Address" + std::to_string(n),
              namePrefix + "Address " + std::to_string(n),
              n == 1 ? street : std::string_view(n == 2 ? "Suite 200" : "PO Box 12"), streetLength);
      }
      add(fieldPrefix + "City", namePrefix + "City", canada ? "Toronto" : "Chicago", cityLength);
      add(fieldPrefix + "Province", namePrefix + (canada ? "Province" : "State"),
          canada ? "Ontario" : "Illinois", restLength);
      add(fieldPrefix + "PostalCode", namePrefix + (canada ? "Postal Code" : "Zip Code"),
          canada ? "M5V 2T6" : "60601", restLength);
      if (canada && !chooser)
        add(fieldPrefix + "AbbreviatedProvince", namePrefix + "Abbreviated Province", "ON",
            restLength);
      add(fieldPrefix + "Country", namePrefix + "Country", canada ? "Canada" : "USA", restLength);
    };
    addAddress("", "", 255, 50, 50, "100 King Street West");
    add("OfficeNumber", "Office Number", "(416) 555-0100", 50);
    add("AltPhoneNumber", "Alternate Phone Number", "(416) 555-0101", 50);
    add("FaxNumber", "Fax Number", "(416) 555-0104", 50);
    add("Email", "Email", "info@smithholdings.example", 255);
    add("WebSite", "Web Site",
        canada ? "www.smithholdings.example.ca" : "www.smithholdings.example", 255);
    add("FaceBookURL", "Company FaceBook URL", "www.facebook.example/smithholdings", 255);
    add("TwitterAccount", "Company Twitter Account", "@smithholdings", 255);
    add("PartnerName", "Supervising Partner", "Robert Brown", 255);
    add("AccountantName", "Managing Accountant", "Susan Lee", 255);
    // The alternate province is listed at 255 in one place and 50 in another; the row
    // carries 50, the rest of the alternate group 255.
    if (!chooser) {
      add("AltAddress", "Company Alternate Address", "400 Lakeshore Road", 255);
    } else {
      add("AltAddress1", "Company Alternate Address 1", "400 Lakeshore Road", 255);
      add("AltAddress2", "Company Alternate Address 2", "Unit 5", 255);
      add("AltAddress3", "Company Alternate Address 3", "PO Box 77", 255);
    }
    add("AltCity", "Company Alternate City", canada ? "Mississauga" : "Evanston", 50);
    add("AltProvince", canada ? "Company Alternate Province" : "Company Alternate State",
        canada ? "Ontario" : "Illinois", 50);
    add("AltPostalCode", canada ? "Company Alternate Postal Code" : "Company Alternate Zip Code",
        canada ? "L5H 1G3" : "60201", 255);
    if (canada && !chooser)
      add("AltAbbreviatedProvince", "Company Alternate Abbreviated Province", "ON", 255);
    add("AltCountry", "Company Alternate Country", canada ? "Canada" : "USA", 255);
    addCustomRows(list, noListBox, kCustomCompany);
    addField(list, noListBox, "Notes", "Company Notes", kCompanyNotes, kText,
             "Year-end meeting booked for April.", -1);
  });
}

void clsInsertFieldsInRTB::createAppointmentInfoFieldListStructure(lf::FieldList& list,
                                                                   bool noListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createAppointmentInfoFieldListStructure", [&] {
    const std::string todayText = formatDate(today(), "mmm d, yyyy");
    auto add = [&](std::string_view field, std::string_view name, std::int16_t type,
                   std::string_view sample, std::int16_t length) {
      addField(list, noListBox, field, name, kAppointInfo, type, sample, length);
    };
    add("Subject", "Appointment Name", kText, "Year-end review", 255);
    add("DateFrom", "Appointment Date", kDate, todayText, -1);
    add("TimeFrom", "Appointment Start Time", kTime, "9:00 AM", -1);
    add("TimeTo", "Appointment End Time", kTime, "10:30 AM", -1);
    add("TimeDuration", "Time Duration", kText, "1 hr 30 min", -1);
    add("AppointmentText", "Appointment Text", kText, "Bring the bank statements.", -1);
    addCustomRows(list, noListBox, kCustomAppointment);
  });
}

void clsInsertFieldsInRTB::createTaskInfoFieldListStructure(lf::FieldList& list, bool noListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createTaskInfoFieldListStructure", [&] {
    const std::string todayText = formatDate(today(), "mmm d, yyyy");
    const std::string year = std::to_string(today().year());
    auto add = [&](std::string_view field, std::string_view name, std::int16_t type,
                   std::string_view sample, std::int16_t length) {
      addField(list, noListBox, field, name, kTaskInfo, type, sample, length);
    };
    add("Subject", "Task Name", kText, "1st Quarterly GST Payment", 150);
    add("DueDate", "Task Due Date", kDate, todayText, -1);
    add("inHouseDueDate", "Task in-House Due Date", kDate, todayText, -1);
    add("PeriodEndDate", "Period End Date", kDate, todayText, -1);
    add("PeriodDescription", "Period Description", kText,
        "Period For: Jan 1, " + year + " to Mar 31, " + year, 50);
    add("CalendarDate", "Task Calendar Date", kDate, todayText, -1);
    add("EmployeeAssigned", "Employee Assigned", kText, "Susan Lee", 50);
    add("Year", "Task Year", kText, year, 12);
    add("Amount", "Amount Paid", kText, "$1,250.00", 15);
    add("PersonCompleted", "Completed By", kText, "Susan Lee", 50);
    add("DateCompleted", "Date Completed", kDate, todayText, -1);
    addCustomRows(list, noListBox, kCustomTaskSchedule);
    addBlank(noListBox);
    addHeading(noListBox, "[Task Info]");
    add("Subject", "Task Subject", kText, "1st Quarterly GST Payment", 255);
    // A second row named "Task Calendar Date": the first one in list order wins. Intended.
    add("DateFrom", "Task Calendar Date", kDate, todayText, -1);
    add("TimeFrom", "Task Start Time", kTime, "9:00 AM", -1);
    add("TimeTo", "Task End Time", kTime, "10:30 AM", -1);
    add("TimeDuration", "Time Duration", kText, "1 hr 30 min", -1);
    add("AppointmentText", "Task Text", kText, "Remit before the due date.", 255);
    addCustomRows(list, noListBox, kCustomTaskCalendar);
  });
}

void clsInsertFieldsInRTB::createDocketInfoFieldListStructure(lf::FieldList& list, bool noListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createDocketInfoFieldListStructure", [&] {
    const std::string todayText = formatDate(today(), "mmm d, yyyy");
    auto add = [&](std::string_view field, std::string_view name, std::int16_t type,
                   std::string_view sample, std::int16_t length) {
      addField(list, noListBox, field, name, kDocketInfo, type, sample, length);
    };
    add("Subject", "Time Entry Name", kText, "Bookkeeping", -1);
    add("DateFrom", "Time Entry Date", kDate, todayText, -1);
    add("TimeFrom", "Time Entry Start Time", kTime, "9:00 AM", -1);
    add("TimeTo", "Time Entry End Time", kTime, "9:30 AM", -1);
    add("TimeDuration", "Time Duration", kText, "1 hr 30 min", -1);
    add("AppointmentText", "Time Entry Text", kText, "Monthly reconciliation.", 255);
    add("DocketStatus", "Time Entry Status", kText, "1", -1);
    add("DateCreated", "Time Entry Date Created", kDate, todayText, -1);
    add("DocketLocked", "Time Entry Locked", kYesNo, "True", -1);
    add("Invoiced", "Is Invoiced", kYesNo, "False", -1);
    add("UsedRealTime", "Used Time Entry Timer", kYesNo, "True", -1);
    add("RealTimeFrom", "Time From (Actual Time)", kTime, "9:02 AM", -1);
    add("RealTimeTo", "Time To (Actual Time)", kTime, "9:29 AM", -1);
    add("RoundedTimeFrom", "Time From (Rounded Time)", kTime, "9:00 AM", -1);
    add("RoundedTimeTo", "Time To (Rounded Time)", kTime, "9:30 AM", -1);
    add("DocketBillingType", "Billing Type", kText, "1", -1);
    add("BillingJobRate", "Billing Rate", kText, "50", -1);
    add("BillableTime", "Billable Time", kYesNo, "True", -1);
    add("TotalTimeReal", "Total Time (Actual)", kDuration, "27 min", -1);
    add("TotalTimeRounded", "Total Time (Rounded)", kDuration, "30 min", -1);
    add("UseAdjustedTime", "Use Adjusted Time", kYesNo, "False", -1);
    add("TotalTimeAdjusted", "Total Time (Adjusted)", kDuration, "30 min", -1);
    add("TotalTimeFinal", "Total Time (Final)", kDuration, "30 min", -1);
    add("TotalAmountReal", "Total Amount (Actual)", kMoney, "$22.50", -1);
    add("UseAdjustedAmount", "Use Adjusted Amount", kYesNo, "False", -1);
    add("TotalAmountAdjusted", "Total Amount (Adjusted)", kMoney, "$25.00", -1);
    add("TotalAmountFinal", "Total Amount (Final)", kMoney, "$25.00", -1);
    add("DescriptionInternal", "Internal Time Entry Description", kText,
        "Reconciled the operating account.", -1);
    add("DescriptionClient", "Invoice Time Entry Description", kText, "Monthly bookkeeping.", -1);
    addCustomRows(list, noListBox, kCustomTimeEntry);
  });
}

void clsInsertFieldsInRTB::createAccountantFieldListStructure(bool& noListBox, bool& clearListBox) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createAccountantFieldListStructure", [&] {
    // The firm rows go to ListBox2, which has its own presence test.
    const bool noFirmBox = ListBox2 == nullptr;
    if (!noFirmBox) {
      if (clearListBox) ListBox2->Clear();
      addListEntry(ListBox2, false, "Insert your Letterhead");
    }
    (void)noListBox;
    addFirmRows(noFirmBox);
    if (!noFirmBox) ListBox2->Refresh();
  });
}

void clsInsertFieldsInRTB::addFirmRows(bool noListBox) {
  const bool canada = merge::localeCountryMode() == kCountryCanada;
  // No maximum length is given for the firm's rows.
  auto add = [&](std::string_view field, std::string_view name, std::string_view sample) {
    addField(fieldList_, noListBox, field, name, kFirmInfo, kText, sample, -1);
  };
  add("CompanyName", "Your Company Name", "Brown & Lee Chartered Accountants");
  add("CorporateName", "Your Corporate Name", "Brown & Lee Professional Corporation");
  add("CompanyType", "Your Company Type", "Partnership");
  add("IndustryType", "Your Industry Type", "Accounting");
  add("Address", "Your Address", "200 Bay Street, Suite 1500");
  add("City", "Your City", canada ? "Toronto" : "Chicago");
  add("Province", canada ? "Your Province" : "Your State", canada ? "Ontario" : "Illinois");
  add("PostalCode", canada ? "Your Postal Code" : "Your Zip Code", canada ? "M5J 2J5" : "60603");
  add("Country", "Your Country", canada ? "Canada" : "USA");
  add("OfficeNumber", "Your Office Number", "(416) 555-0900");
  add("FaxNumber", "Your Fax Number", "(416) 555-0901");
  add("Email", "Your Email", "office@brownlee.example");
  add("WebSite", "Your Web Site", "www.brownlee.example");
  addCustomRows(fieldList_, noListBox, kCustomFirm);
}

}  // namespace lf
