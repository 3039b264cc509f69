// The reader of delimited client files that the personal and the business text import share
// (they differ only in the labels of their procedures). It guesses the delimiter, measures
// the file and loads it into an ImportGrid; nothing of it depends on a screen.
//
// The format is only what these rules make of a file: no header definition, no fixed column
// order. Lines end at LF or CR LF. A field runs to the delimiter; a field that starts with
// the qualifier runs to the next qualifier, over line ends if need be (joined by CR LF), and
// whatever follows the closing qualifier up to the delimiter is added as it stands, so there
// is no escape for the qualifier: "a""b",c reads a"b" and c. Every field is trimmed of blanks,
// inside quotes too. A quoted field still open at the end of the file is dropped. The widest
// line decides the column count; an empty line gives an empty row.
//
// The file's bytes are outside text (base/text_encoding.hpp): invalid UTF-8 is read as
// Windows-1252, NUL is dropped, and a UTF-8 byte-order mark at the start is dropped.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "text/import_grid.hpp"

namespace lf {

class DelimitedFileReader {
 public:
  // `className` names the owning class in the procedure labels ("clsImportPersonalTextFile").
  explicit DelimitedFileReader(std::string className);

  std::string fileLocation;
  std::string strDelimiter = ",";       // one character; a longer text never matches (intended)
  std::string strTextQualifier = "\"";  // one character, or empty for none
  bool firstRowFieldNames = false;
  bool checkRemoveCaps = false;
  bool countOnly = true;
  ImportGrid* gridControl = nullptr;
  // Served after every field, so that a front end stays alive on large files.
  std::function<void()> eventPump;

  // Counts commas, tabs and semicolons over the whole file (quoted ones too) and sets
  // strDelimiter: the comma, the tab or the semicolon when it is strictly the most frequent,
  // otherwise (every tie, an empty or missing file) the comma.
  void determineDelimiter(std::string& foundDelimiter);

  // Clears the grid, measures the file and sizes the grid: the columns of the widest line
  // plus the mark column, rows 0 and 1 (captions "Column N", assignments "Not Assigned")
  // and the first data row. Leaves countOnly True.
  void setupFlexGrid();

  // Reads the file: with countOnly only measures, otherwise fills the grid (which
  // setupFlexGrid sized). columnCount receives the widest line's number of fields.
  void populateData(long& columnCount);

  // setupFlexGrid, then the filling pass, then every data row marked selected.
  void loadGrid();

  // Reads a quoted field from `position`, just after an opening qualifier or at the start of
  // a continuation line, appending to `field` up to the closing qualifier. `closed` tells
  // whether the qualifier was found on this line; `position` is left past it.
  static void getEnclosedString(bool& closed, std::string& field, std::string_view line,
                                size_t& position, std::string_view qualifier);

  // The file's text by the outside-text rule, without a byte-order mark; empty for a file that
  // does not exist. Throws Failure when the file exists but cannot be read, or is larger than
  // kMaxFileBytes.
  static std::string readFileText(const std::string& path);

  // The largest client file read: its text, the grid's cells and an import's work stay within
  // a few times this.
  static constexpr std::uintmax_t kMaxFileBytes = std::uintmax_t{256} << 20;
  // The one-line message for a file over kMaxFileBytes.
  static std::string tooLargeMessage(const std::string& path);

 private:
  std::string label(const char* procedureName) const;
  // The file's text, read once for the delimiter guess and both passes of the same unchanged
  // file; the guess reads it afresh and the filling pass releases it.
  const std::string& fileText();
  void releaseText();
  // The file's text as fileText() gives it, moved out of the reader.
  std::string takeFileText();

  struct FileStamp {
    std::string path;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written{};
    bool operator==(const FileStamp&) const = default;
  };

  std::string className_;
  std::string text_;
  bool textHeld_ = false;
  FileStamp textStamp_;
  long measuredLines_ = 0;  // lines of the last measuring pass, to size the grid
};

}  // namespace lf
