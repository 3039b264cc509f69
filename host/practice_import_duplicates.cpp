// The text imports' duplicates control: an index of the practice database's clients.
#include "host/practice_import_duplicates.hpp"

#include <cctype>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "db/database_service.hpp"

namespace lf {

std::string PracticeImportDuplicates::comparableText(std::string_view text) {
  return GeneralUtilities::upperCase(GeneralUtilities::trim(text));
}

std::string PracticeImportDuplicates::comparableSIN(std::string_view sin) {
  std::string digits;
  for (char c : sin)
    if (std::isdigit(static_cast<unsigned char>(c))) digits += c;
  return digits;
}

std::string PracticeImportDuplicates::comparableBusinessNumber(std::string_view number) {
  std::string suffix;
  bool valid = false;
  const std::string root = GeneralUtilities::parseBusinessNumber(number, suffix, valid);
  return valid ? comparableSIN(root) : comparableText(number);
}

void PracticeImportDuplicates::remember(Index& index, const std::string& key, long id) {
  if (!key.empty()) index.emplace(key, id);  // the first row found wins
}

long PracticeImportDuplicates::lookUp(const Index& index, const std::string& key) {
  if (key.empty()) return -1;
  const auto it = index.find(key);
  return it == index.end() ? -1 : it->second;
}

void PracticeImportDuplicates::loadIndex() {
  loaded_ = true;
  DatabaseService* db = db_ != nullptr ? db_ : moduleState().DatabaseReference;
  if (db == nullptr || !db->isOpen()) return;
  auto text = [&](std::int32_t h, std::string_view field) {
    const Variant v = db->getField(h, field);
    return GeneralUtilities::isBlank(v) ? std::string() : v.toString();
  };
  if (kind_ == Contact) {
    const std::int32_t h = db->openRecordset(
        "SELECT Contacts.ContactID, Contacts.FirstName, Contacts.LastName, Contacts.DisplayName, "
        "Contacts.SocialInsuranceNumber, Contacts.ClientID FROM Contacts;",
        kCursorKeyset, kLockReadOnly);
    for (bool more = db->hasRecord(h); more && !db->isEOF(h); db->moveNext(h)) {
      const long id = static_cast<long>(db->getField(h, "ContactID").toLong());
      addContact(id, text(h, "FirstName"), text(h, "LastName"), text(h, "SocialInsuranceNumber"),
                 text(h, "ClientID"));
      remember(byName_, comparableText(text(h, "DisplayName")), id);
    }
    db->closeRecordset(h);
    return;
  }
  // The business numbers of the client-data rows, then the companies.
  std::unordered_map<long, std::string> numbers;
  const std::int32_t n = db->openRecordset(
      "SELECT ClientData.ClientDataID, ClientData.CompanyIDNum, ClientData.BusinessNumber FROM "
      "ClientData;",
      kCursorKeyset, kLockReadOnly);
  for (bool more = db->hasRecord(n); more && !db->isEOF(n); db->moveNext(n))
    numbers.emplace(static_cast<long>(db->getField(n, "CompanyIDNum").toLong()),
                    text(n, "BusinessNumber"));
  db->closeRecordset(n);
  const std::int32_t h = db->openRecordset(
      "SELECT Companies.CompanyID, Companies.CompanyName, Companies.CorporateName, "
      "Companies.ClientID FROM Companies;",
      kCursorKeyset, kLockReadOnly);
  for (bool more = db->hasRecord(h); more && !db->isEOF(h); db->moveNext(h)) {
    const long id = static_cast<long>(db->getField(h, "CompanyID").toLong());
    const auto number = numbers.find(id);
    addCompany(id, text(h, "CompanyName"), number == numbers.end() ? "" : number->second,
               text(h, "ClientID"));
    remember(byName_, comparableText(text(h, "CorporateName")), id);
  }
  db->closeRecordset(h);
}

void PracticeImportDuplicates::clearSearch() {
  sin_.clear();
  firstName_.clear();
  lastName_.clear();
  name_.clear();
  corporateName_.clear();
  businessNumber_.clear();
  clientID_.clear();
  firstMatch_ = -1;
  secondMatch_ = -1;
}

void PracticeImportDuplicates::runSearch() {
  firstMatch_ = -1;
  secondMatch_ = -1;
  if (!checkingOn_) return;
  if (!loaded_) loadIndex();
  // The first test by the identity the user matches by, the second by name when the first
  // found nobody.
  if (matchBy_ == kMatchByClientID)
    firstMatch_ = lookUp(byClientID_, comparableText(clientID_));
  else if (kind_ == Contact && matchBy_ == kMatchBySIN)
    firstMatch_ = lookUp(byNumber_, comparableSIN(sin_));
  else if (kind_ == Company && matchBy_ == kMatchByBusinessNumber)
    firstMatch_ = lookUp(byNumber_, comparableBusinessNumber(businessNumber_));
  if (firstMatch_ > 0) return;
  if (kind_ == Company && matchBy_ == kMatchByCorporateName) {
    secondMatch_ = lookUp(byName_, comparableText(corporateName_));
    return;
  }
  secondMatch_ = lookUp(byName_, comparableText(name_));
  if (secondMatch_ < 0 && !GeneralUtilities::isBlank(firstName_) &&
      !GeneralUtilities::isBlank(lastName_))
    secondMatch_ = lookUp(byName_, comparableText(firstName_) + " " + comparableText(lastName_));
}

void PracticeImportDuplicates::addContact(long contactID, std::string_view firstName,
                                          std::string_view lastName, std::string_view sin,
                                          std::string_view clientID) {
  remember(byNumber_, comparableSIN(sin), contactID);
  remember(byClientID_, comparableText(clientID), contactID);
  if (!GeneralUtilities::isBlank(firstName) || !GeneralUtilities::isBlank(lastName))
    remember(byName_, comparableText(firstName) + " " + comparableText(lastName), contactID);
}

void PracticeImportDuplicates::addCompany(long companyID, std::string_view name,
                                          std::string_view businessNumber,
                                          std::string_view clientID) {
  remember(byNumber_, comparableBusinessNumber(businessNumber), companyID);
  remember(byClientID_, comparableText(clientID), companyID);
  remember(byName_, comparableText(name), companyID);
}

}  // namespace lf
