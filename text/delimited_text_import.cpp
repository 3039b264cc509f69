// The shared part of the text imports.
#include "text/delimited_text_import.hpp"

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"

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

}  // namespace lf
