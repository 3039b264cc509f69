// The words of the enumerated company columns and the numbers they store.
#include "text/value_vocabularies.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

TEST(ValueVocabularies, ExactWordsAfterTrimAndUpperCase) {
  EXPECT_EQ(vocabularyValue("RC59PERMISSION", " full "), 1);
  EXPECT_EQ(vocabularyValue("RC59PERMISSION", "None"), 0);
  EXPECT_EQ(vocabularyValue("RC59PERMISSION", "LIMITED"), 2);
  EXPECT_EQ(vocabularyValue("RC59STATUS", "Not Filed"), 0);
  EXPECT_EQ(vocabularyValue("RC59STATUS", "awaiting signature"), 1);
  EXPECT_EQ(vocabularyValue("RC59STATUS", "CRA Processing"), 2);
  EXPECT_EQ(vocabularyValue("RC59STATUS", "Completed"), 3);
  EXPECT_EQ(vocabularyValue("GSTFILINGMETHOD", "Not Specified"), 0);
  EXPECT_EQ(vocabularyValue("GSTFILINGMETHOD", "Traditional"), 1);
  EXPECT_EQ(vocabularyValue("GSTFILINGMETHOD", "Simple Method"), 2);
  EXPECT_EQ(vocabularyValue("GSTFILINGMETHOD", "Quick Method"), 3);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Corporation"), 1);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Sole Proprietorship"), 2);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Partnership"), 3);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Non Profit"), 4);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Trusts"), 5);
  EXPECT_EQ(vocabularyValue("COMPANYTYPE", "Joint Ventures"), 6);
}

TEST(ValueVocabularies, UnknownExactWordWritesNothing) {
  EXPECT_FALSE(vocabularyValue("COMPANYTYPE", "Trust"));  // the file must say "TRUSTS"
  EXPECT_FALSE(vocabularyValue("RC59STATUS", "Filed"));
  EXPECT_FALSE(vocabularyValue("GSTFILINGMETHOD", "Quick"));
  EXPECT_FALSE(vocabularyValue("CITY", "Toronto"));
  EXPECT_FALSE(isVocabularyKey("CITY"));
  EXPECT_TRUE(isVocabularyKey("FINANCIALSTATEMENTS"));
}

TEST(ValueVocabularies, FinancialStatementsBySubstringInOrder) {
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "Notice to Reader"), 2);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "NTR"), 2);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "compilation"), 2);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "Review Engagement"), 3);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "Audit Review"), 3);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "Audited"), 5);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", "none"), 1);
  EXPECT_EQ(vocabularyValue("FINANCIALSTATEMENTS", ""), 1);
}

}  // namespace
}  // namespace lf
