// Reading the text import answers file and answering the wizard's steps from it.
#include "text/text_import_answers.hpp"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/text_encoding.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/import_duplicates_control.hpp"
#include "text/delimiter_words.hpp"
#include "text/text_import_wizard.hpp"

namespace lf {

namespace {

using json = nlohmann::json;
using GU = GeneralUtilities;

Failure badField(const std::string& field, const std::string& expected) {
  return Failure("\"" + field + "\" must be " + expected);
}

std::optional<bool> optionalBool(const json& j, const char* field) {
  if (!j.contains(field) || j[field].is_null()) return std::nullopt;
  if (!j[field].is_boolean()) throw badField(field, "true or false");
  return j[field].get<bool>();
}

std::optional<std::string> optionalText(const json& j, const char* field, const char* expected) {
  if (!j.contains(field) || j[field].is_null()) return std::nullopt;
  if (j[field].is_string()) return j[field].get<std::string>();
  if (j[field].is_number_integer()) return std::to_string(j[field].get<long long>());
  throw badField(field, expected);
}

bool wholeNumber(std::string_view text, long& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

std::pair<long, long> rowRange(const json& entry) {
  if (entry.is_number_integer()) {
    const long row = entry.get<long>();
    return {row, row};
  }
  if (entry.is_string()) {
    const std::string text = GU::trim(entry.get<std::string>());
    const size_t dash = text.find('-');
    long first = 0, last = 0;
    if (dash == std::string::npos && wholeNumber(text, first)) return {first, first};
    if (dash != std::string::npos && wholeNumber(GU::trim(text.substr(0, dash)), first) &&
        wholeNumber(GU::trim(text.substr(dash + 1)), last) && first <= last)
      return {first, last};
  }
  throw badField("rows", "\"all\" or a list of data rows and ranges such as [1, \"4-9\"]");
}

int wordOf(const json& j, const char* field,
           std::initializer_list<std::pair<const char*, int>> words, const char* expected) {
  if (!j[field].is_string()) throw badField(std::string("duplicates.") + field, expected);
  const std::string word = GU::lowerCase(j[field].get<std::string>());
  for (const auto& [name, value] : words)
    if (word == GU::lowerCase(name)) return value;
  throw badField(std::string("duplicates.") + field, expected);
}

// The data column of an answer: its number, or its caption in row 0.
int resolveColumn(const ImportGrid& grid, const std::string& column, bool captions) {
  long number = 0;
  if (wholeNumber(column, number)) {
    if (number < 1 || number >= grid.cols())
      throw Failure("column " + column + " does not exist: the file has " +
                    std::to_string(grid.cols() - 1) + " columns");
    return static_cast<int>(number);
  }
  if (captions)
    for (int col = 1; col < grid.cols(); ++col)
      if (GU::upperCase(GU::trim(grid.textMatrix(kCaptionRow, col))) ==
          GU::upperCase(GU::trim(column)))
        return col;
  throw Failure("no column '" + column + "' in the file" +
                (captions ? "" : " (columns are named by caption only with firstRowNames)"));
}

// The list item of a field answer: by database field, else by display name.
std::int32_t resolveField(const ColumnMapping& mapping, const std::string& field) {
  const std::string wanted = GU::upperCase(GU::trim(field));
  if (wanted == GU::upperCase(kNotAssigned)) return -1;
  for (const FieldItem& item : mapping.fieldList())
    if (GU::upperCase(item.databaseField) == wanted) return item.key;
  for (const FieldItem& item : mapping.fieldList())
    if (GU::upperCase(item.displayName) == wanted) return item.key;
  throw Failure("no field '" + field + "' in the list of this import (see lfimport fields)");
}

}  // namespace

TextImportAnswers parseTextImportAnswers(const std::string& jsonText,
                                         const std::string& baseFolder) {
  json j = parseAnswersObject(jsonText);
  TextImportAnswers a;
  if (const auto file = optionalText(j, "file", "a path")) {
    std::filesystem::path path = *file;
    if (path.is_relative() && !baseFolder.empty()) path = std::filesystem::path(baseFolder) / path;
    a.file = path.lexically_normal().string();
  }
  a.delimiter = optionalText(j, "delimiter", "tab, semicolon, comma, space or a character");
  if (a.delimiter && !isOneCharacter(delimiterFromWord(*a.delimiter)))
    throw badField("delimiter", "tab, semicolon, comma, space or one character");
  a.qualifier = optionalText(j, "qualifier", "a character or \"none\"");
  if (a.qualifier && !qualifierFromWord(*a.qualifier).empty() && !isOneCharacter(*a.qualifier))
    throw badField("qualifier", "one character or \"none\"");
  a.firstRowNames = optionalBool(j, "firstRowNames");
  a.mixedCase = optionalBool(j, "mixedCase");
  a.unmatchedToNotes = optionalBool(j, "unmatchedToNotes");
  if (j.contains("columns")) {
    if (!j["columns"].is_object()) throw badField("columns", "an object of column to field");
    for (const auto& [column, field] : j["columns"].items()) {
      if (!field.is_string()) throw badField("columns." + column, "a field name");
      a.columns.emplace_back(column, field.get<std::string>());
    }
  }
  if (j.contains("rows") && !(j["rows"].is_string() && j["rows"].get<std::string>() == "all")) {
    if (!j["rows"].is_array())
      throw badField("rows", "\"all\" or a list of data rows and ranges such as [1, \"4-9\"]");
    a.allRows = false;
    for (const json& entry : j["rows"]) a.rowRanges.push_back(rowRange(entry));
  }
  a.category = optionalText(j, "category", "a category ID or name");
  a.year = optionalText(j, "year", "a year");
  if (j.contains("duplicates")) {
    const json& d = j["duplicates"];
    if (!d.is_object()) throw badField("duplicates", "an object");
    a.duplicateCheck = optionalBool(d, "check");
    if (d.contains("matchBy"))
      a.matchBy = wordOf(d, "matchBy",
                         {{"sin", kMatchBySIN},
                          {"name", kMatchByName},
                          {"clientID", kMatchByClientID},
                          {"businessNumber", kMatchByBusinessNumber},
                          {"corporateName", kMatchByCorporateName}},
                         "sin, name, clientID, businessNumber or corporateName");
    if (d.contains("action"))
      a.action = wordOf(d, "action",
                        {{"skip", kDuplicateSkip},
                         {"new", kDuplicateNewClient},
                         {"update", kDuplicateUpdate},
                         {"ask", kDuplicateAsk}},
                        "skip, new, update or ask");
  }
  if (j.contains("questions")) {
    // The same form as the sync's answers file, read by its reader.
    a.questions = parseWizardAnswers(json{{"questions", j["questions"]}}.dump(), "");
  }
  return a;
}

TextImportAnswers readTextImportAnswers(const std::string& path) {
  return readAnswersFile(path, parseTextImportAnswers);
}

long findImportCategory(const std::string& idOrName) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) throw Failure("no practice database is open");
  RecordsetScope categories(
      *db, "SELECT Categories.CategoryID, Categories.CategoryName FROM Categories;", kLockReadOnly);
  long id = 0;
  if (wholeNumber(GU::trim(idOrName), id) &&
      db->findRecord(categories, "CategoryID", std::to_string(id)))
    return id;
  if (db->findRecord(categories, "CategoryName", GU::trim(idOrName)))
    return static_cast<long>(db->getField(categories, "CategoryID").toLong());
  throw Failure("the category '" + idOrName + "' does not exist in the practice database");
}

