// The calls that the client-record procedures make upwards: into the merge engine, filling the
// merge template of a personal-tax custom column for a contact and year, and into the summary
// writers, storing a client's RTF summaries after its records changed.
//
// The record creators sit below the merge engine and the summaries, so they reach them through
// these hooks rather than by including them. The component's wiring installs them once: the
// template filler is a clsInsertFieldsInRTB made for a personal-tax list (ListType 4,
// MergeFieldListUse 3, contactID set, its field list built); the summary hooks are the
// summary writers of the same names. While a hook is empty its call does nothing: a template
// column is left as it is and no summary is stored.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace lf {

struct ClientRecordHooks {
  // Answers the template's text with its placeholders filled for the contact and tax year.
  std::function<std::string(const std::string& templateText, long contactID, long taxYear)>
      fillPersonalTaxTemplate;
  // saveContactBusinessRTF(contactID, employeeID, companyID, doNotSpread).
  std::function<void(long contactID, long employeeID, long companyID, bool doNotSpread)>
      saveContactBusinessRTF;
  // saveCompanyContactRTF(companyID, contactID).
  std::function<void(long companyID, long contactID)> saveCompanyContactRTF;
  // saveContactPersonalTaxRTF(contactID, taxYear, employeeID).
  std::function<void(long contactID, long taxYear, long employeeID)> saveContactPersonalTaxRTF;
};

// The hooks of the module, shared by every procedure of records/.
ClientRecordHooks& clientRecordHooks();

// Calls a hook of clientRecordHooks() when it is installed; does nothing otherwise.
template <typename Hook, typename... Args>
void callRecordHook(const Hook& hook, Args&&... args) {
  if (hook) hook(std::forward<Args>(args)...);
}

}  // namespace lf
