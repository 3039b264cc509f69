// The contact procedures: addNewContact, addNewContactReferences, addContactLink,
// doesContactNameAlreadyExistForThisCompany and addAccountantEmployee.
#include "records/contact_records.hpp"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/default_contacts.hpp"
#include "records/family_relationships.hpp"
#include "records/lookups.hpp"
#include "records/name_parsing.hpp"
#include "records/personal_tax_records.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

using records::blank;
using records::boolText;
using records::dropDown;
using records::locale;
using records::text;
using records::toLong;

constexpr std::string_view kLabel = "Ledgerfolio.exe-modDatabaseClientFunctions-";

std::string label(std::string_view procedureName) {
  return std::string(kLabel) + std::string(procedureName);
}

// The couple titles of a staff member's name, searched in this order in the upper-cased
// name with a plain substring test. Intended: "MR & MRS" is tried before "MR. & MRS.", so
// that "Mr & Mrs. Smith" matches the shorter form and keeps its full stop in the name.
struct CoupleTitle {
  std::string_view search;
  std::string_view noted;
};
constexpr std::array<CoupleTitle, 24> kCoupleTitles = {{
    {"MR & MRS", "Mr. & Mrs."},   {"MR. & MRS.", "Mr. & Mrs."}, {"MR. & MRS", "Mr. & Mrs"},
    {"MR & MRS.", "Mr & Mrs."},   {"MR & MS", "Mr & Ms"},       {"MR. & MS.", "Mr. & Ms."},
    {"MR. & MS", "Mr. & Ms"},     {"MR & MS.", "Mr & Ms."},     {"DR & MRS", "Dr. & Mrs."},
    {"DR. & MRS.", "Dr. & Mrs."}, {"DR. & MRS", "Dr. & Mrs"},   {"DR & MRS.", "Dr & Mrs."},
    {"DR. & MS", "Dr. & Ms"},     {"DR & MS.", "Dr & Ms."},     {"MR & DR", "Mr & Dr"},
    {"MR. & DR.", "Mr. & Dr."},   {"MR. & DR", "Mr. & Dr"},     {"MR & DR.", "Mr & Dr."},
    {"DR & DR", "Dr & Dr"},       {"DR. & DR.", "Dr. & Dr."},   {"DR. & DR", "Dr. & Dr"},
    {"DR & DR.", "Dr & Dr."},     {"DR & MS", "Dr & Ms"},       {"DR. & MS.", "Dr. & Ms."},
}};

// The 8 user colours, by the number of users before the new one (blue-green-red values:
// red, blue, green, yellow, white, magenta, cyan, black).
constexpr std::array<long, 8> kUserColours = {255,      16711680, 65280,    65535,
                                              16777215, 16711935, 16776960, 0};

std::string trim(std::string_view text) {
  return GeneralUtilities::trim(text);
}

std::string lastWord(std::string_view text) {
  const std::string trimmed = trim(text);
  const auto blankAt = trimmed.find_last_of(' ');
  return blankAt == std::string::npos ? trimmed : trimmed.substr(blankAt + 1);
}

}  // namespace

// The one or two names of a staff member's name string, with their couple titles in front.
std::vector<std::string> splitAccountantEmployeeNames(std::string_view fullName) {
  std::string name(fullName);
  std::string firstTitle;
  std::string secondTitle;
  bool hasTitle = false;

  const std::string upper = GeneralUtilities::upperCase(name);
  for (const CoupleTitle& title : kCoupleTitles) {
    const auto at = upper.find(title.search);
    if (at == std::string::npos) continue;
    // The title as the input writes it replaces the noted spelling.
    const std::string written = name.substr(at, title.search.size());
    if (at == 0) {
      name = trim(name.substr(written.size()));
    } else {
      name = name.substr(0, at) + name.substr(at + written.size());
    }
    const auto amp = written.find('&');
    firstTitle = trim(written.substr(0, amp));
    secondTitle = trim(written.substr(amp + 1));
    hasTitle = true;
    break;
  }

  const auto comma = name.find(',');
  if (comma != std::string::npos)
    name = trim(name.substr(comma + 1)) + " " + trim(name.substr(0, comma));

  std::vector<std::string> names;
  const auto amp = name.find('&');
  if (amp == std::string::npos) {
    names.push_back(name);
    return names;
  }
  std::string first = trim(name.substr(0, amp));
  std::string second = trim(name.substr(amp + 1));
  if (first.find(' ') == std::string::npos) first += " " + lastWord(second);
  if (hasTitle) {
    first = firstTitle + " " + first;
    second = secondTitle + " " + second;
  }
  names.push_back(first);
  names.push_back(second);
  return names;
}

