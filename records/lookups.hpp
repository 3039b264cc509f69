// The shared look-ups of the client records: the two main client selections, ID conversions,
// the test of an ID, and the small per-user and per-year rows that several imports keep.
//
// Every operation works on the practice database (DatabaseReference) and does nothing, giving
// its neutral value, when that database is not open. They hold no state.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// The statement of a business client with its whole family of rows (Companies, ClientData and
// the satellites, the notes and the Clients entry), all joined by inner joins; the Canadian
// tables with country mode 1, ClientUSInfo otherwise.
// statusKind 1 selects active clients (ClientData.ActiveStatus 1), 2 inactive ones, 3 all;
// showOnly adds ClientData.ShowThisClient = True; a clientDataID of 0 or more selects that
// client only. The order follows getSortOrderBusiness of the drop-down service.
std::string getMainBusinessSQLString(bool showOnly, short statusKind, long clientDataID);

// The statement of the personal-tax clients of a year: Contacts joined with PersonalTaxInfo
// and PersonalTaxStatus of that year. A year below 1951 or from 4000 on is replaced by
// getCurrentTaxYear. statusKind 1 active, 2 inactive, anything else all; the order follows
// getSortOrderPersonal.
std::string getMainPersonalSQLString(short statusKind, long taxYear);

// The ClientData row of a company, and the company of a ClientData row; 0 when there is none.
long getClientDataIDFromCompanyID(long companyID);
long getCompanyIDFromClientDataID(long clientDataID);

// One rule under seven names: the text is not blank, is numeric and is above 0.
// -1 (none) and 0 are not valid.
bool validInvoiceID(std::string_view id);
bool validClientID(std::string_view id);
bool validCompanyID(std::string_view id);
bool validContactID(std::string_view id);
bool validCategoryID(std::string_view id);
bool validFirmID(std::string_view id);
bool validEmployeeID(std::string_view id);

// The same for an ID held as a number, as the callers mostly have it.
inline bool validInvoiceID(long id) {
  return validInvoiceID(std::to_string(id));
}
inline bool validClientID(long id) {
  return validClientID(std::to_string(id));
}
inline bool validCompanyID(long id) {
  return validCompanyID(std::to_string(id));
}
inline bool validContactID(long id) {
  return validContactID(std::to_string(id));
}
inline bool validCategoryID(long id) {
  return validCategoryID(std::to_string(id));
}
inline bool validFirmID(long id) {
  return validFirmID(std::to_string(id));
}
inline bool validEmployeeID(long id) {
  return validEmployeeID(std::to_string(id));
}

// Stores the tax summary of a contact for a year in PersonalTaxClientSummary.PersonalTaxNotes,
// adding the row when it is missing.
void putPersonalTaxClientSummaryNotes(long contactID, long taxYear, const std::string& notes);

// Whether the tax summary of the year shows the Profile section; adds the year's
// PersonalTaxDataImportInfo row (answering false) when it is missing.
bool getShowProfileT1InfoInSummary(long taxYear);

// Looks for a user of the administrator level (1) and writes that level again; gives its
// ContactID, or 0 when there is none.
long forceFirstUserToBeAnAdminUser();

// Gives the user a SearchesUserSpecific row for every search that the user has none for.
void addNewUserIDToSearchesUserSpecificTable(long userID);

// Recomputes OverdueFlag of every PersonalTaxStatus row of the contact: overdue when the
// in-house due date is before today and the return's status is not 5 (filled from the return
// date when only the due date is blank). Answers whether any row is overdue.
bool checkIfPersonalTaxTaskOverdue(long contactID);

// The tax year of a personal-tax category: the last four characters of the first
// CategorySpecialCode holding "TaxYear:", on the category or up its parents (at most 100
// levels). 0 unless that is a number from 1900 to 2200.
long getPersonalTaxYearFromCategoryID(long categoryID);

}  // namespace lf
