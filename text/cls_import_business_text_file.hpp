// clsImportBusinessTextFile: companies, and one contact of each, from a delimited client file
// into the family of company tables. The reader, grid and column mapping are the shared ones
// of DelimitedTextImport (list type 2: the company and contact rows of the catalogue).
#pragma once

#include <functional>
#include <string>

#include "text/delimited_text_import.hpp"
#include "text/row_write_group.hpp"

namespace lf {

class ImportDuplicatesControl;
struct StageCounters;

class clsImportBusinessTextFile : public DelimitedTextImport {
 public:
  clsImportBusinessTextFile();

  long importCategory = -1;
  bool importForAddressBook = false;
  bool showThisClient = false;
  long matchMode = 1;
  bool importSuccessful = false;

  // Settles the category before an import: an invalid category, or (unless the import is for
  // the address book) one that needs no client record, becomes the current category, since a
  // business client must sit in a category with a client record; showThisClient says whether
  // the final category needs a record.
  void setupCategoryParameters();

  // The wizard's duplicates controls; none means no duplicate check of that kind.
  ImportDuplicatesControl* companyDuplicatesControl = nullptr;
  ImportDuplicatesControl* contactDuplicatesControl = nullptr;
  std::function<void(const std::string& name)> ImportingClientName;
  std::function<void(const std::string& name)> finishImportingClient;
  std::function<void()> eventPump;
  StageCounters* counters = nullptr;

  // Imports the selected data rows as companies, each with the row's contact when the row
  // names one. Rows commit one by one as in the personal import.
  void ImportData(bool& succeeded);

 private:
  RowOutcome importRow(int row, std::string& skipReason);
  void importContact(int row, long company);
};

}  // namespace lf