void addNewContactReferences(long contactID) {
  procedure(label("addNewContactReferences"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string id = text(contactID);
    {
      RecordsetScope rs(
          *db, "SELECT ContactsNotes.ContactNum FROM ContactsNotes WHERE ContactNum=" + id + ";",
          kLockOptimistic);
      if (!db->hasRecord(rs)) {
        db->addNewRecord(rs);
        db->setNewField(rs, "ContactNum", id);
        db->updateRecord(rs);
      }
    }
    RecordsetScope rs(*db, "SELECT Clients.* FROM Clients WHERE Clients.ContactIDNum=" + id + ";",
                      kLockOptimistic);
    if (db->hasRecord(rs)) {
      db->setField(rs, "CompanyIDNum", "-1");
    } else {
      db->addNewRecord(rs);
      db->setNewField(rs, "CompanyIDNum", "-1");
      db->setNewField(rs, "ContactIDNum", id);
      db->updateRecord(rs);
    }
  });
}

long addNewContact(std::string_view fullName, long categoryID, long companyID) {
  long result = 0;
  procedure(label("addNewContact"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const bool nameGiven = !GeneralUtilities::isBlank(fullName);
    const bool categoryValid = validCategoryID(categoryID);
    if (!nameGiven && !categoryValid) return;
    const bool companyValid = validCompanyID(companyID);

    bool companyNoted = false;
    long contactID = 0;
    {
      RecordsetScope rs(*db, "SELECT Contacts.* FROM Contacts;", kLockOptimistic);
      db->addNewRecord(rs);
      db->setNewField(rs, "DisplayName", "");
      if (companyValid) {
        RecordsetScope company(*db,
                               "SELECT Companies.CompanyID, Companies.CompanyName FROM Companies "
                               "WHERE CompanyID = " +
                                   text(companyID) + ";",
                               kLockReadOnly);
        if (db->hasRecord(company)) {
          db->setNewField(rs, "BusinessName", db->getField(company, "CompanyName").toString());
          db->setNewField(rs, "InheritCompanyInfo", "True");
          companyNoted = true;
        }
      }
      contactID = toLong(db->getField(rs, "ContactID"));
      db->updateRecord(rs);
    }
    result = contactID;

    if (nameGiven) parseNameForContact(contactID, fullName);
    addNewContactReferences(contactID);
    if (companyValid) addContactLink(contactID, -1, companyID, -1, "", false);
    if (categoryValid) {
      addContactLink(contactID, categoryID, -1, -1, "", false);
      if (dropDown().getCategoryInfo(categoryID).needsRecord) {
        long year = getPersonalTaxYearFromCategoryID(categoryID);
        if (year < 1900 || year >= 3001) year = locale().getCurrentPersonalYear();
        addNewPersonalTaxClientForExistingContact(contactID, categoryID, year, -1);
      }
    } else if (!companyNoted) {
      addContactLink(contactID, dropDown().getCurrentContactCategoryID(), -1, -1, "", false);
    }
    if (companyValid) checkForDefaultContact(companyID, true);
    dropDown().refreshClientList();
  });
  return result;
}

bool addContactLink(long contactID, long categoryID, long companyID, long contactNum,
                    std::string_view relationship, bool noReverseLink) {
  bool result = false;
  procedure(label("addContactLink"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    std::string sql = "SELECT ContactLinks.* FROM ContactLinks WHERE ContactLinks.ContactIDNum = " +
                      text(contactID);
    enum class Kind { Category, Company, Contact } kind;
    if (categoryID >= 0) {
      kind = Kind::Category;
      sql += " AND ContactLinks.CategoryNum = " + text(categoryID) + ";";
    } else if (companyID >= 0) {
      kind = Kind::Company;
      sql += " AND ContactLinks.CompanyNum = " + text(companyID) + ";";
    } else if (contactNum >= 0) {
      kind = Kind::Contact;
      sql += " AND ContactLinks.ContactNum = " + text(contactNum) + ";";
    } else {
      return;  // nothing to link to
    }

    const bool relationshipGiven = !GeneralUtilities::isBlank(relationship);
    bool relationshipWritten = false;
    bool companyNoted = false;
    {
      RecordsetScope rs(*db, sql, kLockOptimistic);
      if (db->hasRecord(rs)) {
        if (relationshipGiven) {
          db->setField(rs, "FamilyRelationship", relationship);
          relationshipWritten = true;
        }
        if (kind == Kind::Category) {
          db->setField(rs, "IsPersonalTaxCategory",
                       boolText(dropDown().getCategoryInfo(categoryID).needsRecord));
        } else if (kind == Kind::Company) {
          companyNoted = true;
        }
      } else {
        db->addNewRecord(rs);
        db->setNewField(rs, "ContactIDNum", text(contactID));
        switch (kind) {
          case Kind::Category:
            db->setNewField(rs, "CategoryNum", text(categoryID));
            db->setNewField(rs, "IsPersonalTaxCategory",
                            boolText(dropDown().getCategoryInfo(categoryID).needsRecord));
            break;
          case Kind::Company:
            db->setNewField(rs, "CompanyNum", text(companyID));
            companyNoted = true;
            break;
          case Kind::Contact:
            db->setNewField(rs, "ContactNum", text(contactNum));
            if (relationshipGiven) {
              db->setNewField(rs, "FamilyRelationship", relationship);
              relationshipWritten = true;
            }
            break;
        }
        db->updateRecord(rs);
      }
    }

    // The reverse link goes one level deep: it is made with noReverseLink set.
    if (relationshipWritten && !noReverseLink && kind == Kind::Contact) {
      const std::string opposite = getOppositeFamilyRelationship(contactID, relationship);
      addContactLink(contactNum, -1, -1, contactID, opposite, true);
    }
    if (companyNoted) checkForDefaultContact(companyID, true);
    result = true;
  });
  return result;
}

