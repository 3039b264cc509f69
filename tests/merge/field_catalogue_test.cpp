// The merge field catalogue: rows by list type, use, country and province; headings and
// blanks of the pick lists; custom field names from the label tables.
#include <gtest/gtest.h>

#include "merge/catalogue_words.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "tests/merge/merge_test_support.hpp"

namespace lf {
namespace {

using testing_support::MergeTest;

class FieldCatalogueTest : public MergeTest {};

TEST_F(FieldCatalogueTest, WithoutListBoxTheListIsBuiltAndKeysRunFromOne) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 1;
  bool noListBox = false;
  bool clear = true;
  rtb.createDefaultFieldListStructure(noListBox, clear);
  EXPECT_TRUE(noListBox);
  ASSERT_GT(rtb.FieldList().count(), 100);
  std::int32_t expected = 1;
  for (const FieldItem& item : rtb.FieldList()) EXPECT_EQ(item.key, expected++);
  // The firm's rows close every build.
  EXPECT_EQ(rtb.FieldList().items().back().tableTag, "FirmInfo");
  EXPECT_EQ(rtb.FieldList().items().front().displayName, "Company Name");
}

TEST_F(FieldCatalogueTest, UnknownListTypeGivesOnlyTheFirmRows) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 7;
  build(rtb);
  for (const FieldItem& item : rtb.FieldList()) EXPECT_EQ(item.tableTag, "FirmInfo");
  EXPECT_EQ(names(rtb).front(), "Your Company Name");
}

TEST_F(FieldCatalogueTest, ListBoxGetsHeadingsBlanksAndItemData) {
  clsInsertFieldsInRTB rtb;
  MemoryListBox box;
  MemoryListBox firmBox;
  rtb.ListBox = &box;
  rtb.ListBox2 = &firmBox;
  rtb.ListType = 5;
  build(rtb);
  const auto& entries = box.entries();
  ASSERT_FALSE(entries.empty());
  EXPECT_EQ(entries[0].text, "[Appointment Info]");
  EXPECT_EQ(entries[0].itemData, -1);
  EXPECT_EQ(entries[1].text, "Appointment Name");
  EXPECT_EQ(entries[1].itemData, 1);
  // Appointment lists put a blank before the company heading.
  size_t heading = 0;
  while (heading < entries.size() && entries[heading].text != "[Company Address Info]") ++heading;
  ASSERT_LT(heading, entries.size());
  EXPECT_EQ(entries[heading - 1].text, "");
  EXPECT_EQ(entries[heading - 1].itemData, -1);
  EXPECT_EQ(firmBox.entries().front().text, "Insert your Letterhead");
  EXPECT_EQ(firmBox.entries().front().itemData, -1);
  EXPECT_EQ(firmBox.entries()[1].text, "Your Company Name");
  EXPECT_GE(box.refreshCount(), 1);
}

TEST_F(FieldCatalogueTest, TimeEntryListHasNoBlankBeforeTheCompanyHeading) {
  clsInsertFieldsInRTB rtb;
  MemoryListBox box;
  rtb.ListBox = &box;
  rtb.ListType = 6;
  build(rtb);
  const auto& entries = box.entries();
  size_t heading = 0;
  while (entries[heading].text != "[Company Address Info]") ++heading;
  EXPECT_NE(entries[heading - 1].text, "");
}

TEST_F(FieldCatalogueTest, ColumnChooserKeepsNotAssignedWithoutHeadings) {
  clsInsertFieldsInRTB rtb;
  MemoryListBox box;
  rtb.ListBox = &box;
  rtb.ListType = 2;
  rtb.setMergeFieldListUse(kUseColumnChooser);
  EXPECT_FALSE(rtb.ShowListCategoryHeaders);
  build(rtb);
  EXPECT_EQ(box.entries().front().text, "Not Assigned");
  EXPECT_EQ(box.entries().front().itemData, -1);
  for (size_t i = 1; i < box.entries().size(); ++i) EXPECT_GE(box.entries()[i].itemData, 1);
  EXPECT_TRUE(hasName(rtb, "Contact Full Name"));
  EXPECT_FALSE(hasName(rtb, "Contact Display Name"));
  EXPECT_FALSE(hasName(rtb, "Contact & Spouse Name"));
  // Address lines 1 to 3 instead of the plain address; no abbreviated province.
  EXPECT_TRUE(hasName(rtb, "Contact Home Address 2"));
  EXPECT_FALSE(hasName(rtb, "Contact Home Address"));
  EXPECT_FALSE(hasName(rtb, "Contact Home Abbreviated Province"));
  EXPECT_TRUE(hasName(rtb, "Address 1"));
}

