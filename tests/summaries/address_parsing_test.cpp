// The address parser on the documented lines: province search (entry 41 included), the three
// comma splits and the right-to-left strip of addresses without commas.
#include "summaries/address_parsing.hpp"

#include <gtest/gtest.h>

#include "tests/test_support.hpp"

namespace lf {
namespace {

using testing::InstalledErrorService;

struct Parsed {
  std::string Street, City, Province, PostalCode;
};

Parsed parse(std::string line) {
  const AddressFields f = parseAddressString(line);
  // Only these four are ever written.
  EXPECT_EQ(
      f.Name + f.ContactName + f.Country + f.Phone + f.Fax + f.Cell + f.Home + f.Email + f.WebSite,
      "");
  return {f.Street, f.City, f.Province, f.PostalCode};
}

void expectParsed(const std::string& line, const Parsed& want) {
  SCOPED_TRACE(line);
  const Parsed got = parse(line);
  EXPECT_EQ(got.Street, want.Street);
  EXPECT_EQ(got.City, want.City);
  EXPECT_EQ(got.Province, want.Province);
  EXPECT_EQ(got.PostalCode, want.PostalCode);
}

TEST(AddressProvinceSearch, NamedProvinceIsCutFromUpperCasedLine) {
  expectParsed("123 Main St, Toronto Ontario M5V 1A1",
               {"123 MAIN ST", "TORONTO", "Ontario", "M5V 1A1"});
  std::string line = "123 Main St, Toronto Ontario M5V 1A1";
  parseAddressString(line);
  EXPECT_EQ(line, " TORONTO M5V 1A1");  // rewritten in place: what followed the last comma
}

TEST(AddressProvinceSearch, EntryWithFullStopKeepsIt) {
  expectParsed("1 Bay Rd, Halifax N.S. B3H 1A1", {"1 BAY RD", "HALIFAX", "N.S.", "B3H 1A1"});
  expectParsed("1 Bay Rd, Regina Sask. S4P3Y2", {"1 BAY RD", "REGINA", "Sask.", "S4P3Y2"});
}

TEST(AddressProvinceSearch, LettersInsideWordMatch) {
  // The entry and its blank go, so the street closes up.
  expectParsed("12 Crab St, Calgary T2P 1J9", {"12 CRST", "CALGARY", "AB", "T2P 1J9"});
}

TEST(AddressProvinceSearch, EmptyLastEntryRemovesAllBlanks) {
  expectParsed("123 Main St Toronto", {"123MAINSTTORONTO", "", "", ""});
  expectParsed("PO Box 7, Ottawa K1A 0A6", {"POBOX7", "OTTAWAK1A0A6", "", ""});
  // A province at the very end has no blank after it and is not found.
  expectParsed("9 Elm, Fort St John BC", {"9ELM", "FORTSTJOHNBC", "", ""});
  std::string line = "Ottawa";  // no blank: nothing matches, case kept
  EXPECT_EQ(parseAddressString(line).Street, "Ottawa");
}

TEST(AddressCommaSplits, PostalAfterLastCommaSendsCityToSecondSplit) {
  expectParsed("123 Main St, Toronto, ON M5V1A1", {"123 MAIN ST", "TORONTO", "ON", "M5V1A1"});
}

TEST(AddressCommaSplits, LinesWithoutBlanksGoByTheTables) {
  // No blank anywhere, so the province search finds nothing and the tables decide.
  expectParsed("1Main,Toronto,ON", {"1Main", "Toronto", "ON", ""});
  expectParsed("1Main,M5V1A1", {"1Main", "", "", "M5V1A1"});
  // The second split takes a lone token as the province while none is known.
  expectParsed("1Main,Toronto,M5V1A1", {"1Main", "", "Toronto", "M5V1A1"});
}

TEST(AddressCommaSplits, ThirdSplitKeepsCommaAndEmptiesCity) {
  // After the second split only the province is known, so the third split shortens Street.
  expectParsed("A,B,C,M5V1A1", {"A,", "", "C", "M5V1A1"});
}

TEST(AddressCommaSplits, ManyTokensAfterComma) {
  expectParsed("9 Elm, North York Ont M3C 1K3", {"9 ELM", "NORTH YORK", "Ont", "M3C 1K3"});
  expectParsed("9 Elm, Fort St John BC V1J4H6", {"9 ELM", "FORT ST JOHN", "BC", "V1J4H6"});
}

TEST(AddressWithoutCommas, StripsPostalThenCityFromTheRight) {
  expectParsed("123 Main St Toronto ON M5V 1A1", {"123 MAIN ST", "TORONTO", "ON", "M5V 1A1"});
  expectParsed("55 King Winnipeg MB R3C4T5", {"55 KING", "WINNIPEG", "MB", "R3C4T5"});
}

TEST(AddressWithoutCommas, WithSpacesFillsOnlyOpenFields) {
  AddressFields f;
  bool city = false, province = false, postal = false;
  parseAddressStringWithSpaces("12 Oak Ave Guelph ON N1H 2P4", f, city, province, postal);
  EXPECT_EQ(f.PostalCode, "N1H 2P4");
  EXPECT_EQ(f.Province, "ON");
  EXPECT_EQ(f.City, "Guelph");
  EXPECT_EQ(f.Street, "12 Oak Ave");
  EXPECT_TRUE(city && province && postal);

  f = {};
  city = false, province = false, postal = true;
  parseAddressStringWithSpaces("Guelph ON", f, city, province, postal);
  EXPECT_EQ(f.Province, "ON");
  EXPECT_EQ(f.City, "Guelph");

  f = {};
  city = false, province = true, postal = true;
  parseAddressStringWithSpaces("12Oak Guelph", f, city, province, postal);
  EXPECT_EQ(f.City, "Guelph");
  EXPECT_EQ(f.Street, "12Oak");

  f = {};
  city = false, province = false, postal = false;
  parseAddressStringWithSpaces("N1H 2P4", f, city, province, postal);
  EXPECT_EQ(f.PostalCode, "N1H 2P4");
  EXPECT_FALSE(city || province);

  f = {};
  city = false, province = false, postal = false;
  parseAddressStringWithSpaces(" Toronto ", f, city, province, postal);
  EXPECT_EQ(f.Province, "Toronto");  // a single token fills the first open field

  f = {};
  city = false, province = false, postal = false;
  parseAddressStringWithSpaces(" Guelph ", f, city, province, postal);
  EXPECT_EQ(f.PostalCode, "Guelph");  // any six characters make a postal code
}

TEST(AddressWithoutCommas, NoTokenLeftForCityFaultsAndKeepsWhatWasSet) {
  InstalledErrorService errors(kErrorResumeNext);
  AddressFields f;
  f.Street = "before";
  bool city = false, province = false, postal = false;
  parseAddressStringWithSpaces("Guelph N1H 2P4", f, city, province, postal);
  ASSERT_EQ(errors.errors.size(), 1u);
  EXPECT_EQ(errors.errors[0].number, 9);
  EXPECT_EQ(errors.errors[0].source,
            "Ledgerfolio.exe-modFormatAddresses-parseAddressStringWithSpaces");
  EXPECT_EQ(f.PostalCode, "N1H 2P4");
  EXPECT_EQ(f.Province, "Guelph");
  EXPECT_EQ(f.City, "");
  EXPECT_EQ(f.Street, "before");
  EXPECT_FALSE(city);

  // Four tokens: nothing is left for Street, which stays as it was.
  f = {};
  f.Street = "before";
  city = false, province = false, postal = false;
  parseAddressStringWithSpaces("Guelph ON N1H 2P4", f, city, province, postal);
  EXPECT_EQ(f.City, "Guelph");
  EXPECT_EQ(f.Province, "ON");
  EXPECT_EQ(f.Street, "before");
}

TEST(AddressLineBreaks, BreaksBecomeBlanks) {
  expectParsed("123 Main St,\r\nToronto\rON\nM5V 1A1", {"123 MAIN ST", "TORONTO", "ON", "M5V 1A1"});
}

}  // namespace
}  // namespace lf
