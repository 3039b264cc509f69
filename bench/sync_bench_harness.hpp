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

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "host/run_report.hpp"
#include "practice_setup.hpp"
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
    BenchPractice practice(folder, PracticeSeed{});
    RunReport report;

    const auto start = std::chrono::steady_clock::now();
    sync(exportPath, {practice.db(), practice.locale, practice.dropDown, practice.errors,
                      practice.messages, report});
    const double syncSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const RawLoadFigures raw = practice.finish();

    long sourceRows = 0;
    const nlohmann::json summary = report.toJson();
    for (const nlohmann::json& stage : summary.at("stages")) sourceRows += stage.value("read", 0L);

    state.SetIterationTime(syncSeconds);
    state.counters["sync_seconds"] = syncSeconds;
    state.counters["source_rows"] = static_cast<double>(sourceRows);
    state.counters["source_rows_per_second"] = sourceRows / syncSeconds;
    state.counters["rows_written"] = static_cast<double>(raw.written);
    state.counters["raw_rows_loaded"] = static_cast<double>(raw.copied);
    state.counters["raw_load_seconds"] = raw.seconds;
    state.counters["sync_to_raw_ratio"] = syncSeconds / raw.seconds;
    state.counters["peak_memory_MB"] = peakMegabytes();
    state.counters["errors"] = static_cast<double>(practice.errors.errors);
  }
  fs::remove_all(folder);
}

}  // namespace lf::bench
