// The CANTAX T1 and Dr. Tax T1 imports on 50,000-client exports, through their wizards.
//
// BM_CANTAXT1Repair: the repair alone of the raw export text (rows per second).
// BM_CANTAXT1Import, BM_DrTaxT1Import: the repair, the modified file, its loading and mapping,
// and the personal text import (with the CANTAX marks) into an empty practice database with
// duplicate matching by SIN on. Counters: clients per second and a raw load of the same
// written rows (one prepared INSERT per table, one transaction) with the ratio of the two
// times, wall clock and CPU (target: within 5 times). LF_BENCH_ROWS scales the client count (per
// 100,000).
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/module_state.hpp"
#include "db/database_factory.hpp"
#include "db/practice_database.hpp"
#include "db/practice_schema.hpp"
#include "host/practice_host_services.hpp"
#include "host/run_report.hpp"
#include "raw_load.hpp"
#include "tax/cantax_import_wizard.hpp"
#include "tax/cantax_t1_repair.hpp"
#include "tax/drtax_import_wizard.hpp"

namespace {

namespace fs = std::filesystem;

long clients() {
  const char* factor = std::getenv("LF_BENCH_ROWS");
  return factor == nullptr ? 50000 : std::max(1L, std::atol(factor) * 50000 / 100000);
}

const char* const kFirst[] = {"Olivia", "Liam James", "Emma", "Noah", "Chloé Anne", "Benoît"};
const char* const kLast[] = {"Tremblay", "Smith", "Nguyen", "Patel", "Côté", "O'Neill"};

std::string sinOf(long n) {
  const std::string digits = std::to_string(100000000 + n * 7);
  return digits.substr(0, 3) + " " + digits.substr(3, 3) + " " + digits.substr(6);
}

std::string cantaxRow(long n) {
  std::string row = sinOf(n) + ",19" + std::to_string(40 + n % 60) + "/0" +
                    std::to_string(1 + n % 9) + "/1" + std::to_string(n % 9) + "," + kFirst[n % 6] +
                    "," + kLast[n % 6] + "-" + std::to_string(n) + ",," +
                    std::to_string(n % 900 + 1) + " Maple Ave" + (n % 4 ? "" : ", Unit 3") +
                    ",Toronto ON,ON,M5V1A1,416555" + std::to_string(1000 + n % 9000) +
                    ",,,,client" + std::to_string(n) + "@example.com,4165559999," +
                    (n % 2 ? "22" : "") + ",Married,Mary Ann,Smith,3,9,1972";
  for (int line = 1; line <= 33; ++line)
    row += "," + (line % 3 == n % 3 ? std::to_string(100 + n % 5000) : std::string());
  return row + "\r\n";
}

std::string drTaxRow(long n) {
  return "DT-" + std::to_string(n) + "," + kLast[n % 6] + "-" + std::to_string(n) + "," +
         kFirst[n % 6] + "," + sinOf(n) + ",19" + std::to_string(40 + n % 60) + "-0" +
         std::to_string(1 + n % 9) + "-1" + std::to_string(n % 9) + "," + (n % 2 ? "ENG" : "FR") +
         "," + std::to_string(n % 900 + 1) + " Maple Ave,Toronto,M5V1A1,ON,Canada,H: 416555" +
         std::to_string(1000 + n % 9000) + ",W:4165559999,,client" + std::to_string(n) +
         "@example.com\r\n";
}

std::string exportText(std::string (*row)(long)) {
  std::string text;
  for (long n = 1; n <= clients(); ++n) text += row(n);
  return text;
}

void BM_CANTAXT1Repair(benchmark::State& state) {
  const std::string raw = exportText(cantaxRow);
  long rows = 0;
  for (auto _ : state) {
    std::string modified;
    lf::repairCANTAXT1Text(raw, modified, rows);
    benchmark::DoNotOptimize(modified.data());
  }
  state.counters["clients_per_second"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsIterationInvariantRate);
}

template <class Wizard>
void runImport(benchmark::State& state, std::string (*row)(long), const char* fileName) {
  const fs::path folder = fs::temp_directory_path() / "lf_tax_export_bench";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const fs::path file = folder / fileName;
  std::ofstream(file, std::ios::binary) << exportText(row);
  for (auto _ : state) {
    const std::string practicePath = (folder / "practice.db").string();
    const std::string seededPath = (folder / "seeded.db").string();
    const std::string rawPath = (folder / "raw.db").string();
    for (const std::string& p : {practicePath, seededPath, rawPath}) fs::remove(p);
    lf::PracticeSeed seed;
    createPracticeDatabase(seededPath, seed).reset();
    fs::copy_file(seededPath, practicePath);
    lf::DatabaseOptions options;
    options.practice = true;
    std::unique_ptr<lf::Database> practice = lf::openDatabase(practicePath, options);
    lf::PracticeLocale locale(*practice);
    lf::PracticeClientDropDown dropDown(*practice);
    lf::bench::CountingErrorService errors;
    lf::bench::NoMessageBox messages;
    lf::ModuleState& module = lf::moduleState();
    module.DatabaseReference = practice.get();
    module.errorClass = &errors;
    module.errorClassIsSet = true;
    module.MsgboxClass = &messages;
    module.LocaleReference = &locale;
    module.clientDropDownCtrlReference = &dropDown;
    lf::StageCounters counters;
    bool imported = false;
    const auto start = std::chrono::steady_clock::now();
    const double cpuStart = lf::bench::cpuSeconds();
    {
      Wizard wizard;
      wizard.importCSV.counters = &counters;
      wizard.Initialize();
      if constexpr (std::is_base_of_v<lf::CANTAXImportWizard, Wizard>)
        wizard.cmdSaveTemplate_Click((folder / "export.tpl").string());
      wizard.openExportFile(file.string());
      wizard.contactDuplicates().setCheckingOn(true);
      wizard.contactDuplicates().setMatchBy(lf::kMatchBySIN);
      wizard.cboYear = "2024";
      while (wizard.page() < wizard.pageCount() - 1) wizard.cmdNext_Click();
      wizard.cmdNext_Click();
      imported = wizard.imported();
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double cpu = lf::bench::cpuSeconds() - cpuStart;
    practice.reset();
    lf::moduleState() = lf::ModuleState{};
    sqlite3 *after = nullptr, *before = nullptr;
    sqlite3_open_v2(practicePath.c_str(), &after, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_open_v2(seededPath.c_str(), &before, SQLITE_OPEN_READONLY, nullptr);
    long written = 0;
    for (const std::string& table : lf::bench::tableNames(after))
      written += lf::bench::rowCount(after, table) - lf::bench::rowCount(before, table);
    sqlite3_close(after);
    sqlite3_close(before);
    {
      std::unique_ptr<lf::Database> empty = lf::createDatabase(rawPath);
      lf::createPracticeTables(*empty);
    }
    const auto rawStart = std::chrono::steady_clock::now();
    const double rawCpuStart = lf::bench::cpuSeconds();
    const long copied = lf::bench::rawLoad(practicePath, seededPath, rawPath);
    const double rawSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - rawStart).count();
    const double rawCpu = lf::bench::cpuSeconds() - rawCpuStart;

    state.SetIterationTime(seconds);
    state.counters["imported"] = imported;
    state.counters["clients"] = static_cast<double>(counters.read);
    state.counters["created"] = static_cast<double>(counters.created);
    state.counters["failed"] = static_cast<double>(counters.failed);
    state.counters["clients_per_second"] = counters.read / seconds;
    state.counters["rows_written"] = static_cast<double>(written);
    state.counters["raw_rows_loaded"] = static_cast<double>(copied);
    state.counters["raw_load_seconds"] = rawSeconds;
    state.counters["import_to_raw_ratio"] = seconds / rawSeconds;
    state.counters["import_to_raw_cpu_ratio"] = cpu / rawCpu;
    state.counters["errors"] = static_cast<double>(errors.errors);
  }
  fs::remove_all(folder);
}

void BM_CANTAXT1Import(benchmark::State& state) {
  runImport<lf::frmImportCANTAXT1>(state, cantaxRow, "cantax_t1_export.txt");
}
void BM_DrTaxT1Import(benchmark::State& state) {
  runImport<lf::frmImportDrTaxT1>(state, drTaxRow, "drtax_t1_export.csv");
}

BENCHMARK(BM_CANTAXT1Repair)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CANTAXT1Import)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
BENCHMARK(BM_DrTaxT1Import)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
