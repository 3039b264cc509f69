// The database service over every backend: keyset recordsets, searches, writes, write
// groups and the behaviour callers rely on. Each case runs over SQLite with rowids and over
// SQLite keyed by the declared keys only, as an engine without rowids keys its rows. A new
// database is held alone, so results read are kept for reading again throughout.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ostream>

#include "base/failure.hpp"
#include "db/database.hpp"
#include "db/database_factory.hpp"
#include "db/sql_backend.hpp"

namespace lf {
namespace {

struct BackendCase {
  const char* name;
  SqliteKeys keys;
};

void PrintTo(const BackendCase& backend, std::ostream* out) {
  *out << backend.name;
}

class DatabaseServiceTest : public ::testing::TestWithParam<BackendCase> {
 protected:
  DatabaseServiceTest() : db(takeBackend()) {}

  std::unique_ptr<SqlBackend> takeBackend() {
    auto made = makeSqliteBackend(GetParam().keys);
    backend = made.get();
    return made;
  }

  void SetUp() override {
    db.createNew(":memory:");
    db.executeStatement(
        "CREATE TABLE Companies (CompanyID INTEGER PRIMARY KEY, CompanyName TEXT COLLATE NOCASE, "
        "ClientID TEXT COLLATE NOCASE, CategoryNum INTEGER, CompanyType INTEGER DEFAULT 0)");
    db.executeStatement(
        "CREATE TABLE ClientData (ClientDataID INTEGER PRIMARY KEY, CompanyIDNum INTEGER, "
        "ActiveStatus INTEGER, ShowThisClient BOOLEAN DEFAULT 0, YearEndDate DATETIME, Fee "
        "CURRENCY)");
    db.executeStatement(
        "CREATE TABLE PersonalTaxStatus (ContactNum INTEGER, TaxYear INTEGER, ReturnStatus "
        "INTEGER)");
    db.executeStatement(
        "CREATE TABLE HostSettings (SettingName TEXT COLLATE NOCASE PRIMARY KEY, SettingValue "
        "TEXT)");
    for (const char* name : {"Acme Ltd", "Baker LLP", "Acme Ltd", "Cole Inc."}) add(name);
  }

  long add(const std::string& name) {
    std::int32_t h =
        db.openRecordset("SELECT Companies.* FROM Companies;", kCursorKeyset, kLockOptimistic);
    db.addNewRecord(h);
    db.setNewField(h, "CompanyName", name);
    long id = static_cast<long>(db.getField(h, "CompanyID").toLong());
    db.updateRecord(h);
    db.closeRecordset(h);
    return id;
  }

  std::int32_t open(const char* sql, int lock = kLockOptimistic) {
    return db.openRecordset(sql, kCursorKeyset, lock);
  }

  SqlBackend* backend = nullptr;
  Database db;
};

TEST_P(DatabaseServiceTest, ScanOfEmptyRecordsetEndsAtOnce) {
  std::int32_t h = open("SELECT * FROM Companies WHERE CompanyID = -1;");
  EXPECT_FALSE(db.hasRecord(h));
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_TRUE(db.isEmpty(h));
  EXPECT_EQ(db.recordCount(h), 0);
}

TEST_P(DatabaseServiceTest, HandlesAreNeverZeroAndCloseKillsThem) {
  EXPECT_FALSE(db.isRecordsetOpen(0));
  std::int32_t h = open("SELECT * FROM Companies;");
  EXPECT_NE(h, 0);
  EXPECT_TRUE(db.isRecordsetOpen(h));
  db.closeRecordset(h);
  EXPECT_FALSE(db.isRecordsetOpen(h));
  EXPECT_THROW(db.hasRecord(h), DatabaseFailure);
}

TEST_P(DatabaseServiceTest, AutoNumberKeyIsReadableBeforeUpdate) {
  std::int32_t h = open("SELECT Companies.* FROM Companies;");
  db.addNewRecord(h);
  long key = static_cast<long>(db.getField(h, "CompanyID").toLong());
  EXPECT_EQ(key, 5);
  db.setNewField(h, "CompanyName", "Dale & Sons");
  db.updateRecord(h);
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 5);
  // The new row is found on the same handle, with the column default read back.
  ASSERT_TRUE(db.findRecord(h, "CompanyID", "5"));
  EXPECT_EQ(db.getField(h, "CompanyName").toString(), "Dale & Sons");
  EXPECT_EQ(db.getField(h, "CompanyType").toLong(), 0);
  // Two rows started on two handles before either is stored get different keys.
  std::int32_t a = open("SELECT Companies.* FROM Companies;");
  std::int32_t b = open("SELECT Companies.* FROM Companies;");
  db.addNewRecord(a);
  db.addNewRecord(b);
  EXPECT_NE(db.getField(a, "CompanyID").toLong(), db.getField(b, "CompanyID").toLong());
}

TEST_P(DatabaseServiceTest, FindRecordAndFindNextWalkAllMatches) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;");
  ASSERT_TRUE(db.findRecord(h, "CompanyName", "ACME LTD"));  // text compares case-insensitively
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 1);
  EXPECT_TRUE(db.findNext(h));
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 3);
  db.findNext(h);
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_FALSE(db.findRecord(h, "CompanyName", "Nobody"));
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_TRUE(db.findRecord(h, "CompanyID", "4"));
  EXPECT_FALSE(db.findRecord(h, "CompanyID", "abc"));
}

