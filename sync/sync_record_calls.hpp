// The client-record and summary operations the sync stages call, in one place.
//
// The stages create companies, client-data families, contacts, links, personal-tax clients
// and staff only through these calls, and save the stored summaries through them. Each call
// works on the practice database (DatabaseReference) and does nothing, giving its neutral
// value, when that database is not open.
#pragma once

#include <string>
#include <string_view>

namespace lf::syncrecords {

// A new business client family (Companies, CompaniesNotes, Clients, ClientData and the
// satellites); gives the ClientDataID, -1 when nothing was made.
long addNewClientDataEntry();
// The ClientData family of a company that already has its Companies row; idempotent.
long addNewClientDataEntryForExistingCompany(long companyID);

// A new contact with its name parsed into the name columns; linked to the company and the
// category when valid. Gives the ContactID, 0 when nothing was made.
long addNewContact(const std::string& fullName, long categoryID, long companyID);
// One ContactLinks row per pair; a second call with the same pair changes nothing.
bool addContactLink(long contactID, long categoryID, long companyID);
// The personal-tax rows of a contact for a year and its link to the category.
void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus);
void setContactAsDefault(long contactID, long companyID);
long getDefaultContactIDFromCompanyID(long companyID);
// A staff member: an AccountantEmployeeInfo row with the parsed name, firm and user level.
long addAccountantEmployee(const std::string& fullName, long firmCompanyID, long userLevel);

// Address block of five fields, one line per non-blank part (city, province and postal code
// on one line).
std::string createAddress(std::string_view street, std::string_view city,
                          std::string_view province, std::string_view postalCode,
                          std::string_view country);
// Plain text to the RTF body form: each CR LF followed by "\par ".
std::string convertToRTF(std::string_view text);

// The stored summaries of a written client.
void saveCompanyRTF(long companyID);
void saveCompanyContactRTF(long companyID, long contactID);
void saveContactBusinessRTF(long contactID);
void saveContactPersonalRTF(long contactID);
void saveContactPersonalTaxRTF(long contactID, long taxYear);

}  // namespace lf::syncrecords
