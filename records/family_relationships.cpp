// getOppositeFamilyRelationship: the table of reverse family relationships.
#include "records/family_relationships.hpp"

#include <array>
#include <initializer_list>
#include <string_view>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

// One row of the table: the words it answers for, and the reverse for a male, a female and
// an other (unknown gender) contact. The first row holding the word decides.
struct RelationshipRow {
  std::initializer_list<std::string_view> given;
  std::string_view male;
  std::string_view female;
  std::string_view other;
};

const std::array<RelationshipRow, 23>& relationshipTable() {
  // Intended: the unknown-gender cells of Husband and Wife are crossed (an unknown person
  // opposite a "Husband" is a "Wife", and the reverse).
  static const std::array<RelationshipRow, 23> table = {{
      {{"Husband"}, "Husband", "Wife", "Wife"},
      {{"Wife"}, "Husband", "Wife", "Husband"},
      {{"Spouse"}, "Husband", "Wife", "Spouse"},
      {{"Commonlaw Partner"}, "Commonlaw Partner", "Commonlaw Partner", "Commonlaw Partner"},
      {{"Father", "Mother", "Parent"}, "Son", "Daughter", "Child"},
      {{"Son", "Daughter", "Child"}, "Father", "Mother", "Parent"},
      {{"Brother", "Sister", "Sibling"}, "Brother", "Sister", "Sibling"},
      {{"Trustee"}, "Trustee", "Trustee", "Trustee"},
      {{"Grandfather", "Grandmother", "Grandparent"}, "Grandson", "Granddaughter", "Grandchild"},
      {{"Grandson", "Granddaughter", "Grandchild"}, "Grandfather", "Grandmother", "Grandparent"},
      {{"Uncle", "Aunt"}, "Nephew", "Niece", "Unknown"},
      {{"Niece", "Nephew"}, "Uncle", "Aunt", "Unknown"},
      {{"Cousin"}, "Cousin", "Cousin", "Cousin"},
      {{"Father-in-law", "Mother-in-law"}, "Son-in-law", "Daughter-in-law", "Unknown"},
      {{"Son-in-law", "Daughter-in-law"}, "Father-in-law", "Mother-in-law", "Unknown"},
      {{"Brother-in-law", "Sister-in-law"}, "Brother-in-law", "Sister-in-law", "Unknown"},
      {{"Step Father", "Step Mother", "Step Parent"}, "Step Son", "Step Daughter", "Step Child"},
      {{"Step Son", "Step Daughter", "Step Child"}, "Step Father", "Step Mother", "Step Parent"},
      {{"Step Brother", "Step Sister", "Step Sibling"},
       "Step Brother",
       "Step Sister",
       "Step Sibling"},
      {{"Adoptive Father", "Adoptive Mother", "Adoptive Parent"},
       "Adoptive Son",
       "Adoptive Daughter",
       "Adoptive Child"},
      {{"Adoptive Son", "Adoptive Daughter", "Adoptive Child"},
       "Adoptive Father",
       "Adoptive Mother",
       "Adoptive Parent"},
      {{"Friend"}, "Friend", "Friend", "Friend"},
      {{"Acquaintance"}, "Acquaintance", "Acquaintance", "Acquaintance"},
  }};
  return table;
}

}  // namespace

int familyGenderCode(std::string_view gender) {
  if (gender == "Male") return 1;
  if (gender == "Female") return 2;
  return 0;
}

std::string oppositeFamilyRelationship(std::string_view relationship, int genderCode) {
  for (const RelationshipRow& row : relationshipTable()) {
    for (std::string_view word : row.given) {
      if (word != relationship) continue;
      switch (genderCode) {
        case 1:
          return std::string(row.male);
        case 2:
          return std::string(row.female);
        default:
          return std::string(row.other);
      }
    }
  }
  return "Unknown";
}

std::string getOppositeFamilyRelationship(long contactID, std::string_view relationship) {
  int genderCode = 0;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-getOppositeFamilyRelationship", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT Contacts.ContactID, Contacts.Gender FROM Contacts WHERE ContactID=" +
                          records::text(contactID) + ";",
                      kLockReadOnly);
    if (!db->hasRecord(rs)) return;
    const Variant gender = db->getField(rs, "Gender");
    if (!records::blank(gender)) genderCode = familyGenderCode(gender.toString());
  });
  return oppositeFamilyRelationship(relationship, genderCode);
}

}  // namespace lf
