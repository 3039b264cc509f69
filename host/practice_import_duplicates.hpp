// The duplicates control of the text imports over the practice database.
//
// On its first search the control reads the clients once (Contacts, or Companies with their
// ClientData numbers) into an index, and from then on searches the index, which the import
// keeps current through addContact and addCompany: a file of a hundred thousand rows costs
// one read of the table, not a statement per row. Values compare without letter case and
// surrounding blanks; a SIN by its digits; a business number by its nine-digit root, so that
// "123456789", "12345 6789" and "123456789 RT0001" are one number. The first row found wins.
// The first test matches by the identity chosen (SIN, business number or client ID); when it
// finds nobody, or the choice is the name, the second test matches by name.
#pragma once

#include <string>
#include <unordered_map>

#include "host/import_duplicates_control.hpp"

namespace lf {

class DatabaseService;

class PracticeImportDuplicates : public ImportDuplicatesControl {
 public:
  enum Kind { Company, Contact };
  // Reads from the practice database in use (DatabaseReference) unless one is given.
  explicit PracticeImportDuplicates(Kind kind, DatabaseService* db = nullptr)
      : kind_(kind), db_(db) {}

  bool checkingOn() const override { return checkingOn_; }
  void setCheckingOn(bool on) override { checkingOn_ = on; }
  int getMatchBy() const override { return matchBy_; }
  void setMatchBy(int matchBy) override { matchBy_ = matchBy; }
  int getAction() const override { return action_; }
  void setAction(int action) override { action_ = action; }

  void clearSearch() override;
  void setSIN(std::string_view sin) override { sin_ = sin; }
  void setFirstName(std::string_view name) override { firstName_ = name; }
  void setLastName(std::string_view name) override { lastName_ = name; }
  void setName(std::string_view name) override { name_ = name; }
  void setCorporateName(std::string_view name) override { corporateName_ = name; }
  void setBusinessNumber(std::string_view number) override { businessNumber_ = number; }
  void setClientID(std::string_view clientID) override { clientID_ = clientID; }
  void runSearch() override;

  long matchByFirstTest() const override { return firstMatch_; }
  long matchBySecondTest() const override { return secondMatch_; }

  void addContact(long contactID, std::string_view firstName, std::string_view lastName,
                  std::string_view sin, std::string_view clientID) override;
  void addCompany(long companyID, std::string_view name, std::string_view businessNumber,
                  std::string_view clientID) override;

  // The forms in which values are compared.
  static std::string comparableText(std::string_view text);
  static std::string comparableSIN(std::string_view sin);
  static std::string comparableBusinessNumber(std::string_view number);

 private:
  using Index = std::unordered_map<std::string, long>;
  void loadIndex();
  static void remember(Index& index, const std::string& key, long id);
  static long lookUp(const Index& index, const std::string& key);

  Kind kind_;
  DatabaseService* db_;
  bool checkingOn_ = false;
  int matchBy_ = 0;
  int action_ = kDuplicateUpdate;
  std::string sin_, firstName_, lastName_, name_, corporateName_, businessNumber_, clientID_;
  long firstMatch_ = -1;
  long secondMatch_ = -1;
  bool loaded_ = false;
  Index byNumber_;  // SIN or business number
  Index byClientID_;
  Index byName_;  // display name, first and last name, company or corporate name
};

}  // namespace lf
