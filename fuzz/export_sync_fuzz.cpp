// A Balaboss or Bill4Time export of any values through the whole sync of its source: the
// input's fields fill a small SQLite export with the tables the source reads, and the sync runs
// every stage into a seeded in-memory practice database, with the stages a host may call apart
// (Bill4Time staff; Balaboss invoices, deposits and the two repairs) included. Whatever the
// fields hold (dates that are no dates, amounts of letters, IDs with quotes that break a
// statement, deleted or missing clients and key persons, 255 and more characters), the run
// ends with each row written, skipped or failed, never with a crash.
//
// Input: byte 0 holds the choices, the rest fields separated by '\n'; a field starting "i:" is
// stored as an integer, "r:" as a real, any other as text. The fields fill the source's tables
// row by row, its client table first. Byte 0: bits 0-1 the date range type, bit 2 whether the
// ranges are used, bit 3 whether the selected clients are businesses, bit 4 the source
// (Bill4Time when clear, Balaboss when set), bit 5 known records rewritten.
// The practice database is made anew every few dozen inputs so that it stays small, and its
// cross-references meet IDs of earlier inputs in between.
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/component_wiring.hpp"
#include "fuzz_practice.hpp"
#include "sync/cls_import_balaboss_info.hpp"
#include "sync/cls_import_bill4time_info.hpp"

