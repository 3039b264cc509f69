// One row of a text import as one unit of work: its writes are committed together at its end
// (also when it ends by a failure, as the sync commits its records), a failure of action 1
// fails this row only and the import goes on with the next, and the row is counted.
//
// Crash safety: a process killed during a row leaves none of that row, so a re-run with
// duplicate matching on finds every row either complete or not at all.
#pragma once

#include <functional>
#include <string>

namespace lf {

struct StageCounters;

enum class RowOutcome { Created, Updated, Skipped };

// Runs the row. `body` answers the outcome and, for a skip, the reason. A failure that the
// error service answers with action 2 or 3 still ends the write group, then leaves.
void importOneRow(StageCounters* counters,
                  const std::function<RowOutcome(std::string& skipReason)>& body);

}  // namespace lf
