// Installs the summary writers behind the hooks through which the client-record procedures
// store a client's RTF summaries after changing its records.
#pragma once

namespace lf {

void installSummaryRecordHooks();

}  // namespace lf
