// Export databases that other practice systems write as Access files (Jet 3 and Jet 4 ".mdb",
// ACE ".accdb", the converted ".lfd" files) are read into a temporary SQLite copy, on which
// the sync engines then run their Access-dialect statements unchanged.
//
// The copy keeps every user table with its exact table and column names (blanks and brackets
// included), its row count and the column types as declared types the database service reads
// back as the same kinds: whole numbers as integers, Currency exactly as written (four
// decimals), Single and Double as numbers, Boolean as 0 or 1, DateTime as dates (any serial
// within the date range, before 1900 included), Text and Memo as text, OLE and binary as blobs.
//
// The Access file is read by libmdb in a child process: a damaged file can make that reader
// crash or loop, which must end in one clear message, never in the end of the run. The copy
// lives under a fresh name in the temporary folder and is deleted when its owner ends; a killed
// run leaves at most an unused file that nothing looks for again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lf {

enum class SourceFileKind { Missing, Folder, Empty, SQLite, Jet3, Jet4, ACE, Other };

// What a file is, told by its first bytes and never by its name.
SourceFileKind sourceFileKind(const std::string& path);
// "SQLite", "Access (Jet 3)", "Access (Jet 4)", "Access (ACE)", or a word for what it is not.
std::string sourceFileKindName(SourceFileKind kind);
inline bool isAccessFile(SourceFileKind kind) {
  return kind == SourceFileKind::Jet3 || kind == SourceFileKind::Jet4 ||
         kind == SourceFileKind::ACE;
}

// One column of a source table: its name, its type as the source names it ("Long Integer",
// "Currency" for Access; the declared type for SQLite) and the declared type in SQLite.
struct SourceColumn {
  std::string name;
  std::string type;
  std::string declaredType;
};

struct SourceTable {
  std::string name;
  std::vector<SourceColumn> columns;
  std::int64_t rows = 0;
};

// Reads the Access file at accessPath into a new SQLite database at sqlitePath (which must
// not exist) and returns what was copied. Throws Failure with one line naming the file when it
// is not an Access file, cannot be read (damaged or encrypted), or the reader gives up; then
// nothing is left at sqlitePath. timeoutSeconds bounds the reader (0: no bound).
std::vector<SourceTable> copyAccessFileToSqlite(const std::string& accessPath,
                                                const std::string& sqlitePath,
                                                int timeoutSeconds = 600);

// The tables of any source file (SQLite, or Access through a copy), for `source inspect`.
// Throws Failure as SourceFileCopy does.
std::vector<SourceTable> inspectSourceFile(const std::string& path);

// A source file ready for the database service: a SQLite file is used where it is; an Access
// file is copied into a temporary SQLite file that is deleted with this object.
class SourceFileCopy {
 public:
  // Throws Failure naming the file when it is missing, a folder, empty, neither SQLite nor
  // Access, or an Access file that cannot be read. `what` names the file in messages
  // ("the TPS export").
  explicit SourceFileCopy(const std::string& path, const std::string& what = "the source file");
  ~SourceFileCopy();
  SourceFileCopy(const SourceFileCopy&) = delete;
  SourceFileCopy& operator=(const SourceFileCopy&) = delete;

  // The SQLite file to open: the source itself, or the temporary copy.
  const std::string& databasePath() const { return databasePath_; }
  SourceFileKind kind() const { return kind_; }
  bool isCopy() const { return isAccessFile(kind_); }
  // For an Access source, what was copied; empty for a SQLite source.
  const std::vector<SourceTable>& tables() const { return tables_; }

 private:
  SourceFileKind kind_;
  std::string databasePath_;
  std::vector<SourceTable> tables_;
};

}  // namespace lf
