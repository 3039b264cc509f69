// Client files of any bytes through the whole text import: the reader loads the grid, the
// columns are mapped to the fields a real mapping uses, and every row is imported into a
// seeded in-memory practice database, as personal or as business clients. Whatever the
// cells hold (no name, a SIN of letters, dates that are no dates, vocabulary words, 255 and
// more characters), the import ends with each row written or left out, never with a crash.
//
// Input: byte 0 chooses personal or business and the first-row captions; the rest is the file.
// The practice database is made anew every few hundred inputs so that it stays small.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_practice.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"

namespace {

using lf::fuzzing::freshPractice;
using lf::fuzzing::Practice;

constexpr std::string_view kPersonalFields[] = {
    "FirstName", "LastName",   "SocialInsuranceNumber", "HomeAddress1", "HomePostalCode",
    "Birthday",  "SpouseName", "HomePhone_Main",        "Notes",        "ContactCustom1"};
constexpr std::string_view kBusinessFields[] = {
    "CompanyName", "BusinessNumber", "YearEndDate", "RC59Status", "FinancialStatements",
    "CompanyType", "Address1",       "PostalCode",  "FirstName",  "LastName"};

template <class Import>
void importFile(Import& import, const std::string& path, bool captions,
                const std::string_view* fields, size_t fieldCount) {
  import.reader.fileLocation = path;
  import.reader.firstRowFieldNames = captions;
  import.loadFile();
  for (int column = 1; column < import.grid.cols() && column <= static_cast<int>(fieldCount);
       ++column) {
    const lf::FieldItem* item = import.mapping.fieldList().findByDatabaseField(fields[column - 1]);
    if (item != nullptr) import.mapping.assign(import.grid, column, item->key);
  }
  bool succeeded = false;
  import.ImportData(succeeded);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static std::unique_ptr<Practice> practice;
  static long runs = 0;
  if (practice == nullptr || ++runs % 300 == 0) {
    practice.reset();
    practice = freshPractice();
  }
  static const std::string path =
      (std::filesystem::temp_directory_path() / ("lf-fuzz-text-" + std::to_string(::getpid())))
          .string();
  {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data + 1), static_cast<std::streamsize>(size - 1));
  }
  const bool business = (data[0] & 1) != 0;
  const bool captions = (data[0] & 2) != 0;
  if (business) {
    lf::clsImportBusinessTextFile import;
    importFile(import, path, captions, kBusinessFields, std::size(kBusinessFields));
  } else {
    lf::clsImportPersonalTextFile import;
    importFile(import, path, captions, kPersonalFields, std::size(kPersonalFields));
  }
  return 0;
}
