// The fixture of the batch import tests: a fresh practice database and a prepared database
// made from the sample generator's schema, to which each test adds its rows, and an engine of
// any of the three classes wired to both.
#pragma once

#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "tests/test_support.hpp"

namespace lf::testing {

// A prepared database in a temporary file, with the tables of samples/make_prepared_import.py.
class PreparedDatabase {
 public:
  PreparedDatabase() {
    static std::atomic<int> serial{0};
    path = ::testing::TempDir() + "prepared_import_test_" + std::to_string(::getpid()) + "_" +
           std::to_string(serial++) + ".db";
    std::filesystem::remove(path);
    std::ifstream in(std::string(LF_SOURCE_DIR) + "/samples/make_prepared_import.py");
    std::stringstream text;
    text << in.rdbuf();
    const std::string script = text.str();
    const size_t from = script.find("SCHEMA = \"\"\"") + 12;
    exec(script.substr(from, script.find("\"\"\"", from) - from));
    exec("INSERT INTO Firm VALUES ('PREP-1', 'Test firm');");
  }
  ~PreparedDatabase() { std::filesystem::remove(path); }
  void exec(const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
    const std::string message = error != nullptr ? error : "";
    sqlite3_free(error);
    sqlite3_close(db);
    ASSERT_EQ(rc, SQLITE_OK) << message;
  }
  std::string path;
};

class PreparedImportTest : public PracticeDatabaseTest {
 protected:
  // An engine on the practice database with the prepared database open and the duplicate
  // finders off.
  template <class Engine>
  std::unique_ptr<Engine> makeEngine() {
    auto engine = std::make_unique<Engine>();
    engine->setErrorClass(&errors);
    engine->setMsgboxClass(&messages);
    engine->setLocaleReference(locale.get());
    engine->setClientDropDownCtrlReference(dropDown.get());
    engine->setDatabaseReference(db.get());
    engine->setShowProgress(false);
    engine->options().duplicateCheckEnabled = false;
    engine->setImportDatabaseLocation(prepared.path);
    return engine;
  }
  // Makes an engine of the class and runs it once.
  template <class Engine>
  void run(bool onlyNewEntries = true) {
    auto engine = makeEngine<Engine>();
    engine->options().importOnlyNewEntries = onlyNewEntries;
    engine->ImportImportInformation();
    counters = engine->ownCounters();
  }
  std::string text(const std::string& sql, const std::string& field) {
    return value(sql, field).toString();
  }

  PreparedDatabase prepared;
  std::map<std::string, StageCounters> counters;
};

}  // namespace lf::testing
