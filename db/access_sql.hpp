// Translation of the Access-dialect statements of the system into the dialect of a backend.
//
// The lexing is shared by every dialect; what a dialect decides is how a date, a boolean, a
// column named by a keyword and the hidden row key are written. For SQLite: #date# literals
// (ISO, m/d/yyyy and "mmmm d, yyyy" forms, with an optional time) into 'YYYY-MM-DD HH:MM:SS'
// text; True/False into 1/0. For every dialect: [bracketed] and `quoted` names and
// double-quoted strings; Like patterns with * and ?; & concatenation; DISTINCTROW; the
// closing ";". A second statement after a ";" is refused, so that a value holding
// "'; DROP TABLE" can make a statement fail but never run another one.
//
// The translator is the one gate between statement text and SQLite, so it splits the text
// into tokens exactly where SQLite does: quotes, brackets, backticks and numbers end where
// SQLite ends them, and "--" and "/* */" comments are white space (they are left out of the
// translation). What SQLite would read as something the translator does not know is refused:
// parameter markers (? : @ $), blob literals, a number run into a name, an unclosed comment,
// a character SQLite has no token for, NUL. SQLite therefore sees one statement with exactly
// the parameters counted here.
//
// For a plain SELECT the translation also names the tables of the FROM clause and appends the
// key columns of each table to the select list (its rowid unless told otherwise), so that the
// recordset can write its rows back and keep its keyset.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "db/sql_dialect.hpp"

namespace lf {

struct FromTable {
  std::string table;  // as named in the statement
  std::string alias;  // the name to qualify its columns with (the table when no alias)
};

struct TranslatedSql {
  std::string sql;
  std::vector<FromTable> tables;  // in FROM order
  // When true, the last result columns are the keys of those tables, keyWidths[k] columns
  // for tables[k], in FROM order.
  bool keysAppended = false;
  std::vector<size_t> keyWidths;
  // The same statement with its literals as ? parameters, so that statements differing only
  // in their values share one prepared statement; the values in order.
  std::string parameterizedSql;
  struct Parameter {
    std::string text;
    bool number = false;
  };
  std::vector<Parameter> parameters;
};

// The key columns to append for a table of the FROM clause, as the dialect writes a column
// name ("rowid", "\"ContactID\""). Answering none, or throwing, leaves the statement without
// keys: its rows are read only.
using KeyColumnsOf = std::function<std::vector<std::string>(const std::string& table)>;

// Throws DatabaseFailure for a malformed statement (unterminated literal or comment, bad
// date, more than one statement, a token refused above). Without keyColumns, each table is
// keyed by the dialect's rowid.
TranslatedSql translateAccessSql(std::string_view accessSql, SqlDialect dialect,
                                 bool appendKeys = true, const KeyColumnsOf& keyColumns = {});

// Parses the text between # marks of a date literal (also used for date text written to
// DATETIME columns). Answers false when the text is no date.
bool parseSqlDateText(std::string_view text, std::string& isoOut);

}  // namespace lf
