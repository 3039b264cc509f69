// Access export files read into their SQLite copy: what is copied (tables, names, row counts,
// types, dates over the whole range), what is refused, and what is left behind. The Access
// samples live beside the project (shared/data/mdb); the tests that need them are skipped
// where they are absent.
#include "db/access_export_copy.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "base/failure.hpp"
#include "db/database_factory.hpp"

namespace lf {
namespace {

namespace fs = std::filesystem;

std::string sample(const char* name) {
  return std::string(LF_MDB_SAMPLES) + "/" + name;
}

#define REQUIRE_SAMPLE(name) \
  if (!fs::exists(sample(name))) GTEST_SKIP() << "no Access sample " << sample(name)

class AccessExportCopyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::temp_directory_path() / ("lf-access-test-" + std::to_string(::getpid()));
    fs::create_directories(folder);
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string write(const std::string& name, const std::string& bytes) {
    const std::string path = (folder / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  // Opens the copy through the database service, as the sync engines do.
  void open(const std::string& path) {
    db.setDatabasePath(path);
    db.connect(2);
    ASSERT_TRUE(db.isOpen());
  }
  std::vector<Variant> column(const std::string& sql, const char* field) {
    std::vector<Variant> values;
    const std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
    for (bool more = db.hasRecord(h); more && !db.isEOF(h); db.moveNext(h))
      values.push_back(db.getField(h, field));
    db.closeRecordset(h);
    return values;
  }

  fs::path folder;
  std::unique_ptr<Database> owned = newDatabase();
  Database& db = *owned;
};

std::map<std::string, std::int64_t> counts(const std::vector<SourceTable>& tables) {
  std::map<std::string, std::int64_t> out;
  for (const SourceTable& t : tables) out[t.name] = t.rows;
  return out;
}

TEST_F(AccessExportCopyTest, KindIsToldByTheHeaderNotTheName) {
  EXPECT_EQ(sourceFileKind((folder / "none.mdb").string()), SourceFileKind::Missing);
  EXPECT_EQ(sourceFileKind(folder.string()), SourceFileKind::Folder);
  EXPECT_EQ(sourceFileKind(write("empty.mdb", "")), SourceFileKind::Empty);
  EXPECT_EQ(sourceFileKind(write("list.mdb", "ClientID,Name\n1,Smith\n")), SourceFileKind::Other);
  EXPECT_EQ(sourceFileKind(write("export.lfd", std::string("SQLite format 3\0pad", 20))),
            SourceFileKind::SQLite);
  std::string ace("\0\1\0\0Standard ACE DB\0\2\0\0\0", 24);
  EXPECT_EQ(sourceFileKind(write("export.db", ace)), SourceFileKind::ACE);
  std::string jet4("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24);
  EXPECT_EQ(sourceFileKind(write("export.txt", jet4)), SourceFileKind::Jet4);
}

TEST_F(AccessExportCopyTest, Jet3FileIsCopiedWithEveryTableAndRow) {
  REQUIRE_SAMPLE("nwind.mdb");
  EXPECT_EQ(sourceFileKind(sample("nwind.mdb")), SourceFileKind::Jet3);
  SourceFileCopy copy(sample("nwind.mdb"), "the export");
  ASSERT_TRUE(copy.isCopy());
  const std::map<std::string, std::int64_t> expected = {
      {"Order Details", 2155}, {"Orders", 830},   {"Products", 77},
      {"Shippers", 3},         {"Categories", 8}, {"Customers", 91},
      {"Employees", 9},        {"Suppliers", 29}, {"Umsätze", 830}};
  EXPECT_EQ(counts(copy.tables()), expected);

  open(copy.databasePath());
  // Names with blanks are reached with the Access brackets; money is exact, dates are dates.
  const auto prices = column(
      "SELECT [Order Details].* FROM [Order Details] WHERE [Order Details].OrderID = 10248 "
      "ORDER BY [Order Details].ProductID;",
      "UnitPrice");
  ASSERT_EQ(prices.size(), 3u);
  EXPECT_EQ(prices[0].kind(), Variant::Kind::Double);
  EXPECT_DOUBLE_EQ(prices[0].toDouble(), 14.0);
  EXPECT_DOUBLE_EQ(prices[1].toDouble(), 9.8);
  const auto dates =
      column("SELECT Orders.* FROM Orders WHERE Orders.OrderID = 10330;", "OrderDate");
  ASSERT_EQ(dates.size(), 1u);
  ASSERT_EQ(dates[0].kind(), Variant::Kind::Date);
  EXPECT_EQ(dates[0].toDate()->toIso(), "1994-11-16 00:00:00");
  EXPECT_DOUBLE_EQ(
      column("SELECT Orders.* FROM Orders WHERE Orders.OrderID = 10330;", "Freight")[0].toDouble(),
      12.75);
  EXPECT_EQ(
      column("SELECT Orders.* FROM Orders WHERE Orders.ShippedDate Is Null;", "OrderID").size(),
      21u);
  EXPECT_EQ(
      column("SELECT Products.* FROM Products WHERE Products.Discontinued = True;", "ProductID")
          .size(),
      8u);
  const auto first = column("SELECT Orders.* FROM Orders ORDER BY Orders.OrderDate;", "OrderDate");
  EXPECT_EQ(first.front().toDate()->toIso(), "1994-08-04 00:00:00");
  EXPECT_EQ(first.back().toDate()->toIso(), "1996-06-05 00:00:00");
}

TEST_F(AccessExportCopyTest, Jet4FileKeepsTextLengthsMemoAndLineBreaks) {
  REQUIRE_SAMPLE("northwind-jet4.mdb");
  SourceFileCopy copy(sample("northwind-jet4.mdb"));
  const std::map<std::string, std::int64_t> expected = {
      {"Categories", 8},       {"Customers", 91}, {"Employees", 9},
      {"Order Details", 2155}, {"Orders", 830},   {"Products", 77},
      {"Shippers", 3},         {"Suppliers", 29}, {"Paste Errors", 2}};
  EXPECT_EQ(counts(copy.tables()), expected);
  for (const SourceTable& t : copy.tables()) {
    if (t.name != "Customers") continue;
    ASSERT_EQ(t.columns[0].name, "CustomerID");
    EXPECT_EQ(t.columns[0].type, "Text");
    EXPECT_EQ(t.columns[0].declaredType, "VARCHAR(5)");  // characters, not UCS-2 bytes
  }
  open(copy.databasePath());
  const auto addresses = column("SELECT Employees.* FROM Employees;", "Address");
  EXPECT_TRUE(std::any_of(addresses.begin(), addresses.end(), [](const Variant& v) {
    return v.toString().find("\r\n") != std::string::npos;
  }));
}

TEST_F(AccessExportCopyTest, DatesOutsideTheReadersFormattingRangeStayExact) {
  REQUIRE_SAMPLE("DateTestDatabase.mdb");
  SourceFileCopy copy(sample("DateTestDatabase.mdb"));
  open(copy.databasePath());
  const auto dates = column("SELECT DateTest.* FROM DateTest ORDER BY DateTest.IDCol;", "DateCol");
  ASSERT_EQ(dates.size(), 6u);
  EXPECT_EQ(dates[0].toDate()->toIso(), "2021-12-02 00:00:00");
  EXPECT_EQ(dates[1].toDate()->toIso(), "9999-01-01 00:00:00");
  // Before 1900 and before the year 1000 the reader's own formatting gives up; the serial does not.
  const auto times =
      column("SELECT DateTest.* FROM DateTest ORDER BY DateTest.IDCol;", "DateTimeCol");
  EXPECT_EQ(times[2].toDate()->toIso(), "1898-01-01 00:00:00");
  EXPECT_EQ(times[3].toDate()->toIso(), "0632-01-01 00:00:00");
  EXPECT_EQ(dates[2].toDate()->toIso(), "1899-01-01 00:00:00");
  const auto memos =
      column("SELECT DateTest.* FROM DateTest ORDER BY DateTest.IDCol;", "LongTextCol");
  EXPECT_EQ(memos[4].toString(), "Escaped new line \\r\\n in field");
  EXPECT_EQ(memos[5].toString(), "New line\r\nin field");
}

TEST_F(AccessExportCopyTest, CopyIsDeletedWithItsOwner) {
  REQUIRE_SAMPLE("DateTestDatabase.mdb");
  std::string path;
  {
    SourceFileCopy copy(sample("DateTestDatabase.mdb"));
    path = copy.databasePath();
    EXPECT_TRUE(fs::exists(path));
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(AccessExportCopyTest, SqliteSourceIsUsedInPlace) {
  const std::string path = (folder / "export.db").string();
  std::unique_ptr<Database> made = createDatabase(path);
  made->executeStatement("CREATE TABLE \"User Id\" (\"Login Name\" TEXT, Rate CURRENCY)");
  made->executeStatement("INSERT INTO \"User Id\" VALUES ('amy', 12.5)");
  made->close();
  SourceFileCopy copy(path);
  EXPECT_FALSE(copy.isCopy());
  EXPECT_EQ(copy.databasePath(), path);
  const auto tables = inspectSourceFile(path);
  ASSERT_EQ(tables.size(), 1u);
  EXPECT_EQ(tables[0].name, "User Id");
  EXPECT_EQ(tables[0].rows, 1);
  ASSERT_EQ(tables[0].columns.size(), 2u);
  EXPECT_EQ(tables[0].columns[0].name, "Login Name");
  EXPECT_EQ(tables[0].columns[1].type, "CURRENCY");
}

TEST_F(AccessExportCopyTest, FilesThatAreNotReadableExportsAreRefusedWithOneLine) {
  auto refusal = [](const std::string& path) {
    try {
      SourceFileCopy copy(path, "the TPS export");
    } catch (const Failure& e) {
      return std::string(e.what());
    }
    return std::string("accepted");
  };
  EXPECT_NE(refusal(write("empty.mdb", "")).find("is empty"), std::string::npos);
  EXPECT_NE(refusal(write("clients.mdb", "a,b\n")).find("neither a SQLite nor an Access"),
            std::string::npos);
  EXPECT_NE(refusal(folder.string()).find("is a folder"), std::string::npos);

  // An Access header over garbage, and a real file cut short, are damaged files.
  std::string garbage("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24);
  garbage += std::string(8192, '\xA5');
  const std::string damaged = refusal(write("damaged.mdb", garbage));
  EXPECT_NE(damaged.find("cannot read the Access file"), std::string::npos) << damaged;
  EXPECT_EQ(damaged.find('\n'), std::string::npos);
  if (fs::exists(sample("nwind.mdb"))) {
    const std::string whole = readFile(sample("nwind.mdb"));
    const std::string cut = refusal(write("cut.mdb", whole.substr(0, 65536)));
    EXPECT_NE(cut.find("cannot read the Access file"), std::string::npos) << cut;
  }
  // Nothing of a refused copy stays in the temporary folder's name space of the test.
  const std::string target = (folder / "copy.db").string();
  EXPECT_THROW(copyAccessFileToSqlite(write("bad.mdb", garbage), target), Failure);
  EXPECT_FALSE(fs::exists(target));
}

}  // namespace
}  // namespace lf
