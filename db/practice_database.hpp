// Creation of a stand-alone practice database: the schema, the settings of the stand-alone
// host, and the seed rows a host needs before any import can run (the firm, a first user,
// the one-row tables, a client category, the main address-book category and the
// personal-tax categories of recent years).
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "db/database.hpp"

namespace lf {

struct PracticeSeed {
  int countryMode = 1;    // 1 Canada, 2 United States
  int provinceIndex = 3;  // Ontario
  long currentYear = 0;   // 0: this year
  std::string firmName = "Maple Ridge Accounting";
  std::string userName = "admin";
};

// The special code of the main address-book category, by which the stand-alone host knows it.
inline constexpr std::string_view kAddressBookCode = "AddressBook";

// Creates every table of the practice database and the host settings table on an empty database.
void createPracticeTables(Database& db);
// Writes the seed rows and settings, through the database service.
void seedPracticeDatabase(DatabaseService& db, const PracticeSeed& seed);
// A new practice database file (refuses an existing one), created and seeded.
std::unique_ptr<Database> createPracticeDatabase(std::string_view path, const PracticeSeed& seed);

// Throws Failure naming the first table or column of the practice schema (HostSettings
// included) that the database lacks, so that a database another program made, or one with a
// column dropped, is refused before any work rather than failing row by row. Reads only.
void checkPracticeTables(Database& db);

// Settings of the stand-alone host (country, province, current user and years, categories,
// sort orders), kept in the table HostSettings as name and text value.
std::string readHostSetting(DatabaseService& db, std::string_view name,
                            std::string_view fallback = {});
void writeHostSetting(DatabaseService& db, std::string_view name, std::string_view value);

}  // namespace lf
