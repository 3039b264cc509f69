// The name procedures of modDatabaseClientFunctions: prefix and couple-prefix search, the
// one-person word placement, the couple split with its shared surname, and the thin layer
// that writes the results into Contacts.
#include "records/name_parsing.hpp"

#include <cstdint>
#include <vector>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"

namespace lf {
namespace {

constexpr std::string_view kPrefixLabel =
    "Ledgerfolio.exe-modDatabaseClientFunctions-parsePrefixFromNameString";
constexpr std::string_view kDoublePrefixLabel =
    "Ledgerfolio.exe-modDatabaseClientFunctions-parseDoublePrefexesFromNameString";
constexpr std::string_view kSingleNameLabel =
    "Ledgerfolio.exe-modDatabaseClientFunctions-parseSingleNameString";
constexpr std::string_view kContactLabel =
    "Ledgerfolio.exe-modDatabaseClientFunctions-parseNameForContact";
constexpr std::string_view kSpouseLabel =
    "Ledgerfolio.exe-modDatabaseClientFunctions-addSpouseNameToContact";

// Surname particles: a word equal to one of these (upper-cased) starts a compound last name.
constexpr std::array<std::string_view, 10> kParticles = {"MC", "MAC", "VAN", "DE", "LE",
                                                         "LA", "DI",  "DEL", "ST", "ST."};

bool isBlank(std::string_view text) {
  return GeneralUtilities::isBlank(text);
}
std::string trim(std::string_view text) {
  return GeneralUtilities::trim(text);
}

bool isParticle(std::string_view word) {
  const std::string upper = GeneralUtilities::upperCase(word);
  for (std::string_view particle : kParticles)
    if (upper == particle) return true;
  return false;
}

// Removes every occurrence of what (case-sensitive, what not empty).
std::string removeAll(std::string_view text, std::string_view what) {
  std::string out;
  out.reserve(text.size());
  size_t from = 0;
  for (size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, from)) {
    out.append(text.substr(from, at - from));
    from = at + what.size();
  }
  out.append(text.substr(from));
  return out;
}

// The legacy Split: every delimiter cuts, so adjacent delimiters give empty pieces.
std::vector<std::string> splitAt(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> pieces;
  size_t from = 0;
  for (size_t at = text.find(delimiter); at != std::string_view::npos;
       at = text.find(delimiter, from)) {
    pieces.emplace_back(text.substr(from, at - from));
    from = at + delimiter.size();
  }
  pieces.emplace_back(text.substr(from));
  return pieces;
}

// Array read with the legacy bounds check: outside the array is a subscript fault.
const std::string& element(const std::vector<std::string>& array, size_t index) {
  if (index >= array.size()) throw SubscriptOutOfRange();
  return array[index];
}

// "Last, First..." becomes "First... Last" at the first comma; later commas stay.
void swapAtFirstComma(std::string& name) {
  const size_t comma = name.find(',');
  if (comma == std::string::npos) return;
  name = trim(std::string_view(name).substr(comma + 1)) + " " +
         trim(std::string_view(name).substr(0, comma));
}

// Cuts at the first blank: the word before it, and the rest after it (the whole text and
// nothing when there is no blank).
std::string takeWord(std::string& rest) {
  const size_t blank = rest.find(' ');
  std::string word;
  if (blank == std::string::npos) {
    word = std::move(rest);
    rest.clear();
  } else {
    word = rest.substr(0, blank);
    rest.erase(0, blank + 1);
  }
  return word;
}

// The body of parseNameForContact without its database writes. Runs inside the guard of
// the caller, which resumes the couple-prefix fault when the error service answers 1.
void parseContactName(std::string_view nameString, ContactNameFields& out) {
  std::string name(nameString);
  std::string prefix1, prefix2, surname;
  if (isBlank(name)) return;

  const std::string couple = parseDoublePrefexesFromNameString(name);
  if (!isBlank(couple)) {
    name = removeAll(name, couple);
    const std::vector<std::string> pieces = splitAt(couple, " ");
    if (pieces.size() == 3) {
      prefix1 = trim(pieces[0]);
      // Reads one past the last piece, so the fault is always taken and prefix2 stays empty
      // on "resume next". Intended: imported contacts depend on this result.
      resumeNext([&] { prefix2 = trim(element(pieces, 3)); });
    }
  }

  const std::string upperName = GeneralUtilities::upperCase(name);
  bool joinerFound = false;
  std::string part0, part1;
  for (std::string_view joiner : returnJoinerStringArray()) {
    const size_t at = upperName.find(joiner);
    if (at == std::string::npos) continue;
    joinerFound = true;
    const std::string actual = name.substr(at, joiner.size());

    const size_t comma = name.find(',');
    if (comma != std::string::npos) {
      surname = trim(std::string_view(name).substr(0, comma));
      name = trim(std::string_view(name).substr(comma + 1)) + " " + surname;
    }

    const std::vector<std::string> parts = splitAt(name, actual);
    part0 = parts[0];
    // The comma rearrangement can break the joiner apart ("John & , Mary"); then the second
    // part is missing and its read faults like any other array read.
    resumeNext([&] { part1 = element(parts, 1); });

    std::string p = parsePrefixFromNameString(part0);
    if (!isBlank(p)) {
      prefix1 = trim(p);
      part0 = removeAll(part0, p);
    }
    p = parsePrefixFromNameString(part1);
    if (!isBlank(p)) {
      prefix2 = trim(p);
      part1 = removeAll(part1, p);
    }

    // A one-word first part shares the surname of the second part (or the one before the
    // comma): "John and Mary Smith" is John Smith and Mary Smith.
    const size_t firstBlank = part0.find(' ');
    if (firstBlank == std::string::npos || firstBlank == 0) {
      if (isBlank(surname)) {
        const size_t lastBlank = part1.rfind(' ');
        if (lastBlank != std::string::npos) surname = part1.substr(lastBlank + 1);
      }
      part0 = trim(part0) + " " + surname;
    }
    break;
  }

  if (joinerFound) {
    if (!isBlank(part0)) {
      out.contact = parseSingleNameString(part0);
      out.hasResult = true;
    }
    if (!isBlank(prefix1)) out.contact.NamePrefix = trim(prefix1);
    if (!isBlank(part1)) {
      out.spouse = part1;
      const std::string spousePrefix = trim(prefix2);
      if (!isBlank(spousePrefix) && out.spouse.find(spousePrefix) == std::string::npos)
        out.spouse = spousePrefix + " " + trim(out.spouse);
    }
  } else {
    if (!isBlank(name)) {
      out.contact = parseSingleNameString(name);
      out.hasResult = true;
    }
    if (!isBlank(prefix1)) out.contact.NamePrefix = trim(prefix1);
  }
}

DatabaseService* openDatabase() {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen() ? db : nullptr;
}

// Opens the contact's row for update and, when the row exists, writes the five columns from
// the parts that makeParts gives; then closes the recordset. Each statement resumes on its
// own after action 1.
template <class MakeParts>
void writeNameColumns(DatabaseService& db, const std::string& sql,
                      const std::array<std::string_view, 5>& columns, MakeParts&& makeParts,
                      bool trimValues) {
  std::int32_t handle = 0;
  resumeNext([&] { handle = db.openRecordset(sql, kCursorKeyset, kLockOptimistic); });
  bool found = false;
  resumeNext([&] { found = db.hasRecord(handle); });
  if (found) {
    const PersonNameParts parts = makeParts();
    const std::array<const std::string*, 5> values = {&parts.NamePrefix, &parts.FirstName,
                                                      &parts.MiddleName, &parts.LastName,
                                                      &parts.DisplayName};
    for (size_t i = 0; i < columns.size(); ++i)
      resumeNext(
          [&] { db.setField(handle, columns[i], trimValues ? trim(*values[i]) : *values[i]); });
  }
  resumeNext([&] { db.closeRecordset(handle); });
}

}  // namespace

