// The answers-file front end of the sync wizard: the same step machine as the terminal,
// driven by a JSON file instead of a person, so that a sync can run unattended.
//
//   {
//     "source": "tps_export.db",           // relative to the answers file's folder
//     "groups": {"contacts": true, "timeEntries": true, "invoices": true, "workCodes": true},
//     "businessClients": "pre-checked",    // or "all", or a list of source ClientIDs
//     "personalClients": "pre-checked",
//     "timeEntries": {"range": "all", "onlyWIP": true},
//     "invoices": {"range": "between", "start": "2024-01-01", "end": "2024-12-31"},
//     "category": 12,                      // only used when the category step is shown
//     "onlyNewEntries": true,
//     "duplicateCheck": true,
//     "questions": {"default": "no", "answers": {"Sunrise Bakery Ltd,": "yes"}}
//   }
//
// Ranges: "all", "on", "on or after", "on or before", "between". Every field may be left
// out; what is left out keeps the wizard's default. Questions are the yes/no questions of
// the run ("<client name>: Is this a business client?"), answered by any part of their text,
// such as the client's name; the others take the default. An answer may also be "cancel", for
// the questions and forms that have a Cancel button.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "base/failure.hpp"
#include "host/terminal_message_box.hpp"

namespace lf {

class SyncWizard;
class RunReport;

struct WizardAnswers {
  // Which clients a client step leaves checked.
  struct ClientChoice {
    enum Kind { PreChecked, All, List } kind = PreChecked;
    std::vector<std::string> ids;  // for List
  };
  struct DateChoice {
    std::optional<bool> useRange;
    std::optional<long> rangeType;
    std::optional<std::string> start;
    std::optional<std::string> end;
  };

  std::string source;
  std::optional<bool> contacts, timeEntries, invoices, workCodes;
  ClientChoice businessClients;
  ClientChoice personalClients;
  DateChoice timeEntryDates;
  DateChoice invoiceDates;
  std::optional<bool> onlyWIP;
  std::optional<long> category;
  std::optional<bool> onlyNewEntries;
  std::optional<bool> duplicateCheck;
  bool defaultAnswerYes = false;
  std::map<std::string, bool> answers;  // part of a question's text, to yes
  // Parts of question texts answered "cancel": the Cancel button of a question or form that
  // has one (the No of a yes/no question).
  std::set<std::string> cancelled;
};

// Reads an answers file (outside text: see host/text_encoding.hpp); a relative source path is
// taken from the file's folder. Throws Failure naming the file, and the field when a field has
// the wrong form.
WizardAnswers readWizardAnswers(const std::string& path);
WizardAnswers parseWizardAnswers(const std::string& jsonText, const std::string& baseFolder);

// The way every answers file is read: its text as outside text, given with the file's folder
// to `parse`; a folder, an unreadable file and whatever `parse` refuses are named with the file.
std::string readAnswersFileText(const std::string& path);
// The one JSON object an answers file holds; throws Failure "not valid JSON: ..." (without the
// parser's own tag) or "it must hold one JSON object".
nlohmann::json parseAnswersObject(const std::string& jsonText);
// A field of an answers file in the wrong form: "\"name\" must be <expected>".
Failure answersFieldError(const std::string& name, const std::string& expected);
// The duplicate action a field names: "skip", "new", "update" or "ask".
int duplicateActionOf(const nlohmann::json& value, const std::string& name);
// A field holding a list of texts.
std::vector<std::string> textListOf(const nlohmann::json& value, const std::string& name);
template <class Parse>
auto readAnswersFile(const std::string& path, Parse&& parse) {
  const std::string text = readAnswersFileText(path);
  try {
    return parse(text, std::filesystem::path(path).parent_path().string());
  } catch (const Failure& refused) {
    throw Failure("the answers file '" + path + "': " + refused.what());
  }
}

// Initializes the wizard and answers each step, pressing Next until the finish step and then
// Finish. True when the wizard finished; false when a step refused to move on (its message
// went through MsgboxClass) or a date answer was no valid date.
bool runSyncWizardFromAnswers(SyncWizard& wizard, const WizardAnswers& answers);

// The message box of an unattended run: messages go to out and the report, questions are
// answered from the answers file (a question containing an answer's text takes that answer,
// the first in the order of the texts; otherwise the default).
std::unique_ptr<TerminalMessageBox> makeAnswersMessageBox(const WizardAnswers& answers,
                                                          RunReport* report, std::ostream* out);

}  // namespace lf
