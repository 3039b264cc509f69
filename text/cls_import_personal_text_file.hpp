// clsImportPersonalTextFile: people from a delimited client file into Contacts, optionally as
// personal-tax clients of a year. The reader, grid and column mapping are the shared ones of
// DelimitedTextImport (list type 3: the contact rows of the catalogue).
#pragma once

#include <functional>
#include <string>

#include "text/delimited_text_import.hpp"
#include "text/row_write_group.hpp"

namespace lf {

class ImportDuplicatesControl;
struct StageCounters;

// A tax year the import accepts (the range of the personal-tax statements).
bool isValidImportYear(long year);

class clsImportPersonalTextFile : public DelimitedTextImport {
 public:
  clsImportPersonalTextFile();

  long importCategory = -1;
  long importTaxYear;  // getCurrentPersonalYear at construction
  bool importIsPersonalTax = true;
  bool putUnmatchedFieldsInNotes = false;
  bool importSuccessful = false;

  // Settles the category before an import: asks the personal-tax category of the year, and
  // with a valid importCategory takes importIsPersonalTax from whether that category needs a
  // client record.
  void setupCategoryParameters();

  // The wizard's contact duplicates control; none means no duplicate check.
  ImportDuplicatesControl* contactDuplicatesControl = nullptr;
  // Events: before a client's fields are written, and after them.
  std::function<void(const std::string& name)> ImportingClientName;
  std::function<void(const std::string& name)> finishImportingClient;
  // After a client's fields are written: the contact and the SIN of its row.
  std::function<void(long contactID, const std::string& sin)> finishImportingClientContact;
  // Served after every row.
  std::function<void()> eventPump;
  // Counts every selected row as created, updated, skipped or failed, when given.
  StageCounters* counters = nullptr;

  // Imports the selected data rows (those marked "þ") of the grid by the column assignments.
  // Each row's writes (contact, links, notes, summaries, personal-tax rows) are committed
  // together at the row's end, so rows done before a failure stay and a killed import can be
  // run again with duplicate matching on. succeeded and importSuccessful say whether the loop
  // ran to its end.
  void ImportData(bool& succeeded);

 private:
  RowOutcome importRow(int row, std::string& skipReason);
};

}  // namespace lf
