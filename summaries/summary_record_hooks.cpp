// The summary hooks of the client-record procedures: the summary writers of the same names.
#include "summaries/summary_record_hooks.hpp"

#include "records/client_record_hooks.hpp"
#include "summaries/company_summaries.hpp"
#include "summaries/contact_summaries.hpp"

namespace lf {

void installSummaryRecordHooks() {
  ClientRecordHooks& hooks = clientRecordHooks();
  hooks.saveContactBusinessRTF = [](long contactID, long employeeID, long companyID,
                                    bool doNotSpread) {
    saveContactBusinessRTF(contactID, employeeID, companyID, doNotSpread);
  };
  hooks.saveCompanyContactRTF = [](long companyID, long contactID) {
    saveCompanyContactRTF(companyID, contactID);
  };
  hooks.saveContactPersonalTaxRTF = [](long contactID, long taxYear, long employeeID) {
    saveContactPersonalTaxRTF(contactID, taxYear, employeeID);
  };
}

}  // namespace lf
