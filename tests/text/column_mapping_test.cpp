// Column assignments over the catalogue: the lists of the two imports, keys, captions.
#include "text/column_mapping.hpp"

#include <gtest/gtest.h>

#include "tests/test_support.hpp"

namespace lf {
namespace {

class ColumnMappingTest : public testing::PracticeDatabaseTest {
 protected:
  std::int32_t keyOf(const ColumnMapping& mapping, std::string_view field) {
    const FieldItem* item = mapping.fieldList().findByDatabaseField(field);
    return item == nullptr ? -1 : item->key;
  }
};

TEST_F(ColumnMappingTest, PersonalListHoldsContactRowsOnly) {
  ColumnMapping mapping;
  mapping.createFieldList(3);
  ASSERT_FALSE(mapping.fieldList().empty());
  for (const FieldItem& item : mapping.fieldList())
    EXPECT_NE(item.tableTag, "CompanyInfo") << item.databaseField;
  EXPECT_EQ(mapping.dropDownEntries().front(), "Not Assigned");
  const FieldItem* name = mapping.fieldList().findByDatabaseField("DisplayName");
  ASSERT_NE(name, nullptr);
  EXPECT_EQ(name->displayName, "Contact Full Name");
  EXPECT_NE(keyOf(mapping, "HomeAddress1"), -1);
  EXPECT_NE(keyOf(mapping, "SpouseSIN"), -1);
}

TEST_F(ColumnMappingTest, BusinessListHoldsCompanyClientDataAndContactRows) {
  ColumnMapping mapping;
  mapping.createFieldList(2);
  const FieldItem* number = mapping.fieldList().findByDatabaseField("BusinessNumber");
  ASSERT_NE(number, nullptr);
  EXPECT_EQ(number->tableTag, "ClientInfo");  // a client-data row of the company
  EXPECT_EQ(number->maxLength, 50);
  EXPECT_NE(keyOf(mapping, "FirstName"), -1);
}

TEST_F(ColumnMappingTest, KeysAreUpperCasedFieldsAndAssignmentsShowInRowOne) {
  ColumnMapping mapping;
  mapping.createFieldList(2);
  ImportGrid grid;
  grid.resize(3, 4);
  mapping.clearAssignments(grid);
  EXPECT_EQ(mapping.columnKey(1), "NOT ASSIGNED");
  ASSERT_TRUE(mapping.assign(grid, 2, keyOf(mapping, "BusinessNumber")));
  EXPECT_EQ(mapping.columnKey(2), "BUSINESSNUMBER");
  EXPECT_EQ(grid.textMatrix(kAssignmentRow, 2), "Business Number");
  EXPECT_TRUE(mapping.anyColumnIs({"GSTNUMBER", "BUSINESSNUMBER"}, grid.cols()));
  EXPECT_FALSE(mapping.anyColumnIs({"CLIENTID"}, grid.cols()));
  EXPECT_FALSE(mapping.assign(grid, 4, keyOf(mapping, "CompanyName")));  // no such column
  mapping.assign(grid, 2, -1);
  EXPECT_EQ(mapping.columnKey(2), "NOT ASSIGNED");
  EXPECT_EQ(grid.textMatrix(kAssignmentRow, 2), "Not Assigned");
}

TEST_F(ColumnMappingTest, CaptionsFindFieldsIgnoringCaseBlanksAndPunctuation) {
  ColumnMapping business;
  business.createFieldList(2);
  EXPECT_EQ(business.findFieldForCaption("E-mail"), keyOf(business, "Email"));
  EXPECT_EQ(business.findFieldForCaption("postal code"), keyOf(business, "PostalCode"));
  EXPECT_EQ(business.findFieldForCaption("BUSINESS_NUMBER"), keyOf(business, "BusinessNumber"));
  EXPECT_EQ(business.findFieldForCaption("Favourite colour"), -1);
  EXPECT_EQ(business.findFieldForCaption("--"), -1);
  ColumnMapping personal;
  personal.createFieldList(3);
  EXPECT_EQ(personal.findFieldForCaption("First Name"), keyOf(personal, "FirstName"));
  EXPECT_EQ(personal.findFieldForCaption("SIN"), keyOf(personal, "SocialInsuranceNumber"));
}

}  // namespace
}  // namespace lf
