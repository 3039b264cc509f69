// The engine the four sync sources share: the services and choices of a run, the source
// database connection, the duplicate finders and client matching, the progress dialog, the
// run itself (stage groups in the source's order), the steps every stage takes
// (runStage), the per-record write groups and the stage counters of the run report.
//
// A source engine (clsImportTPSInformation and its like) derives from it and gives its
// description (words, cross-reference tables, client key), its recordsets, its stages as
// SyncStage data and their creators.
//
// Every source record is synchronised inside a write group of the practice database: its
// target rows, satellites, summaries and its cross-reference row are committed together,
// also when the record ends by a failure, so a process killed during a record leaves none of
// it and a re-run finds each record either complete with its cross-reference or not at all.
// Commits happen only at a record's end. One commit takes the whole records ended since the
// last one, up to kRecordsPerCommit of them or kCommitInterval of work, whichever comes
// first: a commit per record would cost about a third of a large sync, and a crash redoes at
// most that much. No group outlives its stage. A commit that fails is rolled back, goes to
// the error service, and every record it held is counted failed in the report, not created.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/import_services.hpp"
#include "host/duplicate_finder.hpp"
#include "host/run_report.hpp"
#include "sync/cross_reference.hpp"
#include "sync/source_description.hpp"
#include "sync/sync_options.hpp"
#include "sync/sync_stage.hpp"

namespace lf {

class ClientDropDownService;
class DatabaseService;
class DocketObject;
class ErrorService;
class LocaleService;
class MessageBox;
class ProgressDialog;
class TasksService;
class WorkCodeObject;
class WorkingFolderService;

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

// How client matching describes a source client to a duplicate finder: the look-up's own
// operation, the source recordset the client is found in and by which column, and the
// columns that give the finder its candidate (empty: not given). The company finder runs
// its automatic modes 1 and 2 before asking the user (mode 3); the contact finder asks at
// once.
struct ClientCandidate {
  // The source columns the finder is given.
  struct Columns {
    std::string companyName{};
    std::string displayName{};  // empty: first and last name joined
    std::string firstName{};
    std::string lastName{};
    std::string clientCode{};
  };
  std::string procedureName{};  // "getCompanyIDFromTPSClientID"
  CrossReferenceKind crossReference = CrossReferenceKind::CompanyClient;
  const std::int32_t* rows = nullptr;
  // The columns of the client key in `rows`: the source ID is parsed by the key's shape.
  std::vector<std::string> searchColumns{};
  Columns columns{};
  int pumps = 4;
};

// The creators of a source that make a client on the spot, for a row whose client was not
// selected (SyncEngine::clientOfSourceRow), and the name the question shows.
struct ClientCreators {
  std::function<long(const std::string& key, long companyID)> company{};
  std::function<long(const std::string& key, long contactID, long companyID, long categoryID)>
      contact{};
  std::function<std::string(const std::string& key)> name{};
};

class SyncEngine : public ImportServices {
 public:
  // REQUIRES: description and options outlive the engine (the source engine owns them).
  SyncEngine(const SourceDescription& description, SyncOptions& options);
  virtual ~SyncEngine();
  SyncEngine(const SyncEngine&) = delete;
  SyncEngine& operator=(const SyncEngine&) = delete;

  const SourceDescription& description() const { return description_; }

  // --- Services: the setters of ImportServices; the engine passes them on to its duplicate
  // finders, and the practice database also sets importCategory to the current category.
  bool showProgress() const { return showProgress_; }
  void setShowProgress(bool value) { showProgress_ = value; }

  // --- Choices ------------------------------------------------------------------------------
  SyncOptions& syncOptions() { return options_; }
  const SyncOptions& syncOptions() const { return options_; }
  void setSyncObjects(bool contacts, bool timeEntries, bool invoices, bool workCodes);

  // --- Source database and firm ----------------------------------------------------------
  // Stores the export's path; when the file exists, opens it and reads the firm identity
  // (useDatabase follows whether it opened); otherwise useDatabase is false.
  void setDatabaseLocation(const std::string& location);
  // Opens the export at the location (a new source database object); false, with the message
  // "The user wizard was not able to access the database and needs to close.", when it did
  // not open. failedToInitializeFlag follows the result.
  bool openDatabase();
  void closeDatabase();
  // The source database object, null before a location was set.
  DatabaseService* sourceDatabase() const { return source_.get(); }
  // Makes the source database object; a Database unless replaced (tests).
  std::function<std::unique_ptr<DatabaseService>()> makeSourceDatabase;
  const std::string& sourceFirmID() const { return sourceFirmID_; }
  long practiceFirmID() const { return practiceFirmID_; }
  CrossReferenceTables& crossReferences() { return xref_; }