TEST_P(DatabaseServiceTest, StatementsDifferingOnlyInNumbersReadTheirOwnRows) {
  // The second and later statements of a form reuse the first one's translation with their
  // own numbers; what is not a plain number (a name with digits, a sign, a point, a quoted
  // literal, True) is read as written.
  db.executeStatement("CREATE TABLE Rates (RateID INTEGER PRIMARY KEY, Tier2 INTEGER, Fee REAL)");
  db.executeStatement("INSERT INTO Rates VALUES (1, 10, 1.5), (2, 20, 2.5), (3, 30, -1)");
  auto tierOf = [&](const std::string& sql) {
    const std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
    const long tier = db.hasRecord(h) ? static_cast<long>(db.getField(h, "Tier2").toLong()) : -9;
    db.closeRecordset(h);
    return tier;
  };
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE RateID = 1;"), 10);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE RateID = 3;"), 30);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE RateID = 003;"), 30);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE RateID = 7;"), -9);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE Tier2 = 20 AND RateID = 2;"), 20);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE Tier2 = 20 AND RateID = 1;"), -9);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE Fee = 2.5;"), 20);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE Fee = -1;"), 30);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE Fee = '1.5';"), 10);
    EXPECT_EQ(tierOf("SELECT Rates.* FROM Rates WHERE (RateID = 2) = True;"), 20);
  }
}

TEST_P(DatabaseServiceTest, PositionSurvivesNestedFind) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;");
  ASSERT_TRUE(db.hasRecord(h));
  db.moveNext(h);
  std::int32_t pos = db.getPosition(h);
  ASSERT_TRUE(db.findRecord(h, "CompanyName", "Cole Inc."));
  db.setPosition(h, pos);
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 2);
}

TEST_P(DatabaseServiceTest, SetFieldIsDurableAndReachesOtherRecordsets) {
  std::int32_t writer = open("SELECT Companies.* FROM Companies;");
  std::int32_t reader =
      open("SELECT Companies.CompanyID, Companies.CompanyName FROM Companies;", kLockReadOnly);
  ASSERT_TRUE(db.findRecord(reader, "CompanyName", "Baker LLP"));  // builds the index first
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "2"));
  db.setField(writer, "CompanyName", "Baker & Co LLP");
  // No updateRecord: a fresh recordset sees the value.
  std::int32_t fresh = open("SELECT * FROM Companies WHERE CompanyID = 2;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(fresh));
  EXPECT_EQ(db.getField(fresh, "CompanyName").toString(), "Baker & Co LLP");
  // The open reader holds the new value, and its index follows it.
  EXPECT_FALSE(db.findRecord(reader, "CompanyName", "Baker LLP"));
  ASSERT_TRUE(db.findRecord(reader, "CompanyName", "Baker & Co LLP"));
  EXPECT_EQ(db.getField(reader, "CompanyID").toLong(), 2);
}

