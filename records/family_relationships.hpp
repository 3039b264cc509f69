// The family relationships of contact-to-contact links: what the other person is, seen from
// the person on whose link row a relationship stands.
//
// A link row (John, Mary, "Wife") reads "Mary is John's wife"; its reverse is (Mary, John,
// "Husband"), and the word of the reverse depends on John's gender.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// Gender codes of the table: 1 "Male", 2 "Female", 0 anything else or blank.
int familyGenderCode(std::string_view gender);

// The relationship of the reverse link, by the table of relationships: `relationship` is
// what the other person is to the contact, `genderCode` the contact's; the answer is what
// the contact is to the other person. Exact, case-sensitive words; "Unknown" for anything
// the table does not hold.
std::string oppositeFamilyRelationship(std::string_view relationship, int genderCode);

// The same with the gender read from the contact's row (code 0 when the row is missing, the
// gender is blank or the database is closed).
std::string getOppositeFamilyRelationship(long contactID, std::string_view relationship);

}  // namespace lf