TEST_F(FieldCatalogueTest, QuebecHasNeqAndQuebecIdButNoFirmNumber) {
  locale.province = kQuebec;
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 1;
  build(rtb);
  const FieldItem* wsib = rtb.FieldList().findByDatabaseField("WSIBNumber");
  ASSERT_NE(wsib, nullptr);
  EXPECT_EQ(wsib->displayName, "NEQ Number");
  EXPECT_TRUE(hasName(rtb, "Quebec ID Number"));
  EXPECT_FALSE(hasName(rtb, "ON Corp. MCBS Number"));
  EXPECT_EQ(rtb.FieldList().findByDatabaseField("WSIBFirmNumber"), nullptr);
  EXPECT_TRUE(hasName(rtb, "QST Number"));
  EXPECT_TRUE(hasName(rtb, "Que. Corp. Tax Number"));
  EXPECT_TRUE(hasName(rtb, "CSST Premium Rate"));
}

TEST_F(FieldCatalogueTest, OntarioSalesTaxWordFollowsTheDate) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 1;
  rtb.setTodayForTesting(Date::fromParts(2010, 6, 30));
  build(rtb);
  EXPECT_TRUE(hasName(rtb, "GST Number"));
  EXPECT_TRUE(hasName(rtb, "ON Corp. MCBS Number"));
  EXPECT_TRUE(hasName(rtb, "WSIB Firm Number"));
  rtb.setTodayForTesting(Date::fromParts(2010, 7, 1));
  build(rtb);
  EXPECT_TRUE(hasName(rtb, "HST Number"));
  EXPECT_TRUE(hasName(rtb, "HST Filing Method"));
  EXPECT_FALSE(hasName(rtb, "GST Number"));
}

TEST_F(FieldCatalogueTest, ProvinceWords) {
  const Date before = Date::fromParts(2009, 1, 1);
  const Date after = Date::fromParts(2012, 1, 1);
  EXPECT_EQ(merge::salesTaxWord(9, before), "HST");
  EXPECT_EQ(merge::salesTaxWord(11, before), "HST");
  EXPECT_EQ(merge::salesTaxWord(1, before), "GST");
  EXPECT_EQ(merge::salesTaxWord(1, after), "HST");
  EXPECT_EQ(merge::salesTaxWord(12, after), "GST");
  EXPECT_EQ(merge::salesTaxWord(40, after), "GST");
  EXPECT_EQ(merge::boardWord(12), "WCB");
  EXPECT_EQ(merge::boardWord(8), "CSST");
  EXPECT_EQ(merge::boardWord(10), "WHSCC");
  EXPECT_EQ(merge::boardWord(5), "WSIB");
  EXPECT_EQ(merge::provinceWord(11), "Nfld.");
  EXPECT_EQ(merge::provinceWord(3), "ON");
  EXPECT_EQ(merge::provinceWord(7), "ON");
}

TEST_F(FieldCatalogueTest, UnitedStatesCompanyListShowsStateAndZipWithoutAbbreviation) {
  locale.country = kCountryUnitedStates;
  clsInsertFieldsInRTB rtb;
  MemoryListBox box;
  rtb.ListBox = &box;
  rtb.ListType = 1;
  build(rtb);
  EXPECT_TRUE(hasName(rtb, "State"));
  EXPECT_TRUE(hasName(rtb, "Zip Code"));
  EXPECT_FALSE(hasName(rtb, "Abbreviated Province"));
  EXPECT_TRUE(hasName(rtb, "Contact SSN"));
  EXPECT_TRUE(hasName(rtb, "Your Zip Code"));
  const FieldItem* yearEnd = rtb.FieldList().findByDatabaseField("USYearEndDate");
  ASSERT_NE(yearEnd, nullptr);
  EXPECT_EQ(yearEnd->sampleValue, "12/31");
  // The list box shows two blanks where the display name has one.
  const FieldItem* ein = rtb.FieldList().findByDatabaseField("EIN");
  ASSERT_NE(ein, nullptr);
  EXPECT_EQ(ein->displayName, "Federal Employer Identification Number");
  bool found = false;
  for (const auto& entry : box.entries())
    if (entry.itemData == ein->key) {
      EXPECT_EQ(entry.text, "Federal Employer Identification  Number");
      found = true;
    }
  EXPECT_TRUE(found);
}

