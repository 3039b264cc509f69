// The delimited file reader: the delimiter guess, the two passes and the grid they leave.
#include "text/delimited_file_reader.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace lf {
namespace {

namespace fs = std::filesystem;

class DelimitedFileReaderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path = (fs::path(::testing::TempDir()) /
            ("reader_" + std::to_string(::getpid()) + "_" +
             ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".csv"))
               .string();
    reader.fileLocation = path;
    reader.gridControl = &grid;
  }
  void TearDown() override { fs::remove(path); }

  void write(const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
  std::string guess(const std::string& bytes) {
    write(bytes);
    std::string found;
    reader.determineDelimiter(found);
    EXPECT_EQ(found, reader.strDelimiter);
    return found;
  }
  // The data rows of the loaded grid, columns 1 onwards.
  std::vector<std::vector<std::string>> load(const std::string& bytes) {
    write(bytes);
    reader.loadGrid();
    std::vector<std::vector<std::string>> rows;
    for (int row = kFirstDataRow; row < grid.rows(); ++row) {
      rows.emplace_back();
      for (int col = 1; col < grid.cols(); ++col)
        rows.back().emplace_back(grid.textMatrix(row, col));
    }
    return rows;
  }
  using Rows = std::vector<std::vector<std::string>>;

  std::string path;
  ImportGrid grid;
  DelimitedFileReader reader{"clsImportPersonalTextFile"};
};

TEST_F(DelimitedFileReaderTest, DelimiterIsTheStrictlyMostFrequentElseComma) {
  EXPECT_EQ(guess("a\tb\tc,d\ne\tf\tg,h\n"), "\t");  // tabs and one comma per line
  EXPECT_EQ(guess("a\tb;c\nd\te;f\n"), ",");         // tabs and semicolons tie, no comma
  EXPECT_EQ(guess("a;b;c\n\"x,y\";z\n"), ";");
  EXPECT_EQ(guess("\"a,b,c\"\td\n"), ",");  // quoted commas count too
  EXPECT_EQ(guess(""), ",");
  // Long files are counted in blocks: a lead of one decides whichever block it falls in.
  std::string lines;
  for (int n = 0; n < 400; ++n) lines += "a;b\tc,d\n";
  EXPECT_EQ(guess(lines + ";"), ";");
  EXPECT_EQ(guess("\t" + lines), "\t");
  EXPECT_EQ(guess(lines.substr(0, 3000) + "," + lines.substr(3000)), ",");
  reader.fileLocation = path + ".missing";
  std::string found = "x";
  reader.strDelimiter = "\t";
  reader.determineDelimiter(found);
  EXPECT_EQ(found, ",");
}

TEST_F(DelimitedFileReaderTest, QuotedAndPlainFieldsReadAlike) {
  EXPECT_EQ(load("a,b\n\"a\",b\n\"a,b\",c\n"), (Rows{{"a", "b"}, {"a", "b"}, {"a,b", "c"}}));
}

TEST_F(DelimitedFileReaderTest, QualifierHasNoEscape) {
  // The text after the first closing qualifier is added as it stands.
  EXPECT_EQ(load("\"a\"\"b\",c\n"), (Rows{{"a\"b\"", "c"}}));
  EXPECT_EQ(load("\"\",x\n"), (Rows{{"", "x"}}));
}

TEST_F(DelimitedFileReaderTest, QuotedFieldOverLinesIsJoinedByCrLf) {
  EXPECT_EQ(load("1,\"first line\nsecond line\",3\n4,5,6\n"),
            (Rows{{"1", "first line\r\nsecond line", "3"}, {"4", "5", "6"}}));
  // A qualifier opening the next line closes the field at once, with no line break added.
  EXPECT_EQ(load("\"a\n\",b\n"), (Rows{{"a", "b"}}));
}

TEST_F(DelimitedFileReaderTest, UnclosedQuotedFieldAtTheEndIsDropped) {
  EXPECT_EQ(load("a,b\nc,\"never closed\nstill open\n"), (Rows{{"a", "b"}, {"c", ""}}));
  // The fields before it stay, and the grid is wide enough for them.
  EXPECT_EQ(load("x\na,b,\"open\n"), (Rows{{"x", ""}, {"a", "b"}}));
  EXPECT_EQ(grid.cols(), 3);
}

TEST_F(DelimitedFileReaderTest, WithoutQualifierTheQuotesStay) {
  reader.strTextQualifier = "";
  EXPECT_EQ(load("\"a\",\"b,c\"\n"), (Rows{{"\"a\"", "\"b", "c\""}}));
}

TEST_F(DelimitedFileReaderTest, FieldsAreTrimmedInsideQuotesToo) {
  EXPECT_EQ(load("  a  ,\"  b  \",  \" c\"  \n"), (Rows{{"a", "b", "\" c\""}}));
}

