// A throw-away SQLite export for the sync tests, made from the CREATE TABLE statements a sample
// generator in samples/ holds (its SCHEMA text), so that the tests and the samples cannot
// drift apart.
#pragma once

#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/test_support.hpp"

namespace lf::testing {

class SyncExportFile {
 public:
  // `script`: the generator's file name in samples/.
  explicit SyncExportFile(const std::string& script) {
    static std::atomic<int> serial{0};
    path = ::testing::TempDir() + "sync_export_" + std::to_string(::getpid()) + "_" +
           std::to_string(serial++) + ".db";
    std::filesystem::remove(path);
    exec(schemaOf(script));
  }
  ~SyncExportFile() { std::filesystem::remove(path); }
  SyncExportFile(const SyncExportFile&) = delete;
  SyncExportFile& operator=(const SyncExportFile&) = delete;

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

  static std::string schemaOf(const std::string& script) {
    std::ifstream in(std::string(LF_SOURCE_DIR) + "/samples/" + script);
    std::stringstream text;
    text << in.rdbuf();
    const std::string all = text.str();
    const size_t from = all.find("SCHEMA = \"\"\"") + 12;
    return all.substr(from, all.find("\"\"\"", from) - from);
  }

  std::string path;
};

}  // namespace lf::testing
