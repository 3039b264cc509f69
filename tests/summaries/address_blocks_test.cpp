// Address blocks: the line rules of createAddress, the contact lines and their doubled "\par ",
// and the loaders' choice of record, inheritance and default contact.
#include "summaries/address_blocks.hpp"

#include "tests/summaries/summary_test_support.hpp"

namespace lf {
namespace {

AddressFields address(std::string street, std::string city, std::string province = "",
                      std::string postal = "", std::string country = "") {
  AddressFields f;
  f.Street = std::move(street);
  f.City = std::move(city);
  f.Province = std::move(province);
  f.PostalCode = std::move(postal);
  f.Country = std::move(country);
  return f;
}

TEST(CreateAddress, AllBlankFieldsGiveEmptyText) {
  AddressFields f;
  f.Name = "   ";
  EXPECT_EQ(createAddress(f, true, true), "");
  EXPECT_EQ(createAddressWithContactInfo(f, true, true), "");
}

TEST(CreateAddress, LinesJoinAsTheCityLineRulesSay) {
  AddressFields streetAndCity = address(" 1 Main ", "Ottawa");
  EXPECT_EQ(createAddress(streetAndCity, false, false), "1 Main\r\nOttawa");
  AddressFields provinceFirst = address("", "", "ON", "K1A 0A6");
  EXPECT_EQ(createAddress(provinceFirst, false, false), "ON  K1A 0A6");
  AddressFields full = address("1 Main", "Ottawa", "ON", "K1A 0A6");
  EXPECT_EQ(createAddress(full, false, false), "1 Main\r\nOttawa, ON  K1A 0A6");
  AddressFields nameNoStreet = address("", "Ottawa");
  nameNoStreet.Name = "Jane Doe";
  EXPECT_EQ(createAddress(nameNoStreet, false, false), "Jane Doe\r\n\r\nOttawa");
}

TEST(CreateAddress, ContactNameOnlyWhenAsked) {
  AddressFields f = address("1 Main", "Ottawa");
  f.Name = "Acme Ltd";
  f.ContactName = "Jane Doe";
  EXPECT_EQ(createAddress(f, true, false), "Acme Ltd\r\nJane Doe\r\n1 Main\r\nOttawa");
  EXPECT_EQ(createAddress(f, false, false), "Acme Ltd\r\n1 Main\r\nOttawa");
}

TEST(CreateAddress, CanadaIsLeftOutAndOtherCountriesStandAlone) {
  for (const char* canada : {"Canada", "CAN", "cda", "CA"}) {
    AddressFields f = address("1 Main", "Ottawa", "", "", canada);
    EXPECT_EQ(createAddress(f, false, false), "1 Main\r\nOttawa") << canada;
  }
  AddressFields us = address("1 Main", "Buffalo", "NY", "14201", "USA");
  EXPECT_EQ(createAddress(us, false, false), "1 Main\r\nBuffalo, NY  14201\r\nUSA");
}

TEST(CreateAddress, RtfPutsParBeforeEachFollowingLine) {
  AddressFields f = address("1 Main", "Ottawa");
  f.Name = "Acme Ltd";
  EXPECT_EQ(createAddress(f, false, true), "Acme Ltd\r\n\\par 1 Main\r\n\\par Ottawa");
}

TEST(CreateAddressWithContactInfo, LabelsInOrderAndAddressLinesConvertedTwice) {
  AddressFields f = address("1 Main", "Ottawa");
  f.Name = "Acme Ltd";
  f.Phone = "555-1111";
  f.Email = "a@b.ca";
  f.WebSite = "acme.ca";
  EXPECT_EQ(
      createAddressWithContactInfo(f, false, false),
      "Acme Ltd\r\n1 Main\r\nOttawa\r\nPhone: 555-1111\r\nEmail: a@b.ca\r\nWeb Site: acme.ca");
  EXPECT_EQ(createAddressWithContactInfo(f, false, true),
            "Acme Ltd\r\n\\par \\par 1 Main\r\n\\par \\par Ottawa\r\n\\par Phone: 555-1111\r\n"
            "\\par Email: a@b.ca\r\n\\par Web Site: acme.ca");
}

class AddressLoaderTest : public summaries_test::SummaryTest {};

TEST_F(AddressLoaderTest, PersonalAddressReadsEmployeeBeforeContact) {
  exec(
      "INSERT INTO Contacts (ContactID, DisplayName, HomeAddress, HomeCity, HomePhone_Main) "
      "VALUES (40, 'Jane Doe', '1 Main', 'Ottawa', '555-1111');");
  exec(
      "INSERT INTO AccountantEmployeeInfo (ContactID, DisplayName, HomeCity) "
      "VALUES (41, 'Sam Staff', 'Kingston');");
  EXPECT_EQ(createPersonalContactAddress(40, false, -1, true, true, false),
            "Jane Doe\r\n1 Main\r\nOttawa\r\nPhone: 555-1111");
  EXPECT_EQ(createPersonalContactAddress(40, false, 41, true, false, false),
            "Sam Staff\r\n\r\nKingston");
  EXPECT_EQ(createPersonalContactAddress(-1, false, 0, true, true, true), "");
}

TEST_F(AddressLoaderTest, InheritingContactShowsTheCompanyAddressAndNumbers) {
  exec(
      "INSERT INTO Companies (CompanyID, CompanyName, Address, City, OfficeNumber, FaxNumber) "
      "VALUES (7, 'Acme Ltd', '9 Bay St', 'Toronto', '555-7000', '555-7001');");
  exec(
      "INSERT INTO Contacts (ContactID, DisplayName, BusinessName, BusinessAddress, "
      "BusinessCity, BusinessPhone_Main, BusinessPhone_Cell, InheritCompanyInfo) "
      "VALUES (40, 'Jane Doe', 'Acme', '1 Main', 'Ottawa', '555-1111', '555-2222', True);");
  EXPECT_EQ(createBusinessContactAddress(40, false, -1, 7, true, true, false, true),
            "Acme\r\nJane Doe\r\n9 Bay St\r\nToronto\r\nPhone: 555-7000\r\nFax: 555-7001\r\n"
            "Cell: 555-2222");
  EXPECT_EQ(createBusinessContactAddress(40, false, -1, -1, true, false, false, false),
            "1 Main\r\nOttawa");
}

TEST_F(AddressLoaderTest, CompanyWithoutDefaultContactClearsIncludeContactName) {
  exec(
      "INSERT INTO Companies (CompanyID, CompanyName, City, Email) "
      "VALUES (7, 'Acme Ltd', 'Toronto', 'info@acme.ca');");
  bool include = true;
  EXPECT_EQ(createCompanyAddress(7, include, false, -1, true, false, true),
            "Acme Ltd\r\n\r\nToronto\r\nEmail: info@acme.ca");
  EXPECT_FALSE(include);

  exec("INSERT INTO Contacts (ContactID, DisplayName) VALUES (40, 'Jane Doe');");
  exec(
      "INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) "
      "VALUES (40, 7, True);");
  include = true;
  EXPECT_EQ(createCompanyAddress(7, include, false, -1, true, false, false),
            "Acme Ltd\r\nJane Doe\r\n\r\nToronto");
  EXPECT_TRUE(include);
}

}  // namespace
}  // namespace lf
