// Checking the record identifiers that the merge commands take, so that an unknown one is a
// clear error rather than an empty merge.
#pragma once

#include <cstdint>
#include <string>

#include "db/database_service.hpp"

namespace lf::cli {

// Throws std::runtime_error "no <what> with ID n" when the table has no such row.
void requireRow(DatabaseService& db, const std::string& table, const std::string& keyColumn,
                std::int32_t id, const std::string& what);

}  // namespace lf::cli
