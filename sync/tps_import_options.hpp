// The choices of a TPS sync: the choices every source has, with the export's location and its
// use flag under their TPS names, as the TPS wizard and the engine's callers spell them.
#pragma once

#include <string>
#include <vector>

#include "base/variant.hpp"
#include "host/key_list.hpp"
#include "sync/sync_options.hpp"

namespace lf {

struct TPSImportOptions : SyncOptions {
  TPSImportOptions() = default;
  TPSImportOptions(const TPSImportOptions& other) : SyncOptions(other) {}
  TPSImportOptions& operator=(const TPSImportOptions& other) {
    SyncOptions::operator=(other);
    return *this;
  }

  // The same fields as databaseLocation and useDatabase.
  std::string& TPSDatabaseLocation = databaseLocation;
  bool& useTPSDatabase = useDatabase;
};

// The wizard's opening dates (defaultSyncDates) under the TPS wizard's name.
inline void defaultTPSImportDates(SyncOptions& options, Date today) {
  defaultSyncDates(options, today);
}

}  // namespace lf
