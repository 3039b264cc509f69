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

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/run_report.hpp"
#include "practice_setup.hpp"
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
    lf::bench::BenchPractice practice(folder, lf::PracticeSeed{});
    practice.installInModuleState();
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
    const lf::bench::RawLoadFigures raw = practice.finish();

    state.SetIterationTime(seconds);
    state.counters["imported"] = imported;
    state.counters["clients"] = static_cast<double>(counters.read);
    state.counters["created"] = static_cast<double>(counters.created);
    state.counters["failed"] = static_cast<double>(counters.failed);
    state.counters["clients_per_second"] = counters.read / seconds;
    state.counters["rows_written"] = static_cast<double>(raw.written);
    state.counters["raw_rows_loaded"] = static_cast<double>(raw.copied);
    state.counters["raw_load_seconds"] = raw.seconds;
    state.counters["import_to_raw_ratio"] = seconds / raw.seconds;
    state.counters["import_to_raw_cpu_ratio"] = cpu / raw.cpuSeconds;
    state.counters["errors"] = static_cast<double>(practice.errors.errors);
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
