// The personal-tax procedures of modDatabaseClientFunctions: a contact as a personal-tax
// client of one year.
//
// A client of a year is the set of rows keyed by ContactNum and TaxYear in PersonalTaxInfo,
// PersonalTaxStatus, PersonalTaxNotes and PersonalTaxProfileInfo, the checklist rows of
// PersonalTaxTasks copied from the year's PersonalTaxSteps, and a link to the year's
// category. Each row is tested before it is added, so a second call changes nothing that the
// first wrote.
#pragma once

#include <string>

namespace lf {

// Makes the contact a personal-tax client of `taxYear` (the current personal year when it is
// below 1900). A new PersonalTaxStatus row holds ReturnStatus 6, EmployeeAssigned "None
// Assigned", the given ActiveStatus when above 0, and ReturnDate and InHouseDueDate on
// April 30 of the next year in Canada (country mode 1), April 15 otherwise. Does nothing
// when the contact does not exist.
void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus);

// Custom column `customNumber` (1 to 5) of the personal-tax list: when its kind is 3, its
// merge template is filled for the contact and written to PersonalTaxStatus.Custom<n> of the
// contact and year. Answers the filled text, empty otherwise. Adds the CustomFields row when
// the table is empty.
std::string populateNewPersonalTaxListCustomColumns(long contactID, int customNumber, long taxYear);

// Whether the contact has PersonalTaxInfo and PersonalTaxStatus rows of the year. When it
// has, a missing link to the year's category is added on the way.
bool isContactPersonalTaxContactForTaxYear(long contactID, long taxYear);

}  // namespace lf
