// The rich-text summaries of a contact, stored in its note columns so that the host can show
// them without a query of its own: the personal page (PersonalNotes), the business page
// (BusinessNotes, and ContactNotes of each company that has the contact as its default) and
// the personal-tax page of one tax year.
//
// Every writer reads the employee row when employeeID is valid and the contact's row
// otherwise, returns the text it stored, and returns the empty text when the database is
// closed, no id is valid or the row is missing. Values are written into the RTF as they
// stand, without escaping: the host reads the stored text of existing clients that way.
#pragma once

#include <string>

namespace lf {

// Writes PersonalNotes: telephones, e-mail and web, home address, personal details, family,
// spouse, notes and alternate address.
std::string saveContactPersonalRTF(long contactID, long employeeID);

// Writes BusinessNotes: name and company, telephones, business address, identity, alternate
// address, associated companies, custom fields, notes and categories. Unless doNotSpread,
// the text is then spread to the companies that have the contact as default contact.
std::string saveContactBusinessRTF(long contactID, long employeeID, long companyID,
                                   bool doNotSpread);

// Writes ContactNotes of every company whose default contact is this contact: rtfText for
// companyID (the one just summarised), a freshly built business summary for the others.
void saveContactBusinessRTFForAllCompanies(long contactID, long companyID,
                                           const std::string& rtfText);

// Writes the personal-tax summary of taxYear: PersonalTaxNotes of the employee row, or the
// contact's PersonalTaxClientSummary row of the year.
std::string saveContactPersonalTaxRTF(long contactID, long taxYear, long employeeID);

// The contact panel of a company that has no default contact.
std::string saveNoDefaultComment();

}  // namespace lf
