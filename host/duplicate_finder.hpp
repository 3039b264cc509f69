// The duplicate finder of the client imports: given a candidate's name and client code, it
// looks for an existing company or contact that is the same client.
//
// Mode 1 matches the client code, mode 2 the name, both without asking; mode 3 looks for
// likely matches and asks the user through the message box. A user who turns the checking
// off in mode 3 is not asked again: duplicateCheckEnabled answers false from then on.
#pragma once

#include <string_view>

namespace lf {

class ErrorService;
class MessageBox;
class DatabaseService;
class LocaleService;
class ClientDropDownService;

class DuplicateFinder {
 public:
  virtual ~DuplicateFinder() = default;

  virtual void setErrorService(ErrorService* errorClass) = 0;
  virtual void setMsgbox(MessageBox* msgbox) = 0;
  virtual void setDatabase(DatabaseService* db) = 0;
  virtual void setLocale(LocaleService* locale) = 0;
  virtual void setDropDown(ClientDropDownService* dropDown) = 0;

  // Forgets the previous candidate and its results.
  virtual void clearSearch() = 0;
  virtual void setCompanyName(std::string_view name) = 0;
  virtual void setFirstName(std::string_view name) = 0;
  virtual void setLastName(std::string_view name) = 0;
  virtual void setDisplayName(std::string_view name) = 0;
  virtual void setClientCode(std::string_view code) = 0;
  virtual void setSearchMode(int mode) = 0;
  virtual int getSearchMode() const = 0;
  virtual void runSearch() = 0;

  // Result of modes 1 and 2.
  virtual bool hasAutoMatch() const = 0;
  virtual long getAutoMatchID() const = 0;
  // Result of mode 3: the user took an existing record.
  virtual bool hasChosenMatch() const = 0;
  virtual long getChosenMatchID() const = 0;

  virtual bool duplicateCheckEnabled() const = 0;
  virtual void setDuplicateCheckEnabled(bool enabled) = 0;
};

}  // namespace lf