TEST_F(DelimitedFileReaderTest, WidestLineDecidesColumnsAndEmptyLinesGiveEmptyRows) {
  EXPECT_EQ(load("a\n\nb,c,d\ne,f,\n"),
            (Rows{{"a", "", ""}, {"", "", ""}, {"b", "c", "d"}, {"e", "f", ""}}));
  EXPECT_EQ(grid.cols(), 4);
  EXPECT_EQ(grid.textMatrix(kCaptionRow, 3), "Column 3");
  EXPECT_EQ(grid.textMatrix(kAssignmentRow, 1), "Not Assigned");
  for (int row = kFirstDataRow; row < grid.rows(); ++row) EXPECT_TRUE(grid.isRowSelected(row));
  long columns = 0;
  reader.countOnly = true;
  reader.populateData(columns);
  EXPECT_EQ(columns, 3);
}

TEST_F(DelimitedFileReaderTest, MeasuringCountsFieldsAsTheFillingPassSplitsThem) {
  // A last delimiter opens no field; a quoted delimiter splits nothing; a stray carriage
  // return ends a field.
  EXPECT_EQ(load(",\n\"a,b\",c\n,,x\r\ny\rz,w\n"),
            (Rows{{"", "", ""}, {"a,b", "c", ""}, {"", "", "x"}, {"y", "z", "w"}}));
  EXPECT_EQ(grid.cols(), 4);
  reader.strTextQualifier = "";
  EXPECT_EQ(load("\"a,b\"\n"), (Rows{{"\"a", "b\""}}));
  EXPECT_EQ(grid.cols(), 3);
}

TEST_F(DelimitedFileReaderTest, FirstRowNamesBecomeCaptionsAndAreNotData) {
  reader.firstRowFieldNames = true;
  EXPECT_EQ(load("First Name,Last Name\r\nJohn,Smith\r\nMary,Jones\r\n"),
            (Rows{{"John", "Smith"}, {"Mary", "Jones"}}));
  EXPECT_EQ(grid.textMatrix(kCaptionRow, 1), "First Name");
  EXPECT_EQ(grid.textMatrix(kCaptionRow, 2), "Last Name");
}

TEST_F(DelimitedFileReaderTest, MixedCaseOptionAppliesToEveryField) {
  reader.checkRemoveCaps = true;
  EXPECT_EQ(load("JOHN SMITH,o'brien\n"), (Rows{{"John Smith", "O'Brien"}}));
}

TEST_F(DelimitedFileReaderTest, DelimiterOfMoreThanOneCharacterNeverSplits) {
  reader.strDelimiter = "::";
  EXPECT_EQ(load("a::b\n"), (Rows{{"a::b"}}));
  reader.strDelimiter = "¦";
  EXPECT_EQ(load("é¦ü\n"), (Rows{{"é", "ü"}}));
}

TEST_F(DelimitedFileReaderTest, BytesAreOutsideTextAndTheByteOrderMarkIsDropped) {
  EXPECT_EQ(load("\xEF\xBB\xBFName,City\n"), (Rows{{"Name", "City"}}));
  // Windows-1252 bytes: "Hélène" and "Québec"; NUL dropped.
  EXPECT_EQ(load("H\xE9l\xE8ne,Qu\xE9"
                 "bec\n"),
            (Rows{{"Hélène", "Québec"}}));
  EXPECT_EQ(load(std::string("a\0b,c\n", 6)), (Rows{{"ab", "c"}}));
}

TEST_F(DelimitedFileReaderTest, StrayCarriageReturnEndsAFieldAndIsDropped) {
  EXPECT_EQ(load("a\rb,c\n\rd,e\n"), (Rows{{"a", "b", "c"}, {"d", "e", ""}}));
  reader.strDelimiter = "::";
  EXPECT_EQ(load("x::y\rz\n"), (Rows{{"x::y", "z"}}));
}

TEST_F(DelimitedFileReaderTest, EachReadingSeesTheFileAsItIsThen) {
  write("a;b;c\n");
  std::string found;
  reader.determineDelimiter(found);
  EXPECT_EQ(found, ";");
  // The file changes after the guess: the passes read the new text.
  write("1;2\n3;4\n5;6\n");
  reader.loadGrid();
  EXPECT_EQ(grid.cols(), 3);
  EXPECT_EQ(grid.dataRowCount(), 3);
  EXPECT_EQ(grid.textMatrix(4, 2), "6");
  // A new guess reads the file again.
  write("a\tb\n");
  reader.determineDelimiter(found);
  EXPECT_EQ(found, "\t");
}

TEST_F(DelimitedFileReaderTest, FileOverTheLimitIsRefusedUnread) {
  // A sparse file: its size is over the limit without a byte written.
  write("");
  fs::resize_file(path, DelimitedFileReader::kMaxFileBytes + 1);
  try {
    DelimitedFileReader::readFileText(path);
    ADD_FAILURE() << "no failure";
  } catch (const std::exception& failure) {
    EXPECT_NE(std::string(failure.what()).find("larger than 256 MB"), std::string::npos)
        << failure.what();
    EXPECT_NE(std::string(failure.what()).find(path), std::string::npos);
  }
}

TEST_F(DelimitedFileReaderTest, MissingFileGivesAnEmptyGrid) {
  reader.fileLocation = path + ".missing";
  reader.loadGrid();
  EXPECT_EQ(grid.cols(), 1);
  EXPECT_EQ(grid.dataRowCount(), 1);
}

}  // namespace
}  // namespace lf
