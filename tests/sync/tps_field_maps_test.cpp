// The TPS field maps against the two schemas they join: every source column stands in the
// export's table (as samples/make_tps_export.py creates it), every target column in the
// practice table.
#include <sqlite3.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "db/practice_database.hpp"
#include "sync/sources/tps_source.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

// The export's CREATE TABLE statements, as the generator of the sample export holds them.
std::string exportSchema() {
  std::ifstream in(std::string(LF_SOURCE_DIR) + "/samples/make_tps_export.py");
  std::stringstream text;
  text << in.rdbuf();
  const std::string script = text.str();
  const size_t start = script.find("SCHEMA = \"\"\"");
  if (start == std::string::npos) return {};
  const size_t from = start + 12;
  return script.substr(from, script.find("\"\"\"", from) - from);
}

std::set<std::string> columnsOf(sqlite3* db, std::string_view table) {
  std::set<std::string> columns;
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, ("PRAGMA table_info(\"" + std::string(table) + "\")").c_str(), -1, &st,
                     nullptr);
  while (sqlite3_step(st) == SQLITE_ROW)
    columns.emplace(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)));
  sqlite3_finalize(st);
  return columns;
}

TEST(TPSFieldMapsTest, EveryColumnStandsInTheExportAndThePracticeSchema) {
  const std::string schema = exportSchema();
  ASSERT_NE(schema.find("CREATE TABLE Clients"), std::string::npos);
  sqlite3* exportDb = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &exportDb), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(exportDb, schema.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  Database practice;
  practice.createNew(":memory:");
  createPracticeTables(practice);

  ASSERT_FALSE(tpsFieldMaps().empty());
  for (const FieldMap& map : tpsFieldMaps()) {
    const std::set<std::string> source = columnsOf(exportDb, map.sourceTable);
    const std::vector<std::string> names = practice.tableColumnNames(map.targetTable);
    const std::set<std::string> target(names.begin(), names.end());
    ASSERT_FALSE(source.empty()) << map.sourceTable;
    ASSERT_FALSE(target.empty()) << map.targetTable;
    for (const FieldMapping& field : map.fields) {
      EXPECT_TRUE(target.count(std::string(field.target)))
          << map.targetTable << "." << field.target;
      for (std::string_view column : field.source) {
        if (column.empty()) continue;
        EXPECT_TRUE(source.count(std::string(column))) << map.sourceTable << "." << column;
      }
    }
  }
  sqlite3_close(exportDb);
}

TEST(TPSFieldMapsTest, TransformsComposeTelephonesEmailsDatesAndNames) {
  EXPECT_EQ(fields::telephone({"", "5550131", "4"}), "5550131 ext. 4");
  // A single address is the first and the second.
  EXPECT_EQ(fields::firstEmail({"", "a@x.example", ""}), "a@x.example");
  EXPECT_EQ(fields::secondEmail({"", "a@x.example", ""}), "a@x.example");
  EXPECT_EQ(fields::secondEmail({"a@x.example", "", "c@x.example"}), "c@x.example");
  EXPECT_EQ(fields::validDate({" 1970-02-03 "}), "1970-02-03 00:00:00");
  EXPECT_EQ(fields::validDate({"not known"}), "");
  EXPECT_EQ(fields::displayName({"Gord", "Gordon", "Pike"}), "Gord Pike");
  EXPECT_EQ(fields::displayName({"", "Gordon", "Pike"}), "Gordon Pike");
  EXPECT_EQ(fields::displayName({"Gord", "Gordon", ""}), "");
}

}  // namespace
}  // namespace lf
