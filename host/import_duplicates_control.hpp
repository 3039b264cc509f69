// The duplicates controls of the text imports (the wizard's nvContactDuplicates1 and
// nvCompanyDuplicates1): the user's matching choices, and the search of an existing client
// for each row of the file.
//
// The user turns checking on or off, picks what to match by and what to do with a match
// (0 skip the row, 1 import it as a new client, 2 update the existing one, 3 ask). A contact
// control matches by SIN (0), name (1) or client ID (4); a company control by business number
// (0), corporate name (2) or client ID (4). A search reports a match by its first test (the
// SIN, business number or client ID) or by its second (the name). The import tells the
// control of every client it creates, so that a later row of the same file finds it.
#pragma once

#include <string_view>

namespace lf {

enum DuplicateAction : int {
  kDuplicateSkip = 0,
  kDuplicateNewClient = 1,
  kDuplicateUpdate = 2,
  kDuplicateAsk = 3,
};

enum DuplicateMatchBy : int {
  kMatchBySIN = 0,
  kMatchByBusinessNumber = 0,
  kMatchByName = 1,
  kMatchByCorporateName = 2,
  kMatchByClientID = 4,
};

class ImportDuplicatesControl {
 public:
  virtual ~ImportDuplicatesControl() = default;

  virtual bool checkingOn() const = 0;
  virtual void setCheckingOn(bool on) = 0;
  virtual int getMatchBy() const = 0;
  virtual void setMatchBy(int matchBy) = 0;
  virtual int getAction() const = 0;
  virtual void setAction(int action) = 0;

  // The candidate of one row; clearSearch forgets the previous one and its result.
  virtual void clearSearch() = 0;
  virtual void setSIN(std::string_view sin) = 0;
  virtual void setFirstName(std::string_view name) = 0;
  virtual void setLastName(std::string_view name) = 0;
  virtual void setName(std::string_view name) = 0;  // full name, or the company's name
  virtual void setCorporateName(std::string_view name) = 0;
  virtual void setBusinessNumber(std::string_view number) = 0;
  virtual void setClientID(std::string_view clientID) = 0;
  virtual void runSearch() = 0;

  // The result: the ID of the contact or company found, or -1.
  virtual long matchByFirstTest() const = 0;
  virtual long matchBySecondTest() const = 0;

  // A client the import created, known from now on.
  virtual void addContact(long contactID, std::string_view firstName, std::string_view lastName,
                          std::string_view sin, std::string_view clientID) = 0;
  virtual void addCompany(long companyID, std::string_view name, std::string_view businessNumber,
                          std::string_view clientID) = 0;
};

}  // namespace lf
