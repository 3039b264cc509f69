// Where callers get a database: one factory, by location. The backend behind the object is
// chosen here from the location and nowhere else; callers see only Database.
//
// Locations today: a file path or ":memory:" (SQLite). A "postgresql://" URL would be another
// backend, chosen here the same way, with nothing changed in the callers.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "db/database.hpp"

namespace lf {

// Options of opening a database; the defaults open a source database for reading and
// writing in the journal mode it has.
struct DatabaseOptions {
  // The practice database: a write-ahead log, held alone while open.
  bool practice = false;
  // Nothing is ever written.
  bool readOnly = false;
  // How long to wait for a lock that another program holds; 0 fails at once.
  int busyTimeoutMs = 0;
  // Runs once the database has been read, before anything is written to it; what it throws
  // closes the connection and reaches the caller.
  std::function<void(Database&)> openCheck;
};

// A database object not connected yet: the seven-step opening of a source database sets its
// location and connects it. The backend is chosen by the location at connect.
std::unique_ptr<Database> newDatabase();

// A database connected to the location; isOpen() false and connectFailure() say when it
// could not be opened.
std::unique_ptr<Database> openDatabase(std::string_view location,
                                       const DatabaseOptions& options = {});

// A new, empty practice database at the location (refuses an existing file), connected.
// Throws DatabaseFailure when it cannot be made.
std::unique_ptr<Database> createDatabase(std::string_view location);

// The backend for a location (used by Database at connect).
std::unique_ptr<SqlBackend> databaseBackendFor(std::string_view location);
// Replaces how a location becomes a backend, for every database made afterwards; an empty
// function restores the default. The test suite runs whole over another backend with it.
using DatabaseBackendMaker = std::function<std::unique_ptr<SqlBackend>(std::string_view)>;
void setDatabaseBackendMaker(DatabaseBackendMaker maker);
// True when something already stands at the location.
bool databaseLocationExists(std::string_view location);

}  // namespace lf