namespace {

using lf::fuzzing::freshPractice;
using lf::fuzzing::Practice;

struct Table {
  const char* name;
  int columns;
  int rows;
};

// The tables of one source's export, as its sample generator writes them but without column
// types, so that a value keeps the storage class it was given. The first table holds the
// clients, their IDs in its first column.
struct ExportShape {
  const char* schema;
  std::span<const Table> tables;
};

constexpr const char* kBill4TimeSchema =
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
constexpr Table kBill4TimeTables[] = {
    {"Clients", 15, 3}, {"Contacts", 21, 2}, {"Invoices", 8, 2}, {"TimeEntries", 15, 3}};

constexpr const char* kBalabossSchema =
    "CREATE TABLE tblClient (autClientID, strClientNo, strCompany, strAlternate, strAddress,"
    " strCity, strProvState, strPostalCode, strPhoneNo, strFaxNo, strEMail, strKeyPerson1Code,"
    " strKeyPerson2Code, strYearEnd, ysnActive, memPermNote);"
    "CREATE TABLE tblKeyPerson (strKeyPersonCode, strKPFirst, strKPLast, ysnCurrent, curRate1,"
    " curRate2, curRate3, curRate4);"
    "CREATE TABLE tblContact (autContactID, lngClientID, strContactFirst, strContactLast, strMx,"
    " strTitle);"
    "CREATE TABLE tblContactAddress (autContactAddressID, lngContactID, strAddress, strCity,"
    " strProvState, strPostalCode);"
    "CREATE TABLE tblContactPhone (autContactPhoneID, lngContactID, strPhoneNo);"
    "CREATE TABLE tblTBSvcCategory (autSvcCategoryID, strSvcCategoryName);"
    "CREATE TABLE tblTBSvcCode (autSvcCodeID, strSvcCode, strSvcCodeDescr, lngSvcCategoryID,"
    " ysnDefaultBill);"
    "CREATE TABLE tblTBStdPara (autStdParaID, memStdPara);"
    "CREATE TABLE tblTBInv (autInvID, lngClientID, strInvoiceNo, dtmInvDate, curTotal, curTax1);"
    "CREATE TABLE tblTBTransType (autTBTransTypeID, strTransTypeDescr, strTransTypeDescr2);"
    "CREATE TABLE tblTBInvTrans (autInvTransID, lngLineNo, lngInvID, memStdPara, dtmTrans,"
    " lngTBTransTypeID, curLeftCol, curRightCol);"
    "CREATE TABLE tblTBWIP (autWIPID, lngClientID, strKPCode, lngSvcCodeID, curHoursQty,"
    " dtmTrans, curAmount, memNote);";
constexpr Table kBalabossTables[] = {
    {"tblClient", 16, 3},        {"tblKeyPerson", 8, 2},    {"tblContact", 6, 2},
    {"tblContactAddress", 6, 1}, {"tblContactPhone", 3, 1}, {"tblTBSvcCategory", 2, 1},
    {"tblTBSvcCode", 5, 2},      {"tblTBStdPara", 2, 1},    {"tblTBInv", 6, 2},
    {"tblTBTransType", 3, 1},    {"tblTBInvTrans", 8, 2},   {"tblTBWIP", 8, 3}};

constexpr ExportShape kBill4Time{kBill4TimeSchema, kBill4TimeTables};
constexpr ExportShape kBalaboss{kBalabossSchema, kBalabossTables};

// A field as the sync reads it back: the digits of an integer field, the rest as written.
std::string selectedID(std::string_view field) {
  const std::string value(field);
  if (value.rfind("i:", 0) == 0)
    return std::to_string(std::strtoll(value.c_str() + 2, nullptr, 10));
  return value;
}

// Fills the tables row by row from the fields, in order; missing fields are NULL.
void writeExport(const std::string& path, const ExportShape& shape,
                 const std::vector<std::string_view>& fields) {
  std::filesystem::remove(path);
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) std::abort();
  // One transaction, unsynced: the file lives only for this input.
  sqlite3_exec(db, "PRAGMA synchronous=OFF; PRAGMA journal_mode=OFF; BEGIN;", nullptr, nullptr,
               nullptr);
  if (sqlite3_exec(db, shape.schema, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
  size_t next = 0;
  for (const Table& table : shape.tables) {
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

// The engine on the practice database with the choices of byte 0 and the clients of the
// export's client rows selected; the export is opened last.
void configure(lf::SyncEngine& engine, lf::SyncOptions& o, Practice& practice, std::uint8_t choices,
               const ExportShape& shape, const std::vector<std::string_view>& fields,
               const std::string& path) {
  engine.setLocaleReference(practice.locale.get());
  engine.setClientDropDownCtrlReference(practice.dropDown.get());
  engine.setDatabaseReference(&practice.db);
  engine.setShowProgress(false);
  o.duplicateCheckEnabled = false;
  o.importOnlyNewEntries = (choices & 32) == 0;
  o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = (choices & 4) != 0;
  o.mvarTimeEntriesSynchDateRangeType = o.mvarInvoicesSynchDateRangeType = choices & 3;
  o.mvarTimeEntriesSynchStartRange = o.mvarInvoicesSynchStartRange =
      lf::Date::fromParts(2026, 1, 1);
  o.mvarTimeEntriesSynchEndRange = o.mvarInvoicesSynchEndRange = lf::Date::fromParts(2026, 12, 31);
  const Table& clients = shape.tables.front();
  for (size_t row = 0; row < static_cast<size_t>(clients.rows); ++row) {
    const size_t at = row * static_cast<size_t>(clients.columns);
    if (at >= fields.size()) break;
    const lf::Variant id = lf::Variant::text(selectedID(fields[at]));
    ((choices & 8) != 0 ? o.companyCollection : o.contactsCollection).addRow({id});
  }
  engine.setDatabaseLocation(path);
}

void syncBill4Time(Practice& practice, std::uint8_t choices,
                   const std::vector<std::string_view>& fields, const std::string& path) {
  lf::clsImportBill4TimeInfo engine;
  configure(engine, engine.options(), practice, choices, kBill4Time, fields, path);
  // Staff are not part of the run: a host calls their stage on the run's recordsets.
  engine.initializeDataRecordsets();
  engine.importBill4TimeUsers();
  engine.closeDataRecordsets();
  engine.importBill4TimeInformation();
}

void syncBalaboss(Practice& practice, std::uint8_t choices,
                  const std::vector<std::string_view>& fields, const std::string& path) {
  lf::clsImportBalabossInfo engine;
  configure(engine, engine.options(), practice, choices, kBalaboss, fields, path);
  // Invoices and deposits are not part of the run: a host calls their stages on the run's
  // recordsets. The two repairs open what they need themselves.
  engine.initializeDataRecordsets();
  engine.importBalabossInvoices();
  engine.importBalabossDeposits();
  engine.closeDataRecordsets();
  engine.importBalabossInformation();
  engine.fixBusinessClients();
  engine.fixInvoiceFirm();
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
      (folder / ("lf-fuzz-export-sync-" + std::to_string(::getpid()) + ".db")).string();

  const std::uint8_t choices = data[0];
  const bool balaboss = (choices & 16) != 0;
  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  std::vector<std::string_view> fields;
  for (size_t from = 0; from <= text.size();) {
    const size_t end = std::min(text.find('\n', from), text.size());
    fields.push_back(text.substr(from, end - from));
    from = end + 1;
  }
  writeExport(path, balaboss ? kBalaboss : kBill4Time, fields);
  if (balaboss)
    syncBalaboss(*practice, choices, fields, path);
  else
    syncBill4Time(*practice, choices, fields, path);
  return 0;
}
