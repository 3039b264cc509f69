// The client-record and summary operations the sync stages call, in one place, with the
// arguments the stages always give. They forward to the client-record procedures (records/)
// and the summary writers (summaries/), which do nothing when the practice database is not
// open.
#pragma once

#include <string>
#include <string_view>

namespace lf::syncrecords {

long addNewClientDataEntry();
long addNewClientDataEntryForExistingCompany(long companyID);
// A new contact named from fullName, with no company and no category of its own.
long addNewContact(const std::string& fullName);
// A link of the contact to a category (categoryID 0 or more) or a company.
bool addContactLink(long contactID, long categoryID, long companyID);
void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus);
void setContactAsDefault(long contactID, long companyID);
long getDefaultContactIDFromCompanyID(long companyID);
long addAccountantEmployee(const std::string& fullName, long firmCompanyID, long userLevel);

// The address block of five fields, as plain text.
std::string createAddress(std::string_view street, std::string_view city, std::string_view province,
                          std::string_view postalCode, std::string_view country);
std::string convertToRTF(std::string_view text);

// The stored summaries of a written client or staff member.
void saveCompanyRTF(long companyID);
void saveCompanyContactRTF(long companyID, long contactID);
void saveContactBusinessRTF(long contactID);
void saveContactPersonalRTF(long contactID);
void saveContactPersonalTaxRTF(long contactID, long taxYear);
void saveEmployeeBusinessRTF(long employeeID);
void saveEmployeePersonalRTF(long employeeID);

}  // namespace lf::syncrecords
