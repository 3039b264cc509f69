// Installs the merge engine behind the hook through which the client-record procedures fill
// the merge templates of personal-tax custom columns.
#pragma once

namespace lf {

void installMergeRecordHooks();

}  // namespace lf
