// The shared part of the text imports.
#include "text/delimited_text_import.hpp"

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"

namespace lf {

DelimitedTextImport::DelimitedTextImport(std::string className, std::int32_t listType)
    : reader(className), className_(std::move(className)), listType_(listType) {
  reader.gridControl = &grid;
}

std::string DelimitedTextImport::label(const char* procedureName) const {
  return "Ledgerfolio.exe-" + className_ + "-" + procedureName;
}

void DelimitedTextImport::createFieldList() {
  procedure(label("createFieldList"), [&] {
    mapping.createFieldList(listType_);
    mapping.clearAssignments(grid);
  });
}

void DelimitedTextImport::changeCaps() {
  procedure(label("changeCaps"), [&] {
    for (int row = kFirstDataRow; row < grid.rows(); ++row)
      for (int col = 1; col < grid.cols(); ++col)
        grid.setTextMatrix(row, col, GeneralUtilities::mixedCase(grid.textMatrix(row, col)));
  });
}

void DelimitedTextImport::loadFile() {
  reader.loadGrid();
  createFieldList();
}

bool DelimitedTextImport::importSelectedRows(
    const std::function<void()>& prepare,
    const std::function<RowOutcome(int row, std::string& skipReason)>& importRow,
    StageCounters* counters, const std::function<void()>& eventPump) {
  bool completed = false;
  ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
  auto pause = [dropDown](bool paused) {
    if (dropDown == nullptr) return;
    dropDown->setLoadingPaused(paused);
    dropDown->setRefreshPaused(paused);
  };
  RowWriteGroups rows(label("commitRows"), counters);
  procedure(label("ImportData"), [&] {
    pause(true);
    prepare();
    if (usablePracticeDatabase() == nullptr) return;
    long selected = 0, done = 0;
    if (rowProgress)
      for (int row = kFirstDataRow; row < grid.rows(); ++row) selected += grid.isRowSelected(row);
    for (int row = kFirstDataRow; row < grid.rows(); ++row) {
      if (!grid.isRowSelected(row)) continue;
      if (rowProgress) rowProgress(++done, selected);
      rows.importRow([&](std::string& skipReason) { return importRow(row, skipReason); });
      if (eventPump) eventPump();
    }
    rows.commit();
    completed = true;
  });
  // Rows held when the loop was left are committed: they are whole.
  rows.commit();
  pause(false);
  return completed;
}

}  // namespace lf
