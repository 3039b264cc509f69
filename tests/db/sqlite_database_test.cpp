// The database service over SQLite: keyset recordsets, searches, writes and sources.
#include "db/sqlite_database.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "base/failure.hpp"

namespace lf {
namespace {

class SqliteDatabaseTest : public ::testing::Test {
 protected:
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

  SqliteDatabase db;
};

TEST_F(SqliteDatabaseTest, ScanOfEmptyRecordsetEndsAtOnce) {
  std::int32_t h = open("SELECT * FROM Companies WHERE CompanyID = -1;");
  EXPECT_FALSE(db.hasRecord(h));
  EXPECT_TRUE(db.isEOF(h));
  EXPECT_TRUE(db.isEmpty(h));
  EXPECT_EQ(db.recordCount(h), 0);
}

TEST_F(SqliteDatabaseTest, HandlesAreNeverZeroAndCloseKillsThem) {
  EXPECT_FALSE(db.isRecordsetOpen(0));
  std::int32_t h = open("SELECT * FROM Companies;");
  EXPECT_NE(h, 0);
  EXPECT_TRUE(db.isRecordsetOpen(h));
  db.closeRecordset(h);
  EXPECT_FALSE(db.isRecordsetOpen(h));
  EXPECT_THROW(db.hasRecord(h), DatabaseFailure);
}

TEST_F(SqliteDatabaseTest, AutoNumberKeyIsReadableBeforeUpdate) {
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

TEST_F(SqliteDatabaseTest, FindRecordAndFindNextWalkAllMatches) {
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

TEST_F(SqliteDatabaseTest, PositionSurvivesNestedFind) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;");
  ASSERT_TRUE(db.hasRecord(h));
  db.moveNext(h);
  std::int32_t pos = db.getPosition(h);
  ASSERT_TRUE(db.findRecord(h, "CompanyName", "Cole Inc."));
  db.setPosition(h, pos);
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 2);
}

TEST_F(SqliteDatabaseTest, SetFieldIsDurableAndReachesOtherRecordsets) {
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
TEST_F(SqliteDatabaseTest, GatheredRowWritesAreStoredBeforeTheNextStatement) {
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

  // A write to another row stores the first row's writes; raw readers see both.
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "3"));
  db.setField(writer, "CompanyName", "Acme Two");
  ASSERT_TRUE(db.findRecord(writer, "CompanyID", "4"));
  db.setField(writer, "CompanyName", "Cole Ltd");
  sqlite3_stmt* st = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db.connection(),
                               "SELECT group_concat(CompanyName, '|') FROM Companies "
                               "WHERE CompanyID IN (3, 4) ORDER BY CompanyID",
                               -1, &st, nullptr),
            SQLITE_OK);
  ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
  EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)), "Acme Two|Cole Ltd");
  sqlite3_finalize(st);
}

// The largest key of a table is remembered between statements but never outlives a write
// made another way.
TEST_F(SqliteDatabaseTest, KeysetsCountRowsWrittenByEveryRoute) {
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

TEST_F(SqliteDatabaseTest, RequerySeesRowsAddedElsewhere) {
  std::int32_t h = open("SELECT * FROM Companies;", kLockReadOnly);
  add("Eagle Partners");
  EXPECT_FALSE(db.findRecord(h, "CompanyName", "Eagle Partners"));
  std::int32_t h2 = db.requery(h);
  EXPECT_NE(h2, h);
  EXPECT_FALSE(db.isRecordsetOpen(h));
  EXPECT_TRUE(db.findRecord(h2, "CompanyName", "Eagle Partners"));
  EXPECT_EQ(db.recordCount(h2), 5);
}

TEST_F(SqliteDatabaseTest, RowAddedToAReadRecordsetCarriesTheColumnDefaults) {
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

TEST_F(SqliteDatabaseTest, KeysetIsFixedAtOpenEvenBeforeItsRowsAreRead) {
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

TEST_F(SqliteDatabaseTest, ValuesAreConvertedToTheDeclaredType) {
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

TEST_F(SqliteDatabaseTest, JoinedRecordsetWritesEachColumnToItsTable) {
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

TEST_F(SqliteDatabaseTest, PairKeyedTablesWriteByRowid) {
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

TEST_F(SqliteDatabaseTest, DeleteKeepsTheScanGoing) {
  std::int32_t h = open("SELECT * FROM Companies ORDER BY CompanyID;");
  ASSERT_TRUE(db.hasRecord(h));
  db.deleteRecord(h);
  db.moveNext(h);
  EXPECT_EQ(db.getField(h, "CompanyID").toLong(), 2);
  EXPECT_EQ(db.recordCount(open("SELECT * FROM Companies;", kLockReadOnly)), 3);
}

TEST_F(SqliteDatabaseTest, BadStatementsAndFieldsFailClearly) {
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

TEST_F(SqliteDatabaseTest, TextIsReadWholeAsCleanUtf8) {
  sqlite3_stmt* stmt = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db.connection(), "UPDATE Companies SET CompanyName = ?", -1, &stmt,
                               nullptr),
            SQLITE_OK);
  const std::string stored("Caf\xE9\0 Ltd", 9);  // Windows-1252, with a NUL inside
  sqlite3_bind_text(stmt, 1, stored.data(), static_cast<int>(stored.size()), SQLITE_TRANSIENT);
  ASSERT_EQ(sqlite3_step(stmt), SQLITE_DONE);
  sqlite3_finalize(stmt);
  std::int32_t h = open("SELECT Companies.* FROM Companies;", kLockReadOnly);
  ASSERT_TRUE(db.hasRecord(h));
  EXPECT_EQ(db.getField(h, "CompanyName").toString(), "Caf\xC3\xA9 Ltd");
  EXPECT_TRUE(db.findRecord(h, "CompanyName", "Caf\xC3\xA9 Ltd"));
}

TEST(SqliteDatabaseConnect, MissingOrCorruptFileLeavesItClosed) {
  SqliteDatabase db;
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

TEST(SqliteDatabaseConnect, CreateNewRefusesAnExistingFile) {
  std::string path = ::testing::TempDir() + "/lf_exists.db";
  std::filesystem::remove(path);
  {
    SqliteDatabase db;
    db.createNew(path);
    EXPECT_TRUE(db.isOpen());
  }
  SqliteDatabase again;
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