  // --- Host objects -----------------------------------------------------------------------
  DuplicateFinder& companyFinder() { return *companyFinder_; }
  DuplicateFinder& contactFinder() { return *contactFinder_; }
  void setDuplicateFinders(std::unique_ptr<DuplicateFinder> company,
                           std::unique_ptr<DuplicateFinder> contact);
  // Makes a docket object and a work code object (practice implementations by default).
  std::function<std::unique_ptr<DocketObject>()> makeDocketObject;
  std::function<std::unique_ptr<WorkCodeObject>()> makeWorkCodeObject;
  // The event pump of every record: delivers the ticks of running timers (the wizard's
  // auto-start timer, clsTimer) by default.
  std::function<void()> eventPump;

  // --- The run ----------------------------------------------------------------------------
  // Shows the progress dialog and runs the stage groups in the source's order inside it (or
  // directly without progress); nothing runs when progress is shown and no group is chosen.
  // The result stays false in all cases.
  bool importInformation();
  // Runs one stage: the shared steps for each of its rows, each row a record.
  void runStage(const SyncStage& stage);

  // --- Run report -------------------------------------------------------------------------
  // Counters of each stage go to this report when set; otherwise to the engine's own.
  void setRunReport(RunReport* report) { report_ = report; }
  StageCounters& stageCounters(const std::string& stage);
  const std::map<std::string, StageCounters>& ownCounters() const { return ownCounters_; }

  // --- Client matching ---------------------------------------------------------------------
  // The Ledgerfolio record of a source client in a role: its cross-reference; failing that,
  // with checkFlag, the duplicate finder's match. isNew is false when either found one.
  long matchClient(ClientRole role, const std::string& sourceID, bool& checkFlag, bool& isNew);
  // The client of an invoice, deposit or time entry: the known company or contact; for a
  // client that was not selected, the user answers "<name>: Is this a business client?" and
  // the client is made on the spot with its cross-reference.
  void clientOfSourceRow(const std::string& sourceID, long& companyID, long& contactID);

  // The client of the source row in hand: clientOfSourceRow of its client column, with the row
  // found again afterwards, since the question may move the source's cursors. False, a skip
  // for "no client", when the column is blank.
  bool clientOfRecord(std::int32_t rows, std::string_view keyColumn, const std::string& key,
                      std::string_view clientColumn, long& companyID, long& contactID);
  // The same with the client key read from the row's columns of the source's client-ID
  // record (ClientID and Engagement of CCH Practice); blank when every part is blank.
  bool clientOfRecord(std::int32_t rows, std::string_view keyColumn, const std::string& key,
                      long& companyID, long& contactID);

  // --- Invoice dockets ----------------------------------------------------------------------
  // Copies a stored docket to the dockets of an invoice (one row per docket and invoice,
  // rewritten when it is there) and marks the docket locked and invoiced. The docket is
  // found in the run's Dockets recordset (storeDocketsThrough) or read alone; nothing is done
  // when it is not there.
  void createNewTPSTimeAsInvoiceDocketInLedgerfolio(long docketID, long invoiceID);

  // --- Reading the source -----------------------------------------------------------------
  // A look-up of the source under the operation's label: the field of the row the key finds
  // in the recordset by the column; empty when not found.
  std::string lookUpSource(std::string_view procedureName, std::int32_t rows,
                           std::string_view column, const std::string& key, std::string_view field);
  // Finds the row of a key of one or more columns (up to three): a key of several columns is
  // parsed by the client-ID record's shape and every part must match.
  static bool findKey(DatabaseService& db, std::int32_t handle,
                      const std::vector<std::string>& columns, const std::string& key);
  // A full scan: hasRecord, then until isEOF: the row, moveNext.
  static void scan(DatabaseService& db, std::int32_t handle, const std::function<void()>& row);
  // The field as text, or empty when it is blank.
  static std::string readText(DatabaseService& db, std::int32_t handle, std::string_view field);
  // The field as a boolean; false when blank.
  static bool readBool(DatabaseService& db, std::int32_t handle, std::string_view field);

