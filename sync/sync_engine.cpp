// The engine the four sync sources share: services, source database, the run, the steps of a
// stage and the write groups of its records.
#include "sync/sync_engine.hpp"

#include <fmt/format.h>

#include <csignal>
#include <cstdlib>
#include <utility>

#include "base/date_utilities.hpp"
#include "base/error_service.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_factory.hpp"
#include "db/database_service.hpp"
#include "frame/platform_timer.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_utilities.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/practice_docket.hpp"
#include "host/practice_duplicate_finder.hpp"
#include "host/progress_dialog.hpp"
#include "host/work_code_object.hpp"
#include "records/lookups.hpp"
#include "sync/record_error_watch.hpp"

namespace lf {
namespace {

// The key of a driving row: its columns' texts joined by "," when there are several.
std::string rowKey(DatabaseService& source, std::int32_t handle,
                   const std::vector<std::string>& columns) {
  std::string key;
  for (size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) key += ",";
    key += SyncEngine::readText(source, handle, columns[i]);
  }
  return key;
}

void uncount(StageCounters& counters, const RecordOutcome& outcome) {
  auto forget = [](std::map<std::string, long>& reasons, const std::string& reason) {
    auto it = reasons.find(reason);
    if (it != reasons.end() && --it->second == 0) reasons.erase(it);
  };
  switch (outcome.kind) {
    case RecordOutcome::Created:
      --counters.created;
      break;
    case RecordOutcome::Updated:
      --counters.updated;
      break;
    case RecordOutcome::Skipped:
      --counters.skipped;
      forget(counters.skipReasons, outcome.reason);
      break;
    case RecordOutcome::Failed:
      --counters.failed;
      forget(counters.failReasons, outcome.reason);
      break;
  }
}

}  // namespace

std::string SourceRow::text(std::string_view column) const {
  return SyncEngine::readText(source, handle, column);
}

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
  ignoreErrors([&] {
    if (db_.isRecordsetOpen(ownHandle_)) db_.closeRecordset(ownHandle_);
  });
}

