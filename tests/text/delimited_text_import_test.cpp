// The shared part of the text imports: loading drops assignments, changeCaps.
#include "text/delimited_text_import.hpp"

#include "tests/text/text_import_test_support.hpp"
#include "text/cls_import_personal_text_file.hpp"

namespace lf {
namespace {

using DelimitedTextImportTest = testing::TextImportTest;

TEST_F(DelimitedTextImportTest, ReloadingKeepsNoAssignment) {
  clsImportPersonalTextFile import;
  load(import, "JOHN,SMITH\n");
  assign(import, {"FirstName", "LastName"});
  EXPECT_EQ(import.columnKey(2), "LASTNAME");
  import.reader.strDelimiter = ";";
  import.loadFile();
  EXPECT_EQ(import.grid.cols(), 2);
  EXPECT_EQ(import.columnKey(1), "NOT ASSIGNED");
  EXPECT_EQ(import.grid.textMatrix(kAssignmentRow, 1), "Not Assigned");
  EXPECT_TRUE(import.grid.isRowSelected(kFirstDataRow));
}

TEST_F(DelimitedTextImportTest, ChangeCapsTurnsEveryDataCellIntoMixedCase) {
  clsImportPersonalTextFile import;
  load(import, "FIRST NAME\nJOHN SMITH\nMARY-JANE O'BRIEN\n", true);
  import.changeCaps();
  EXPECT_EQ(import.grid.textMatrix(2, 1), "John Smith");
  EXPECT_EQ(import.grid.textMatrix(3, 1), "Mary-Jane O'Brien");
  EXPECT_EQ(import.grid.textMatrix(kCaptionRow, 1), "FIRST NAME");  // captions stay
}

}  // namespace
}  // namespace lf
