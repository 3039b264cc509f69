// The answers-file front end of the text import wizards: the same step machine as the
// terminal, driven by a JSON file, so that an import can run unattended.
//
//   {
//     "file": "clients.csv",             // relative to the answers file's folder
//     "delimiter": "comma",              // tab, semicolon, comma, space or another character
//     "qualifier": "\"",                 // a character, or "none"
//     "firstRowNames": true,
//     "mixedCase": false,
//     "unmatchedToNotes": true,          // personal import only
//     "columns": {"1": "FirstName", "Last Name": "Contact Last Name"},
//     "rows": "all",                     // or a list of data rows and ranges: [1, "4-9"]
//     "category": "2024",                // a category ID or name
//     "year": 2024,                      // personal import only
//     "duplicates": {"check": true, "matchBy": "sin", "action": "update"},
//     "questions": {"default": "no", "answers": {"Tom Hill": "yes"}}
//   }
//
// A column is given by its number or, when the first row holds captions, by its caption; its
// field by the catalogue's database field or display name, letter case ignored. matchBy is
// "sin", "name" or "clientID" for people, "businessNumber", "corporateName" or "clientID"
// for companies; action "skip", "new", "update" or "ask". The questions are answered as in the
// sync's answers file. What is left out keeps the wizard's default.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sync/wizard_answers.hpp"

namespace lf {

class TextImportWizard;

struct TextImportAnswers {
  std::string file;
  std::optional<std::string> delimiter;
  std::optional<std::string> qualifier;
  std::optional<bool> firstRowNames, mixedCase, unmatchedToNotes;
  std::vector<std::pair<std::string, std::string>> columns;  // column to field, in file order
  bool allRows = true;
  std::vector<std::pair<long, long>> rowRanges;  // data rows from 1, both ends included
  std::optional<std::string> category;
  std::optional<std::string> year;
  std::optional<bool> duplicateCheck;
  std::optional<int> matchBy;
  std::optional<int> action;
  WizardAnswers questions;  // the default answer and the answers
};

// Parses an answers file (outside text); throws Failure naming the field of the wrong form.
TextImportAnswers parseTextImportAnswers(const std::string& jsonText,
                                         const std::string& baseFolder);
TextImportAnswers readTextImportAnswers(const std::string& path);

// Answers each step of the wizard and presses Next up to Finish. With autoMap, a column the
// answers leave unassigned takes the field its caption names; each such choice is added to
// autoChoices. Throws Failure, before anything is written, for an answer that names no column,
// field, row or category of this file and practice. False when a step refused to move on (its
// message went through MsgboxClass).
bool runTextImportWizardFromAnswers(TextImportWizard& wizard, const TextImportAnswers& answers,
                                    bool autoMap, std::vector<std::string>& autoChoices);

// The category with the ID or the name; throws Failure when the practice has none.
long findImportCategory(const std::string& idOrName);

}  // namespace lf
