// The personal Profile import on a folder of stand-in returns.
//
// BM_ProfileImport: 2,000 personal returns (a quarter of them couples, both spouses brought
// in), then 500 corporate returns (each business number with two or three year ends, the
// signing officer a contact), imported into an empty practice database with duplicate
// matching (SIN, business number) on. Counters:
// returns per second, peak memory of the process (ru_maxrss), and a raw load of the same
// written rows (one prepared INSERT per table, one transaction) with the ratio of the two
// times; target within 5 times. LF_BENCH_RETURNS sets the number of returns for a quick run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/practice_import_duplicates.hpp"
#include "practice_setup.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_t1_import.hpp"
#include "tax/profile_t2_import.hpp"

namespace {

namespace fs = std::filesystem;

long returnCount() {
  const char* n = std::getenv("LF_BENCH_RETURNS");
  return n == nullptr ? 2000 : std::max(1L, std::atol(n));
}
long corporateCount() {
  return std::max(1L, returnCount() / 4);
}

void writeReturns(const fs::path& folder, long count) {
  for (long n = 1; n <= count; ++n) {
    lf::ProfileReturn r;
    r.year = 2014 + static_cast<int>(n % 3);
    const std::string sin = std::to_string(100000000 + n * 7);
    const std::string last = "Tremblay" + std::to_string(n);
    r.primary.fields = {{"ClientSIN", sin},
                        {"ClientTitle", "Mr."},
                        {"ClientFirstName", "Liam"},
                        {"ClientLastName", last},
                        {"ClientAddress", std::to_string(n % 900 + 1) + " Maple Ave"},
                        {"ClientApt", std::to_string(n % 40)},
                        {"ClientCity", "Toronto"},
                        {"ClientProvince", "ON"},
                        {"ClientPostalCode", "M5V 1A1"},
                        {"ClientBirthDate", "1970-05-12"},
                        {"ClientGender", "1"},
                        {"ClientMaritalStatus", n % 4 == 0 ? "1" : "6"},
                        {"T1Info.B[24]", "0"},
                        {"Line101", "52000.00"},
                        {"Line349", "250.00"},
                        {"Invoice[155]", "120.00"}};
    if (n % 4 == 0) {
      r.primary.fields.insert({{"SpouseFirstname", "Emma"},
                               {"SpouseLastName", last},
                               {"SpouseSIN", std::to_string(500000000 + n * 7)},
                               {"T1Info.B[10]", "1"},
                               {"T1Info.B[23]", "1"}});
      r.second = lf::ProfileReturnClient{};
    }
    char name[48];
    std::snprintf(name, sizeof name, "Client%05ld.%02dT", n, r.year % 100);
    lf::saveProfileReturnFile((folder / name).string(), r);
  }
  for (long n = 1; n <= corporateCount(); ++n) {
    lf::ProfileReturn r;
    r.kind = "T2";
    r.year = 2014 + static_cast<int>(n % 3);
    const std::string corp = "Harbour Holdings " + std::to_string(n / 3 + 1);
    r.primary.fields = {{"LegalName", corp + " Ltd."},
                        {"OperatingName", corp},
                        {"T2Info.S[3]", std::to_string(800000000 + n / 3) + "RC0001"},
                        {"T2Info[2]", std::to_string(r.year) + "-12-31"},
                        {"T2Info.S[21]", std::to_string(n % 900 + 1) + " King St W"},
                        {"T2Info.S[23]", "Toronto"},
                        {"T2Info.S[24]", "ON"},
                        {"T2Info.S[25]", "M5V 1A1"},
                        {"T2Info.S[10]", "ON"},
                        {"T2Info.S[80]", std::to_string(1000000 + n)},
                        {"SigningOfficerFirstName", "Olivia"},
                        {"SigningOfficerLastName", "Patel" + std::to_string(n / 3 + 1)}};
    char name[32];
    std::snprintf(name, sizeof name, "Corp%05ld.GT2", n);
    lf::saveProfileReturnFile((folder / name).string(), r);
  }
}

void BM_ProfileImport(benchmark::State& state) {
  const fs::path folder = fs::temp_directory_path() / "lf_profile_bench";
  fs::remove_all(folder);
  const fs::path returns = folder / "returns";
  fs::create_directories(returns);
  const long count = returnCount();
  writeReturns(returns, count);
  for (auto _ : state) {
    lf::PracticeSeed seed;
    seed.currentYear = 2025;
    lf::bench::BenchPractice practice(folder, seed);
    practice.installInModuleState();
    lf::setProfileObjectFactory(std::make_shared<lf::ProfileStandInFactory>());

    const auto start = std::chrono::steady_clock::now();
    long imported = 0;
    {
      lf::clsImportProfileT1 import;
      lf::PracticeImportDuplicates contacts(lf::PracticeImportDuplicates::Contact);
      contacts.setCheckingOn(true);
      contacts.setMatchBy(lf::kMatchBySIN);
      contacts.setAction(lf::kDuplicateUpdate);
      import.contactDuplicatesControl = &contacts;
      import.importTaxYear = 2025;
      import.optCouplesReturn = 0;
      import.chkOption[0] = import.chkOption[27] = true;
      for (const auto& entry : fs::directory_iterator(returns))
        if (entry.path().extension() != ".GT2")
          import.addProfileFileToImportList(entry.path().string());
      import.importProfileT1Files(false);
      imported = import.contactsImported;

      lf::clsImportProfileT2 corporate;
      lf::PracticeImportDuplicates companies(lf::PracticeImportDuplicates::Company);
      companies.setCheckingOn(true);
      companies.setMatchBy(lf::kMatchByBusinessNumber);
      companies.setAction(lf::kDuplicateUpdate);
      corporate.companyDuplicatesControl = &companies;
      for (const auto& entry : fs::directory_iterator(returns))
        if (entry.path().extension() == ".GT2")
          corporate.addProfileFileToImportList(entry.path().string());
      corporate.importProfileT2Files();
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double memory = lf::bench::peakMegabytes();
    lf::setProfileObjectFactory(nullptr);
    const lf::bench::RawLoadFigures raw = practice.finish();

    state.SetIterationTime(seconds);
    state.counters["returns"] = static_cast<double>(count + corporateCount());
    state.counters["contacts_imported"] = static_cast<double>(imported);
    state.counters["returns_per_second"] = (count + corporateCount()) / seconds;
    state.counters["rows_written"] = static_cast<double>(raw.written);
    state.counters["raw_rows_loaded"] = static_cast<double>(raw.copied);
    state.counters["raw_load_seconds"] = raw.seconds;
    state.counters["import_to_raw_ratio"] = seconds / raw.seconds;
    state.counters["peak_memory_MB"] = memory;
    state.counters["errors"] = static_cast<double>(practice.errors.errors);
  }
  fs::remove_all(folder);
}

BENCHMARK(BM_ProfileImport)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
