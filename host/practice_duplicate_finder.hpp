// The duplicate finder over the practice database, for companies (Companies) or contacts
// (Contacts).
//
// Mode 1: the same client code (Companies.ClientID, Contacts.ClientID). Mode 2: the same name
// (CompanyName; DisplayName, or first and last name), letter case ignored. Mode 3: likely
// matches (the same code or name, a company name equal once punctuation and the words
// LTD, LIMITED, INC, CORP, CO, LLC and LLP are dropped, a contact with the same last name and
// first initial); each one is put to the user as
//   "<candidate> looks like the existing client <existing>. Is it the same client?"
// and a "yes" takes the existing one. A "no" is followed by
//   "Keep looking for possible duplicate clients in this sync?"
// and a "no" there turns the checking off for the rest of the run. An unattended run that
// answers "no" by default thus imports the candidate as new and stops asking.
#pragma once

#include <string>

#include "host/duplicate_finder.hpp"

namespace lf {

class PracticeDuplicateFinder : public DuplicateFinder {
 public:
  enum Kind { Company, Contact };
  explicit PracticeDuplicateFinder(Kind kind) : kind_(kind) {}

  void setErrorService(ErrorService* errorClass) override { errorClass_ = errorClass; }
  void setMsgbox(MessageBox* msgbox) override { msgbox_ = msgbox; }
  void setDatabase(DatabaseService* db) override { db_ = db; }
  void setLocale(LocaleService* locale) override { locale_ = locale; }
  void setDropDown(ClientDropDownService* dropDown) override { dropDown_ = dropDown; }

  void clearSearch() override;
  void setCompanyName(std::string_view name) override { companyName_ = name; }
  void setFirstName(std::string_view name) override { firstName_ = name; }
  void setLastName(std::string_view name) override { lastName_ = name; }
  void setDisplayName(std::string_view name) override { displayName_ = name; }
  void setClientCode(std::string_view code) override { clientCode_ = code; }
  void setSearchMode(int mode) override { mode_ = mode; }
  int getSearchMode() const override { return mode_; }
  void runSearch() override;

  bool hasAutoMatch() const override { return autoMatch_ > 0; }
  long getAutoMatchID() const override { return autoMatch_; }
  bool hasChosenMatch() const override { return chosenMatch_ > 0; }
  long getChosenMatchID() const override { return chosenMatch_; }

  bool duplicateCheckEnabled() const override { return enabled_; }
  void setDuplicateCheckEnabled(bool enabled) override { enabled_ = enabled; }

  // The company name without punctuation and the legal-form words, in capitals.
  static std::string normalisedCompanyName(std::string_view name);

 private:
  DatabaseService* database() const;
  std::string candidateName() const;
  long findByCode() const;
  long findByName() const;
  void askAboutLikelyMatches();

  Kind kind_;
  ErrorService* errorClass_ = nullptr;
  MessageBox* msgbox_ = nullptr;
  DatabaseService* db_ = nullptr;
  LocaleService* locale_ = nullptr;
  ClientDropDownService* dropDown_ = nullptr;
  std::string companyName_, firstName_, lastName_, displayName_, clientCode_;
  int mode_ = 1;
  long autoMatch_ = -1;
  long chosenMatch_ = -1;
  bool enabled_ = true;
};

}  // namespace lf
