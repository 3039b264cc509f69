// The shared sync engine on a toy source: one stage over a source table of items, each item
// written as a custom invoice item with a cross-reference row. What every source relies on:
// the only-new skip, a failed record counted while the next runs, records committed whole in
// groups, a refused COMMIT rolled back and reported, and a report that explains every row.
#include "sync/sync_engine.hpp"

#include <string>
#include <vector>

#include "base/failure.hpp"
#include "db/database_service.hpp"
#include "tests/db/faulty_backend.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

const SourceDescription& toyDescription() {
  static const CrossReferenceWords words =
      CrossReferenceWords::forSource("TPS", "clsImportToyInformation");
  static const SourceDescription description = [] {
    SourceDescription d;
    d.word = "Toy";
    d.crossReferences = &words;
    d.clientKey = {{"Shelf", "ItemID"}};
    return d;
  }();
  return description;
}

// Counts the outermost groups the engine commits and, at each, checks that the records in it
// are whole: every item row written has its cross-reference row.
class CountingDatabase : public Database {
 public:
  CountingDatabase() : CountingDatabase(new testing::FaultyBackend()) {}
  void beginWriteGroup() override {
    Database::beginWriteGroup();
    ++depth;
  }
  void endWriteGroup() override {
    if (--depth == 0) {
      ++commits;
      const long items = countOf("CustomInvoiceDockets"), references = countOf("TPSInvoiceEntries");
      if (items != references) ++partialCommits;
      largestCommit = std::max(largestCommit, references - committedBefore);
      committedBefore = references;
    }
    Database::endWriteGroup();
  }
  long countOf(const std::string& table) {
    const std::int32_t h =
        openRecordset("SELECT count(*) AS n FROM " + table + ";", kCursorKeyset, kLockReadOnly);
    const long n = hasRecord(h) ? static_cast<long>(getField(h, "n").toLong()) : -1;
    closeRecordset(h);
    return n;
  }
  int depth = 0;
  long commits = 0, partialCommits = 0, largestCommit = 0, committedBefore = 0;
  testing::FaultyBackend& backend;  // refuses COMMITs when told to

 private:
  explicit CountingDatabase(testing::FaultyBackend* faulty)
      : Database(std::unique_ptr<SqlBackend>(faulty)), backend(*faulty) {}
};

// The toy source: Items (Shelf, ItemID, Name) in an in-memory export. An item named "boom"
// fails in its creator after writing its row; one without a name gives no record.
class ToySource : public SyncEngine {
 public:
  ToySource() : SyncEngine(toyDescription(), options) {
    auto items = std::make_unique<Database>();
    items->createNew(":memory:");
    items->executeStatement("CREATE TABLE Items (Shelf TEXT, ItemID INTEGER, Name TEXT)");
    items_ = items.get();
    source_ = std::move(items);
    options.useDatabase = true;
    stage = {
        .reportName = "items",
        .procedureName = "importToyItems",
        .rows = &rsItems,
        .keyColumns = {"Shelf", "ItemID"},
        .crossReference = CrossReferenceKind::Deposit,
        .rowFilter = [](const SourceRow& row) -> std::optional<std::string> {
          if (row.text("Shelf") == "attic") return "the attic is not synchronised";
          return std::nullopt;
        },
        .create = [this](const std::string& key, long known) { return createItem(key, known); },
    };
  }
  ~ToySource() override { closeDataRecordsets(); }

  void addItems(const std::string& values) {
    items_->executeStatement("INSERT INTO Items VALUES " + values);
  }
  void run() { importInformation(); }
  void runWithoutRecordsets() { runStage(stage); }

  SyncOptions options;
  SyncStage stage;
  std::int32_t rsItems = 0, rsTarget = 0;

 protected:
  Database* items_ = nullptr;

  std::string readSourceFirmID() override { return "Toy Firm"; }
  void initializeDataRecordsets() override {
    closeDataRecordsets();
    rsItems = source_->openRecordset("SELECT Items.* FROM Items;", kCursorKeyset, kLockReadOnly);
    DatabaseService& db = *moduleState().DatabaseReference;
    crossReferences().open("Toy Firm", &db);
    rsTarget = db.openRecordset("SELECT CustomInvoiceDockets.* FROM CustomInvoiceDockets;",
                                kCursorKeyset, kLockOptimistic);
  }
  void closeDataRecordsets() override {
    if (rsItems != 0) source_->closeRecordset(rsItems);
    DatabaseService* db = moduleState().DatabaseReference;
    if (db != nullptr && rsTarget != 0 && db->isRecordsetOpen(rsTarget))
      db->closeRecordset(rsTarget);
    crossReferences().close();
    rsItems = rsTarget = 0;
  }
  long progressTotal() override { return 0; }
  std::vector<StageGroup> runOrder() override {
    return {{&SyncOptions::syncObjectsContacts, {[this] { runStage(stage); }}}};
  }

