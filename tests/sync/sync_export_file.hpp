// A throw-away SQLite export for the sync tests, made from the CREATE TABLE statements a sample
// generator in samples/ holds (its SCHEMA text), so that the tests and the samples cannot
// drift apart.
#pragma once

#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <span>
#include <sstream>
#include <string>

#include "base/general_utilities.hpp"
#include "sync/field_map.hpp"
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

// Checks that every column a field map reads stands in its export table and every column it
// writes in its practice table, compared without regard to case as both databases do.
inline void expectFieldMapsMatchTheSchemas(const std::string& exportPath,
                                           std::span<const FieldMap> maps, Database& practice) {
  auto upper = [](std::string_view text) { return GeneralUtilities::upperCase(std::string(text)); };
  sqlite3* exportDb = nullptr;
  ASSERT_EQ(sqlite3_open(exportPath.c_str(), &exportDb), SQLITE_OK);
  for (const FieldMap& map : maps) {
    std::set<std::string> source;
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(exportDb,
                       ("PRAGMA table_info(\"" + std::string(map.sourceTable) + "\")").c_str(), -1,
                       &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW)
      source.insert(upper(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))));
    sqlite3_finalize(st);
    std::set<std::string> target;
    for (const std::string& name : practice.tableColumnNames(map.targetTable))
      target.insert(upper(name));
    EXPECT_FALSE(source.empty()) << map.sourceTable;
    EXPECT_FALSE(target.empty()) << map.targetTable;
    for (const FieldMapping& field : map.fields) {
      EXPECT_TRUE(target.count(upper(field.target))) << map.targetTable << "." << field.target;
      for (std::string_view column : field.source)
        if (!column.empty()) {
          EXPECT_TRUE(source.count(upper(column))) << map.sourceTable << "." << column;
        }
    }
  }
  sqlite3_close(exportDb);
}

}  // namespace lf::testing
