// The sample Balaboss and Bill4Time export generators: the generated sizes, read back through
// the database service with the statements the syncs use, and the same data from the same
// seed.
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

struct Generator {
  const char* script;
  const char* clients;  // the statement of the clients, and their name column
  const char* nameColumn;
  const char* entries;
  const char* invoices;
};

TEST(MakeBalabossAndBill4TimeExports, GenerateTheAskedSizesFromTheSeed) {
  if (std::system("python3 --version >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "python3 is not installed";
  const Generator generators[] = {
      {"make_balaboss_export.py", "SELECT tblClient.* FROM tblClient;", "strCompany",
       "SELECT tblTBWIP.* FROM tblTBWIP;", "SELECT tblTBInv.* From tblTBInv;"},
      {"make_bill4time_export.py", "SELECT Clients.* FROM Clients;", "Client Name",
       "SELECT TimeEntries.* FROM TimeEntries;", "SELECT Invoices.* From Invoices;"},
  };
  const std::string path =
      ::testing::TempDir() + "/" + std::to_string(::getpid()) + "_lf_sync_sized.db";
  for (const Generator& g : generators) {
    std::string firstNames[2];
    for (int run = 0; run < 2; ++run) {
      std::filesystem::remove(path);
      const std::string command = std::string("python3 ") + LF_SOURCE_DIR + "/samples/" + g.script +
                                  " " + path + " --clients 30 --entries 120 --seed 5";
      ASSERT_EQ(std::system(command.c_str()), 0) << command;
      std::unique_ptr<Database> db = openDatabase(path);
      ASSERT_TRUE(db->isOpen()) << g.script;
      EXPECT_EQ(count(*db, g.clients), 30) << g.script;
      EXPECT_EQ(count(*db, g.entries), 120) << g.script;
      EXPECT_EQ(count(*db, g.invoices), 30) << g.script;  // one for every fourth entry
      const std::int32_t h = db->openRecordset(g.clients, kCursorKeyset, kLockReadOnly);
      firstNames[run] = db->getField(h, g.nameColumn).toString();
      db->close();
    }
    EXPECT_FALSE(firstNames[0].empty()) << g.script;
    EXPECT_EQ(firstNames[0], firstNames[1]) << g.script;
  }
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace lf
