// The column assignments the CANTAX and Dr. Tax wizards give their text importer
// (setupMappedColumns): for each column of the modified file, in its order, the field it is
// imported into and that field's maximum length. The modified file is loaded with its first
// line as captions, so column n of the table is data column n of the grid.
#pragma once

#include <string>
#include <vector>

namespace lf {

class DelimitedTextImport;

struct MappedColumn {
  const char* caption;  // the modified file's column name
  const char* field;    // the catalogue's database field, or "Not Assigned"
  int maxLength;
};

const std::vector<MappedColumn>& cantaxT1MappedColumns();
const std::vector<MappedColumn>& cantaxT2PlusMappedColumns();
const std::vector<MappedColumn>& drTaxT1MappedColumns();
const std::vector<MappedColumn>& drTaxT2MappedColumns();

// Assigns the table's fields to the grid's columns 1, 2, ... of the loaded import; columns
// beyond the table stay "Not Assigned". Answers the fields the import's list does not hold
// (none for a complete practice database).
std::vector<std::string> setupMappedColumns(DelimitedTextImport& import,
                                            const std::vector<MappedColumn>& columns);

}  // namespace lf