bool runTextImportWizardFromAnswers(TextImportWizard& wizard, const TextImportAnswers& answers,
                                    bool autoMap, std::vector<std::string>& autoChoices) {
  wizard.Initialize();
  wizard.chooseFile(answers.file);
  wizard.cmdNext_Click();
  if (wizard.step() != TextImportWizard::kGridStep) return false;

  if (answers.delimiter) {
    const std::string delimiter = delimiterFromWord(*answers.delimiter);
    static const char* const kOptions[] = {"\t", ";", ",", " "};
    int option = TextImportWizard::kOther;
    for (int i = 0; i < 4; ++i)
      if (delimiter == kOptions[i]) option = i;
    wizard.optDelimiter_Click(option, delimiter);
  }
  if (answers.qualifier) {
    const std::string qualifier = qualifierFromWord(*answers.qualifier);
    wizard.cboTextQualifier_Click(qualifier.empty() ? std::string(TextImportWizard::kNoQualifier)
                                                    : qualifier);
  }
  if (answers.firstRowNames) wizard.chkFirstRow_Click(*answers.firstRowNames);
  if (answers.mixedCase) wizard.chkRemoveCaps_Click(*answers.mixedCase);
  if (answers.unmatchedToNotes) wizard.chkUnmatchedFields = *answers.unmatchedToNotes;

  DelimitedTextImport& import = wizard.import();
  const bool captions = import.reader.firstRowFieldNames;
  for (const auto& [column, field] : answers.columns)
    wizard.listBoxGridEdit_Choose(resolveColumn(import.grid, column, captions),
                                  resolveField(import.mapping, field));
  if (autoMap && captions) {
    for (int col = 1; col < import.grid.cols(); ++col) {
      if (import.columnKey(col) != kNotAssignedKey) continue;
      const std::string caption(import.grid.textMatrix(kCaptionRow, col));
      const std::int32_t key = import.mapping.findFieldForCaption(caption);
      if (key < 0) continue;
      wizard.listBoxGridEdit_Choose(col, key);
      autoChoices.push_back("column " + std::to_string(col) + " '" + caption +
                            "': " + import.mapping.columnItem(col)->displayName + " (" +
                            import.mapping.columnItem(col)->databaseField + ")");
    }
  }
  if (!answers.allRows) {
    import.grid.selectAllRows(false);
    const long dataRows = import.grid.dataRowCount();
    for (const auto& [first, last] : answers.rowRanges) {
      if (first < 1 || last > dataRows)
        throw Failure("row " + std::to_string(first < 1 ? first : last) +
                      " does not exist: the file has " + std::to_string(dataRows) + " data rows");
      for (long row = first; row <= last; ++row)
        import.grid.setRowSelected(static_cast<int>(row) + kFirstDataRow - 1, true);
    }
  }

  ImportDuplicatesControl& duplicates =
      wizard.isPersonal() ? wizard.contactDuplicates() : wizard.companyDuplicates();
  if (answers.duplicateCheck) duplicates.setCheckingOn(*answers.duplicateCheck);
  if (answers.matchBy) duplicates.setMatchBy(*answers.matchBy);
  if (answers.action) duplicates.setAction(*answers.action);
  if (!wizard.isPersonal()) {
    // The row's contact is matched by name with the same check and action, so that a re-run
    // finds the contacts it made.
    ImportDuplicatesControl& contacts = wizard.contactDuplicates();
    contacts.setCheckingOn(duplicates.checkingOn());
    contacts.setMatchBy(kMatchByName);
    contacts.setAction(duplicates.getAction());
  }
  if (wizard.isPersonal() && answers.year) wizard.cboYear = *answers.year;
  if (answers.category) {
    wizard.selectedCategory = findImportCategory(*answers.category);
  } else if (!wizard.isPersonal()) {
    wizard.selectedCategory =
        moduleState().clientDropDownCtrlReference != nullptr
            ? moduleState().clientDropDownCtrlReference->getCurrentCategoryID()
            : -1;
  }

  wizard.cmdNext_Click();
  if (wizard.step() != TextImportWizard::kCategoryStep) return false;
  if (wizard.isPersonal() && !answers.category) {
    // The personal-tax category of the import's year, as the personal list would suggest.
    long year = 0;
    if (wholeNumber(GU::trim(wizard.cboYear), year) && moduleState().clientDropDownCtrlReference)
      wizard.selectedCategory =
          moduleState().clientDropDownCtrlReference->getCategoryForYear(year, "");
  }
  wizard.cmdFinish_Click();
  return wizard.finished();
}

}  // namespace lf