SyncEngine::SyncEngine(const SourceDescription& description, SyncOptions& options)
    : description_(description),
      options_(options),
      xref_(*description.crossReferences),
      companyFinder_(std::make_unique<PracticeDuplicateFinder>(PracticeDuplicateFinder::Company)),
      contactFinder_(std::make_unique<PracticeDuplicateFinder>(PracticeDuplicateFinder::Contact)) {
  makeSourceDatabase = [] { return newDatabase(); };
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

std::string SyncEngine::label(std::string_view procedureName) const {
  return SourceDescription::label(description_.engineClass(), procedureName);
}

std::string SyncEngine::formLabel(std::string_view procedureName) const {
  return SourceDescription::label(description_.formFile, description_.engineClass(), procedureName);
}

// --- Services ------------------------------------------------------------------------------

void SyncEngine::onErrorClass(ErrorService* errorClass) {
  companyFinder().setErrorService(errorClass);
  contactFinder().setErrorService(errorClass);
}

void SyncEngine::onMsgboxClass(MessageBox* msgbox) {
  companyFinder().setMsgbox(msgbox);
  contactFinder().setMsgbox(msgbox);
}

void SyncEngine::onLocaleReference(LocaleService& locale) {
  companyFinder().setLocale(&locale);
  contactFinder().setLocale(&locale);
}

void SyncEngine::onClientDropDownCtrlReference(ClientDropDownService& dropDown) {
  companyFinder().setDropDown(&dropDown);
  contactFinder().setDropDown(&dropDown);
}

void SyncEngine::onDatabaseReference(DatabaseService& db) {
  ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
  if (dropDown != nullptr) options_.importCategory = dropDown->getCurrentCategoryID();
  companyFinder().setDatabase(&db);
  contactFinder().setDatabase(&db);
}

void SyncEngine::setDuplicateFinders(std::unique_ptr<DuplicateFinder> company,
                                     std::unique_ptr<DuplicateFinder> contact) {
  companyFinder_ = std::move(company);
  contactFinder_ = std::move(contact);
}

void SyncEngine::setSyncObjects(bool contacts, bool timeEntries, bool invoices, bool workCodes) {
  options_.syncObjectsContacts = contacts;
  options_.syncObjectsTimeEntries = timeEntries;
  options_.syncObjectsInvoices = invoices;
  options_.syncObjectsWorkCodes = workCodes;
}

StageCounters& SyncEngine::stageCounters(const std::string& stage) {
  if (report_ != nullptr) return report_->stage(stage);
  return ownCounters_[stage];
}

// --- Source database -----------------------------------------------------------------------

void SyncEngine::setDatabaseLocation(const std::string& location) {
  options_.databaseLocation = location;
  if (!FileUtilities::fileExists(location)) {
    options_.useDatabase = false;
    return;
  }
  options_.useDatabase = openDatabase();
  if (options_.useDatabase) sourceFirmID_ = readSourceFirmID();
}

bool SyncEngine::openDatabase() {
  bool opened = false;
  procedure(label("open" + description_.word + "Database"), [&] {
    ModuleState& state = moduleState();
    source_ = makeSourceDatabase();
    if (source_->isOpen()) source_->close();
    source_->setErrorService(state.errorClass);
    source_->setOwnerWindow(nullptr);
    source_->setApplicationName(state.LocaleReference != nullptr
                                    ? state.LocaleReference->getApplicationName()
                                    : std::string());
    source_->setDatabaseKind(2);
    source_->setDatabasePath(options_.databaseLocation);
    source_->setCursorLocation(3);
    source_->setOpenMode(2);
    source_->connect(2);
    opened = source_->isOpen();
    setFailedToInitializeFlag(!opened);
    if (!opened && state.MsgboxClass != nullptr)
      state.MsgboxClass->show(
          "The user wizard was not able to access the database and needs to close.",
          kMessageValidation);
  });
  return opened;
}

void SyncEngine::closeDatabase() {
  procedure(label("close" + description_.word + "Database"), [&] {
    if (source_ && source_->isOpen()) source_->close();
    source_.reset();
  });
}

bool SyncEngine::practiceOpen() const {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen();
}

bool SyncEngine::sourceUsable() const {
  return options_.useDatabase && source_ != nullptr;
}

// --- The run -------------------------------------------------------------------------------

bool SyncEngine::importInformation() {
  procedure(label("import" + description_.word + "Information"), [&] {
    const bool anyGroup = options_.syncObjectsContacts || options_.syncObjectsTimeEntries ||
                          options_.syncObjectsInvoices || options_.syncObjectsWorkCodes;
    if (!showProgress_) {
      importFromProgress_StartProgress();
      return;
    }
    if (!anyGroup) return;
    ModuleState& state = moduleState();
    progress_ = state.makeProgressDialog ? state.makeProgressDialog()
                                         : std::make_unique<TerminalProgressDialog>();
    progress_->setCaption("Importing " + description_.word + " information, please wait ...");
    progress_->setMinimum(0);
    progress_->setMaximum(100);
    progress_->showDialog([this] { importFromProgress_StartProgress(); });
    progress_.reset();
  });
  return false;
}

void SyncEngine::importFromProgress_StartProgress() {
  procedure(formLabel("importFrom" + description_.word + "Progress_StartProgress"), [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    bool paused = true;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
    companyFinder().setDuplicateCheckEnabled(options_.duplicateCheckEnabled);
    initializeDataRecordsets();
    if (progress_) progress_->setMaximum(progressTotal());
    for (const StageGroup& group : runOrder())
      if (options_.*group.chosen)
        for (const std::function<void()>& stage : group.stages) stage();
    // Writes made outside the records are stored now, where a failure is reported, rather
    // than when the connection closes.
    holdWrites();
    commitRecords();
    closeDataRecordsets();
    if (progress_) progress_->closeDialog();
    paused = false;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
  });
}

void SyncEngine::setProgressCaption(const std::string& caption) {
  if (showProgress_ && progress_) progress_->setCaption(caption);
}

void SyncEngine::stepProgress() {
  if (showProgress_ && progress_) progress_->setValue(progress_->getValue() + 1);
}

void SyncEngine::pumpEvents(int times) {
  if (!eventPump) return;
  for (int i = 0; i < times; ++i) eventPump();
}

// --- The steps of a stage ------------------------------------------------------------------

void SyncEngine::runStage(const SyncStage& stage) {
  procedure(label(stage.procedureName), [&] {
    // In the report as soon as it runs: a stage that finds nothing shows read 0.
    StageCounters& counters = stageCounters(stage.reportName);
    if (!sourceUsable()) return;
    if (stage.beforeRows) stage.beforeRows();
    long reachedCreator = 0;
    runRows(stage, counters, reachedCreator);
    if (stage.afterRows) {
      holdWrites();
      stage.afterRows(reachedCreator);
    }
  });
  commitRecords();
}

void SyncEngine::runRows(const SyncStage& stage, StageCounters& counters, long& reachedCreator) {
  DatabaseService& source = *source_;
  auto record = [&](std::int32_t handle, const std::string* givenKey) {
    syncRecord(counters, [&] {
      const std::string key = givenKey != nullptr ? *givenKey
                              : stage.keyOfRow    ? stage.keyOfRow(source, handle)
                                                  : rowKey(source, handle, stage.keyColumns);
      const KeyResult result = syncKey(stage, SourceRow{source, handle, key});
      if (result.saved) ++reachedCreator;
      return result.outcome;
    });
    if (stage.stepsProgress) stepProgress();
    pumpEvents(2);
  };
  if (stage.keys != nullptr) {
    for (const std::string& key : keysOf(*stage.keys))
      if (!GeneralUtilities::isBlank(key)) record(0, &key);
    return;
  }
  if (stage.rows == nullptr || !source.isRecordsetOpen(*stage.rows)) return;
  const std::int32_t handle = *stage.rows;
  const long total = stage.progressCaption.empty() ? 0 : source.recordCount(handle);
  long number = 0;
  scan(source, handle, [&] {
    ++number;
    if (!stage.progressCaption.empty())
      setProgressCaption(fmt::format(fmt::runtime(stage.progressCaption), number, total));
    record(handle, nullptr);
  });
}

SyncEngine::KeyResult SyncEngine::syncKey(const SyncStage& stage, const SourceRow& row) {
  const std::string& key = row.key;
  if (GeneralUtilities::isBlank(key)) return {{RecordOutcome::Skipped, "no source ID"}, {}};
  if (stage.rowFilter) {
    if (std::optional<std::string> reason = stage.rowFilter(row))
      return {{RecordOutcome::Skipped, *reason}, {}};
  }
  // The stage's look-up and its creator may both search the recordset it scans: the place is
  // taken before either, so that a key the export repeats cannot send the scan back.
  const std::int32_t position = stage.keepsPosition ? row.source.getPosition(row.handle) : 0;
  auto backInPlace = [&] {
    if (stage.keepsPosition) row.source.setPosition(row.handle, position);
  };
  bool isNew = true;
  long known = -1;
  if (stage.clientMatch) {
    // Read anew for every key, so that a choice in the finder's dialog takes effect at once.
    bool check = companyFinder().duplicateCheckEnabled();
    known = matchClient(*stage.clientMatch, key, check, isNew);
  } else {
    known = stage.findKnown ? stage.findKnown(key) : xref_.find(stage.crossReference, key);
    isNew = known == -1;
  }
  if (stage.onlyNewEntriesApply && options_.importOnlyNewEntries && !isNew) {
    backInPlace();
    return {{RecordOutcome::Skipped, "known from an earlier run (only new entries)"}, {}};
  }

  skipReason_.clear();
  const long result = stage.create(key, known);
  backInPlace();
  beforeCrossReference();
  xref_.store(stage.crossReference, result, key);
  if (stage.afterSave) stage.afterSave(key, result);
  if (result <= 0)
    return {{RecordOutcome::Skipped, skipReason_.empty() ? "nothing to write" : skipReason_},
            result};
  return {{known > 0 ? RecordOutcome::Updated : RecordOutcome::Created, {}}, result};
}

long SyncEngine::skipBecause(std::string reason) {
  skipReason_ = std::move(reason);
  return -1;
}

long SyncEngine::createFromSourceRow(
    std::string_view procedureName, std::int32_t rows, const std::vector<std::string>& columns,
    const std::string& key, long neutral,
    const std::function<long(DatabaseService& source, DatabaseService& db)>& body) {
  long result = neutral;
  procedure(label(procedureName), [&] {
    if (!practiceOpen() || !sourceUsable()) return;
    if (!findKey(*source_, rows, columns, key)) {
      skipBecause("not in the export");
      return;
    }
    result = body(*source_, *moduleState().DatabaseReference);
  });
  return result;
}

void SyncEngine::beforeCrossReference() {
  if (killAtRecord_ > 0 && recordsStarted_ == killAtRecord_) std::raise(SIGKILL);
}

std::function<std::optional<std::string>(const SourceRow&)> SyncEngine::dateRangeFilter(
    std::string column, bool timeEntryRange) const {
  return [this, column = std::move(column),
          timeEntryRange](const SourceRow& row) -> std::optional<std::string> {
    const SyncOptions& o = options_;
    const bool inUse = timeEntryRange ? o.mvarUseTimeEntryDateRange : o.mvarUseInvoiceDateRange;
    if (!inUse) return std::nullopt;
    const std::optional<Date> date = DateUtilities::parseDateText(row.text(column));
    if (!date) return "no " + column;
    const bool inRange =
        timeEntryRange
            ? dateInSynchRange(*date, true, o.mvarTimeEntriesSynchDateRangeType,
                               o.mvarTimeEntriesSynchStartRange, o.mvarTimeEntriesSynchEndRange)
            : dateInSynchRange(*date, true, o.mvarInvoicesSynchDateRangeType,
                               o.mvarInvoicesSynchStartRange, o.mvarInvoicesSynchEndRange);
    if (!inRange) return column + " outside the date range";
    return std::nullopt;
  };
}

// --- Recordsets of a run ---------------------------------------------------------------------

void SyncEngine::openPracticeRecordsets(DatabaseService& db, const PracticeRecordsets& handles) {
  auto open = [&](const std::string& sql) {
    return db.openRecordset(sql, kCursorKeyset, kLockOptimistic);
  };
  xref_.open(sourceFirmID_, &db);
  handles.companies = open("SELECT Companies.* FROM Companies;");
  handles.mainBusinessList = open(getMainBusinessSQLString(false, 3, -1));
  handles.companiesNotes =
      open("SELECT CompaniesNotes.CompanyNum, CompaniesNotes.Notes FROM CompaniesNotes;");
  handles.contacts = open("SELECT Contacts.* FROM Contacts;");
  if (options_.syncObjectsContacts)
    handles.accountantEmployeeInfo =
        open("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;");
  if (options_.syncObjectsWorkCodes)
    handles.customInvoiceDockets = open("SELECT CustomInvoiceDockets.* FROM CustomInvoiceDockets;");
  if (options_.syncObjectsInvoices) {
    handles.invoices = open("SELECT Invoices.* FROM Invoices;");
    handles.deposits = open("SELECT Deposits.* FROM Deposits;");
  }
  if (options_.syncObjectsTimeEntries) handles.dockets = open("SELECT Dockets.* FROM Dockets;");
}

void SyncEngine::closeRecordsets(std::initializer_list<std::int32_t*> sourceHandles,
                                 std::initializer_list<std::int32_t*> targetHandles) {
  DatabaseService* db = moduleState().DatabaseReference;
  if (db == nullptr) return;
  bool open = false;
  ignoreErrors([&] { open = db->isOpen(); });
  if (!open) return;
  auto closeOn = [](DatabaseService* on, std::int32_t& handle) {
    ignoreErrors([&] {
      if (on != nullptr && on->isRecordsetOpen(handle)) on->closeRecordset(handle);
    });
    handle = 0;
  };
  for (std::int32_t* h : sourceHandles) closeOn(source_.get(), *h);
  ignoreErrors([&] { xref_.close(); });
  for (std::int32_t* h : targetHandles) closeOn(db, *h);
}

// --- Records and their write groups ----------------------------------------------------------

void SyncEngine::holdWrites() {
  DatabaseService* db = moduleState().DatabaseReference;
  if (db == nullptr || pendingGroup_ != nullptr) return;
  db->beginWriteGroup();
  pendingGroup_ = db;
  pendingSince_ = std::chrono::steady_clock::now();
}

void SyncEngine::syncRecord(StageCounters& counters, const std::function<RecordOutcome()>& body) {
  ++counters.read;
  ++recordsStarted_;
  RecordOutcome outcome{RecordOutcome::Failed, {}};
  bool done = false;
  RecordErrorWatch watch;
  try {
    resumeNext([&] {
      holdWrites();
      outcome = body();
      done = true;
    });
  } catch (...) {
    // Action 2 or 3 leaves the stage: the record counts as failed all the same.
    endRecord(counters, {RecordOutcome::Failed, watch.reason()});
    throw;
  }
  if (!done || watch.failed()) outcome = {RecordOutcome::Failed, watch.reason()};
  endRecord(counters, outcome);
}

void SyncEngine::countOutcome(StageCounters& counters, const RecordOutcome& outcome) {
  switch (outcome.kind) {
    case RecordOutcome::Created:
      ++counters.created;
      break;
    case RecordOutcome::Updated:
      ++counters.updated;
      break;
    case RecordOutcome::Skipped:
      counters.skip(outcome.reason);
      break;
    case RecordOutcome::Failed:
      counters.fail(outcome.reason);
      break;
  }
}

void SyncEngine::endRecord(StageCounters& counters, const RecordOutcome& outcome) {
  countOutcome(counters, outcome);
  if (pendingGroup_ == nullptr) return;
  pendingRecords_.push_back({&counters, outcome});
  if (static_cast<long>(pendingRecords_.size()) >= kRecordsPerCommit ||
      std::chrono::steady_clock::now() - pendingSince_ >= kCommitInterval)
    commitRecords();
}

void SyncEngine::storeDocketsThrough(const std::int32_t& dockets) {
  dockets_ = &dockets;
  makeDocketObject = [&dockets]() -> std::unique_ptr<DocketObject> {
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr) return nullptr;
    return std::make_unique<PracticeDocket>(*db, dockets);
  };
}

