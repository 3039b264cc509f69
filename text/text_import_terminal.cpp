// Rendering of the text import wizard's steps as text, and the commands that work its controls.
#include "text/text_import_terminal.hpp"

#include <sstream>
#include <vector>

#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/import_duplicates_control.hpp"
#include "text/delimiter_words.hpp"
#include "text/grid_table.hpp"
#include "text/text_import_wizard.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;
constexpr int kShownRows = 10;

const char* onOff(bool on) {
  return on ? "on" : "off";
}

std::string delimiterName(const TextImportWizard& w) {
  static const char* const kNames[] = {"tab", "semicolon", "comma", "space"};
  return w.optDelimiter() < TextImportWizard::kOther ? kNames[w.optDelimiter()]
                                                     : "other '" + w.txtOther() + "'";
}

class TextImportTerminal {
 public:
  TextImportTerminal(TextImportWizard& wizard, std::istream& in, std::ostream& out)
      : w_(wizard), in_(in), out_(out) {}

  bool run(const std::string& file) {
    w_.Initialize();
    if (!file.empty()) w_.chooseFile(file);
    int shown = -1;
    while (w_.isOpen()) {
      if (w_.step() != shown) {
        shown = w_.step();
        showStep();
      }
      out_ << "> " << std::flush;
      std::string line;
      if (!std::getline(in_, line)) {
        w_.cmdCancel_Click();
        break;
      }
      if (command(GU::trim(line)) && w_.isOpen() && w_.step() == shown) showStep();
    }
    out_ << (w_.finished() ? "Finished.\n" : "Cancelled.\n");
    return w_.finished();
  }

 private:
  ImportDuplicatesControl& duplicates() {
    return w_.isPersonal() ? w_.contactDuplicates() : w_.companyDuplicates();
  }

  void showStep() {
    switch (w_.step()) {
      case TextImportWizard::kFileStep:
        out_ << "\n== The file to import (step 0)\n  File: " << w_.txtOldLocation
             << "\nType o PATH to choose the file, n for next, quit to cancel.\n";
        break;
      case TextImportWizard::kGridStep: {
        DelimitedTextImport& import = w_.import();
        out_ << "\n== The columns (step 1): delimiter " << delimiterName(w_) << ", qualifier "
             << w_.cboTextQualifier() << ", first row captions " << onOff(w_.chkFirstRow())
             << ", mixed case " << onOff(w_.chkRemoveCaps());
        if (w_.isPersonal()) out_ << ", unmatched to notes " << onOff(w_.chkUnmatchedFields);
        out_ << "\n"
             << gridTable(import.grid, kShownRows, true) << import.grid.dataRowCount()
             << " data rows. Commands: l (list fields), a COLUMN FIELD# (assign), d tab|semicolon"
                "|comma|space|CHAR, q CHAR|none, f (first row captions), c (mixed case), "
             << (w_.isPersonal() ? "u (unmatched to notes), " : "")
             << "r all|none|1,4-9 (rows), t ROW (toggle a row), s (" << w_.cmdCheckAllCaption()
             << "), m on|off, mb "
             << (w_.isPersonal() ? "sin|name|clientID" : "businessNumber|corporateName|clientID")
             << ", act skip|new|update|ask, n, b, x (finish), quit.\n";
        break;
      }
      case TextImportWizard::kCategoryStep:
        out_ << "\n== The category (step 2)\n";
        listCategories();
        out_ << "  Category: " << w_.selectedCategory;
        if (w_.isPersonal()) out_ << "; year: " << w_.cboYear;
        out_ << "\nCommands: cat ID, " << (w_.isPersonal() ? "y YEAR, " : "")
             << "b, x (finish), quit.\n";
        break;
    }
  }

  void listCategories() {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rows(*db,
                        "SELECT Categories.CategoryID, Categories.CategoryName FROM Categories;",
                        kLockReadOnly);
    for (bool more = db->hasRecord(rows); more && !db->isEOF(rows); db->moveNext(rows))
      out_ << "  " << db->getField(rows, "CategoryID").toString() << "  "
           << db->getField(rows, "CategoryName").toString() << "\n";
  }

  void listFields() {
    const std::vector<std::string> entries = w_.import().mapping.dropDownEntries();
    for (size_t i = 0; i < entries.size(); ++i) out_ << "  " << i << "  " << entries[i] << "\n";
  }

