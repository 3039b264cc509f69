// The calls that the client-record procedures make into other subsystems: the stored
// summaries of a contact and a company, and the merge engine that fills the custom columns
// of a personal-tax client from a template.
//
// The record creators sit below those subsystems, so they reach them through these hooks
// rather than by including them. The host's set-up installs them once (see
// installClientRecordHooks in the set-up code); a hook left empty is skipped, and the
// custom column it would have filled stays as it is.
#pragma once

#include <functional>
#include <string>

namespace lf {

struct ClientRecordHooks {
  // Fills a merge template for a contact and tax year with the merge engine made for a
  // personal-tax list (ListType 4, MergeFieldListUse 3, contactID set) and answers the text.
  std::function<std::string(const std::string& templateText, long contactID, long taxYear)>
      fillPersonalTaxTemplate;

  // The summary writers (rich-text summaries stored in the note columns).
  std::function<void(long contactID, long taxYear)> saveContactPersonalTaxRTF;
  std::function<void(long contactID, long companyID)> saveContactBusinessRTF;
  // contactID -1: the company has no default contact.
  std::function<void(long companyID, long contactID)> saveCompanyContactRTF;
};

// The hooks of the module, shared by every procedure of records/.
ClientRecordHooks& clientRecordHooks();

}  // namespace lf
