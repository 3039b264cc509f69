// The choices of a Balaboss sync: the choices every source has, with the export's location and
// its use flag under their Balaboss names.
#pragma once

#include <string>

#include "sync/sync_options.hpp"

namespace lf {

struct BalabossImportOptions : SyncOptions {
  BalabossImportOptions() = default;
  BalabossImportOptions(const BalabossImportOptions& other) : SyncOptions(other) {}
  BalabossImportOptions& operator=(const BalabossImportOptions& other) {
    SyncOptions::operator=(other);
    return *this;
  }

  // The same fields as databaseLocation and useDatabase.
  std::string& balabossDatabaseLocation = databaseLocation;
  bool& useBalabossDatabase = useDatabase;
};

}  // namespace lf