 protected:
  void onErrorClass(ErrorService* errorClass) override;
  void onMsgboxClass(MessageBox* msgbox) override;
  void onLocaleReference(LocaleService& locale) override;
  void onClientDropDownCtrlReference(ClientDropDownService& dropDown) override;
  void onDatabaseReference(DatabaseService& db) override;

 protected:
  // --- What the source engine gives --------------------------------------------------------
  // The identity of the source firm, written with every cross-reference row.
  virtual std::string readSourceFirmID() = 0;
  // Opens the recordsets of a run (after closing those of a former run) and closes them.
  virtual void initializeDataRecordsets() = 0;
  virtual void closeDataRecordsets() = 0;
  // The rows the progress bar counts for the chosen groups.
  virtual long progressTotal() = 0;
  // A stage group of the run: its choice and what runs when it is chosen.
  struct StageGroup {
    bool SyncOptions::*chosen;
    std::vector<std::function<void()>> stages;
  };
  // The groups in the order they run.
  virtual std::vector<StageGroup> runOrder() = 0;

  // The source's label of one of its operations.
  std::string label(std::string_view procedureName) const;
  // The label of the progress handler and of the operation that opens the wizard, which start
  // with the description's formFile.
  std::string formLabel(std::string_view procedureName) const;

  // The stage hook of a creator that takes the key and the known ID.
  template <class Engine>
  static std::function<long(const std::string&, long)> creator(
      Engine* engine, long (Engine::*create)(const std::string&, long)) {
    return [engine, create](const std::string& key, long known) {
      return (engine->*create)(key, known);
    };
  }

  // The row filter of a source that filters by date row by row instead of in its statement:
  // the row's date column against the time entries' range (timeEntryRange) or the invoices'
  // range, by dateInSynchRange. A row passes when the range is not in use; with the range in
  // use, a row without a readable date is left alone.
  std::function<std::optional<std::string>(const SourceRow&)> dateRangeFilter(
      std::string column, bool timeEntryRange) const;

  // The practice recordsets every source's run opens, as the source engine names them.
  struct PracticeRecordsets {
    std::int32_t& accountantEmployeeInfo;
    std::int32_t& companies;
    std::int32_t& mainBusinessList;
    std::int32_t& companiesNotes;
    std::int32_t& contacts;
    std::int32_t& customInvoiceDockets;
    std::int32_t& invoices;
    std::int32_t& deposits;
    std::int32_t& dockets;
  };
  // Opens, updatable, the cross-reference tables of the source firm and the practice
  // recordsets of the chosen groups: companies, the main business list, company notes and
  // contacts always; staff with the contacts, invoice items with the work codes, invoices and
  // deposits with the invoices, dockets with the time entries. REQUIRES: db is open.
  void openPracticeRecordsets(DatabaseService& db, const PracticeRecordsets& handles);
  // Closes the source handles on the source, the cross-reference tables and the target
  // handles on the practice database, each set to 0; errors are ignored. Nothing is done
  // when the practice database is not open.
  void closeRecordsets(std::initializer_list<std::int32_t*> sourceHandles,
                       std::initializer_list<std::int32_t*> targetHandles);
  void setPracticeFirmID(long firmID) { practiceFirmID_ = firmID; }
  bool practiceOpen() const;
  // True when the source is open and usable (the stages' first test).
  bool sourceUsable() const;

  ProgressDialog* progress() const { return progress_.get(); }
  void setProgressCaption(const std::string& caption);
  // Advances the bar by one (getValue, setValue).
  void stepProgress();
  void pumpEvents(int times);

  // The reason of the record in hand for giving no record: the creator says why. Answers -1,
  // the creators' neutral value.
  long skipBecause(std::string reason);