 private:
  long createItem(const std::string& key, long known) {
    DatabaseService& db = *moduleState().DatabaseReference;
    const std::string name = readText(*source_, rsItems, "Name");
    if (name.empty()) {
      skipBecause("no name");
      return -1;
    }
    if (known > 0 && db.findRecord(rsTarget, "CustomInvoiceDocketID", std::to_string(known))) {
      db.setField(rsTarget, "DescriptionClient", key);
      return known;
    }
    db.addNewRecord(rsTarget);
    db.setNewField(rsTarget, "CustomItemName", name);
    db.setNewField(rsTarget, "DescriptionClient", key);
    db.updateRecord(rsTarget);
    if (name == "boom") throw Failure("the toy creator failed");
    return static_cast<long>(db.getField(rsTarget, "CustomInvoiceDocketID").toLong());
  }
};

class SyncEngineTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    counting = std::make_unique<CountingDatabase>();
    counting->createNew(":memory:");
    createPracticeTables(*counting);
    moduleState().DatabaseReference = counting.get();
    toy = std::make_unique<ToySource>();
    toy->setShowProgress(false);
    toy->setRunReport(&report);
  }
  void TearDown() override {
    toy.reset();
    moduleState().DatabaseReference = db.get();
  }

  const StageCounters& items() { return report.stage("items"); }
  long rows(const std::string& table) { return counting->countOf(table); }
  // The report explains every row it read.
  static void expectExplained(const StageCounters& c) {
    EXPECT_EQ(c.read, c.created + c.updated + c.skipped + c.failed);
    long skips = 0, failures = 0;
    for (const auto& [reason, n] : c.skipReasons) skips += n;
    for (const auto& [reason, n] : c.failReasons) failures += n;
    EXPECT_EQ(skips, c.skipped);
    EXPECT_EQ(failures, c.failed);
  }

  std::unique_ptr<CountingDatabase> counting;
  std::unique_ptr<ToySource> toy;
  RunReport report;
};

TEST_F(SyncEngineTest, KnownRowsAreSkippedOnlyWhileOnlyNewEntriesHolds) {
  toy->addItems("('A', 1, 'Ledger'), ('A', 2, 'Quill'), ('B', 1, NULL), ('attic', 9, 'Lamp')");
  toy->run();
  EXPECT_EQ(items().read, 4);
  EXPECT_EQ(items().created, 2);
  EXPECT_EQ(items().skipReasons.at("no name"), 1);
  EXPECT_EQ(items().skipReasons.at("the attic is not synchronised"), 1);
  // The client-ID record: two key columns kept as one text.
  EXPECT_EQ(counting->countOf("TPSInvoiceEntries WHERE TPSCashID = 'A,2'"), 1);
  EXPECT_EQ(toyDescription().clientKey.parse("A, 2"), (std::vector<std::string>{"A", "2"}));
  EXPECT_EQ(toyDescription().clientKey.parse("A2"), (std::vector<std::string>{"", ""}));

  toy->run();
  EXPECT_EQ(items().created, 2);
  EXPECT_EQ(items().skipReasons.at("known from an earlier run (only new entries)"), 2);
  EXPECT_EQ(rows("CustomInvoiceDockets"), 2);

  toy->options.importOnlyNewEntries = false;
  toy->run();
  EXPECT_EQ(items().updated, 2);
  EXPECT_EQ(rows("CustomInvoiceDockets"), 2);
  expectExplained(items());
}

TEST_F(SyncEngineTest, AFailedRecordIsCountedWithItsReasonAndTheNextRecordRuns) {
  toy->addItems("('A', 1, 'Ledger'), ('A', 2, 'boom'), ('A', 3, 'Quill')");
  toy->run();
  EXPECT_EQ(items().created, 2);
  EXPECT_EQ(items().failReasons.at("the toy creator failed"), 1);
  expectExplained(items());
  ASSERT_EQ(errors.errors.size(), 1u);
  EXPECT_EQ(errors.errors[0].source, "Ledgerfolio.exe-clsImportToyInformation-importToyItems");
  // The failed record has no cross-reference, so a re-run takes it up again.
  EXPECT_EQ(counting->countOf("TPSInvoiceEntries WHERE TPSCashID = 'A,2'"), 0);
  EXPECT_EQ(counting->countOf("TPSInvoiceEntries WHERE TPSCashID = 'A,3'"), 1);
}

TEST_F(SyncEngineTest, RecordsCommitWholeInGroupsOfAtMostTwoHundred) {
  std::string values;
  for (int i = 1; i <= 450; ++i)
    values += (i > 1 ? ", " : "") + std::string("('S', ") + std::to_string(i) + ", 'Item')";
  toy->addItems(values);
  toy->run();
  EXPECT_EQ(items().created, 450);
  EXPECT_GE(counting->commits, 3);
  EXPECT_LE(counting->largestCommit, 200);
  EXPECT_EQ(counting->partialCommits, 0);
  EXPECT_EQ(counting->committedBefore, 450);
}

TEST_F(SyncEngineTest, StageThatReadsNothingStaysInTheReport) {
  toy->run();
  ASSERT_EQ(report.toJson().at("stages").size(), 1u);
  EXPECT_EQ(report.toJson().at("stages")[0].at("read"), 0);
}