// Writes to one row are gathered into one UPDATE; whatever runs next sees them stored.
TEST_P(DatabaseServiceTest, GatheredRowWritesAreStoredBeforeTheNextStatement) {
  std::int32_t writer = open("SELECT Companies.* FROM Companies;");
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "2"));
  db.setField(writer, "ClientID", "B1");
  db.setField(writer, "CategoryNum", "7");
  db.setField(writer, "ClientID", "B2");  // the last value of a column wins
  // A statement run on the connection sees the row as written.
  db.executeStatement("UPDATE Companies SET ClientID = ClientID & '-x' WHERE CompanyID = 2;");
  std::int32_t fresh = open("SELECT * FROM Companies WHERE CompanyID = 2;", kLockReadOnly);
  EXPECT_EQ(db.getField(fresh, "ClientID").toString(), "B2-x");
  EXPECT_EQ(db.getField(fresh, "CategoryNum").toLong(), 7);

  // A write to another row stores the first row's writes; a statement of its own sees both.
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "3"));
  db.setField(writer, "CompanyName", "Acme Two");
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "4"));
  db.setField(writer, "CompanyName", "Cole Ltd");
  std::int32_t both = open(
      "SELECT group_concat(CompanyName, '|') AS Names FROM Companies WHERE CompanyID IN (3, 4);",
      kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(both));
  EXPECT_EQ(db.getField(both, "Names").toString(), "Acme Two|Cole Ltd");
}

// The largest key of a table is remembered between statements but never outlives a write
// made another way.
TEST_P(DatabaseServiceTest, KeysetsCountRowsWrittenByEveryRoute) {
  std::int32_t before = open("SELECT Companies.* FROM Companies;", kLockReadOnly);
  db.executeStatement("INSERT INTO Companies (CompanyName) VALUES ('Dale');");
  db.executeStatement("INSERT INTO Companies (CompanyName) VALUES ('Eden');");
  std::int32_t after = open("SELECT Companies.* FROM Companies;", kLockReadOnly);
  EXPECT_EQ(db.recordCount(before), 4);
  EXPECT_EQ(db.recordCount(after), 6);
  EXPECT_EQ(add("Fenn"), 7);  // added through a recordset: the next keyset holds it
  EXPECT_EQ(db.recordCount(open("SELECT Companies.* FROM Companies;", kLockReadOnly)), 7);
  db.executeStatement("DELETE FROM Companies WHERE CompanyID >= 5;");
  EXPECT_EQ(db.recordCount(open("SELECT Companies.* FROM Companies;", kLockReadOnly)), 4);
}

TEST_P(DatabaseServiceTest, RequerySeesRowsAddedElsewhere) {
  std::int32_t h = open("SELECT * FROM Companies;", kLockReadOnly);
  add("Eagle Partners");
  EXPECT_FALSE(db.findRecord(h, "CompanyName", "Eagle Partners"));
  std::int32_t h2 = db.requery(h);
  EXPECT_NE(h2, h);
  EXPECT_FALSE(db.isRecordsetOpen(h));
  EXPECT_TRUE(db.findRecord(h2, "CompanyName", "Eagle Partners"));
  EXPECT_EQ(db.recordCount(h2), 5);
}

TEST_P(DatabaseServiceTest, RowAddedToAReadRecordsetCarriesTheColumnDefaults) {
  std::int32_t h = open("SELECT Companies.* FROM Companies;");
  ASSERT_TRUE(db.hasRecord(h));
  db.addNewRecord(h);
  db.setNewField(h, "CompanyName", "Fenwick");
  db.updateRecord(h);
  EXPECT_EQ(db.getField(h, "CompanyType").toLong(), 0);
  EXPECT_TRUE(db.getField(h, "ClientID").isNull());
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 5);
  EXPECT_EQ(db.recordCount(h), 5);
}

TEST_P(DatabaseServiceTest, KeysetIsFixedAtOpenEvenBeforeItsRowsAreRead) {
  std::int32_t h = open("SELECT Companies.* FROM Companies WHERE CompanyName = 'Zed';");
  add("Zed");  // another recordset's row: not in this keyset
  db.addNewRecord(h);
  db.setNewField(h, "CompanyName", "Own row");  // this recordset's row: in it, matching or not
  db.updateRecord(h);
  db.setField(h, "ClientID", "Z1");
  EXPECT_EQ(db.getField(h, "CompanyName").toString(), "Own row");
  EXPECT_EQ(db.recordCount(h), 1);
  ASSERT_TRUE(db.hasRecord(h));
  EXPECT_EQ(db.getField(h, "ClientID").toString(), "Z1");
  EXPECT_EQ(db.recordCount(db.requery(h)), 1);  // the fresh statement sees the other "Zed" only
}

