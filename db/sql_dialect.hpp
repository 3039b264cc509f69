// The SQL dialects the statement translator writes: one per backend of the database service.
// SQLite today; another engine (PostgreSQL) would add its name here and its rules (date
// literals, booleans, keywords, the hidden row key) beside SQLite's in db/access_sql.cpp.
#pragma once

namespace lf {

enum class SqlDialect { SQLite };

}  // namespace lf
