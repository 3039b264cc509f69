// The practice database schema: every table and column of Ledgerfolio's practice database that
// the import component reads or writes, as SQLite statements.
//
// The host owns the real practice database; a stand-alone build (the lfimport program, the
// tests) creates an empty one from these statements. Declared types follow one convention,
// because the database service converts values by the declared type of a column:
// INTEGER for Long and Short values and IDs, INTEGER PRIMARY KEY for a key the database gives
// on insert (or a one-to-one key the code sets), BOOLEAN (stored 1/0, default 0), DATETIME
// (text "YYYY-MM-DD HH:MM:SS"), CURRENCY for money, DOUBLE for other numbers, and
// TEXT COLLATE NOCASE for text, since the host compares text case-insensitively.
// Column and table names are the system's own, misspellings included (MaritialStatus,
// SelfEmplomentIncome, ComapnyNum).
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lf {

// The CREATE TABLE and CREATE INDEX statements of the practice database, tables first in
// groups by area, each table followed by its indexes. Each element is exactly one statement;
// run them in order on an empty database.
const std::vector<std::string>& practiceSchemaStatements();

// The names of the tables those statements create, in creation order.
const std::vector<std::string>& practiceTableNames();

// Each table with the names of its columns, in creation order.
const std::vector<std::pair<std::string, std::vector<std::string>>>& practiceTableColumns();

}  // namespace lf