TEST_P(DatabaseServiceTest, ValuesAreConvertedToTheDeclaredType) {
  std::int32_t h = open("SELECT ClientData.* FROM ClientData;");
  db.addNewRecord(h);
  db.setNewField(h, "CompanyIDNum", "3");
  db.setNewField(h, "ShowThisClient", "True");
  db.setNewField(h, "YearEndDate", "December 31, 2010");
  db.setNewField(h, "Fee", "($12.50)");
  db.updateRecord(h);
  EXPECT_EQ(db.getField(h, "CompanyIDNum").kind(), Variant::Kind::Integer);
  EXPECT_TRUE(db.getField(h, "ShowThisClient").toBool());
  EXPECT_EQ(db.getField(h, "YearEndDate").toDate()->toIso(), "2010-12-31 00:00:00");
  EXPECT_DOUBLE_EQ(db.getField(h, "Fee").toDouble(), -12.5);
  EXPECT_TRUE(db.getField(h, "ActiveStatus").isNull());
  EXPECT_TRUE(db.findRecord(h, "ShowThisClient", "True"));
  EXPECT_THROW(db.setField(h, "CompanyIDNum", "twelve"), DatabaseFailure);
  std::int32_t q =
      open("SELECT * FROM ClientData WHERE ShowThisClient = True AND YearEndDate = #12/31/2010#;");
  EXPECT_EQ(db.recordCount(q), 1);
}

TEST_P(DatabaseServiceTest, JoinedRecordsetWritesEachColumnToItsTable) {
  std::int32_t cd = open("SELECT ClientData.* FROM ClientData;");
  db.addNewRecord(cd);
  db.setNewField(cd, "CompanyIDNum", "2");
  db.updateRecord(cd);
  std::int32_t h = open(
      "SELECT Companies.*, ClientData.* FROM Companies INNER JOIN ClientData ON "
      "Companies.CompanyID = "
      "ClientData.CompanyIDNum;");
  ASSERT_TRUE(db.hasRecord(h));
  db.setField(h, "CompanyName", "Baker Renamed");
  db.setField(h, "ActiveStatus", "1");
  std::int32_t c = open("SELECT * FROM Companies WHERE CompanyID=2;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(c));
  EXPECT_EQ(db.getField(c, "CompanyName").toString(), "Baker Renamed");
  EXPECT_EQ(db.getField(h, "ClientData.ActiveStatus").toLong(), 1);
}

TEST_P(DatabaseServiceTest, TableWithoutDeclaredKeyIsWrittenBack) {
  std::int32_t h = open(
      "SELECT PersonalTaxStatus.* FROM PersonalTaxStatus WHERE ContactNum=7 AND TaxYear=2010;");
  EXPECT_FALSE(db.hasRecord(h));
  db.addNewRecord(h);
  db.setNewField(h, "ContactNum", "7");
  db.setNewField(h, "TaxYear", "2010");
  db.setNewField(h, "ReturnStatus", "6");
  db.updateRecord(h);
  db.setField(h, "ReturnStatus", "5");
  std::int32_t r = open("SELECT * FROM PersonalTaxStatus;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(r));
  EXPECT_EQ(db.getField(r, "ReturnStatus").toLong(), 5);
}

TEST_P(DatabaseServiceTest, DeleteKeepsTheScanGoing) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;");
  ASSERT_TRUE(db.hasRecord(h));
  db.deleteRecord(h);
  db.moveNext(h);
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 2);
  EXPECT_EQ(db.recordCount(open("SELECT * FROM Companies;", kLockReadOnly)), 3);
}

