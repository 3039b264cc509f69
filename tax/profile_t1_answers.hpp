// The answers file of the personal Profile import, so that a folder of returns can be brought
// in unattended:
//
//   {
//     "folder": "returns",                 // relative to the answers file; --folder overrides
//     "year": 2025,                        // the tax year written; default the current year
//     "options": [0, 27],                  // the ticked options by number, caption or field
//                                          // key ("Line349"), or "all"
//     "couples": "both",                   // "both" contacts, "primary" only, or "one" contact
//                                          // (or the choice's caption)
//     "business": false,                   // bring the spouse in when the return has a business
//     "select": "all",                     // or {"year": 2016, "notInLedgerfolio": true}
//     "duplicates": {"check": true, "action": "update"},   // skip, new, update or ask
//     "passwords": ["maple"],              // answers to the password question, in order
//     "questions": {"default": "no", "answers": {"Ada Birch": "yes"}}
//   }
//
// Every field may be left out. The passwords are remembered for the run, as the user's tick
// of "Remember this pasword for this session only" would.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sync/wizard_answers.hpp"

namespace lf {

class clsImportProfileT1;

struct ProfileT1Answers {
  std::string folder;
  std::optional<long> year;
  std::vector<int> options;  // ticked option numbers, 0 to 38
  int couples = 0;           // optCouplesReturn
  bool business = false;
  bool selectByYear = false;
  long selectYear = 0;
  bool selectNotInLedgerfolio = false;
  bool duplicateCheck = true;
  int action = 2;  // update
  std::vector<std::string> passwords;
  WizardAnswers questions;
};

// Parses an answers file (outside text); throws Failure naming the field of the wrong form.
ProfileT1Answers parseProfileT1Answers(const std::string& jsonText, const std::string& baseFolder);
ProfileT1Answers readProfileT1Answers(const std::string& path);

}  // namespace lf
