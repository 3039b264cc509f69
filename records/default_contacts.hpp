// The default contact of a company: at most one of the contacts linked to a company carries
// DefaultContact on its link, and its name, phone, fax and e-mail stand copied on the
// Companies row (DefaultContactName, DefaultContactPhoneNumber, DefaultContactFaxNumber,
// DefaultContactEmail). When the default changes, the stored summaries of the company and
// its contacts are rewritten unless the caller asks for none.
#pragma once

namespace lf {

// The company's default contact; 0 when it has none. With `autoPick`, a company whose links
// name no default gets its first linked contact as the default. A company with no link at
// all has its four default columns emptied.
long checkForDefaultContact(long companyID, bool autoPick);

// Marks the contact as the company's default on the company's links (and every other link of
// the company as not default), rewrites the summaries unless `noSummaries`, and copies the
// contact's details onto the company.
void setContactAsDefault(long contactID, long companyID, bool noSummaries);

// Refreshes the company's default columns (empty when no default contact is left) and,
// unless `noSummaries`, its stored contact summary.
void setNoContactAsDefault(long companyID, bool noSummaries);

// Copies the default contact's DisplayName, BusinessPhone_Main, BusinessPhone_Fax and
// BusinessEmail onto the company; empties the four columns when there is no default.
void updateDefaultContactInfo(long companyID);

// The default contact by its link; when the company has links and none is the default,
// the first linked contact is made the default and answered. 0 when the company has none.
long getDefaultContactIDFromCompanyID(long companyID);

// Whether the link of the pair carries DefaultContact.
bool isContactDefaultContact(long companyID, long contactID);

}  // namespace lf
