// Address blocks: a contact or company turned into the lines of text that the screen, a letter
// or a rich-text summary shows. Four loaders read the record into AddressFields, createAddress
// writes the lines and createAddressWithContactInfo adds the telephone and e-mail lines.
//
// The loaders read the practice database (DatabaseReference); with the database closed or no
// valid id they give the empty text.
#pragma once

#include <string>
#include <string_view>

#include "summaries/address_fields.hpp"

namespace lf {

// The block of name, contact name (when includeContactName), street, city line and a country
// other than Canada, one per line, CR LF between them; blank fields give no text. With asRTF
// each CR LF is followed by "\par ".
std::string createAddress(AddressFields& fields, bool includeContactName, bool asRTF);

// createAddress, then one labelled line for each contact field that is not blank ("Phone: ",
// "Fax: ", "Cell: ", "Home: ", "Email: ", "Web Site: ").
std::string createAddressWithContactInfo(AddressFields& fields, bool includeContactName,
                                         bool asRTF);

// The home side of a contact, or of the employee when employeeID is valid. Trimmed.
std::string createPersonalContactAddress(long contactID, bool asRTF, long employeeID,
                                         bool withAddress, bool withPhones, bool withEmail);

// The spouse's side of the same record. Trimmed.
std::string createPersonalSpouseContactAddress(long contactID, bool asRTF, long employeeID,
                                               bool withAddress, bool withPhones, bool withEmail);

// The business side of a contact (or employee), with the company's address and numbers in
// place of its own when the contact inherits the company's information. Trimmed.
std::string createBusinessContactAddress(long contactID, bool asRTF, long employeeID,
                                         long companyID, bool withAddress, bool withPhones,
                                         bool withEmail, bool withBusinessName);

// A company (or the firm when firmID is valid). includeContactName adds the default contact's
// name; it is cleared for the caller when the company has none. Trimmed.
std::string createCompanyAddress(long companyID, bool& includeContactName, bool asRTF, long firmID,
                                 bool withAddress, bool withPhones, bool withEmail);

// Plain text made rich text: every CR LF is followed by "\par ".
std::string convertToRTF(std::string_view text);

}  // namespace lf