  // The category of a new personal client: the one given; else, for a client of no company,
  // the drop-down's personal category of the current year (or -1 when there is none).
  long personalClientCategory(long categoryID, long companyID);
  // A source client stored as a personal client: the contact given when `contacts` holds it,
  // else a new contact named `name`; linked to the company and the category given (either may
  // be invalid), with a personal-tax row of `taxStatus` (1 active, 2 inactive) when the
  // category needs one; `writeRow` (may be empty) writes the source's fields into the
  // contact's row; then the three contact summaries. Answers the contact.
  // REQUIRES: the practice database is open.
  long storePersonalClientContact(DatabaseService& db, std::int32_t contacts,
                                  const std::string& name, long contactID, long companyID,
                                  long category, long taxStatus,
                                  const std::function<void(std::int32_t contactRow)>& writeRow);
  // The frame of a creator of a source row: the creator's own label (its name, __func__), the
  // practice and the source open, and the row of the key found in the recordset by the column
  // (a key the export does not hold is a skip). Answers what the body answers (given the
  // source and the practice database), or `neutral` when the body did not run or failed.
  long createFromSourceRow(
      std::string_view procedureName, std::int32_t rows, const std::vector<std::string>& columns,
      const std::string& key, long neutral,
      const std::function<long(DatabaseService& source, DatabaseService& db)>& body);
  long createFromSourceRow(
      std::string_view procedureName, std::int32_t rows, std::string_view column,
      const std::string& key, long neutral,
      const std::function<long(DatabaseService& source, DatabaseService& db)>& body) {
    return createFromSourceRow(procedureName, rows, std::vector<std::string>{std::string(column)},
                               key, neutral, body);
  }

  // The shared steps of one key of a stage, without the record around them: look-up,
  // only-new check, creator, cross-reference save, after-save. `saved` is the ID saved in the
  // cross-reference, none when the key was left before the creator.
  struct KeyResult {
    RecordOutcome outcome;
    std::optional<long> saved;
  };
  KeyResult syncKey(const SyncStage& stage, const SourceRow& row);

  // Runs one record of a stage: counts it as read, and as created, updated, skipped (with the
  // reason) or failed (with the failure's description; action 1 of the error service goes on
  // with the next record).
  void syncRecord(StageCounters& counters, const std::function<RecordOutcome()>& body);
  // Commits the whole records written since the last commit.
  void commitRecords();
  // Dockets of a run are stored through the run's open Dockets recordset, whose handle the
  // source engine keeps at `dockets`.
  void storeDocketsThrough(const std::int32_t& dockets);
  // What a source engine's destructor does: the wizard's client lists emptied, the records
  // written so far committed, the run's recordsets and the source closed, failures ignored.
  void endEngine();

  // Called after a record's target rows are written and before its cross-reference row is
  // saved: the point where an interrupted record would otherwise be half written.
  void beforeCrossReference();

  static constexpr long kRecordsPerCommit = 200;
  static constexpr std::chrono::milliseconds kCommitInterval{100};

  // Client matching of each role, and the client creators of the source (set by the source
  // engine).
  std::array<ClientCandidate, 3> clientCandidates;
  ClientCreators clientCreators;

  std::unique_ptr<DatabaseService> source_;

 private:
  bool clientOfRecordKey(std::int32_t rows, std::string_view keyColumn, const std::string& key,
                         const std::string& client, long& companyID, long& contactID);
  void importFromProgress_StartProgress();
  void runRows(const SyncStage& stage, StageCounters& counters, long& reachedCreator);
  // Opens the write group of the records to come, unless one is open.
  void holdWrites();
  // Counts the record and keeps it with the open write group; commits when enough have
  // gathered.
  void endRecord(StageCounters& counters, const RecordOutcome& outcome);
  void countOutcome(StageCounters& counters, const RecordOutcome& outcome);

  const SourceDescription& description_;
  SyncOptions& options_;
  CrossReferenceTables xref_;
  std::string sourceFirmID_;
  long practiceFirmID_ = 0;
  bool showProgress_ = true;

  std::unique_ptr<DuplicateFinder> companyFinder_;
  std::unique_ptr<DuplicateFinder> contactFinder_;
  std::unique_ptr<ProgressDialog> progress_;
  RunReport* report_ = nullptr;
  std::map<std::string, StageCounters> ownCounters_;
  // The reason the creator of the record in hand gave for giving no record.
  std::string skipReason_;
  // The run's open Dockets recordset, as storeDocketsThrough gave it.
  const std::int32_t* dockets_ = nullptr;
  // Test hook: LFIMPORT_KILL_AT_RECORD=N kills the process with SIGKILL inside the N-th
  // record of the run, after its target rows are written and before its cross-reference is.
  long killAtRecord_ = 0;
  long recordsStarted_ = 0;
  // The write group of the records not committed yet, and what each of them was counted as.
  struct PendingRecord {
    StageCounters* counters;
    RecordOutcome outcome;
  };
  DatabaseService* pendingGroup_ = nullptr;
  std::vector<PendingRecord> pendingRecords_;
  std::chrono::steady_clock::time_point pendingSince_;
};

}  // namespace lf
