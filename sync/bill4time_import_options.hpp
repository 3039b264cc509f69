// The choices of a Bill4Time sync: the choices every source has, with the export's location and
// its use flag under their Bill4Time names.
#pragma once

#include <string>

#include "sync/sync_options.hpp"

namespace lf {

struct Bill4TimeImportOptions : SyncOptions {
  Bill4TimeImportOptions() = default;
  Bill4TimeImportOptions(const Bill4TimeImportOptions& other) : SyncOptions(other) {}
  Bill4TimeImportOptions& operator=(const Bill4TimeImportOptions& other) {
    SyncOptions::operator=(other);
    return *this;
  }

  // The same fields as databaseLocation and useDatabase.
  std::string& bill4timeDatabaseLocation = databaseLocation;
  bool& useBill4TimeDatabase = useDatabase;
};

}  // namespace lf
