// A Bill4Time export of any values through the whole Bill4Time sync: the input's fields fill a
// small SQLite export (clients, contacts, time entries, invoices) and the sync runs every
// stage into a seeded in-memory practice database, staff from the time entries included.
// Whatever the fields hold (dates that are no dates, amounts of letters, IDs with quotes that
// break the rate statement, deleted or missing clients, 255 and more characters), the run
// ends with each row written, skipped or failed, never with a crash.
//
// Input: fields separated by '\n'; a field starting "i:" is stored as an integer, "r:" as a
// real, any other as text. Byte 0 chooses the date range type and whether it is used.
// The practice database is made anew every few hundred inputs so that it stays small.
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/module_state.hpp"
#include "cli/component_wiring.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "host/practice_host_services.hpp"
#include "sync/cls_import_bill4time_info.hpp"

namespace {

struct Practice {
  lf::Database db;
  std::unique_ptr<lf::PracticeLocale> locale;
  std::unique_ptr<lf::PracticeClientDropDown> dropDown;
};

std::unique_ptr<Practice> freshPractice() {
  auto pr = std::make_unique<Practice>();
  pr->db.createNew(":memory:");
  lf::createPracticeTables(pr->db);
  lf::PracticeSeed seed;
  seed.currentYear = 2025;
  lf::seedPracticeDatabase(pr->db, seed);
  pr->locale = std::make_unique<lf::PracticeLocale>(pr->db);
  pr->dropDown = std::make_unique<lf::PracticeClientDropDown>(pr->db);
  lf::ModuleState& state = lf::moduleState();
  state.DatabaseReference = &pr->db;
  state.LocaleReference = pr->locale.get();
  state.clientDropDownCtrlReference = pr->dropDown.get();
  return pr;
}

// The tables as the sample generator writes them.
constexpr const char* kSchema =
    "CREATE TABLE Clients (\"Client Id\", \"Client Name\", \"Client Status\", \"Account Mgr\","
    " \"Address Line 1\", \"Address Line 2\", \"Address Line 3\", City, State, \"Postal Code\","
    " Country, Phone, Fax, Email, \"Mobile Phone\");"
    "CREATE TABLE Contacts (\"Contact Id\", \"Client Id\", Status, \"First Name\", MI,"
    " \"Last Name\", \"Full Name\", \"Address Line 1\", \"Address Line 2\", \"Address Line 3\","
    " City, State, PostalCode, Country, Phone, \"Home Phone\", Mobile, Fax, Department, Email,"
    " \"Alt Email\");"
    "CREATE TABLE Invoices (\"Invoice Id\", \"Client Id\", \"Invoice Date\","
    " \"Invoice Labor Total\", \"Invoice Expense Total\", \"Invoice Discount Amount\","
    " \"Invoice Total\", \"Paid Status\");"
    "CREATE TABLE TimeEntries (\"Entry ID\", \"Client Id\", User, \"User Id\", Activity,"
    " \"Internal Description\", \"Public Description\", Billable, \"Entry Date\","
    " \"Start Time\", \"Labor Hours\", \"Billable Hours\", Rate, Status, \"Invoice Id\");";

struct Table {
  const char* name;
  int columns;
  int rows;
};
constexpr Table kTables[] = {
    {"Clients", 15, 3}, {"Contacts", 21, 2}, {"Invoices", 8, 2}, {"TimeEntries", 15, 3}};

// Fills the tables row by row from the fields, in order; missing fields are NULL.
void writeExport(const std::string& path, const std::vector<std::string_view>& fields) {
  std::filesystem::remove(path);
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) std::abort();
  // One transaction, unsynced: the file lives only for this input.
  sqlite3_exec(db, "PRAGMA synchronous=OFF; PRAGMA journal_mode=OFF; BEGIN;", nullptr, nullptr,
               nullptr);
  if (sqlite3_exec(db, kSchema, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
  size_t next = 0;
  for (const Table& table : kTables) {
    std::string sql = std::string("INSERT INTO ") + table.name + " VALUES (";
    for (int c = 0; c < table.columns; ++c) sql += c == 0 ? "?" : ", ?";
    sql += ");";
    for (int r = 0; r < table.rows; ++r) {
      sqlite3_stmt* st = nullptr;
      sqlite3_prepare_v2(db, sql.c_str(), -1, &st, nullptr);
      for (int c = 1; c <= table.columns; ++c, ++next) {
        if (next >= fields.size()) continue;
        const std::string value(fields[next]);
        if (value.rfind("i:", 0) == 0)
          sqlite3_bind_int64(st, c, std::strtoll(value.c_str() + 2, nullptr, 10));
        else if (value.rfind("r:", 0) == 0)
          sqlite3_bind_double(st, c, std::strtod(value.c_str() + 2, nullptr));
        else
          sqlite3_bind_text(st, c, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
      }
      sqlite3_step(st);
      sqlite3_finalize(st);
    }
  }
  sqlite3_exec(db, "COMMIT;", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const bool wired = (lf::installComponentWiring(), true);
  (void)wired;
  static std::unique_ptr<Practice> practice;
  static long runs = 0;
  if (practice == nullptr || ++runs % 50 == 0) {
    practice.reset();
    practice = freshPractice();
  }
  // In memory where the system has such a folder.
  static const std::filesystem::path folder = std::filesystem::is_directory("/dev/shm")
                                                  ? std::filesystem::path("/dev/shm")
                                                  : std::filesystem::temp_directory_path();
  static const std::string path =
      (folder / ("lf-fuzz-bill4time-" + std::to_string(::getpid()) + ".db")).string();

  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  std::vector<std::string_view> fields;
  for (size_t from = 0; from <= text.size();) {
    const size_t end = std::min(text.find('\n', from), text.size());
    fields.push_back(text.substr(from, end - from));
    from = end + 1;
  }
  writeExport(path, fields);

  lf::clsImportBill4TimeInfo engine;
  engine.setLocaleReference(practice->locale.get());
  engine.setClientDropDownCtrlReference(practice->dropDown.get());
  engine.setDatabaseReference(&practice->db);
  engine.setShowProgress(false);
  lf::Bill4TimeImportOptions& o = engine.options();
  o.duplicateCheckEnabled = false;
  o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = (data[0] & 4) != 0;
  o.mvarTimeEntriesSynchDateRangeType = o.mvarInvoicesSynchDateRangeType = data[0] & 3;
  o.mvarTimeEntriesSynchStartRange = o.mvarInvoicesSynchStartRange =
      lf::Date::fromParts(2026, 1, 1);
  o.mvarTimeEntriesSynchEndRange = o.mvarInvoicesSynchEndRange = lf::Date::fromParts(2026, 12, 31);
  // The first field of each client row is its ID: those clients are selected.
  for (size_t row = 0; row < 3 && row * 15 < fields.size(); ++row) {
    const lf::Variant id = lf::Variant::text(std::string(fields[row * 15]));
    ((data[0] & 8) != 0 ? o.companyCollection : o.contactsCollection).addRow({id});
  }
  engine.setBill4TimeDatabaseLocation(path);
  engine.initializeDataRecordsets();
  engine.importBill4TimeUsers();
  engine.closeDataRecordsets();
  engine.importBill4TimeInformation();
  return 0;
}
