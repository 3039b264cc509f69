// One row of a text import in its write group.
#include "text/row_write_group.hpp"

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/run_report.hpp"
#include "sync/record_error_watch.hpp"

namespace lf {

namespace {

void count(StageCounters* counters, RowOutcome outcome, const std::string& reason) {
  if (counters == nullptr) return;
  switch (outcome) {
    case RowOutcome::Created:
      ++counters->created;
      break;
    case RowOutcome::Updated:
      ++counters->updated;
      break;
    case RowOutcome::Skipped:
      counters->skip(reason);
      break;
  }
}

}  // namespace

void importOneRow(StageCounters* counters,
                  const std::function<RowOutcome(std::string& skipReason)>& body) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return;
  if (counters != nullptr) ++counters->read;
  RowOutcome outcome = RowOutcome::Skipped;
  std::string reason;
  bool done = false;
  RecordErrorWatch watch;
  auto fail = [&](const std::string& why) {
    if (counters != nullptr) counters->fail(why);
  };
  db->beginWriteGroup();
  try {
    resumeNext([&] {
      outcome = body(reason);
      done = true;
    });
  } catch (...) {
    ignoreErrors([&] { db->endWriteGroup(); });
    fail(watch.reason());
    throw;
  }
  try {
    db->endWriteGroup();
  } catch (const std::exception& failure) {
    fail(std::string("not stored: ") + failure.what());
    resumeNext([&] { throw; });
    return;
  }
  if (!done || watch.failed())
    fail(watch.reason());
  else
    count(counters, outcome, reason);
}

}  // namespace lf
