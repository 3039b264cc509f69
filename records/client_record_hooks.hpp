// The call that the client-record procedures make into the merge engine: filling the merge
// template of a personal-tax custom column for a contact and year.
//
// The record creators sit below the merge engine, so they reach it through this hook rather
// than by including it. The host's set-up installs it once, with a clsInsertFieldsInRTB made
// for a personal-tax list (ListType 4, MergeFieldListUse 3, contactID set, its field list
// built). While it is empty a template column is left as it is.
#pragma once

#include <functional>
#include <string>

namespace lf {

struct ClientRecordHooks {
  // Answers the template's text with its placeholders filled for the contact and tax year.
  std::function<std::string(const std::string& templateText, long contactID, long taxYear)>
      fillPersonalTaxTemplate;
};

// The hooks of the module, shared by every procedure of records/.
ClientRecordHooks& clientRecordHooks();

}  // namespace lf