void SyncEngine::endEngine() {
  options_.companyCollection.clearList();
  options_.contactsCollection.clearList();
  commitRecords();
  ignoreErrors([&] { closeDataRecordsets(); });
  ignoreErrors([&] { closeDatabase(); });
}

void SyncEngine::commitRecords() {
  if (pendingGroup_ == nullptr) return;
  DatabaseService* db = std::exchange(pendingGroup_, nullptr);
  std::vector<PendingRecord> held = std::exchange(pendingRecords_, {});
  procedure(label("commitRecords"), [&] {
    try {
      db->endWriteGroup();
    } catch (const std::exception& failure) {
      // The group was rolled back: nothing its records wrote is stored.
      const RecordOutcome lost{RecordOutcome::Failed, std::string("not stored: ") + failure.what()};
      for (PendingRecord& record : held) {
        if (record.outcome.kind == RecordOutcome::Failed) continue;
        uncount(*record.counters, record.outcome);
        countOutcome(*record.counters, lost);
      }
      throw;
    }
  });
}

// --- Reading the source --------------------------------------------------------------------

std::string SyncEngine::lookUpSource(std::string_view procedureName, std::int32_t rows,
                                     std::string_view column, const std::string& key,
                                     std::string_view field) {
  std::string result;
  procedure(label(procedureName), [&] {
    if (source_ != nullptr && source_->findRecord(rows, column, key))
      result = readText(*source_, rows, field);
  });
  return result;
}

bool SyncEngine::findKey(DatabaseService& db, std::int32_t handle,
                         const std::vector<std::string>& columns, const std::string& key) {
  if (columns.size() == 1) return db.findRecord(handle, columns[0], key);
  const std::vector<std::string> parts = ClientKeyShape{columns}.parse(key);
  std::array<std::string_view, 6> criteria{};
  for (size_t i = 0; i < parts.size() && i < 3; ++i) {
    criteria[2 * i] = columns[i];
    criteria[2 * i + 1] = parts[i];
  }
  return db.findRecord(handle, criteria[0], criteria[1], criteria[2], criteria[3], criteria[4],
                       criteria[5]);
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
  return v.toString();
}

bool SyncEngine::readBool(DatabaseService& db, std::int32_t handle, std::string_view field) {
  Variant v = db.getField(handle, field);
  if (GeneralUtilities::isBlank(v)) return false;
  return v.toBool();
}

}  // namespace lf
