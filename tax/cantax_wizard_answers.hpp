// The answers-file front end of the CANTAX and Dr. Tax import wizards: the same page machine as
// the terminal, driven by a JSON file, so that an import can run unattended.
//
//   {
//     "file": "cantax_t1_export.txt",    // the raw export, relative to the answers file
//     "template": "CANTAX T1.tpl",       // CANTAX only: save the export template here first
//     "year": 2024,                      // T1 imports
//     "options": "all",                  // CANTAX T1: "all", "none" or the option numbers
//     "address": "main",                 // CANTAX T2Plus: "main" or "mailing"
//     "rows": "all",                     // or data rows and ranges: [1, "4-9"]
//     "duplicates": {"check": true, "matchBy": "sin", "action": "update"},
//     "questions": {"default": "no", "answers": {"without creating this file": "yes"}}
//   }
//
// "file", "year", "rows", "duplicates" and "questions" have the form of the text import's
// answers file. Without "template", leaving the template page asks whether to go on without
// one: answer it under "questions". What is left out keeps the wizard's default.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "text/text_import_answers.hpp"

namespace lf {

class TaxExportImportWizard;

struct TaxImportAnswers {
  TextImportAnswers text;
  std::optional<std::string> templatePath;
  std::optional<std::vector<int>> options;  // ticked chkOption numbers
  std::optional<int> address;               // 1 mailing, 2 main
};

// Parses an answers file (outside text); throws Failure naming the field of the wrong form.
TaxImportAnswers parseTaxImportAnswers(const std::string& jsonText, const std::string& baseFolder);
TaxImportAnswers readTaxImportAnswers(const std::string& path);

// Initializes the wizard and answers each page, pressing Next up to Finish. Throws Failure,
// before anything is written to the practice database, when the export is no export of the
// wizard's product or an answer names a row the file does not have. False when a page refused
// to move on (its message went through MsgboxClass).
bool runTaxImportWizardFromAnswers(TaxExportImportWizard& wizard, const TaxImportAnswers& answers);

// Opens the export in the wizard (on its open page); throws Failure naming the file when it is
// not recognised as the product's export, so that nothing is imported.
void openTaxExportOrFail(TaxExportImportWizard& wizard, const std::string& path);

}  // namespace lf
