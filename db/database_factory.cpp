// The one place a location is turned into a backend.
#include "db/database_factory.hpp"

#include <filesystem>

namespace lf {

namespace {

DatabaseBackendMaker& backendMaker() {
  static DatabaseBackendMaker maker;
  return maker;
}

}  // namespace

std::unique_ptr<SqlBackend> databaseBackendFor(std::string_view location) {
  if (backendMaker()) return backendMaker()(location);
  // Every location is an SQLite file or ":memory:" today; a "postgresql://" URL would pick
  // its backend here.
  return makeSqliteBackend();
}

void setDatabaseBackendMaker(DatabaseBackendMaker maker) {
  backendMaker() = std::move(maker);
}

bool databaseLocationExists(std::string_view location) {
  return location != ":memory:" && std::filesystem::exists(std::filesystem::path(location));
}

std::unique_ptr<Database> newDatabase() {
  return std::make_unique<Database>();
}

std::unique_ptr<Database> openDatabase(std::string_view location, const DatabaseOptions& options) {
  auto db = newDatabase();
  db->setDatabasePath(location);
  db->setWriteAheadLog(options.practice);
  db->setReadOnly(options.readOnly);
  db->setBusyTimeout(options.busyTimeoutMs);
  if (options.openCheck) db->setOpenCheck(options.openCheck);
  db->connect(2);
  return db;
}

std::unique_ptr<Database> createDatabase(std::string_view location) {
  auto db = newDatabase();
  db->createNew(location);
  return db;
}

}  // namespace lf
