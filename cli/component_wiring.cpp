// Wiring of the component's upward hooks.
#include "cli/component_wiring.hpp"

#include "merge/record_hooks.hpp"
#include "summaries/summary_record_hooks.hpp"
#include "tax/cantax_forms.hpp"
#include "tax/profile_forms.hpp"

namespace lf {

void installComponentWiring() {
  installSummaryRecordHooks();
  installMergeRecordHooks();
  registerCANTAXForms();
  registerProfileForms();
}

}  // namespace lf