TEST_F(SyncEngineTest, RefusedCommitReportsItsRecordsFailedAndTheRunGoesOn) {
  // Item S,1 stands first, in the refused group, and again last, in a later group (a group
  // holds at most 200 records): the second is new again, since nothing of the first stayed.
  std::string values;
  for (int i = 1; i <= 200; ++i)
    values += (i > 1 ? ", " : "") + std::string("('S', ") + std::to_string(i) + ", 'Item')";
  toy->addItems(values + ", ('S', 1, 'Again')");
  counting->backend.commitsToRefuse = 1;
  toy->run();

  const StageCounters& c = items();
  EXPECT_EQ(c.read, 201);
  ASSERT_EQ(c.failReasons.size(), 1u);
  EXPECT_EQ(c.failReasons.begin()->first.rfind("not stored: ", 0), 0u);
  EXPECT_GE(c.failed, 1);
  EXPECT_EQ(c.created, 201 - c.failed);
  expectExplained(c);
  ASSERT_EQ(errors.errors.size(), 1u);
  EXPECT_EQ(errors.errors[0].source, "Ledgerfolio.exe-clsImportToyInformation-commitRecords");
  EXPECT_EQ(rows("CustomInvoiceDockets"), c.created);
  EXPECT_EQ(rows("TPSInvoiceEntries"), c.created);
  EXPECT_EQ(counting->countOf("CustomInvoiceDockets WHERE CustomItemName = 'Again'"), 1);
}

// The row-by-row date filter of the sources that do not filter in SQL: the four range types,
// by day, and every row when the range is off.
TEST(SyncDateRangeTest, RowFilterKeepsTheRangeTypesByDay) {
  const Date start = Date::fromParts(2024, 4, 1), end = Date::fromParts(2024, 4, 30);
  const Date first = Date::fromParts(2024, 4, 1, 15, 30), inside = Date::fromParts(2024, 4, 12);
  const Date after = Date::fromParts(2024, 5, 2);
  EXPECT_TRUE(dateInSynchRange(first, true, kSynchOnDate, start, end));
  EXPECT_FALSE(dateInSynchRange(inside, true, kSynchOnDate, start, end));
  EXPECT_TRUE(dateInSynchRange(after, true, kSynchOnOrAfter, start, end));
  EXPECT_FALSE(dateInSynchRange(after, true, kSynchOnOrBefore, start, end));
  EXPECT_TRUE(dateInSynchRange(inside, true, kSynchBetween, start, end));
  EXPECT_FALSE(dateInSynchRange(after, true, kSynchBetween, start, end));
  EXPECT_TRUE(dateInSynchRange(after, false, kSynchBetween, start, end));
}

// A write group on the practice database: the failed COMMIT of a deferred constraint leaves
// no transaction open, so the next group begins and commits.
TEST_F(SyncEngineTest, FailedCommitIsRolledBackAndTheNextGroupBegins) {
  counting->executeStatement("PRAGMA foreign_keys=ON;");
  counting->executeStatement("CREATE TABLE Parent (id INTEGER PRIMARY KEY);");
  counting->executeStatement(
      "CREATE TABLE Child (pid INTEGER REFERENCES Parent(id) DEFERRABLE INITIALLY DEFERRED);");
  Database& group = *counting;
  group.Database::beginWriteGroup();
  group.executeStatement("INSERT INTO Child VALUES (99)");
  EXPECT_THROW(group.Database::endWriteGroup(), DatabaseFailure);
  EXPECT_FALSE(counting->backend.inTransaction()) << "the failed COMMIT left a transaction open";

  group.Database::beginWriteGroup();
  group.executeStatement("INSERT INTO Parent VALUES (7)");
  group.executeStatement("INSERT INTO Child VALUES (7)");
  group.Database::endWriteGroup();
  EXPECT_EQ(counting->countOf("Child"), 1);
}

// A write that cannot be stored when the connection closes reaches the caller, and the error
// service when the object goes away.
TEST_F(SyncEngineTest, WriteThatCannotBeStoredAtCloseIsNotDropped) {
  for (bool byClose : {true, false}) {
    auto faulty = std::make_unique<testing::FaultyBackend>();
    faulty->refuseStatements = "UPDATE \"Notes\"";
    auto practice = std::make_unique<Database>(std::move(faulty));
    practice->createNew(":memory:");
    practice->executeStatement("CREATE TABLE Notes (NoteID INTEGER PRIMARY KEY, Body TEXT)");
    practice->executeStatement("INSERT INTO Notes VALUES (1, 'first')");
    testing::RecordingErrorService closing;
    practice->setErrorService(&closing);
    const std::int32_t rs =
        practice->openRecordset("SELECT Notes.* FROM Notes;", kCursorKeyset, kLockOptimistic);
    ASSERT_TRUE(practice->findRecord(rs, "NoteID", "1"));
    practice->setField(rs, "Body", "second");
    if (byClose) {
      EXPECT_THROW(practice->close(), DatabaseFailure);
      EXPECT_FALSE(practice->isOpen());
    } else {
      practice.reset();
      ASSERT_EQ(closing.errors.size(), 1u);
      EXPECT_NE(closing.errors[0].description.find("refused"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace lf
