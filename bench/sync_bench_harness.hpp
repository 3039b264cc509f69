// What the sync benchmarks share: a large export made by a sample generator, one sync of it
// into a new practice database file per iteration (the source engine's part given by the
// benchmark), and the figures every sync benchmark reports.
//
// Counters: the sync's time, source rows read by the stages and per second, rows written,
// peak memory of the process (ru_maxrss), errors, and the time of a raw load of the same rows
// into an empty practice database (one prepared INSERT per table, one transaction) with the
// ratio of the two times. Targets: the sync within 10 times the raw load, under 500 MB.
#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "db/practice_schema.hpp"
#include "host/practice_host_services.hpp"
#include "host/run_report.hpp"
#include "raw_load.hpp"
#include "sync/sync_engine.hpp"

namespace lf::bench {

// The host of one benchmarked sync: the practice database and the quiet services.
struct SyncBenchHost {
  Database& practice;
  PracticeLocale& locale;
  PracticeClientDropDown& dropDown;
  CountingErrorService& errors;
  NoMessageBox& messages;
  RunReport& report;

  // Gives the engine the services, the practice database and the report; no progress dialog.
  void wire(SyncEngine& engine) const {
    engine.setErrorClass(&errors);
    engine.setMsgboxClass(&messages);
    engine.setLocaleReference(&locale);
    engine.setClientDropDownCtrlReference(&dropDown);
    engine.setDatabaseReference(&practice);
    engine.setRunReport(&report);
    engine.setShowProgress(false);
  }
};

// Makes the export by `generator` (a samples/ script and its size options), then per
// iteration runs `sync` (the export's path and the host) on a new practice database and sets
// the counters. The sync's time is the iteration's time.
inline void runSyncBenchmark(
    benchmark::State& state, const std::string& name, const std::string& generator,
    const std::function<void(const std::string& exportPath, const SyncBenchHost& host)>& sync) {
  namespace fs = std::filesystem;
  const fs::path repository = LF_SOURCE_DIR;
  const fs::path folder = fs::temp_directory_path() / ("lf_" + name + "_bench");
  fs::remove_all(folder);
  fs::create_directories(folder);
  const std::string exportPath = (folder / "export.db").string();
  const std::string command =
      "python3 " + (repository / "samples" / generator).string() + " " + exportPath;
  if (std::system(command.c_str()) != 0) {
    state.SkipWithError("the export generator failed");
    return;
  }

  for (auto _ : state) {
    const std::string practicePath = (folder / "practice.db").string();
    const std::string seededPath = (folder / "seeded.db").string();
    const std::string rawPath = (folder / "raw.db").string();
    for (const std::string& p : {practicePath, seededPath, rawPath}) fs::remove(p);
    PracticeSeed seed;
    createPracticeDatabase(seededPath, seed).reset();
    fs::copy_file(seededPath, practicePath);

    auto practice = std::make_unique<Database>();
    practice->setDatabasePath(practicePath);
    practice->setWriteAheadLog(true);
    practice->connect(2);
    PracticeLocale locale(*practice);
    PracticeClientDropDown dropDown(*practice);
    CountingErrorService errors;
    NoMessageBox messages;
    RunReport report;

    const auto start = std::chrono::steady_clock::now();
    sync(exportPath, {*practice, locale, dropDown, errors, messages, report});
    const double syncSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    practice.reset();
    moduleState() = ModuleState{};

    // Rows written: the rows of the practice database beyond the seeded ones.
    sqlite3 *after = nullptr, *before = nullptr;
    sqlite3_open_v2(practicePath.c_str(), &after, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_open_v2(seededPath.c_str(), &before, SQLITE_OPEN_READONLY, nullptr);
    long written = 0;
    for (const std::string& table : tableNames(after))
      written += rowCount(after, table) - rowCount(before, table);
    sqlite3_close(after);
    sqlite3_close(before);

    // The raw load: the same rows into an empty practice schema.
    {
      Database empty;
      empty.createNew(rawPath);
      createPracticeTables(empty);
    }
    const auto rawStart = std::chrono::steady_clock::now();
    const long copied = rawLoad(practicePath, seededPath, rawPath);
    const double rawSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - rawStart).count();

    long sourceRows = 0;
    const nlohmann::json summary = report.toJson();
    for (const nlohmann::json& stage : summary.at("stages")) sourceRows += stage.value("read", 0L);
    struct rusage usage {};
    getrusage(RUSAGE_SELF, &usage);

    state.SetIterationTime(syncSeconds);
    state.counters["sync_seconds"] = syncSeconds;
    state.counters["source_rows"] = static_cast<double>(sourceRows);
    state.counters["source_rows_per_second"] = sourceRows / syncSeconds;
    state.counters["rows_written"] = static_cast<double>(written);
    state.counters["raw_rows_loaded"] = static_cast<double>(copied);
    state.counters["raw_load_seconds"] = rawSeconds;
    state.counters["sync_to_raw_ratio"] = syncSeconds / rawSeconds;
    state.counters["peak_memory_MB"] = usage.ru_maxrss / 1024.0;
    state.counters["errors"] = static_cast<double>(errors.errors);
  }
  fs::remove_all(folder);
}

}  // namespace lf::bench
