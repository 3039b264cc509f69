// The engine the four sync sources share.
#include "sync/sync_engine.hpp"

#include <csignal>
#include <cstdlib>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/sqlite_database.hpp"
#include "frame/platform_timer.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/practice_docket.hpp"
#include "host/practice_duplicate_finder.hpp"
#include "host/progress_dialog.hpp"
#include "host/work_code_object.hpp"

namespace lf {

RowAccess::RowAccess(DatabaseService& db, std::int32_t handle, std::string_view keyColumn, long key,
                     const std::string& oneRowSql)
    : db_(db), handle_(handle) {
  const std::string k = std::to_string(key);
  if (handle != 0 && db.isRecordsetOpen(handle) && db.findRecord(handle, keyColumn, k)) {
    found_ = true;
    return;
  }
  ownHandle_ = db.openRecordset(oneRowSql, kCursorKeyset, kLockOptimistic);
  handle_ = ownHandle_;
  found_ = db.findRecord(ownHandle_, keyColumn, k);
}

RowAccess::~RowAccess() {
  if (ownHandle_ == 0) return;
  try {
    if (db_.isRecordsetOpen(ownHandle_)) db_.closeRecordset(ownHandle_);
  } catch (...) {
  }
}

SyncEngine::SyncEngine()
    : companyFinder_(std::make_unique<PracticeDuplicateFinder>(PracticeDuplicateFinder::Company)),
      contactFinder_(std::make_unique<PracticeDuplicateFinder>(PracticeDuplicateFinder::Contact)) {
  makeSourceDatabase = [] { return std::make_unique<SqliteDatabase>(); };
  makeDocketObject = []() -> std::unique_ptr<DocketObject> {
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr) return nullptr;
    return std::make_unique<PracticeDocket>(*db);
  };
  makeWorkCodeObject = [] { return std::make_unique<PracticeWorkCode>(); };
  eventPump = [] { pumpTimerEvents(0); };
  if (const char* kill = std::getenv("LFIMPORT_KILL_AT_RECORD")) killAtRecord_ = std::atol(kill);
}

SyncEngine::~SyncEngine() {
  commitRecords();
}

void SyncEngine::setDuplicateFinders(std::unique_ptr<DuplicateFinder> company,
                                     std::unique_ptr<DuplicateFinder> contact) {
  companyFinder_ = std::move(company);
  contactFinder_ = std::move(contact);
}

StageCounters& SyncEngine::stageCounters(const std::string& stage) {
  if (report_ != nullptr) return report_->stage(stage);
  return ownCounters_[stage];
}

bool SyncEngine::openSourceDatabase(const std::string& location, bool& failedToInitializeFlag) {
  ModuleState& state = moduleState();
  source_ = makeSourceDatabase();
  if (source_->isOpen()) source_->close();
  source_->setErrorService(state.errorClass);
  source_->setOwnerWindow(nullptr);
  source_->setApplicationName(state.LocaleReference != nullptr
                                  ? state.LocaleReference->getApplicationName()
                                  : std::string());
  source_->setDatabaseKind(2);
  source_->setDatabasePath(location);
  source_->setCursorLocation(3);
  source_->setOpenMode(2);
  source_->connect(2);
  if (!source_->isOpen()) {
    if (state.MsgboxClass != nullptr)
      state.MsgboxClass->show(
          "The user wizard was not able to access the database and needs to close.",
          kMessageValidation);
    failedToInitializeFlag = true;
    return false;
  }
  failedToInitializeFlag = false;
  return true;
}

void SyncEngine::closeSourceDatabase() {
  if (source_ && source_->isOpen()) source_->close();
  source_.reset();
}

void SyncEngine::runUnderProgress(bool showProgress, const std::string& caption,
                                  const std::function<void()>& startProgress) {
  if (!showProgress) {
    startProgress();
    return;
  }
  ModuleState& state = moduleState();
  progress_ = state.makeProgressDialog ? state.makeProgressDialog()
                                       : std::make_unique<TerminalProgressDialog>();
  progress_->setCaption(caption);
  progress_->setMinimum(0);
  progress_->setMaximum(100);
  progress_->showDialog(startProgress);
  progress_.reset();
}