const std::array<std::string_view, 18>& returnPrefixStringArray() {
  static constexpr std::array<std::string_view, 18> prefixes = {
      "M.",   "MR",    "MR.", "MRS",  "MRS.", "MS",  "MS.",  "MISS", "MISS.",
      "MLLE", "MLLE.", "MME", "MME.", "SIR",  "REV", "REV.", "DR",   "DR."};
  return prefixes;
}

const std::array<std::string_view, 3>& returnJoinerStringArray() {
  static constexpr std::array<std::string_view, 3> joiners = {" AND ", " & ", " ET "};
  return joiners;
}

std::string parsePrefixFromNameString(std::string_view nameString) {
  std::string result;
  procedure(kPrefixLabel, [&] {
    if (isBlank(nameString)) return;
    const std::string upper = GeneralUtilities::upperCase(nameString);
    std::string pattern;
    for (std::string_view prefix : returnPrefixStringArray()) {
      pattern.assign(prefix).push_back(' ');
      // Not anchored to a word start: "Yasir Khan" holds "SIR ". Intended.
      const size_t at = upper.find(pattern);
      if (at != std::string::npos) {
        result = std::string(nameString.substr(at, pattern.size()));
        return;
      }
    }
  });
  return result;
}

std::string parseDoublePrefexesFromNameString(std::string_view nameString) {
  std::string result;
  procedure(kDoublePrefixLabel, [&] {
    if (isBlank(nameString)) return;
    const std::string upper = GeneralUtilities::upperCase(nameString);
    const auto& prefixes = returnPrefixStringArray();
    std::vector<size_t> joinerPlaces;
    // Loops: joiner, first prefix, second prefix, each in list order; the first pattern
    // found wins. With no blank after the second prefix, "MR AND MR" is found before
    // "MR AND MRS" and "Mr and Mrs" yields "Mr and Mr". Intended.
    for (std::string_view joiner : returnJoinerStringArray()) {
      // Every pattern holds the joiner, so only the places of the joiner can match; the
      // earliest matching place is where the pattern first occurs.
      joinerPlaces.clear();
      for (size_t at = upper.find(joiner); at != std::string::npos; at = upper.find(joiner, at + 1))
        joinerPlaces.push_back(at);
      if (joinerPlaces.empty()) continue;
      for (std::string_view first : prefixes)
        for (std::string_view second : prefixes)
          for (size_t at : joinerPlaces) {
            if (at < first.size()) continue;
            if (std::string_view(upper).substr(at - first.size(), first.size()) != first) continue;
            if (std::string_view(upper).substr(at + joiner.size(), second.size()) != second)
              continue;
            result = std::string(
                nameString.substr(at - first.size(), first.size() + joiner.size() + second.size()));
            return;
          }
    }
  });
  return result;
}

