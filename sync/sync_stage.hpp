// A stage of a sync as data: what drives it, how a row is keyed and looked up, what makes the
// Ledgerfolio record, what the progress dialog and the run report call it. SyncEngine::runStage
// runs the steps every stage shares; a source describes its stages with this and a few hooks.
//
// The steps, per driving row: read the key (blank: skipped), the row filter, the look-up of
// the key in the cross-reference (or through client matching), the only-new check, the
// creator with the known Ledgerfolio ID or -1, the cross-reference save, the after-save hook;
// then the progress step and two event pumps. Each row is one record of the engine: written
// whole, counted once in the report with the reason of a skip or failure.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sync/cross_reference.hpp"

namespace lf {

class DatabaseService;
class KeyList;

// The source record a stage has in hand: the driving recordset's current row (handle 0 for a
// stage driven by a key list) and its key.
struct SourceRow {
  DatabaseService& source;
  std::int32_t handle;
  const std::string& key;
  // The column's text, empty when blank.
  std::string text(std::string_view column) const;
};

// What a stage did with one record, and why when it skipped or failed it.
struct RecordOutcome {
  enum Kind { Created, Updated, Skipped, Failed };
  Kind kind = Skipped;
  std::string reason;
};

// How a client stage finds the record of a source client: through the cross-reference and,
// for a client not there yet, through the duplicate finders (SyncEngine::matchClient).
enum class ClientRole {
  Company,          // a business client
  ContactOfClient,  // a personal client
  ContactOfContact  // a contact of a business client
};

struct SyncStage {
  std::string reportName{};     // the stage's name in the run report: "time entries"
  std::string procedureName{};  // the stage's operation: "importTPSTimeEntries"

  // The driving rows: a source recordset scanned from the start (the handle is read when the
  // stage runs; a closed one has nothing to read), or a key list of the wizard.
  const std::int32_t* rows = nullptr;
  KeyList* keys = nullptr;
  // The key of a driving row; two or more columns are joined by "," (the client-ID record).
  std::vector<std::string> keyColumns{};
  // Set where no column keys a row (a prepared table of plain rows): the key made from the
  // driving row in hand, in the place of keyColumns.
  std::function<std::string(DatabaseService& source, std::int32_t rows)> keyOfRow{};

  CrossReferenceKind crossReference = CrossReferenceKind::Docket;
  // Set for client stages: the look-up goes through client matching.
  std::optional<ClientRole> clientMatch{};
  // Set where the cross-reference cannot tell the record (work codes kept in two tables whose
  // IDs share one cross-reference column): the look-up of the key's Ledgerfolio ID, -1 when
  // there is none.
  std::function<long(const std::string& key)> findKnown{};
  // False where known rows are synchronised again on every run (staff, paragraphs, codes).
  bool onlyNewEntriesApply = true;
  // A reason to leave the row alone, or nothing to go on.
  std::function<std::optional<std::string>(const SourceRow&)> rowFilter{};

  // "Importing TPS Time Entry {} of {}": shown per row with the row's number and the total;
  // empty for stages without such a caption.
  std::string progressCaption{};
  // Whether a row advances the progress bar (the rows counted in the run's total).
  bool stepsProgress = true;
  // The look-up or the creator moves in the driving recordset: its position is kept around
  // both.
  bool keepsPosition = false;

  // Work before the first row (the personal clients' category).
  std::function<void()> beforeRows{};
  // Makes or rewrites the Ledgerfolio record of the key; `known` is its ID or -1. Answers the
  // ID to keep in the cross-reference; one that is no record (0 or less) is a skip, whose
  // reason the creator gives by SyncEngine::skipBecause.
  std::function<long(const std::string& key, long known)> create{};
  // Work of the record after its cross-reference is saved (a company's contacts).
  std::function<void(const std::string& key, long ledgerfolioID)> afterSave{};
  // Work after the last row, given the number of rows that reached their creator.
  std::function<void(long reachedCreator)> afterRows{};
};

// A stage over a source recordset keyed by one column, with the shared steps as they are.
inline SyncStage scanStage(std::string reportName, std::string procedureName,
                           const std::int32_t* rows, std::string keyColumn,
                           CrossReferenceKind crossReference) {
  return {.reportName = std::move(reportName),
          .procedureName = std::move(procedureName),
          .rows = rows,
          .keyColumns = {std::move(keyColumn)},
          .crossReference = crossReference};
}

// A client stage over a key list of the wizard, looked up through client matching.
inline SyncStage clientStage(std::string reportName, std::string procedureName, KeyList* keys,
                             CrossReferenceKind crossReference, ClientRole role) {
  return {.reportName = std::move(reportName),
          .procedureName = std::move(procedureName),
          .keys = keys,
          .crossReference = crossReference,
          .clientMatch = role};
}

}  // namespace lf
