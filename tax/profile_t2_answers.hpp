// The answers file of the corporate Profile import, so that a folder of returns can be brought
// in unattended through the wizard:
//
//   {
//     "folder": "returns",                 // relative to the answers file; --folder overrides
//     "select": "all",                     // or {"mostRecent": true, "notInLedgerfolio": true}
//     "address": "head-office",            // mailing, books or signing-officer
//     "duplicates": {"check": true, "matchBy": "business-number", "action": "update"},
//     "passwords": ["maple"],              // answers to the password question, in order
//     "questions": {"default": "no", "answers": {"Birch Bakery": "yes"}}
//   }
//
// Every field may be left out; matchBy is "business-number" or "corporate-name", the action
// skip, new, update or ask.
#pragma once

#include <string>
#include <vector>

#include "sync/wizard_answers.hpp"

namespace lf {

struct ProfileT2Answers {
  std::string folder;
  bool selectMostRecent = false;
  bool selectNotInLedgerfolio = false;
  int address = 0;  // index of the wizard's address items
  bool duplicateCheck = true;
  int matchBy = 0;  // kMatchByBusinessNumber
  int action = 2;   // update
  std::vector<std::string> passwords;
  WizardAnswers questions;
};

// The answers' words for the four address items, in the wizard's order.
inline constexpr const char* kProfileT2AddressWords[] = {"head-office", "mailing", "books",
                                                         "signing-officer"};

// Parses an answers file (outside text); throws Failure naming the field of the wrong form.
ProfileT2Answers parseProfileT2Answers(const std::string& jsonText, const std::string& baseFolder);
ProfileT2Answers readProfileT2Answers(const std::string& path);

}  // namespace lf