PersonNameParts parseSingleNameString(std::string_view nameString) {
  PersonNameParts parts;
  procedure(kSingleNameLabel, [&] {
    std::string name(nameString);
    if (isBlank(name)) return;

    const std::string prefix = parsePrefixFromNameString(name);
    const bool prefixFound = !isBlank(prefix);
    if (prefixFound) {
      parts.NamePrefix = trim(prefix);
      name = removeAll(name, prefix);
    }
    swapAtFirstComma(name);
    parts.DisplayName = trim(name);

    // At most four words from the untrimmed name; a leading or double blank gives an empty
    // word, and the fourth holds all that is left.
    std::string rest = name;
    std::string word1 = takeWord(rest);
    std::string word2 = takeWord(rest);
    std::string word3 = takeWord(rest);
    std::string word4 = rest;
    word1 = trim(word1);
    word2 = trim(word2);
    word3 = trim(word3);
    word4 = trim(word4);

    if (!isBlank(word4)) {
      parts.FirstName = word1;
      if (isParticle(word2)) {
        parts.LastName = word2 + " " + word3 + " " + word4;
      } else {
        parts.MiddleName = word2;
        parts.LastName = word3 + " " + word4;
      }
    } else if (!isBlank(word3)) {
      parts.FirstName = word1;
      if (isParticle(word2)) {
        parts.LastName = word2 + " " + word3;
      } else {
        parts.MiddleName = word2;
        parts.LastName = word3;
      }
    } else if (!isBlank(word2)) {
      if (isParticle(word1)) {
        parts.LastName = word1 + " " + word2;
      } else {
        parts.FirstName = word1;
        parts.LastName = word2;
      }
    } else if (prefixFound) {
      parts.LastName = word1;  // a lone word after a prefix is a surname: "Dr. Who"
    } else {
      parts.FirstName = word1;
    }
  });
  return parts;
}

ContactNameFields parseNameForContactFields(std::string_view nameString) {
  ContactNameFields fields;
  procedure(kContactLabel, [&] { parseContactName(nameString, fields); });
  return fields;
}

void parseNameForContact(long contactID, std::string_view nameString) {
  procedure(kContactLabel, [&] {
    ContactNameFields fields;
    parseContactName(nameString, fields);
    if (fields.hasResult) {
      if (DatabaseService* db = openDatabase()) {
        writeNameColumns(
            *db,
            "SELECT Contacts.* FROM Contacts WHERE Contacts.ContactID=" +
                std::to_string(contactID) + ";",
            {"NamePrefix", "FirstName", "MiddleName", "LastName", "DisplayName"},
            [&] { return fields.contact; }, true);
      }
    }
    if (!isBlank(fields.spouse)) addSpouseNameToContact(contactID, fields.spouse);
  });
}

void addSpouseNameToContact(long contactID, std::string_view spouseNameString) {
  procedure(kSpouseLabel, [&] {
    DatabaseService* db = openDatabase();
    if (db == nullptr || isBlank(spouseNameString)) return;
    writeNameColumns(
        *db, "SELECT Contacts.* FROM Contacts WHERE ContactID = " + std::to_string(contactID) + ";",
        {"SpouseNamePrefix", "SpouseFirstName", "SpouseMiddleName", "SpouseLastName", "SpouseName"},
        [&] { return parseSingleNameString(spouseNameString); }, false);
  });
}

}  // namespace lf
