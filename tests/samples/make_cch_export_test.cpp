// The sample CCH Practice export generator: the generated sizes, read back through the
// database service with the statements the sync uses.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "db/database_factory.hpp"

namespace lf {
namespace {

long count(Database& db, const std::string& sql) {
  const std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
  const long n = db.recordCount(h);
  db.closeRecordset(h);
  return n;
}

TEST(MakeCCHExport, GeneratesTheAskedSizesFromTheSeed) {
  if (std::system("python3 --version >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "python3 is not installed";
  const std::string path =
      ::testing::TempDir() + "/" + std::to_string(::getpid()) + "_lf_cch_sized.db";
  std::string firstNames[2];
  for (int run = 0; run < 2; ++run) {
    std::filesystem::remove(path);
    const std::string command = std::string("python3 ") + LF_SOURCE_DIR +
                                "/samples/make_cch_export.py " + path +
                                " --clients 30 --entries 120 --seed 5";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    std::unique_ptr<Database> owned = newDatabase();
    Database& db = *owned;
    db.setDatabasePath(path);
    db.connect(2);
    ASSERT_TRUE(db.isOpen());
    EXPECT_EQ(count(db, "SELECT Client.* FROM Client;"), 30);
    EXPECT_EQ(count(db, "SELECT WIP.* FROM WIP;"), 120);
    EXPECT_EQ(count(db, "SELECT AR.* FROM AR;"), 120);
    EXPECT_EQ(count(db, "SELECT CASH.* FROM CASH;"), 120);
    EXPECT_EQ(count(db, "SELECT Contacts.* FROM CONTACT As Contacts;"), 0);
    EXPECT_EQ(count(db, "SELECT Firm.FirmID FROM Firm;"), 1);
    const std::int32_t h =
        db.openRecordset("SELECT Client.Name1 FROM Client;", kCursorKeyset, kLockReadOnly);
    firstNames[run] = db.getField(h, "Name1").toString();
    db.close();
  }
  std::filesystem::remove(path);
  EXPECT_EQ(firstNames[0], firstNames[1]);
}

}  // namespace
}  // namespace lf
