// The reverse relationships of family links, for a male, a female and an other contact.
#include "records/family_relationships.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lf {
namespace {

struct Example {
  std::string given, male, female, other;
};

TEST(FamilyRelationshipsTest, EveryWordOfTheTableGivesItsReverseByGender) {
  const std::vector<Example> examples = {
      {"Husband", "Husband", "Wife", "Wife"},
      {"Wife", "Husband", "Wife", "Husband"},
      {"Spouse", "Husband", "Wife", "Spouse"},
      {"Commonlaw Partner", "Commonlaw Partner", "Commonlaw Partner", "Commonlaw Partner"},
      {"Father", "Son", "Daughter", "Child"},
      {"Mother", "Son", "Daughter", "Child"},
      {"Parent", "Son", "Daughter", "Child"},
      {"Son", "Father", "Mother", "Parent"},
      {"Daughter", "Father", "Mother", "Parent"},
      {"Child", "Father", "Mother", "Parent"},
      {"Brother", "Brother", "Sister", "Sibling"},
      {"Sister", "Brother", "Sister", "Sibling"},
      {"Sibling", "Brother", "Sister", "Sibling"},
      {"Trustee", "Trustee", "Trustee", "Trustee"},
      {"Grandfather", "Grandson", "Granddaughter", "Grandchild"},
      {"Grandmother", "Grandson", "Granddaughter", "Grandchild"},
      {"Grandparent", "Grandson", "Granddaughter", "Grandchild"},
      {"Grandson", "Grandfather", "Grandmother", "Grandparent"},
      {"Granddaughter", "Grandfather", "Grandmother", "Grandparent"},
      {"Grandchild", "Grandfather", "Grandmother", "Grandparent"},
      {"Uncle", "Nephew", "Niece", "Unknown"},
      {"Aunt", "Nephew", "Niece", "Unknown"},
      {"Niece", "Uncle", "Aunt", "Unknown"},
      {"Nephew", "Uncle", "Aunt", "Unknown"},
      {"Cousin", "Cousin", "Cousin", "Cousin"},
      {"Father-in-law", "Son-in-law", "Daughter-in-law", "Unknown"},
      {"Mother-in-law", "Son-in-law", "Daughter-in-law", "Unknown"},
      {"Son-in-law", "Father-in-law", "Mother-in-law", "Unknown"},
      {"Daughter-in-law", "Father-in-law", "Mother-in-law", "Unknown"},
      {"Brother-in-law", "Brother-in-law", "Sister-in-law", "Unknown"},
      {"Sister-in-law", "Brother-in-law", "Sister-in-law", "Unknown"},
      {"Step Father", "Step Son", "Step Daughter", "Step Child"},
      {"Step Mother", "Step Son", "Step Daughter", "Step Child"},
      {"Step Parent", "Step Son", "Step Daughter", "Step Child"},
      {"Step Son", "Step Father", "Step Mother", "Step Parent"},
      {"Step Daughter", "Step Father", "Step Mother", "Step Parent"},
      {"Step Child", "Step Father", "Step Mother", "Step Parent"},
      {"Step Brother", "Step Brother", "Step Sister", "Step Sibling"},
      {"Step Sister", "Step Brother", "Step Sister", "Step Sibling"},
      {"Step Sibling", "Step Brother", "Step Sister", "Step Sibling"},
      {"Adoptive Father", "Adoptive Son", "Adoptive Daughter", "Adoptive Child"},
      {"Adoptive Mother", "Adoptive Son", "Adoptive Daughter", "Adoptive Child"},
      {"Adoptive Parent", "Adoptive Son", "Adoptive Daughter", "Adoptive Child"},
      {"Adoptive Son", "Adoptive Father", "Adoptive Mother", "Adoptive Parent"},
      {"Adoptive Daughter", "Adoptive Father", "Adoptive Mother", "Adoptive Parent"},
      {"Adoptive Child", "Adoptive Father", "Adoptive Mother", "Adoptive Parent"},
      {"Friend", "Friend", "Friend", "Friend"},
      {"Acquaintance", "Acquaintance", "Acquaintance", "Acquaintance"},
  };
  for (const Example& e : examples) {
    EXPECT_EQ(oppositeFamilyRelationship(e.given, 1), e.male) << e.given;
    EXPECT_EQ(oppositeFamilyRelationship(e.given, 2), e.female) << e.given;
    EXPECT_EQ(oppositeFamilyRelationship(e.given, 0), e.other) << e.given;
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