void SyncEngine::setProgressMaximum(long maximum) {
  if (progress_) progress_->setMaximum(maximum);
}

void SyncEngine::setProgressCaption(bool showProgress, const std::string& caption) {
  if (showProgress && progress_) progress_->setCaption(caption);
}

void SyncEngine::stepProgress(bool showProgress) {
  if (showProgress && progress_) progress_->setValue(progress_->getValue() + 1);
}

void SyncEngine::pumpEvents(int times) {
  if (!eventPump) return;
  for (int i = 0; i < times; ++i) eventPump();
}

void SyncEngine::beforeCrossReference() {
  if (killAtRecord_ > 0 && recordsStarted_ == killAtRecord_) std::raise(SIGKILL);
}

void SyncEngine::syncRecord(const std::string& stage, const std::function<SyncOutcome()>& body) {
  StageCounters& counters = stageCounters(stage);
  ++counters.read;
  ++recordsStarted_;
  DatabaseService* db = moduleState().DatabaseReference;
  if (db != nullptr && pendingGroup_ == nullptr) {
    db->beginWriteGroup();
    pendingGroup_ = db;
    pendingRecords_ = 0;
    pendingSince_ = std::chrono::steady_clock::now();
  }
  // Ends the record's own group however the record ends; the outer group commits it with the
  // records before it once enough have gathered.
  struct RecordEnd {
    SyncEngine& engine;
    ~RecordEnd() {
      ++engine.pendingRecords_;
      if (engine.pendingRecords_ >= kRecordsPerCommit ||
          std::chrono::steady_clock::now() - engine.pendingSince_ >= kCommitInterval)
        engine.commitRecords();
    }
  } recordEnd{*this};
  struct WriteGroup {
    DatabaseService* db;
    explicit WriteGroup(DatabaseService* d) : db(d) {
      if (db != nullptr) db->beginWriteGroup();
    }
    ~WriteGroup() {
      if (db != nullptr) {
        try {
          db->endWriteGroup();
        } catch (...) {
        }
      }
    }
  } group(db);
  const long errorsBefore = report_ != nullptr ? report_->errorCount() : 0;
  bool failed = true;
  SyncOutcome outcome = SyncOutcome::Skipped;
  try {
    resumeNext([&] {
      outcome = body();
      failed = false;
    });
  } catch (...) {
    ++counters.failed;
    throw;
  }
  // A failure handled inside the record's own procedures counts it as failed as well.
  if (failed || (report_ != nullptr && report_->errorCount() > errorsBefore)) {
    ++counters.failed;
    return;
  }
  switch (outcome) {
    case SyncOutcome::Created:
      ++counters.created;
      break;
    case SyncOutcome::Updated:
      ++counters.updated;
      break;
    case SyncOutcome::Skipped:
      ++counters.skipped;
      break;
  }
}

void SyncEngine::commitRecords() {
  if (pendingGroup_ == nullptr) return;
  DatabaseService* db = pendingGroup_;
  pendingGroup_ = nullptr;
  pendingRecords_ = 0;
  try {
    db->endWriteGroup();
  } catch (...) {
  }
}

void SyncEngine::scan(DatabaseService& db, std::int32_t handle, const std::function<void()>& row) {
  if (!db.hasRecord(handle)) return;
  while (!db.isEOF(handle)) {
    row();
    db.moveNext(handle);
  }
}

std::string SyncEngine::readText(DatabaseService& db, std::int32_t handle, std::string_view field) {
  Variant v = db.getField(handle, field);
  if (GeneralUtilities::isBlank(v)) return {};
  return db.getField(handle, field).toString();
}

bool SyncEngine::readBool(DatabaseService& db, std::int32_t handle, std::string_view field) {
  Variant v = db.getField(handle, field);
  if (GeneralUtilities::isBlank(v)) return false;
  return v.toBool();
}

}  // namespace lf
