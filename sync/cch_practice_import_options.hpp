// The choices of a CCH Practice sync: the choices every source has, with the export's location
// and its use flag under their CCH Practice names.
#pragma once

#include <string>

#include "sync/sync_options.hpp"

namespace lf {

struct CCHPracticeImportOptions : SyncOptions {
  CCHPracticeImportOptions() = default;
  CCHPracticeImportOptions(const CCHPracticeImportOptions& other) : SyncOptions(other) {}
  CCHPracticeImportOptions& operator=(const CCHPracticeImportOptions& other) {
    SyncOptions::operator=(other);
    return *this;
  }

  // The same fields as databaseLocation and useDatabase.
  std::string& cCHPracticeDatabaseLocation = databaseLocation;
  bool& useCCHPracticeDatabase = useDatabase;
};

}  // namespace lf
