// The reverse relationships of family links, for a male, a female and an other contact.
#include "records/family_relationships.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lf {
namespace {

// One row of the table: the words given, separated by "|", and the reverse for a male, a
// female and an other contact.
struct Example {
  std::string given, male, female, other;
};

std::vector<std::string> words(const std::string& given) {
  std::vector<std::string> out;
  std::size_t start = 0;
  for (std::size_t bar; (bar = given.find('|', start)) != std::string::npos; start = bar + 1)
    out.push_back(given.substr(start, bar - start));
  out.push_back(given.substr(start));
  return out;
}

TEST(FamilyRelationshipsTest, EveryWordOfTheTableGivesItsReverseByGender) {
  const std::vector<Example> table = {
      {"Husband", "Husband", "Wife", "Wife"},
      {"Wife", "Husband", "Wife", "Husband"},
      {"Spouse", "Husband", "Wife", "Spouse"},
      {"Commonlaw Partner", "Commonlaw Partner", "Commonlaw Partner", "Commonlaw Partner"},
      {"Father|Mother|Parent", "Son", "Daughter", "Child"},
      {"Son|Daughter|Child", "Father", "Mother", "Parent"},
      {"Brother|Sister|Sibling", "Brother", "Sister", "Sibling"},
      {"Trustee", "Trustee", "Trustee", "Trustee"},
      {"Grandfather|Grandmother|Grandparent", "Grandson", "Granddaughter", "Grandchild"},
      {"Grandson|Granddaughter|Grandchild", "Grandfather", "Grandmother", "Grandparent"},
      {"Uncle|Aunt", "Nephew", "Niece", "Unknown"},
      {"Niece|Nephew", "Uncle", "Aunt", "Unknown"},
      {"Cousin", "Cousin", "Cousin", "Cousin"},
      {"Father-in-law|Mother-in-law", "Son-in-law", "Daughter-in-law", "Unknown"},
      {"Son-in-law|Daughter-in-law", "Father-in-law", "Mother-in-law", "Unknown"},
      {"Brother-in-law|Sister-in-law", "Brother-in-law", "Sister-in-law", "Unknown"},
      {"Step Father|Step Mother|Step Parent", "Step Son", "Step Daughter", "Step Child"},
      {"Step Son|Step Daughter|Step Child", "Step Father", "Step Mother", "Step Parent"},
      {"Step Brother|Step Sister|Step Sibling", "Step Brother", "Step Sister", "Step Sibling"},
      {"Adoptive Father|Adoptive Mother|Adoptive Parent", "Adoptive Son", "Adoptive Daughter",
       "Adoptive Child"},
      {"Adoptive Son|Adoptive Daughter|Adoptive Child", "Adoptive Father", "Adoptive Mother",
       "Adoptive Parent"},
      {"Friend", "Friend", "Friend", "Friend"},
      {"Acquaintance", "Acquaintance", "Acquaintance", "Acquaintance"},
  };
  for (const Example& row : table) {
    for (const std::string& given : words(row.given)) {
      EXPECT_EQ(oppositeFamilyRelationship(given, 1), row.male) << given;
      EXPECT_EQ(oppositeFamilyRelationship(given, 2), row.female) << given;
      EXPECT_EQ(oppositeFamilyRelationship(given, 0), row.other) << given;
    }
  }
}

TEST(FamilyRelationshipsTest, WordsOutsideTheTableAndOtherSpellingsAreUnknown) {
  for (const char* word : {"Neighbour", "", "wife", "HUSBAND", "Step-Son", "Common-law Partner"})
    EXPECT_EQ(oppositeFamilyRelationship(word, 1), "Unknown") << word;
}

TEST(FamilyRelationshipsTest, OnlyExactMaleAndFemaleCountAsGenders) {
  EXPECT_EQ(familyGenderCode("Male"), 1);
  EXPECT_EQ(familyGenderCode("Female"), 2);
  EXPECT_EQ(familyGenderCode("male"), 0);
  EXPECT_EQ(familyGenderCode("F"), 0);
  EXPECT_EQ(familyGenderCode(""), 0);
}

}  // namespace
}  // namespace lf