TEST_P(DatabaseServiceTest, BadStatementsAndFieldsFailClearly) {
  EXPECT_THROW(open("SELECT * FROM NoSuchTable;"), DatabaseFailure);
  EXPECT_THROW(open("DELETE FROM Companies;"), DatabaseFailure);
  std::int32_t h = open("SELECT * FROM Companies;");
  ASSERT_TRUE(db.hasRecord(h));
  EXPECT_THROW(db.getField(h, "NoSuchColumn"), DatabaseFailure);
  std::int32_t ro = open("SELECT * FROM Companies;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(ro));
  EXPECT_THROW(db.setField(ro, "CompanyName", "x"), DatabaseFailure);
  // An injected second statement fails and leaves the table alone.
  EXPECT_THROW(open("SELECT * FROM Companies WHERE CompanyName = 'x'; DROP TABLE Companies;"),
               DatabaseFailure);
  EXPECT_TRUE(db.hasTable("Companies"));
}

TEST_P(DatabaseServiceTest, TextIsReadWholeAsCleanUtf8) {
  // Bytes no caller of the service could write: straight through the backend.
  auto stmt = backend->prepare("UPDATE Companies SET CompanyName = ?");
  const std::string stored("Caf\xE9\0 Ltd", 9);  // Windows-1252, with a NUL inside
  stmt->bindText(1, stored);
  EXPECT_FALSE(stmt->step());
  std::int32_t h = open("SELECT Companies.* FROM Companies;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(h));
  EXPECT_EQ(db.getField(h, "CompanyName").toString(), "Caf\xC3\xA9 Ltd");
  EXPECT_TRUE(db.findRecord(h, "CompanyName", "Caf\xC3\xA9 Ltd"));
}

// The behaviour callers rely on at the edges of a scan.
TEST_P(DatabaseServiceTest, CursorEdgesCallersRelyOn) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;", kLockReadOnly);
  ASSERT_TRUE(db.findRecord(h, "CompanyID", "3"));
  db.setPosition(h, -1);  // a position before any row: the scan is over
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_THROW(db.getField(h, "CompanyName"), DatabaseFailure);
  db.setPosition(h, 99);  // past the end: EOF as well
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_THROW(db.moveNext(h), DatabaseFailure);
  // A failed find leaves the cursor at EOF and findNext after it finds nothing.
  ASSERT_TRUE(db.hasRecord(h));
  EXPECT_FALSE(db.findRecord(h, "CompanyName", "Nobody"));
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_FALSE(db.findNext(h));
  EXPECT_TRUE(db.isEOF(h));
  // Deleting the last row leaves EOF after moveNext.
  std::int32_t w = open("SELECT * FROM Companies ORDER BY CompanyID;");
  db.setPosition(w, 3);
  db.deleteRecord(w);
  db.moveNext(w);
  EXPECT_TRUE(db.isEOF(w));
}

// A row being added reads back what was set on it, and the rest as null, before it is stored.
TEST_P(DatabaseServiceTest, RowBeingAddedReadsItsOwnValues) {
  std::int32_t h = open("SELECT ClientData.* FROM ClientData;");
  db.addNewRecord(h);
  db.setNewField(h, "ActiveStatus", "2");
  db.setNewField(h, "ActiveStatus", "3");
  EXPECT_EQ(db.getField(h, "ActiveStatus").toLong(), 3);
  EXPECT_TRUE(db.getField(h, "Fee").isNull());
  EXPECT_EQ(db.getField(h, "ClientDataID").toLong(), 1);
  EXPECT_THROW(db.setNewField(h, "NoSuchColumn", "1"), DatabaseFailure);
  db.updateRecord(h);
  EXPECT_EQ(db.getField(h, "ActiveStatus").toLong(), 3);
  EXPECT_FALSE(db.getField(h, "ShowThisClient").toBool());  // the column default
}

// A table whose declared key is text: rows written, found by a second recordset, deleted.
TEST_P(DatabaseServiceTest, TextKeyedRowsAreWrittenFoundAndDeleted) {
  std::int32_t h = open("SELECT HostSettings.* FROM HostSettings;");
  for (const char* name : {"CountryMode", "ProvinceIndex"}) {
    db.addNewRecord(h);
    db.setNewField(h, "SettingName", name);
    db.setNewField(h, "SettingValue", "1");
    db.updateRecord(h);
  }
  std::int32_t reader = open("SELECT * FROM HostSettings;", kLockReadOnly);
  ASSERT_TRUE(db.findRecord(reader, "SettingName", "provinceindex"));
  ASSERT_TRUE(db.findRecord(h, "SettingName", "ProvinceIndex"));
  db.setField(h, "SettingValue", "8");
  EXPECT_EQ(db.getField(reader, "SettingValue").toString(), "8");
  db.setField(h, "SettingName", "Province");  // the key itself changes
  db.setField(h, "SettingValue", "9");
  std::int32_t fresh = open("SELECT * FROM HostSettings WHERE SettingName = 'Province';");
  ASSERT_TRUE(db.hasRecord(fresh));
  EXPECT_EQ(db.getField(fresh, "SettingValue").toString(), "9");
  db.deleteRecord(fresh);
  EXPECT_EQ(db.recordCount(open("SELECT * FROM HostSettings;", kLockReadOnly)), 1);
}

// A failed COMMIT (a deferred constraint) is rolled back: the next group begins and commits,
// and the open recordsets read what stayed.
TEST_P(DatabaseServiceTest, FailedCommitIsRolledBackAndRecordsetsForgetTheGroup) {
  db.executeStatement("PRAGMA foreign_keys=ON;");
  db.executeStatement("CREATE TABLE Parent (id INTEGER PRIMARY KEY);");
  db.executeStatement(
      "CREATE TABLE Child (ChildID INTEGER PRIMARY KEY, pid INTEGER REFERENCES Parent(id) "
      "DEFERRABLE INITIALLY DEFERRED);");
  std::int32_t h = open("SELECT Child.* FROM Child;");
  db.beginWriteGroup();
  db.addNewRecord(h);
  db.setNewField(h, "pid", "99");
  db.updateRecord(h);
  EXPECT_EQ(db.recordCount(h), 1);
  EXPECT_THROW(db.endWriteGroup(), DatabaseFailure);
  EXPECT_FALSE(backend->inTransaction());
  EXPECT_EQ(db.recordCount(h), 0);
  db.beginWriteGroup();
  db.executeStatement("INSERT INTO Parent VALUES (7)");
  db.executeStatement("INSERT INTO Child (pid) VALUES (7)");
  db.endWriteGroup();
  EXPECT_EQ(db.recordCount(open("SELECT * FROM Child;", kLockReadOnly)), 1);
}

// A statement read again after any kind of write to what it reads gives the rows as they are
// now, whether the write went to its own table, a table of its sub-query, the table under a
// view, or came from a trigger.
TEST_P(DatabaseServiceTest, StatementReadAgainSeesEveryWriteToWhatItReads) {
  const char* name = "SELECT Companies.CompanyName FROM Companies WHERE CompanyID = 2;";
  auto nameNow = [&] {
    std::int32_t h = open(name, kLockReadOnly);
    std::string text = db.hasRecord(h) ? db.getField(h, "CompanyName").toString() : "(none)";
    db.closeRecordset(h);
    return text;
  };
  EXPECT_EQ(nameNow(), "Baker LLP");
  std::int32_t w = open("SELECT Companies.* FROM Companies WHERE CompanyID = 2;");
  ASSERT_TRUE(db.hasRecord(w));
  db.setField(w, "CompanyName", "Baker & Sons");
  EXPECT_EQ(nameNow(), "Baker & Sons");  // a gathered write, stored before the read
  std::int32_t moved = open("SELECT Companies.* FROM Companies WHERE CompanyID = 3;");
  ASSERT_TRUE(db.hasRecord(moved));
  db.setField(moved, "CompanyID", "2000");  // the row leaves key 3 for a key not read yet
  EXPECT_TRUE(db.isEmpty(open("SELECT Companies.* FROM Companies WHERE CompanyID = 3;")));
  EXPECT_EQ(nameNow(), "Baker & Sons");
  db.executeStatement("UPDATE Companies SET CompanyName = 'Baker Two' WHERE CompanyID = 2;");
  EXPECT_EQ(nameNow(), "Baker Two");
  db.deleteRecord(w);
  EXPECT_EQ(nameNow(), "(none)");

  const char* withClients =
      "SELECT Companies.* FROM Companies WHERE CompanyID IN (SELECT CompanyIDNum FROM "
      "ClientData);";
  EXPECT_EQ(db.recordCount(open(withClients, kLockReadOnly)), 0);
  std::int32_t c = open("SELECT ClientData.* FROM ClientData;");
  db.addNewRecord(c);
  db.setNewField(c, "CompanyIDNum", "4");
  db.updateRecord(c);
  EXPECT_EQ(db.recordCount(open(withClients, kLockReadOnly)), 1);

  db.executeStatement("CREATE VIEW Named AS SELECT CompanyID, CompanyName FROM Companies;");
  const char* viaView = "SELECT * FROM Named WHERE CompanyName = 'Dale';";
  EXPECT_EQ(db.recordCount(open(viaView, kLockReadOnly)), 0);
  add("Dale");
  EXPECT_EQ(db.recordCount(open(viaView, kLockReadOnly)), 1);

  backend->exec(  // the service refuses the statement inside a trigger as a second one
      "CREATE TRIGGER NewClient AFTER INSERT ON Companies BEGIN INSERT INTO ClientData "
      "(CompanyIDNum) VALUES (new.CompanyID); END;");
  const char* clients = "SELECT ClientData.* FROM ClientData;";
  EXPECT_EQ(db.recordCount(open(clients, kLockReadOnly)), 1);
  add("Eden");
  EXPECT_EQ(db.recordCount(open(clients, kLockReadOnly)), 2);
}

// A statement reading one row by its auto-number key above the largest is answered empty
// without running; any other condition runs.
TEST_P(DatabaseServiceTest, KeyAboveTheLargestFindsNothingOtherConditionsStillRun) {
  EXPECT_TRUE(db.isEmpty(open("SELECT Companies.* FROM Companies WHERE Companies.CompanyID=99;")));
  EXPECT_FALSE(db.isEmpty(open("SELECT * FROM Companies WHERE CompanyID = 4;")));
  db.executeStatement("UPDATE Companies SET CompanyType = 99 WHERE CompanyID = 2;");
  EXPECT_EQ(db.recordCount(open("SELECT * FROM Companies WHERE CompanyType = 99;")), 1);
  EXPECT_EQ(db.recordCount(open("SELECT * FROM Companies WHERE CompanyID = 99 OR CompanyID < 3;")),
            2);
  EXPECT_EQ(
      db.recordCount(open("SELECT * FROM Companies AS c WHERE c.CompanyID = 99 OR c.ClientID Is "
                          "Null;")),
      4);
  std::int32_t own = open("SELECT Companies.* FROM Companies WHERE CompanyID = 5;");
  db.addNewRecord(own);  // a row added through the recordset itself is in its keyset
  db.setNewField(own, "CompanyName", "Fifth");
  db.updateRecord(own);
  EXPECT_EQ(db.recordCount(own), 1);
}

// A row read by its key right after it was added, or after a column of it was written, reads
// every value as stored: typed, defaults included, unwritten columns null; and a read of one
// column names what the row holds now.
TEST_P(DatabaseServiceTest, RowReadByKeyAfterItsWritesReadsAsStored) {
  std::int32_t h = open("SELECT ClientData.* FROM ClientData;");
  db.addNewRecord(h);
  db.setNewField(h, "CompanyIDNum", "3");
  db.setNewField(h, "YearEndDate", "December 31, 2010");
  db.setNewField(h, "Fee", "($12.50)");
  db.updateRecord(h);
  const std::string id = db.getField(h, "ClientDataID").toString();
  auto byKey = [&](const std::string& columns) {
    return open(
        ("SELECT " + columns + " FROM ClientData WHERE ClientDataID = " + id + ";").c_str());
  };
  std::int32_t row = byKey("ClientData.*");
  ASSERT_TRUE(db.hasRecord(row));
  EXPECT_EQ(db.getField(row, "CompanyIDNum").kind(), Variant::Kind::Integer);
  EXPECT_EQ(db.getField(row, "YearEndDate").toDate()->toIso(), "2010-12-31 00:00:00");
  EXPECT_DOUBLE_EQ(db.getField(row, "Fee").toDouble(), -12.5);
  EXPECT_EQ(db.getField(row, "ShowThisClient").kind(), Variant::Kind::Boolean);  // the default
  EXPECT_FALSE(db.getField(row, "ShowThisClient").toBool());
  EXPECT_TRUE(db.getField(row, "ActiveStatus").isNull());
  db.setField(row, "ActiveStatus", "2");
  db.setField(row, "Fee", "7");
  std::int32_t two = byKey("ClientData.ActiveStatus, ClientData.Fee");
  EXPECT_EQ(db.getField(two, "ActiveStatus").toLong(), 2);
  EXPECT_DOUBLE_EQ(db.getField(two, "Fee").toDouble(), 7);
  db.executeStatement("UPDATE ClientData SET ActiveStatus = 3;");
  EXPECT_EQ(db.getField(byKey("ClientData.ActiveStatus"), "ActiveStatus").toLong(), 3);
}

// Rows read again for a later recordset still keep out the rows added after that
// recordset's open, and a rolled-back group leaves nothing of itself in them.
TEST_P(DatabaseServiceTest, RowsReadAgainKeepEachKeysetAndForgetRolledBackWrites) {
  const char* all = "SELECT Companies.* FROM Companies;";
  std::int32_t early = open(all, kLockReadOnly);
  add("Fenn");
  EXPECT_EQ(db.recordCount(open(all, kLockReadOnly)), 5);
  EXPECT_EQ(db.recordCount(early), 4);

  db.executeStatement("CREATE TABLE Parent (id INTEGER PRIMARY KEY);");
  db.executeStatement(
      "CREATE TABLE Child (ChildID INTEGER PRIMARY KEY, pid INTEGER REFERENCES Parent(id) "
      "DEFERRABLE INITIALLY DEFERRED);");
  db.executeStatement("PRAGMA foreign_keys=ON;");
  db.beginWriteGroup();
  std::int32_t w = open("SELECT Companies.* FROM Companies WHERE CompanyID = 1;");
  ASSERT_TRUE(db.hasRecord(w));
  db.setField(w, "CompanyName", "Acme Renamed");
  db.executeStatement("INSERT INTO Child (pid) VALUES (99)");  // fails at COMMIT
  EXPECT_EQ(db.getField(open("SELECT * FROM Companies WHERE CompanyID = 1;", kLockReadOnly),
                        "CompanyName")
                .toString(),
            "Acme Renamed");
  EXPECT_THROW(db.endWriteGroup(), DatabaseFailure);
  EXPECT_EQ(db.getField(open("SELECT * FROM Companies WHERE CompanyID = 1;", kLockReadOnly),
                        "CompanyName")
                .toString(),
            "Acme Ltd");
}

INSTANTIATE_TEST_SUITE_P(Backends, DatabaseServiceTest,
                         ::testing::Values(BackendCase{"SqliteRowid", SqliteKeys::Rowid},
                                           BackendCase{"SqliteDeclaredKeysOnly",
                                                       SqliteKeys::DeclaredKeysOnly}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(DatabaseConnect, MissingOrCorruptFileLeavesItClosed) {
  Database db;
  db.setDatabasePath("/nonexistent/export.db");
  db.connect(2);
  EXPECT_FALSE(db.isOpen());
  std::string path = ::testing::TempDir() + "/lf_corrupt.db";
  {
    std::ofstream out(path);
    out << "this is not a database at all, just some text that is long enough to fill a header";
  }
  db.setDatabasePath(path);
  db.connect(2);
  EXPECT_FALSE(db.isOpen());
  std::filesystem::remove(path);
}

TEST(DatabaseConnect, CreateNewRefusesAnExistingFile) {
  std::string path = ::testing::TempDir() + "/lf_exists.db";
  std::filesystem::remove(path);
  {
    Database db;
    db.createNew(path);
    EXPECT_TRUE(db.isOpen());
  }
  Database again;
  EXPECT_THROW(again.createNew(path), DatabaseFailure);
  again.setDatabasePath(path);
  again.connect(2);
  EXPECT_TRUE(again.isOpen());
  std::filesystem::remove(path);
  std::filesystem::remove(path + "-wal");
  std::filesystem::remove(path + "-shm");
}

}  // namespace
}  // namespace lf
