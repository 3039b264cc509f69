// The name procedures of modDatabaseClientFunctions: free-text personal names, such as a
// client's printed name or a couple's name, turned into the name and spouse columns of a
// Contacts row.
//
// The rules are word lists and fixed positions, with no dictionary of given names. The parser
// never refuses a string: what it cannot place ends up in the first, middle or last name, and
// its odd results (a prefix found inside a word, a couple prefix cut one letter short) are
// behaviour that imported data already relies on. Each procedure runs under the error
// convention of frame/procedure.hpp.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "records/person_name_parts.hpp"

namespace lf {

// The 18 name prefixes, upper case, in the order they are tried ("M." first).
const std::array<std::string_view, 18>& returnPrefixStringArray();
// The three couple joiners " AND ", " & ", " ET "; the blanks belong to the search text.
const std::array<std::string_view, 3>& returnJoinerStringArray();

// The first prefix of the list found anywhere in the name (not only at a word start), as
// written in the input, with its trailing blank: "Yasir Khan" gives "sir ". Empty when none.
std::string parsePrefixFromNameString(std::string_view nameString);

// The first couple prefix (prefix, joiner, prefix) found, as written in the input, with no
// blank after the second prefix: "Mr and Mrs Smith" gives "Mr and Mr". Empty when none.
std::string parseDoublePrefexesFromNameString(std::string_view nameString);

// One person's name: prefix, "Last, First" comma form, up to four words and the surname
// particles. A blank input gives the empty record.
PersonNameParts parseSingleNameString(std::string_view nameString);

// What parseNameForContact writes for one name string.
struct ContactNameFields {
  bool hasResult = false;   // a name was parsed: the five name columns are written
  PersonNameParts contact;  // written trimmed
  std::string spouse;       // handed to addSpouseNameToContact when not blank
};

// The parsing half of parseNameForContact, with no database work. A couple prefix always
// passes through a subscript fault that goes to the error service; after "resume next" the
// parse goes on with no second prefix. Any other answer leaves with what was parsed so far.
ContactNameFields parseNameForContactFields(std::string_view nameString);

// Parses the whole name string of one contact (a person or a couple) and writes the name
// columns of its Contacts row, then the spouse columns through addSpouseNameToContact.
// REQUIRES: moduleState().DatabaseReference; when it is missing or closed nothing is written.
void parseNameForContact(long contactID, std::string_view nameString);

// Parses spouseNameString as one person and writes SpouseNamePrefix, SpouseFirstName,
// SpouseMiddleName, SpouseLastName and SpouseName of the contact's row.
void addSpouseNameToContact(long contactID, std::string_view spouseNameString);

}  // namespace lf