TEST_F(FieldCatalogueTest, TellingRowsCarryTheirColumns) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 6;
  rtb.setTodayForTesting(Date::fromParts(2012, 3, 5));
  build(rtb);
  auto row = [&](const std::string& name) {
    const FieldItem* item = rtb.FieldList().findByDisplayName(name);
    EXPECT_NE(item, nullptr) << name;
    return item ? *item : FieldItem{};
  };
  FieldItem display = row("Contact Display Name");
  EXPECT_EQ(display.databaseField, "DisplayName");
  EXPECT_EQ(display.sampleValue, "Jane Smith");
  EXPECT_EQ(display.maxLength, 255);
  EXPECT_EQ(row("Contact SIN").sampleValue, "987 630 098");
  EXPECT_EQ(row("Contact SIN").maxLength, 20);
  FieldItem birthday = row("Contact Birthday");
  EXPECT_EQ(birthday.fieldType, kFieldDate);
  EXPECT_EQ(birthday.sampleValue, "Mar 5, 2012");
  EXPECT_EQ(birthday.maxLength, -1);
  EXPECT_EQ(row("Year End Date").sampleValue, "03/31/2012");
  EXPECT_EQ(row("WSIB Premium Rate").sampleValue, "$2.98");
  FieldItem start = row("Time Entry Start Time");
  EXPECT_EQ(start.fieldType, kFieldTime);
  EXPECT_EQ(start.sampleValue, "9:00 AM");
  EXPECT_EQ(row("Total Time (Final)").fieldType, kFieldDuration);
  EXPECT_EQ(row("Total Time (Final)").sampleValue, "30 min");
  EXPECT_EQ(row("Total Amount (Final)").fieldType, kFieldMoney);
  EXPECT_EQ(row("Total Amount (Final)").sampleValue, "$25.00");
  EXPECT_EQ(row("Time Entry Locked").fieldType, kFieldYesNo);
  EXPECT_EQ(row("Time Entry Locked").sampleValue, "True");
  EXPECT_EQ(row("Time Duration").sampleValue, "1 hr 30 min");
  // The spouse's birthday is text of any length.
  FieldItem spouse = row("Spouse Birthday");
  EXPECT_EQ(spouse.fieldType, kFieldText);
  EXPECT_EQ(spouse.maxLength, -1);
  EXPECT_EQ(row("Contact Marital Status").databaseField, "MaritialStatus");
  EXPECT_EQ(row("Contact Notes").tableTag, "ContactNotes");
  EXPECT_EQ(row("Company Notes").tableTag, "CompanyNotes");
}

TEST_F(FieldCatalogueTest, TaskListHasTwoCalendarDateRowsAndTheFirstWins) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 8;
  build(rtb);
  int count = 0;
  for (const FieldItem& item : rtb.FieldList())
    if (item.displayName == "Task Calendar Date") ++count;
  EXPECT_EQ(count, 2);
  EXPECT_EQ(rtb.getDBFieldNameFromDisplayFieldName("Task Calendar Date"), "CalendarDate");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("DateFrom"), "Task Calendar Date");
  EXPECT_EQ(rtb.getDBFieldNameFromDisplayFieldName("No Such Field"), "No Such Field");
  EXPECT_TRUE(hasName(rtb, "Custom Task Field 1"));
  EXPECT_TRUE(hasName(rtb, "Custom Task Calendar Field 5"));
}

TEST_F(FieldCatalogueTest, ContactListPutsCompanyLastOnlyWithACompany) {
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 3;
  build(rtb);
  EXPECT_FALSE(hasName(rtb, "Company Name"));
  EXPECT_FALSE(hasName(rtb, "Business Number"));
  rtb.companyID = 4;
  build(rtb);
  EXPECT_TRUE(hasName(rtb, "Company Name"));
  EXPECT_GT(rtb.FieldList().findByDisplayName("Company Name")->key,
            rtb.FieldList().findByDisplayName("Contact Notes")->key);
}

TEST_F(FieldCatalogueTest, CustomNamesComeFromTheLabelTables) {
  usePracticeDatabase();
  exec(
      "INSERT INTO CustomFields (CustomName1, CustomName2, CustomName3) VALUES ('Fee Basis:', "
      "'Custom 2', 'Custom 3');");
  exec(
      "INSERT INTO CustomAddressFields (CompanyLabel1, CompanyLabel4, ContactLabel2) VALUES "
      "('Fee Basis:', 'Custom 4', 'Hobby');");
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 1;
  build(rtb);
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("ClientCustom1"), "Fee Basis");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("ClientCustom3"), "Custom Field 3");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("CompanyCustom1"), "Fee Basis");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("CompanyCustom4"), "Company Custom Field 4");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("FirmCustom1"), "Your Fee Basis");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("FirmCustom4"), "Your Company Custom Field 4");
  EXPECT_EQ(rtb.getDisplayFieldNameFromDBFieldName("ContactCustom2"), "Hobby");
  const FieldItem* custom = rtb.FieldList().findByDatabaseField("ClientCustom1");
  EXPECT_EQ(custom->maxLength, 255);
  EXPECT_EQ(custom->sampleValue, "Custom Info 1");
  EXPECT_EQ(custom->tableTag, "ClientInfo");
}

TEST_F(FieldCatalogueTest, NoLabelRowGivesTheFixedNames) {
  usePracticeDatabase();
  clsInsertFieldsInRTB rtb;
  rtb.ListType = 5;
  build(rtb);
  EXPECT_TRUE(hasName(rtb, "Custom Field 1"));
  EXPECT_TRUE(hasName(rtb, "Contact Custom Field 5"));
  EXPECT_TRUE(hasName(rtb, "Custom Appt Field 2"));
  EXPECT_TRUE(hasName(rtb, "Your Company Custom Field 3"));
}

}  // namespace
}  // namespace lf
