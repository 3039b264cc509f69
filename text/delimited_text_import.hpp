// What the personal and the business text import have in common: the shared reader, the
// grid it fills, the column assignments over the field catalogue, and the mixed-case
// operation on the grid. The two classes differ in their list type and their labels.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "text/column_mapping.hpp"
#include "text/delimited_file_reader.hpp"
#include "text/import_grid.hpp"
#include "text/row_write_group.hpp"

namespace lf {

class DelimitedTextImport {
 public:
  // `className` labels the procedures; `listType` is the catalogue's list type (3 personal,
  // 2 business).
  DelimitedTextImport(std::string className, std::int32_t listType);
  virtual ~DelimitedTextImport() = default;
  DelimitedTextImport(const DelimitedTextImport&) = delete;
  DelimitedTextImport& operator=(const DelimitedTextImport&) = delete;

  // The reader's properties (fileLocation, strDelimiter, strTextQualifier,
  // firstRowFieldNames, checkRemoveCaps) are set on it directly.
  DelimitedFileReader reader;
  ImportGrid grid;
  ColumnMapping mapping;

  // Builds the drop-down's field list from the catalogue; assignments are dropped.
  void createFieldList();
  // The mixed-case operation on every data cell of the grid.
  void changeCaps();
  // Loads the file into the grid (measure, fill, every row selected) and builds the field
  // list: what the wizard does when the file, delimiter, qualifier or first-row option
  // changes. No assignment survives it.
  void loadFile();

  // Told before each selected row of an import: its place among the selected rows (from 1)
  // and their number, so that a front end can show "row i of n".
  std::function<void(long row, long rows)> rowProgress;

  // The key of a data column ("NOT ASSIGNED" when none).
  std::string columnKey(int column) const { return mapping.columnKey(column); }

 protected:
  std::string label(const char* procedureName) const;
  // The loop of ImportData: the drop-down's loading and refreshing paused while it runs,
  // `prepare` first (year and category), then each selected data row through `importRow` as
  // one record of `counters`, the event pump after each. Answers whether the loop ran to its
  // end; nothing runs when the practice database is not usable.
  bool importSelectedRows(
      const std::function<void()>& prepare,
      const std::function<RowOutcome(int row, std::string& skipReason)>& importRow,
      StageCounters* counters, const std::function<void()>& eventPump);

 private:
  std::string className_;
  std::int32_t listType_;
};

}  // namespace lf
