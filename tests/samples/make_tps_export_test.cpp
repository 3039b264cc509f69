// The sample TPS export generator: the fixed sample and generated sizes, read back through
// the database service with the statements the sync uses.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "db/database.hpp"

namespace lf {
namespace {

bool havePython() {
  return std::system("python3 --version >/dev/null 2>&1") == 0;
}

// Runs the generator into a fresh temporary file and answers its path.
std::string generate(const std::string& name, const std::string& options = "") {
  const std::string path = ::testing::TempDir() + "/" + std::to_string(::getpid()) + "_" + name;
  std::filesystem::remove(path);
  const std::string command = std::string("python3 ") + LF_SOURCE_DIR +
                              "/samples/make_tps_export.py " + path + " " + options;
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  return path;
}

long count(Database& db, const std::string& sql) {
  const std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
  const long n = db.recordCount(h);
  db.closeRecordset(h);
  return n;
}

TEST(MakeTPSExport, FixedSampleHoldsTheDocumentedCases) {
  if (!havePython()) GTEST_SKIP() << "python3 is not installed";
  Database db;
  db.setDatabasePath(generate("lf_tps_fixed.db"));
  db.connect(2);
  ASSERT_TRUE(db.isOpen());
  EXPECT_EQ(count(db, "SELECT Clients.* FROM Clients;"), 12);
  EXPECT_EQ(count(db, "SELECT Times.* FROM Times;"), 14);
  EXPECT_EQ(count(db, "SELECT WorkCodes.* From WorkCodes WHERE WorkCodes.Parent Is Null;"), 3);
  EXPECT_EQ(count(db, "SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.Parent Is Null;"), 6);
  EXPECT_EQ(count(db,
                  "SELECT Times.TimeID, Times.Status, Times.Start FROM Times WHERE "
                  "Times.Status=0 Or Times.Status=1;"),
            7);

  const std::int32_t invoices =
      db.openRecordset("SELECT Invoices.* FROM Invoices;", kCursorKeyset, kLockReadOnly);
  EXPECT_TRUE(db.findRecord(invoices, "InvoiceID", "1"));
  const std::int32_t payments =
      db.openRecordset("SELECT Payments.* From Payments;", kCursorKeyset, kLockReadOnly);
  ASSERT_TRUE(db.findRecord(payments, "PaymentID", "4"));
  EXPECT_EQ(db.getField(payments, "Amount").toString(), "($12.50)");

  const std::int32_t clients =
      db.openRecordset("SELECT Clients.* FROM Clients;", kCursorKeyset, kLockReadOnly);
  ASSERT_TRUE(db.findRecord(clients, "ClientID", "105"));
  EXPECT_EQ(db.getField(clients, "Name").toString(), "John & Mary Smith");
  ASSERT_TRUE(db.findRecord(clients, "ClientID", "107"));
  EXPECT_TRUE(db.getField(clients, "InActive").toBool());
}

TEST(MakeTPSExport, GeneratesTheAskedSizesFromTheSeed) {
  if (!havePython()) GTEST_SKIP() << "python3 is not installed";
  const std::string options = "--clients 40 --times 300 --invoices 25 --payments 20 --seed 3";
  std::string firstNames[2];
  for (int run = 0; run < 2; ++run) {
    Database db;
    db.setDatabasePath(generate("lf_tps_sized.db", options));
    db.connect(2);
    ASSERT_TRUE(db.isOpen());
    EXPECT_EQ(count(db, "SELECT Clients.* FROM Clients;"), 40);
    EXPECT_EQ(count(db, "SELECT Times.* FROM Times;"), 300);
    EXPECT_EQ(count(db, "SELECT Invoices.* FROM Invoices;"), 25);
    EXPECT_EQ(count(db, "SELECT Payments.* From Payments;"), 20);
    const std::int32_t h =
        db.openRecordset("SELECT Clients.Name FROM Clients;", kCursorKeyset, kLockReadOnly);
    firstNames[run] = db.getField(h, "Name").toString();
    db.close();
  }
  EXPECT_EQ(firstNames[0], firstNames[1]);
}

}  // namespace
}  // namespace lf
