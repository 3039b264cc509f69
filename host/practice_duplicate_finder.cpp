// The duplicate finder over the practice database.
#include "host/practice_duplicate_finder.hpp"

#include <cctype>
#include <sstream>
#include <vector>

#include "base/general_utilities.hpp"
#include "base/legacy_text.hpp"
#include "base/module_state.hpp"
#include "db/database_service.hpp"
#include "host/message_box.hpp"

namespace lf {
namespace {

std::string quoted(std::string_view text) {
  return "'" + replaceAll(GeneralUtilities::trim(text), "'", "''") + "'";
}

struct Candidate {
  long id;
  std::string name;
};

std::vector<Candidate> readCandidates(DatabaseService& db, const std::string& sql,
                                      std::string_view idColumn, std::string_view nameColumn) {
  std::vector<Candidate> out;
  std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
  try {
    if (db.hasRecord(h)) {
      while (!db.isEOF(h)) {
        out.push_back({static_cast<long>(db.getField(h, idColumn).toLong()),
                       db.getField(h, nameColumn).toString()});
        db.moveNext(h);
      }
    }
  } catch (...) {
    db.closeRecordset(h);
    throw;
  }
  db.closeRecordset(h);
  return out;
}

std::string firstWord(std::string_view text) {
  std::string t = GeneralUtilities::trim(text);
  std::size_t end = t.find_first_of(" ,.&-'");
  return t.substr(0, end);
}

}  // namespace

void PracticeDuplicateFinder::clearSearch() {
  companyName_.clear();
  firstName_.clear();
  lastName_.clear();
  displayName_.clear();
  clientCode_.clear();
  autoMatch_ = -1;
  chosenMatch_ = -1;
}

DatabaseService* PracticeDuplicateFinder::database() const {
  DatabaseService* db = db_ != nullptr ? db_ : moduleState().DatabaseReference;
  return db != nullptr && db->isOpen() ? db : nullptr;
}

std::string PracticeDuplicateFinder::candidateName() const {
  if (kind_ == Company) return GeneralUtilities::trim(companyName_);
  if (!GeneralUtilities::isBlank(displayName_)) return GeneralUtilities::trim(displayName_);
  std::string name = GeneralUtilities::trim(firstName_);
  if (!GeneralUtilities::isBlank(lastName_))
    name += (name.empty() ? "" : " ") + GeneralUtilities::trim(lastName_);
  return name;
}

std::string PracticeDuplicateFinder::normalisedCompanyName(std::string_view name) {
  static const char* const kLegalWords[] = {"LTD",         "LIMITED", "INC", "INCORPORATED", "CORP",
                                            "CORPORATION", "CO",      "LLC", "LLP",          "THE"};
  std::istringstream words(GeneralUtilities::upperCase(name));
  std::string word, out;
  while (words >> word) {
    std::string letters;
    for (char c : word)
      if (std::isalnum(static_cast<unsigned char>(c)) != 0) letters += c;
    if (letters.empty()) continue;
    bool legal = false;
    for (const char* w : kLegalWords) legal = legal || letters == w;
    if (legal) continue;
    out += letters;
  }
  return out;
}

long PracticeDuplicateFinder::findByCode() const {
  DatabaseService* db = database();
  if (db == nullptr || GeneralUtilities::isBlank(clientCode_)) return -1;
  const bool company = kind_ == Company;
  auto found = readCandidates(
      *db,
      company ? "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies WHERE "
                "Companies.ClientID = " +
                    quoted(clientCode_) + ";"
              : "SELECT Contacts.ContactID, Contacts.DisplayName FROM Contacts WHERE "
                "Contacts.ClientID = " +
                    quoted(clientCode_) + ";",
      company ? "CompanyID" : "ContactID", company ? "CompanyName" : "DisplayName");
  return found.empty() ? -1 : found.front().id;
}

long PracticeDuplicateFinder::findByName() const {
  DatabaseService* db = database();
  const std::string name = candidateName();
  if (db == nullptr || name.empty()) return -1;
  std::vector<Candidate> found;
  if (kind_ == Company) {
    found = readCandidates(*db,
                           "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies "
                           "WHERE Companies.CompanyName = " +
                               quoted(name) + ";",
                           "CompanyID", "CompanyName");
  } else {
    std::string sql =
        "SELECT Contacts.ContactID, Contacts.DisplayName FROM Contacts WHERE "
        "Contacts.DisplayName = " +
        quoted(name);
    if (!GeneralUtilities::isBlank(firstName_) && !GeneralUtilities::isBlank(lastName_))
      sql += " Or (Contacts.FirstName = " + quoted(firstName_) +
             " And Contacts.LastName = " + quoted(lastName_) + ")";
    found = readCandidates(*db, sql + ";", "ContactID", "DisplayName");
  }
  return found.empty() ? -1 : found.front().id;
}

void PracticeDuplicateFinder::runSearch() {
  autoMatch_ = -1;
  chosenMatch_ = -1;
  if (mode_ == 1) {
    autoMatch_ = findByCode();
  } else if (mode_ == 2) {
    autoMatch_ = findByName();
  } else if (mode_ == 3 && enabled_) {
    askAboutLikelyMatches();
  }
}

void PracticeDuplicateFinder::askAboutLikelyMatches() {
  DatabaseService* db = database();
  const std::string name = candidateName();
  if (db == nullptr || (name.empty() && GeneralUtilities::isBlank(clientCode_))) return;

  std::vector<Candidate> likely;
  auto addUnique = [&](const Candidate& c) {
    for (const Candidate& l : likely)
      if (l.id == c.id) return;
    likely.push_back(c);
  };
  const bool company = kind_ == Company;
  const std::string codeSql =
      company ? "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies WHERE "
                "Companies.ClientID = " +
                    quoted(clientCode_) + ";"
              : "SELECT Contacts.ContactID, Contacts.DisplayName FROM Contacts WHERE "
                "Contacts.ClientID = " +
                    quoted(clientCode_) + ";";
  const char* idColumn = company ? "CompanyID" : "ContactID";
  const char* nameColumn = company ? "CompanyName" : "DisplayName";
  if (!GeneralUtilities::isBlank(clientCode_))
    for (const Candidate& c : readCandidates(*db, codeSql, idColumn, nameColumn)) addUnique(c);

  if (company && !name.empty()) {
    const std::string key = normalisedCompanyName(name);
    const std::string word = firstWord(name);
    if (!key.empty() && !word.empty()) {
      for (const Candidate& c :
           readCandidates(*db,
                          "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies WHERE "
                          "Companies.CompanyName Like " +
                              quoted(word + "*") + ";",
                          idColumn, nameColumn))
        if (normalisedCompanyName(c.name) == key) addUnique(c);
    }
  } else if (!company) {
    std::string first = GeneralUtilities::trim(firstName_);
    std::string last = GeneralUtilities::trim(lastName_);
    if (last.empty()) {
      std::size_t blank = name.rfind(' ');
      last = blank == std::string::npos ? name : name.substr(blank + 1);
      if (first.empty() && blank != std::string::npos) first = name.substr(0, blank);
    }
    if (!last.empty()) {
      std::string sql =
          "SELECT Contacts.ContactID, Contacts.DisplayName, Contacts.FirstName FROM Contacts "
          "WHERE Contacts.LastName = " +
          quoted(last);
      if (!first.empty()) sql += " And Contacts.FirstName Like " + quoted(first.substr(0, 1) + "*");
      for (const Candidate& c : readCandidates(*db, sql + ";", idColumn, nameColumn)) addUnique(c);
    }
    if (!name.empty())
      for (const Candidate& c :
           readCandidates(*db,
                          "SELECT Contacts.ContactID, Contacts.DisplayName FROM Contacts WHERE "
                          "Contacts.DisplayName = " +
                              quoted(name) + ";",
                          idColumn, nameColumn))
        addUnique(c);
  }

  MessageBox* box = msgbox_ != nullptr ? msgbox_ : moduleState().MsgboxClass;
  if (box == nullptr) return;
  for (const Candidate& c : likely) {
    const std::string existing = c.name.empty() ? "#" + std::to_string(c.id) : c.name;
    int answer =
        box->ask(name + " looks like the existing client " + existing + ". Is it the same client?",
                 kMessageValidation);
    if (answer == kAnswerYes) {
      chosenMatch_ = c.id;
      return;
    }
    if (box->ask("Keep looking for possible duplicate clients in this sync?", kMessageValidation) !=
        kAnswerYes) {
      enabled_ = false;
      return;
    }
  }
}

}  // namespace lf
