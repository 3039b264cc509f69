// The practice database of one benchmarked import: a seeded file made anew for each iteration,
// a copy of it that the import writes into, opened as the host opens its practice database,
// the quiet host services beside it, and at the end the raw load the import's time is compared
// with (bench/raw_load.hpp).
//
// One iteration reads:
//
//   lf::bench::BenchPractice practice(folder, seed);
//   practice.installInModuleState();       // for imports that find their services there
//   ... run the import on practice.db() ...
//   const lf::bench::RawLoadFigures raw = practice.finish();
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/database_factory.hpp"
#include "db/practice_database.hpp"
#include "host/practice_host_services.hpp"
#include "raw_load.hpp"

namespace lf::bench {

class BenchPractice {
 public:
  // REQUIRES: `folder` exists. Removes what an earlier iteration left there, makes
  // folder/seeded.db from `seed`, copies it to folder/practice.db and opens that with a
  // write-ahead log, held alone.
  BenchPractice(const std::filesystem::path& folder, const PracticeSeed& seed)
      : practicePath_((folder / "practice.db").string()),
        seededPath_((folder / "seeded.db").string()),
        rawPath_((folder / "raw.db").string()),
        practice_(openSeededCopy(practicePath_, seededPath_, rawPath_, seed)),
        locale(*practice_),
        dropDown(*practice_) {}
  BenchPractice(const BenchPractice&) = delete;
  BenchPractice& operator=(const BenchPractice&) = delete;

  Database& db() { return *practice_; }

  // Points the module state at this practice database and its services.
  void installInModuleState() {
    ModuleState& module = moduleState();
    module.DatabaseReference = practice_.get();
    module.errorClass = &errors;
    module.errorClassIsSet = true;
    module.MsgboxClass = &messages;
    module.LocaleReference = &locale;
    module.clientDropDownCtrlReference = &dropDown;
  }

  // REQUIRES: the import is over. Closes the practice database, clears the module state, and
  // answers the rows the import wrote and the time of their raw load into folder/raw.db.
  RawLoadFigures finish() {
    practice_.reset();
    moduleState() = ModuleState{};
    return rawLoadOfImport(practicePath_, seededPath_, rawPath_);
  }

 private:
  static std::unique_ptr<Database> openSeededCopy(const std::string& practice,
                                                  const std::string& seeded, const std::string& raw,
                                                  const PracticeSeed& seed) {
    for (const std::string& path : {practice, seeded, raw}) std::filesystem::remove(path);
    createPracticeDatabase(seeded, seed).reset();
    std::filesystem::copy_file(seeded, practice);
    DatabaseOptions options;
    options.practice = true;
    return openDatabase(practice, options);
  }

  const std::string practicePath_, seededPath_, rawPath_;
  std::unique_ptr<Database> practice_;

 public:
  PracticeLocale locale;
  PracticeClientDropDown dropDown;
  CountingErrorService errors;
  NoMessageBox messages;
};

}  // namespace lf::bench
