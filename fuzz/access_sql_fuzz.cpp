// Statements of any bytes through the Access-dialect translator. What it accepts must reach
// SQLite as exactly one statement with exactly the parameters the translation counted (none in
// the plain translation), checked by preparing both translations against the practice schema.
// A translation SQLite cannot prepare (an unknown column, a syntax error) proves nothing either
// way and is passed over.
#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.hpp"
#include "db/access_sql.hpp"
#include "db/practice_schema.hpp"

namespace {

sqlite3* schemaDatabase() {
  static sqlite3* db = [] {
    sqlite3* d = nullptr;
    sqlite3_open(":memory:", &d);
    for (const std::string& statement : lf::practiceSchemaStatements())
      sqlite3_exec(d, statement.c_str(), nullptr, nullptr, nullptr);
    // The tables of the translator's tests and of the source exports' statements.
    sqlite3_exec(d,
                 "CREATE TABLE T (A, B, C, D, N, X, Name, Invoiced);"
                 "CREATE TABLE ClientContacts (ClientID, \"Primary\", ContactID);",
                 nullptr, nullptr, nullptr);
    return d;
  }();
  return db;
}

void expectOneStatement(const std::string& sql, std::size_t parameters) {
  sqlite3* db = schemaDatabase();
  sqlite3_stmt* stmt = nullptr;
  const char* tail = nullptr;
  if (sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &stmt, &tail) !=
      SQLITE_OK) {
    sqlite3_finalize(stmt);
    return;
  }
  if (stmt == nullptr) std::abort();  // nothing to run: the translator let no statement by
  if (static_cast<std::size_t>(sqlite3_bind_parameter_count(stmt)) != parameters) std::abort();
  sqlite3_finalize(stmt);
  sqlite3_stmt* second = nullptr;
  const int rest = static_cast<int>(sql.size() - static_cast<std::size_t>(tail - sql.c_str()));
  if (sqlite3_prepare_v2(db, tail, rest, &second, nullptr) != SQLITE_OK || second != nullptr)
    std::abort();  // something after the statement
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view sql(reinterpret_cast<const char*>(data), size);
  for (bool rowids : {true, false}) {
    lf::TranslatedSql t;
    try {
      t = lf::translateAccessSql(sql, lf::SqlDialect::SQLite, rowids);
    } catch (const lf::DatabaseFailure&) {
      return 0;
    }
    expectOneStatement(t.sql, 0);
    expectOneStatement(t.parameterizedSql, t.parameters.size());
  }
  return 0;
}
