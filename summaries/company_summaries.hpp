// The rich-text summaries of a company: its business page (BusinessNotes) and its contact
// panel (ContactNotes), which shows the default contact's business summary or says that
// there is none. The text frame is that of the contact summaries.
#pragma once

#include <string>

namespace lf {

// Builds the company's summary (the firm's when firmID is valid) and stores it in
// BusinessNotes of the firm row or of the company's CompaniesNotes row, added when missing.
// Returns the text, or the empty text when nothing was found.
std::string saveCompanyRTF(long companyID, long firmID);

// Stores in the company's ContactNotes the business summary of its default contact
// (contactID), or the no-default text when contactID is negative. REQUIRES: a CompaniesNotes
// row for the company; without one nothing is written. Returns the stored text.
std::string saveCompanyContactRTF(long companyID, long contactID);

}  // namespace lf
