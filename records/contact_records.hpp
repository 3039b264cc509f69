// The contact procedures of modDatabaseClientFunctions: a person's Contacts row with its
// ContactsNotes and Clients rows, the ContactLinks rows that tie a person to companies,
// categories and other people, the test for a name at a company, and the creator of a staff
// member (a row of AccountantEmployeeInfo).
//
// Links are kept consistent: one row per pair, a family relationship always gets its
// reverse link (one level deep), and a company link settles the company's default contact.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lf {

// Creates a person: the Contacts row (named from `fullName` when it is not blank, with the
// company's name as BusinessName when `companyID` is valid), its references, a link to the
// company, a link to the category (a category that needs a record also makes the contact a
// personal-tax client of the category's year, or of the current personal year when the
// category has none between 1900 and 3000), or, with neither, a link to the host's current
// contact category. Answers the new ContactID, 0 when nothing was created (database closed,
// or neither a name nor a valid category given).
long addNewContact(std::string_view fullName, long categoryID, long companyID);

// Makes sure the contact has its ContactsNotes row and its Clients row (CompanyIDNum -1).
// Harmless to call again.
void addNewContactReferences(long contactID);

// Links the contact to exactly one of a category, a company or another contact (the ID that
// is 0 or more; the others are -1) unless the link exists. A non-blank relationship is
// written on a contact link and, unless `noReverseLink`, the reverse link is made with the
// opposite relationship. A company link ends with checkForDefaultContact. Answers whether
// the procedure ran to its end.
bool addContactLink(long contactID, long categoryID, long companyID, long contactNum,
                    std::string_view relationship, bool noReverseLink);

// Whether a contact linked to the company bears the name: the parsed display name, or the
// parsed first and last names, compared upper-cased. On a hit `foundContactID` receives
// its ContactID.
bool doesContactNameAlreadyExistForThisCompany(std::string_view fullName, long companyID,
                                               long& foundContactID);

// Creates one staff member, or two for a couple ("Mr & Mrs John Smith", "John & Mary
// Smith"), as AccountantEmployeeInfo rows of the firm, each with a user name, a user level
// (2 unless `userLevel` is above 2) and a colour by the number of users before, and the
// user's search rows. Answers the ContactID of the last row made; 0 when none was made.
long addAccountantEmployee(std::string_view fullName, long firmCompanyID, long userLevel);

// The names addAccountantEmployee makes from a name string: a couple title ("Mr & Mrs") is
// cut out as the input writes it and split at its "&"; "Last, First" is turned round; a "&"
// then gives two names, the first taking the surname of the second when it has a single
// word, each with its title in front.
std::vector<std::string> splitAccountantEmployeeNames(std::string_view fullName);

}  // namespace lf
