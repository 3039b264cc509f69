// lfimport info: what a practice database holds (row counts of its non-empty tables and the
// host settings), as JSON.
#include <sqlite3.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "db/practice_database.hpp"
#include "db/practice_schema.hpp"

namespace lf::cli {
namespace {

void runInfo(const std::string& path, bool all) {
  try {
    auto db = openPracticeDatabase(path);
    nlohmann::json tables = nlohmann::json::object();
    for (const std::string& table : practiceTableNames()) {
      std::int32_t h = db->openRecordset("SELECT " + table + ".* FROM " + table + ";",
                                         kCursorKeyset, kLockReadOnly);
      long rows = db->recordCount(h);
      db->closeRecordset(h);
      if (rows > 0 || all) tables[table] = rows;
    }
    nlohmann::json settings = nlohmann::json::object();
    std::int32_t h =
        db->openRecordset("SELECT HostSettings.* FROM HostSettings;", kCursorKeyset, kLockReadOnly);
    for (bool more = db->hasRecord(h); more && !db->isEOF(h); db->moveNext(h))
      settings[db->getField(h, "SettingName").toString()] =
          db->getField(h, "SettingValue").toString();
    db->closeRecordset(h);
    std::cout << nlohmann::json{{"database", path}, {"rows", tables}, {"settings", settings}}.dump(
                     2)
              << "\n";
  } catch (const std::exception& e) {
    std::cerr << "lfimport info: " << e.what() << "\n";
    exitCode() = 1;
  }
}

CommandRegistration registration(11, [](CLI::App& app) {
  auto path = std::make_shared<std::string>();
  auto all = std::make_shared<bool>(false);
  CLI::App* cmd = app.add_subcommand("info", "Show what a practice database holds");
  cmd->add_option("PRACTICE", *path, "Practice database")->required();
  cmd->add_flag("--all", *all, "List empty tables too");
  cmd->callback([path, all] { runInfo(*path, *all); });
});

}  // namespace
}  // namespace lf::cli
