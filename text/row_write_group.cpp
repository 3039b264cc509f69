// The rows of a text import in write groups committed several at a time.
#include "text/row_write_group.hpp"

#include <utility>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/run_report.hpp"
#include "sync/record_error_watch.hpp"

namespace lf {

RowWriteGroups::RowWriteGroups(std::string label, StageCounters* counters)
    : label_(std::move(label)), counters_(counters) {}

RowWriteGroups::~RowWriteGroups() {
  ignoreErrors([&] { commit(); });
}

void RowWriteGroups::countRow(const HeldRow& row) {
  if (counters_ == nullptr) return;
  if (row.failed) {
    counters_->fail(row.reason);
    return;
  }
  switch (row.outcome) {
    case RowOutcome::Created:
      ++counters_->created;
      break;
    case RowOutcome::Updated:
      ++counters_->updated;
      break;
    case RowOutcome::Skipped:
      counters_->skip(row.reason);
      break;
  }
}

void RowWriteGroups::importRow(const std::function<RowOutcome(std::string& skipReason)>& body) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return;
  if (counters_ != nullptr) ++counters_->read;
  if (group_ == nullptr) {
    db->beginWriteGroup();
    group_ = db;
    heldSince_ = std::chrono::steady_clock::now();
  }
  HeldRow row{true, RowOutcome::Skipped, {}};
  bool done = false;
  RecordErrorWatch watch;
  try {
    resumeNext([&] {
      row.outcome = body(row.reason);
      done = true;
    });
  } catch (...) {
    // Action 2 or 3 leaves the import: the row counts as failed all the same.
    endRow({true, RowOutcome::Skipped, watch.reason()});
    throw;
  }
  row.failed = !done || watch.failed();
  if (row.failed) row.reason = watch.reason();
  endRow(std::move(row));
}

void RowWriteGroups::endRow(HeldRow row) {
  held_.push_back(std::move(row));
  if (static_cast<long>(held_.size()) >= kRowsPerCommit ||
      std::chrono::steady_clock::now() - heldSince_ >= kCommitInterval)
    commit();
}

void RowWriteGroups::commit() {
  if (group_ == nullptr) return;
  DatabaseService* db = std::exchange(group_, nullptr);
  std::vector<HeldRow> held = std::exchange(held_, {});
  procedure(label_, [&] {
    try {
      db->endWriteGroup();
    } catch (const std::exception& failure) {
      // The group was rolled back: nothing its rows wrote is stored.
      const std::string lost = std::string("not stored: ") + failure.what();
      for (HeldRow& row : held) {
        if (!row.failed) row = {true, row.outcome, lost};
        countRow(row);
      }
      throw;
    }
    for (const HeldRow& row : held) countRow(row);
  });
}

void importOneRow(StageCounters* counters,
                  const std::function<RowOutcome(std::string& skipReason)>& body) {
  RowWriteGroups rows("Ledgerfolio.exe-RowWriteGroups-commit", counters);
  rows.importRow(body);
  rows.commit();
}

}  // namespace lf
