// lfimport info: what a practice database holds (row counts of its non-empty tables and the
// host settings), as JSON.

#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "base/text_encoding.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/json_output.hpp"
#include "db/practice_database.hpp"
#include "db/practice_schema.hpp"

namespace lf::cli {
namespace {

int runInfo(const std::string& path, bool all) {
  auto db = openPracticeDatabase(path, true);
  nlohmann::json tables = nlohmann::json::object();
  for (const std::string& table : practiceTableNames()) {
    std::int32_t h = db->openRecordset("SELECT " + table + ".* FROM " + table + ";", kCursorKeyset,
                                       kLockReadOnly);
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
  std::cout << jsonText(nlohmann::json{
                   {"database", textFromOutside(path)}, {"rows", tables}, {"settings", settings}})
            << "\n";
  return 0;
}

CommandRegistration registration(11, [](CLI::App& app) {
  auto path = std::make_shared<std::string>();
  auto all = std::make_shared<bool>(false);
  CLI::App* cmd = app.add_subcommand("info", "Show what a practice database holds");
  cmd->add_option("PRACTICE", *path, "Practice database")->required();
  cmd->add_flag("--all", *all, "List empty tables too");
  cmd->callback([path, all] { runCommand("info", [&] { return runInfo(*path, *all); }); });
});

}  // namespace
}  // namespace lf::cli
