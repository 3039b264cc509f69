// The database service's connection: connecting through the backend chosen by location, the
// cache of prepared statements, and the write groups with their COMMIT and rollback.
#include "base/error_service.hpp"
#include "base/failure.hpp"
#include "db/database_factory.hpp"
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

Database::Impl::~Impl() {
  try {
    storeAndDisconnect();
  } catch (const DatabaseFailure& failure) {
    if (errors == nullptr) return;
    errors->setError({failure.number(), failure.what(), "Ledgerfolio.exe-Database-close"});
    errors->reportError();
  }
}

// Stores the pending writes and commits an open group, then disconnects; a write that
// cannot be stored is rolled back with its group and raised after the disconnect.
void Database::Impl::storeAndDisconnect() {
  if (!connected) return disconnect();
  try {
    if (groupDepth > 0)
      commitGroup();
    else
      flushWrites();
  } catch (const DatabaseFailure&) {
    disconnect();
    throw;
  }
  disconnect();
}

// Ends the outermost group with COMMIT. A COMMIT that fails (or the flush of the pending
// writes before it) is rolled back and raised; either way no group is open afterwards.
void Database::Impl::commitGroup() {
  try {
    flushWrites();
    db().commit();
  } catch (const DatabaseFailure&) {
    groupDepth = 0;
    rollBack();
    throw;
  }
  groupDepth = 0;
}

// Undoes the open transaction. What the open recordsets read or wrote inside it may be
// gone, so each reads its rows again when next used, as if opened now.
void Database::Impl::rollBack() {
  pendingWrite.reset();
  db().rollback();
  knownMax.clear();
  knownMaxStamp = -1;
  lastReserved.clear();
  forgetKeptResults();
  noteUntrackedChanges();
  for (auto& [handle, r] : recordsets) forget(*r);
}

void Database::Impl::forget(Recordset& r) {
  r.rows.clear();
  r.cursor = 0;
  r.currentDeleted = false;
  r.findColumns.clear();
  r.findKey.clear();
  r.indexes.clear();
  r.keyMaps.clear();
  r.keyMapsBuilt = false;
  r.addedHere.clear();
  r.addedRow.reset();
  r.addedKey = 0;
  r.onAddedRow = false;
  r.adding = false;
  r.pending.clear();
  r.hasReservedKey = false;
  r.loaded = false;
  for (size_t slot = 0; slot < r.snapshotMax.size(); ++slot)
    r.snapshotMax[slot] = maxKey(tableInfo(r.translated.tables[slot].table));
}

void Database::Impl::disconnect() {
  pendingWrite.reset();
  recordsets.clear();
  shapes.clear();
  shapeOrder.clear();
  numberedShapes.clear();
  exactShapes.clear();
  statements.clear();
  tables.clear();
  readBackLayouts.clear();
  rowKeys.clear();
  lastReserved.clear();
  knownMax.clear();
  knownMaxStamp = -1;
  forgetKeptResults();
  groupDepth = 0;
  if (backend) backend->disconnect();
  connected = false;
}

void Database::Impl::requireOpen() {
  if (!connected) throw DatabaseFailure("The connection to the database is not open.");
}

// Connects the backend at `path`, runs the open check, then lets the backend write.
void Database::Impl::connect(Database& owner) {
  storeAndDisconnect();
  failure = ConnectFailure::None;
  failureMessage.clear();
  if (!backendGiven) backend = databaseBackendFor(path);
  failure = db().connect(path, options, failureMessage);
  if (failure != ConnectFailure::None) return;
  connected = true;
  try {
    if (openCheck) openCheck(owner);
  } catch (const DatabaseFailure& refused) {
    disconnect();
    failure = ConnectFailure::Other;
    failureMessage = refused.what();
    return;
  } catch (...) {
    disconnect();  // refused by the open check
    throw;
  }
  failure = db().finishConnect(failureMessage);
  if (failure != ConnectFailure::None) disconnect();
}

// Runs a statement of the backend, after the pending writes.
void Database::Impl::exec(std::string_view sql) {
  flushWrites();
  db().exec(sql);
}

SqlStatement& Database::Impl::cached(const std::string& sql) {
  flushWrites();
  auto it = statements.find(sql);
  if (it != statements.end()) {
    it->second->reset();
    return *it->second;
  }
  std::unique_ptr<SqlStatement> stmt;
  try {
    stmt = db().prepare(sql);
  } catch (const DatabaseFailure& failure) {
    throw DatabaseFailure("Cannot prepare " + sql + ": " + failure.what());
  }
  return *statements.emplace(sql, std::move(stmt)).first->second;
}

}  // namespace lf
