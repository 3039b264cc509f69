// The business of a personal return's statement of business activities (form 2125, or 2124)
// as a company, with the taxpayer as its owner and the further owners of the form's owners'
// table (rows 2 to 6) as contacts of the company.
#pragma once

namespace lf {

class ProfileClient;
class ImportDuplicatesControl;

// The form's business of the client (copy 0 for the taxpayer; copy 1, else 2, for the second
// client) as a company with its owners. contactID is the client's contact, overwritten by each
// further owner. Nothing is made for a return with neither form or with a blank business name.
void importProfileSoleProprietorshipInformation(ProfileClient& client, long& contactID,
                                                bool isSecondClient,
                                                ImportDuplicatesControl* companyDuplicates,
                                                long taxYear);

}  // namespace lf
