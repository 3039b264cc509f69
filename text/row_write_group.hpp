// The rows of a text import as units of work: each row's writes belong together, a failure
// of action 1 fails that row only and the import goes on with the next, and every row is
// counted.
//
// Crash safety: commits happen only at a row's end, so a process killed during a row leaves
// none of that row, and a re-run with duplicate matching on finds every row either complete
// or not at all. One commit takes the rows ended since the last one, up to kRowsPerCommit of
// them or kCommitInterval of work, whichever comes first: a commit per row costs most of a
// large import, and a crash redoes at most that much. Rows are counted when their commit
// succeeds; a commit that fails is rolled back, goes to the error service, and every row it
// held is counted failed, not created.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace lf {

class DatabaseService;
struct StageCounters;

enum class RowOutcome { Created, Updated, Skipped };

class RowWriteGroups {
 public:
  // `label` names the procedure of the commits; `counters` may be null.
  RowWriteGroups(std::string label, StageCounters* counters);
  // Commits the rows still held (a failure there goes to the error service).
  ~RowWriteGroups();
  RowWriteGroups(const RowWriteGroups&) = delete;
  RowWriteGroups& operator=(const RowWriteGroups&) = delete;

  // Runs one row. `body` answers the outcome and, for a skip, the reason. A failure that the
  // error service answers with action 2 or 3 still ends the row (counted failed), then leaves.
  void importRow(const std::function<RowOutcome(std::string& skipReason)>& body);
  // Commits the rows ended since the last commit and counts them.
  void commit();

  static constexpr long kRowsPerCommit = 200;
  static constexpr std::chrono::milliseconds kCommitInterval{100};

 private:
  struct HeldRow {
    bool failed;
    RowOutcome outcome;
    std::string reason;
  };
  void endRow(HeldRow row);
  void countRow(const HeldRow& row);

  std::string label_;
  StageCounters* counters_;
  DatabaseService* group_ = nullptr;  // the open write group of the held rows
  std::vector<HeldRow> held_;
  std::chrono::steady_clock::time_point heldSince_;
};

// One row committed on its own: RowWriteGroups for a single row.
void importOneRow(StageCounters* counters,
                  const std::function<RowOutcome(std::string& skipReason)>& body);

}  // namespace lf