bool doesContactNameAlreadyExistForThisCompany(std::string_view fullName, long companyID,
                                               long& foundContactID) {
  bool result = false;
  procedure(label("doesContactNameAlreadyExistForThisCompany"), [&] {
    if (GeneralUtilities::isBlank(fullName)) return;
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const PersonNameParts parsed = parseSingleNameString(fullName);
    const std::string displayName = GeneralUtilities::upperCase(parsed.DisplayName);
    const std::string firstName = GeneralUtilities::upperCase(parsed.FirstName);
    const std::string lastName = GeneralUtilities::upperCase(parsed.LastName);
    RecordsetScope rs(
        *db,
        "SELECT Contacts.ContactID, Contacts.DisplayName, Contacts.FirstName, Contacts.LastName, "
        "ContactLinks.CompanyNum, ContactLinks.DefaultContact "
        "FROM Contacts INNER JOIN ContactLinks ON Contacts.ContactID = ContactLinks.ContactIDNum "
        "WHERE ContactLinks.CompanyNum = " +
            text(companyID) + ";",
        kLockReadOnly);
    if (!db->hasRecord(rs)) return;
    while (!db->isEOF(rs)) {
      auto upper = [&](std::string_view field) {
        return GeneralUtilities::upperCase(db->getField(rs, field).toString());
      };
      if (upper("DisplayName") == displayName ||
          (upper("FirstName") == firstName && upper("LastName") == lastName)) {
        foundContactID = toLong(db->getField(rs, "ContactID"));
        result = true;
        return;
      }
      db->moveNext(rs);
    }
  });
  return result;
}

long addAccountantEmployee(std::string_view fullName, long firmCompanyID, long userLevel) {
  long result = 0;
  procedure(label("addAccountantEmployee"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db, "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;",
                      kLockOptimistic);
    const long usersBefore = db->recordCount(rs);

    for (const std::string& name : splitAccountantEmployeeNames(fullName)) {
      if (GeneralUtilities::isBlank(name)) continue;
      const PersonNameParts parts = parseSingleNameString(name);
      db->addNewRecord(rs);
      db->setNewField(rs, "NamePrefix", parts.NamePrefix);
      db->setNewField(rs, "FirstName", parts.FirstName);
      db->setNewField(rs, "MiddleName", parts.MiddleName);
      db->setNewField(rs, "LastName", parts.LastName);
      db->setNewField(rs, "DisplayName", parts.DisplayName);
      db->setNewField(
          rs, "UserName",
          GeneralUtilities::isBlank(parts.DisplayName) ? parts.FirstName : parts.DisplayName);
      // Intended: a level of 2 or less, the administrator's 1 included, becomes 2.
      db->setNewField(rs, "UserLevel", userLevel > 2 ? text(userLevel) : "2");
      if (usersBefore >= 0 && usersBefore <= 7)
        db->setNewField(rs, "UserColour", text(kUserColours[usersBefore]));
      db->setNewField(rs, "CompanyNum", text(firmCompanyID));
      {
        RecordsetScope firm(*db,
                            "SELECT AccountantFirmInfo.CompanyID, AccountantFirmInfo.CompanyName "
                            "FROM AccountantFirmInfo WHERE CompanyID=" +
                                text(firmCompanyID) + ";",
                            kLockReadOnly);
        if (db->hasRecord(firm)) {
          db->setNewField(rs, "BusinessName", db->getField(firm, "CompanyName").toString());
          db->setNewField(rs, "InheritCompanyInfo", "True");
        }
      }
      const long id = toLong(db->getField(rs, "ContactID"));
      db->updateRecord(rs);
      result = id;
      if (id >= 0) addNewUserIDToSearchesUserSpecificTable(id);
    }
  });
  return result;
}

}  // namespace lf
