#include "base/general_utilities.hpp"

#include <gtest/gtest.h>

#include "base/legacy_text.hpp"

namespace lf {
namespace {

using GU = GeneralUtilities;

TEST(GeneralUtilitiesPhone, NorthAmericanForms) {
  EXPECT_EQ(GU::formatPhoneNumber("4165551234"), "(416) 555-1234");
  EXPECT_EQ(GU::formatPhoneNumber("416 555-1234"), "(416) 555-1234");
  EXPECT_EQ(GU::formatPhoneNumber("(416)555.1234"), "(416) 555-1234");
  EXPECT_EQ(GU::formatPhoneNumber("5551234"), "555-1234");
  EXPECT_EQ(GU::formatPhoneNumber("1-416-555-1234"), "(416) 555-1234");
  EXPECT_EQ(GU::formatPhoneNumber("+1 416 555 1234"), "(416) 555-1234");
}

TEST(GeneralUtilitiesPhone, KeepsTheExtension) {
  EXPECT_EQ(GU::formatPhoneNumber("416-555-1234 ext. 22"), "(416) 555-1234 x22");
  EXPECT_EQ(GU::formatPhoneNumber("416 555 1234 x22"), "(416) 555-1234 x22");
  // Area, number and extension joined by blanks, as the sync composes them.
  EXPECT_EQ(GU::formatPhoneNumber("416 5551234 22"), "(416) 555-1234 x22");
  EXPECT_EQ(GU::formatPhoneNumber("1 416 5551234 22"), "(416) 555-1234 x22");
}

TEST(GeneralUtilitiesPhone, AnythingElseComesBackTrimmed) {
  EXPECT_EQ(GU::formatPhoneNumber("  1-800-FLOWERS "), "1-800-FLOWERS");
  EXPECT_EQ(GU::formatPhoneNumber(" 12345 "), "12345");
  EXPECT_EQ(GU::formatPhoneNumber("44 20 7946 0958"), "44 20 7946 0958");
  EXPECT_EQ(GU::formatPhoneNumber(""), "");
}

TEST(GeneralUtilitiesBusinessNumber, SplitsRootAndReference) {
  std::string suffix;
  bool valid = false;
  EXPECT_EQ(GU::parseBusinessNumber("123456789", suffix, valid), "12345 6789");
  EXPECT_TRUE(valid);
  EXPECT_EQ(suffix, "0001");
  EXPECT_EQ(GU::parseBusinessNumber(" 12345 6789 RT0002 ", suffix, valid), "12345 6789");
  EXPECT_TRUE(valid);
  EXPECT_EQ(suffix, "0002");
  EXPECT_EQ(GU::parseBusinessNumber("123456789rc0003", suffix, valid), "12345 6789");
  EXPECT_EQ(suffix, "0003");
  EXPECT_EQ(GU::parseBusinessNumber(" 12-34 ", suffix, valid), "12-34");
  EXPECT_FALSE(valid);
  EXPECT_EQ(GU::parseBusinessNumber("123456789 RT01", suffix, valid), "123456789 RT01");
  EXPECT_FALSE(valid);
}

TEST(GeneralUtilitiesBusinessNumber, CorporationNumberInPrintedForm) {
  EXPECT_EQ(GU::parseCorporationNumber("123456789RC0001"), "12345 6789 RC0001");
  EXPECT_EQ(GU::parseCorporationNumber("123456789"), "12345 6789");
  EXPECT_EQ(GU::parseCorporationNumber(" ON-1234 "), "ON-1234");
  // The printed form reads back to the same root.
  std::string suffix;
  bool valid = false;
  EXPECT_EQ(GU::parseBusinessNumber(GU::parseCorporationNumber("123456789RC0001"), suffix, valid),
            "12345 6789");
  EXPECT_TRUE(valid);
}

TEST(GeneralUtilitiesText, MixedCase) {
  EXPECT_EQ(GU::mixedCase("JOHN SMITH"), "John Smith");
  EXPECT_EQ(GU::mixedCase("o'brien"), "O'Brien");
  EXPECT_EQ(GU::mixedCase("mary-jane"), "Mary-Jane");
  EXPECT_EQ(GU::mixedCase("JOHN'S PLUMBING"), "John's Plumbing");
  EXPECT_EQ(GU::mixedCase("123 1ST AVE. (REAR)"), "123 1st Ave. (Rear)");
  EXPECT_EQ(GU::mixedCase("BENOÎT LÉVESQUE"), "Benoît Lévesque");
  EXPECT_EQ(GU::mixedCase("éLISE CÔTÉ"), "Élise Côté");
}

TEST(GeneralUtilitiesText, IdentityAndPostalForms) {
  EXPECT_EQ(GU::formatSIN("123456789"), "123 456 789");
  EXPECT_EQ(GU::formatSIN("123-456-789"), "123 456 789");
  EXPECT_EQ(GU::formatSIN("12345678"), "12345678");
  EXPECT_EQ(GU::formatSSN("123 45 6789"), "123-45-6789");
  EXPECT_EQ(GU::formatPostalCode("m5v1a1"), "M5V 1A1");
  EXPECT_EQ(GU::formatPostalCode("M5V-1A1"), "M5V 1A1");
  EXPECT_EQ(GU::formatPostalCode("902101234"), "90210-1234");
  EXPECT_EQ(GU::formatZipCode(" 90210 "), "90210");
  EXPECT_EQ(GU::formatPostalCode(" SW1A 1AA "), "SW1A 1AA");
}

TEST(GeneralUtilitiesText, MinutesToText) {
  EXPECT_EQ(GU::minutesToText(90), "1 hr 30 min");
  EXPECT_EQ(GU::minutesToText(31), "31 min");
  EXPECT_EQ(GU::minutesToText(30), "30 min");
  EXPECT_EQ(GU::minutesToText(120), "2 hrs");
  EXPECT_EQ(GU::minutesToText(60), "1 hr");
  EXPECT_EQ(GU::minutesToText(0), "0 min");
}

TEST(LegacyText, ValReadsTheLeadingNumber) {
  EXPECT_EQ(val("12abc"), 12);
  EXPECT_EQ(val(" 1 2 3"), 123);
  EXPECT_EQ(val("1,234"), 1);
  EXPECT_EQ(val("-3.5e2x"), -350);
  EXPECT_EQ(val("abc"), 0);
  EXPECT_EQ(val(""), 0);
}

TEST(LegacyText, SubstringsForgiveTheirBounds) {
  EXPECT_EQ(leftText("TaxYear:2010", 3), "Tax");
  EXPECT_EQ(leftText("ab", 5), "ab");
  EXPECT_EQ(rightText("TaxYear:2010", 4), "2010");
  EXPECT_EQ(rightText("ab", 5), "ab");
  EXPECT_EQ(midText("Contact:15", 9), "15");
  EXPECT_EQ(midText("Contact:15", 1, 7), "Contact");
  EXPECT_EQ(midText("abc", 9), "");
  EXPECT_EQ(midText("abc", 0), "");
}

TEST(LegacyText, FindAndReplaceIgnoreCase) {
  EXPECT_EQ(inStr("FirmTaxContact:15", "taxcontact:"), 5);
  EXPECT_EQ(inStr("abcabc", "C", 4), 6);
  EXPECT_EQ(inStr("abc", "C", 1, false), 0);
  EXPECT_EQ(inStr("abc", "x"), 0);
  EXPECT_EQ(replaceAll("<<Name>> and <<name>>", "<<", "«"), "«Name>> and «name>>");
  EXPECT_EQ(replaceAll("a-a-a", "A", "b", true, 1), "b-a-a");
  EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa");
}

}  // namespace
}  // namespace lf
