// Field maps: which source column (or columns) fills which target column, and through which
// transform. A source declares each map as a constant array, so that a reader sees the map as
// a table and a test can check every column against the export's and the practice schema.
//
// A transform takes the texts of up to three source columns (blank ones empty) and answers
// the target's value; a value that is blank is not written, so a blank source field keeps the
// target's value.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace lf {

class DatabaseService;

using FieldValues = std::array<std::string, 3>;
using FieldTransform = std::string (*)(const FieldValues& values);

struct FieldMapping {
  std::array<std::string_view, 3> source;  // the columns read; unused ones empty
  std::string_view target;
  FieldTransform transform = nullptr;  // none: the first column's text as it is
};

// A map with the tables it reads and writes, for the schema checks.
struct FieldMap {
  std::string_view sourceTable;
  std::string_view targetTable;
  std::span<const FieldMapping> fields;
};

// Reads the map's source columns from the current row of `from` and writes every value that
// is not blank with setField to the current row of `to`.
void writeFields(DatabaseService& source, std::int32_t from, DatabaseService& db, std::int32_t to,
                 std::span<const FieldMapping> map);

// The transforms the sources share.
namespace fields {
// A telephone from area code, number and extension (composeTelephone).
std::string telephone(const FieldValues& v);
// The first and the second of three e-mail addresses as sortEmailAddresses orders them.
std::string firstEmail(const FieldValues& v);
std::string secondEmail(const FieldValues& v);
// A trimmed text that is a valid date, as the database takes it; empty otherwise.
std::string validDate(const FieldValues& v);
// The text trimmed.
std::string trimmed(const FieldValues& v);
// Nickname and last name joined by a blank when both are there; else first and last name
// when both are there (columns: nickname, first name, last name).
std::string displayName(const FieldValues& v);
}  // namespace fields

}  // namespace lf
