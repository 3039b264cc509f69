// The engine the four sync sources share: the source database connection, the duplicate
// finders, the progress dialog of a run, the per-record write group, the stage counters of
// the run report, and the scans and blank-tested reads every stage uses.
//
// A source engine (clsImportTPSInformation and its like) derives from it and holds its own
// tables, statements, field maps and words.
//
// Every source record is synchronised inside one write group of the practice database: its
// target rows, satellites, summaries and its cross-reference row are committed together,
// also when the record ends by a failure, so a process killed during a record leaves none of
// it and a re-run finds each record either complete with its cross-reference or not at all.
// Commits happen only at a record's end. One commit takes the whole records ended since the
// last one, up to kRecordsPerCommit of them or kCommitInterval of work, whichever comes
// first: a commit per record would cost about a third of a large sync, and a crash redoes at
// most that much. Groups nest, the outer one commits whole records only, and no group
// outlives its stage.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "host/duplicate_finder.hpp"
#include "host/run_report.hpp"

namespace lf {

class DatabaseService;
class ProgressDialog;
class DocketObject;
class WorkCodeObject;

// The row of a key in an open recordset; when the row was added by another route after the
// recordset was opened (the client-record creators, the docket object), a one-row recordset
// of the same columns is opened for it instead of re-reading the whole table, and closed
// with this object. Writes through either handle reach every open recordset holding the row.
class RowAccess {
 public:
  RowAccess(DatabaseService& db, std::int32_t handle, std::string_view keyColumn, long key,
            const std::string& oneRowSql);
  ~RowAccess();
  RowAccess(const RowAccess&) = delete;
  RowAccess& operator=(const RowAccess&) = delete;
  bool found() const { return found_; }
  std::int32_t handle() const { return handle_; }
  operator std::int32_t() const { return handle_; }

 private:
  DatabaseService& db_;
  std::int32_t handle_ = 0;
  std::int32_t ownHandle_ = 0;
  bool found_ = false;
};

// What a stage did with one source record.
enum class SyncOutcome { Created, Updated, Skipped };

class SyncEngine {
 public:
  SyncEngine();
  virtual ~SyncEngine();
  SyncEngine(const SyncEngine&) = delete;
  SyncEngine& operator=(const SyncEngine&) = delete;

  // --- Source database --------------------------------------------------------------------
  // The source database object, null before a location was set.
  DatabaseService* sourceDatabase() const { return source_.get(); }
  // Makes the source database object; a SqliteDatabase unless replaced (tests).
  std::function<std::unique_ptr<DatabaseService>()> makeSourceDatabase;

  // --- Host objects -----------------------------------------------------------------------
  DuplicateFinder& companyFinder() { return *companyFinder_; }
  DuplicateFinder& contactFinder() { return *contactFinder_; }
  void setDuplicateFinders(std::unique_ptr<DuplicateFinder> company,
                           std::unique_ptr<DuplicateFinder> contact);
  // Makes a docket object and a work code object (practice implementations by default).
  std::function<std::unique_ptr<DocketObject>()> makeDocketObject;
  std::function<std::unique_ptr<WorkCodeObject>()> makeWorkCodeObject;

  // --- Run report -------------------------------------------------------------------------
  // Counters of each stage go to this report when set; otherwise to the engine's own.
  void setRunReport(RunReport* report) { report_ = report; }
  StageCounters& stageCounters(const std::string& stage);
  const std::map<std::string, StageCounters>& ownCounters() const { return ownCounters_; }

  // A full scan: hasRecord, then until isEOF: the row, moveNext.
  static void scan(DatabaseService& db, std::int32_t handle, const std::function<void()>& row);
  // The field as text, or empty when it is blank.
  static std::string readText(DatabaseService& db, std::int32_t handle, std::string_view field);
  // The field as a boolean; false when blank.
  static bool readBool(DatabaseService& db, std::int32_t handle, std::string_view field);

  // The event pump of every record: delivers the ticks of running timers (the wizard's
  // auto-start timer, clsTimer) by default.
  std::function<void()> eventPump;

 protected:
  // The seven steps of opening a source database; false with the message
  // "The user wizard was not able to access the database and needs to close." when the
  // database did not open. failedToInitializeFlag follows the result.
  bool openSourceDatabase(const std::string& location, bool& failedToInitializeFlag);
  void closeSourceDatabase();

  // Shows the progress dialog with the caption and runs startProgress inside it, or runs it
  // directly when showProgress is false.
  void runUnderProgress(bool showProgress, const std::string& caption,
                        const std::function<void()>& startProgress);
  ProgressDialog* progress() const { return progress_.get(); }
  void setProgressMaximum(long maximum);
  void setProgressCaption(bool showProgress, const std::string& caption);
  // Advances the bar by one (getValue, setValue).
  void stepProgress(bool showProgress);
  void pumpEvents(int times);

  // Runs one source record of a stage inside its write group: counts it as read, counts the
  // outcome the body gives, or a failure (handed to the procedure's handler; action 1 goes
  // on with the next record).
  void syncRecord(const std::string& stage, const std::function<SyncOutcome()>& body);

  // Held by each stage for its whole run: commits the records of the stage still pending when
  // the stage ends, however it ends.
  class StageCommit {
   public:
    explicit StageCommit(SyncEngine& engine) : engine_(engine) {}
    ~StageCommit() { engine_.commitRecords(); }
    StageCommit(const StageCommit&) = delete;
    StageCommit& operator=(const StageCommit&) = delete;

   private:
    SyncEngine& engine_;
  };
  // Commits the whole records written since the last commit.
  void commitRecords();

  static constexpr long kRecordsPerCommit = 200;
  static constexpr std::chrono::milliseconds kCommitInterval{100};

  std::unique_ptr<DatabaseService> source_;

 protected:
  // Called by a stage after a record's target rows are written and before its cross-reference
  // row is saved: the point where an interrupted record would otherwise be half written.
  void beforeCrossReference();

 private:
  std::unique_ptr<DuplicateFinder> companyFinder_;
  std::unique_ptr<DuplicateFinder> contactFinder_;
  std::unique_ptr<ProgressDialog> progress_;
  RunReport* report_ = nullptr;
  std::map<std::string, StageCounters> ownCounters_;
  // Test hook: LFIMPORT_KILL_AT_RECORD=N kills the process with SIGKILL inside the N-th
  // record of the run, after its target rows are written and before its cross-reference is.
  long killAtRecord_ = 0;
  long recordsStarted_ = 0;
  // The outer write group of the records not committed yet.
  DatabaseService* pendingGroup_ = nullptr;
  long pendingRecords_ = 0;
  std::chrono::steady_clock::time_point pendingSince_;
};

}  // namespace lf