  bool selectRows(const std::string& choice) {
    ImportGrid& grid = w_.import().grid;
    if (choice == "all" || choice == "none") {
      grid.selectAllRows(choice == "all");
      return true;
    }
    grid.selectAllRows(false);
    std::stringstream parts(choice);
    std::string part;
    while (std::getline(parts, part, ',')) {
      const size_t dash = part.find('-');
      const long first = std::atol(part.substr(0, dash).c_str());
      const long last =
          dash == std::string::npos ? first : std::atol(part.substr(dash + 1).c_str());
      for (long row = first; row >= 1 && row <= last && row <= grid.dataRowCount(); ++row)
        grid.setRowSelected(static_cast<int>(row) + kFirstDataRow - 1, true);
    }
    return true;
  }

  // Works one command; true when the step should be shown again.
  bool command(const std::string& line) {
    std::istringstream words(line);
    std::string verb, rest;
    words >> verb;
    std::getline(words, rest);
    rest = GU::trim(rest);
    if (verb == "quit") {
      w_.cmdCancel_Click();
    } else if (verb == "n") {
      w_.cmdNext_Click();
    } else if (verb == "b") {
      w_.cmdBack_Click();
    } else if (verb == "x") {
      w_.cmdFinish_Click();
    } else if (verb == "o") {
      w_.chooseFile(rest);
      return true;
    } else if (verb == "l") {
      listFields();
    } else if (verb == "a") {
      std::istringstream numbers(rest);
      int column = 0, entry = -1;
      numbers >> column >> entry;
      const auto& items = w_.import().mapping.fieldList().items();
      const std::int32_t key = entry >= 1 && entry <= static_cast<int>(items.size())
                                   ? items[static_cast<size_t>(entry) - 1].key
                                   : -1;
      if (!w_.listBoxGridEdit_Choose(column, key)) out_ << "No column " << column << ".\n";
      return true;
    } else if (verb == "d") {
      const std::string delimiter = delimiterFromWord(rest);
      static const char* const kOptions[] = {"\t", ";", ",", " "};
      int option = TextImportWizard::kOther;
      for (int i = 0; i < 4; ++i)
        if (delimiter == kOptions[i]) option = i;
      w_.optDelimiter_Click(option, delimiter);
      return true;
    } else if (verb == "q") {
      const std::string qualifier = qualifierFromWord(rest);
      w_.cboTextQualifier_Click(qualifier.empty() ? std::string(TextImportWizard::kNoQualifier)
                                                  : qualifier);
      return true;
    } else if (verb == "f") {
      w_.chkFirstRow_Click(!w_.chkFirstRow());
      return true;
    } else if (verb == "c") {
      w_.chkRemoveCaps_Click(!w_.chkRemoveCaps());
      return true;
    } else if (verb == "u") {
      w_.chkUnmatchedFields = !w_.chkUnmatchedFields;
      return true;
    } else if (verb == "r") {
      return selectRows(rest);
    } else if (verb == "t") {
      w_.toggleRow(std::atoi(rest.c_str()) + kFirstDataRow - 1);
      return true;
    } else if (verb == "s") {
      w_.cmdCheckAll_Click();
      return true;
    } else if (verb == "m") {
      duplicates().setCheckingOn(rest == "on");
      return true;
    } else if (verb == "mb") {
      const std::string word = GU::lowerCase(rest);
      duplicates().setMatchBy(word == "name"            ? kMatchByName
                              : word == "clientid"      ? kMatchByClientID
                              : word == "corporatename" ? kMatchByCorporateName
                                                        : kMatchBySIN);
      return true;
    } else if (verb == "act") {
      const std::string word = GU::lowerCase(rest);
      duplicates().setAction(word == "skip"  ? kDuplicateSkip
                             : word == "new" ? kDuplicateNewClient
                             : word == "ask" ? kDuplicateAsk
                                             : kDuplicateUpdate);
      return true;
    } else if (verb == "cat") {
      w_.selectedCategory = std::atol(rest.c_str());
      return true;
    } else if (verb == "y") {
      w_.cboYear = rest;
      return true;
    } else if (!verb.empty()) {
      out_ << "Unknown command '" << verb << "'.\n";
    }
    return false;
  }

  TextImportWizard& w_;
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace

bool runTextImportWizardAtTerminal(TextImportWizard& wizard, std::istream& in, std::ostream& out,
                                   const std::string& file) {
  return TextImportTerminal(wizard, in, out).run(file);
}

}  // namespace lf
