// Reading an answers file and driving the sync wizard with it.
#include "sync/wizard_answers.hpp"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/failure.hpp"
#include "base/text_encoding.hpp"
#include "host/file_dialog.hpp"
#include "host/import_duplicates_control.hpp"
#include "sync/sync_wizard.hpp"

namespace lf {
namespace {

using nlohmann::json;

Failure badField(const std::string& field, const std::string& expected) {
  return Failure("\"" + field + "\" must be " + expected);
}

std::optional<bool> optionalBool(const json& j, const char* field, const std::string& where) {
  if (!j.contains(field) || j[field].is_null()) return std::nullopt;
  if (!j[field].is_boolean()) throw badField(where + field, "true or false");
  return j[field].get<bool>();
}

std::string idText(const json& id, const std::string& field) {
  if (id.is_string()) return id.get<std::string>();
  if (id.is_number_integer()) return std::to_string(id.get<long long>());
  throw badField(field, "a list of client IDs");
}

WizardAnswers::ClientChoice clientChoice(const json& j, const char* field) {
  WizardAnswers::ClientChoice choice;
  if (!j.contains(field) || j[field].is_null()) return choice;
  const json& v = j[field];
  if (v.is_string()) {
    const std::string word = v.get<std::string>();
    if (word == "pre-checked") return choice;
    if (word == "all") {
      choice.kind = WizardAnswers::ClientChoice::All;
      return choice;
    }
  } else if (v.is_array()) {
    choice.kind = WizardAnswers::ClientChoice::List;
    for (const json& id : v) choice.ids.push_back(idText(id, field));
    return choice;
  }
  throw badField(field, "\"pre-checked\", \"all\" or a list of client IDs");
}

WizardAnswers::DateChoice dateChoice(const json& j, const char* field) {
  WizardAnswers::DateChoice choice;
  if (!j.contains(field) || j[field].is_null()) return choice;
  const json& v = j[field];
  const std::string where = std::string(field) + ".";
  if (!v.is_object()) throw badField(field, "an object");
  if (v.contains("range")) {
    static const std::map<std::string, long> types = {{"on", kSynchOnDate},
                                                      {"on or after", kSynchOnOrAfter},
                                                      {"on or before", kSynchOnOrBefore},
                                                      {"between", kSynchBetween}};
    const std::string range = v["range"].is_string() ? v["range"].get<std::string>() : "";
    if (range == "all") {
      choice.useRange = false;
    } else if (auto it = types.find(range); it != types.end()) {
      choice.useRange = true;
      choice.rangeType = it->second;
    } else {
      throw badField(where + "range",
                     "\"all\", \"on\", \"on or after\", \"on or before\" or \"between\"");
    }
  }
  for (const char* end : {"start", "end"}) {
    if (!v.contains(end) || v[end].is_null()) continue;
    if (!v[end].is_string()) throw badField(where + end, "a date text");
    (std::string(end) == "start" ? choice.start : choice.end) = v[end].get<std::string>();
  }
  return choice;
}

bool answerWord(const json& v, const std::string& field) {
  if (v.is_boolean()) return v.get<bool>();
  if (v.is_string()) {
    const std::string word = v.get<std::string>();
    if (word == "yes") return true;
    if (word == "no") return false;
  }
  throw badField(field, "\"yes\" or \"no\"");
}

void applyClientChoice(SyncWizard& wizard, const WizardAnswers::ClientChoice& choice) {
  switch (choice.kind) {
    case WizardAnswers::ClientChoice::PreChecked:
      break;
    case WizardAnswers::ClientChoice::All:
      wizard.tvwContacts.checkAllChildNodes(true);
      break;
    case WizardAnswers::ClientChoice::List:
      wizard.tvwContacts.checkOnly(choice.ids);
      break;
  }
}

bool applyDateChoice(SyncWizard& wizard, int step, const WizardAnswers::DateChoice& choice) {
  if (choice.useRange) wizard.optApptSyncDate_Click(step, *choice.useRange);
  if (choice.rangeType) wizard.optSynchApptDate_Click(step, *choice.rangeType);
  if (choice.start && !wizard.txtDate_LostFocus(step, 0, *choice.start)) return false;
  if (choice.end && !wizard.txtDate_LostFocus(step, 1, *choice.end)) return false;
  return true;
}

}  // namespace

Failure answersFieldError(const std::string& name, const std::string& expected) {
  return Failure("\"" + name + "\" must be " + expected);
}

int duplicateActionOf(const json& value, const std::string& name) {
  const std::string word = value.is_string() ? value.get<std::string>() : "";
  if (word == "skip") return kDuplicateSkip;
  if (word == "new") return kDuplicateNewClient;
  if (word == "update") return kDuplicateUpdate;
  if (word == "ask") return kDuplicateAsk;
  throw answersFieldError(name, "skip, new, update or ask");
}

std::vector<std::string> textListOf(const json& value, const std::string& name) {
  if (!value.is_array()) throw answersFieldError(name, "a list of texts");
  std::vector<std::string> texts;
  for (const json& item : value) {
    if (!item.is_string()) throw answersFieldError(name, "a list of texts");
    texts.push_back(item.get<std::string>());
  }
  return texts;
}

nlohmann::json parseAnswersObject(const std::string& jsonText) {
  json j;
  try {
    j = json::parse(jsonText);
  } catch (const json::exception& e) {
    // Any failure of the parser (bad syntax, a number too large for a double) is bad JSON;
    // the parser's own "[json.exception...]" tag means nothing to a user.
    std::string what = e.what();
    if (const auto tag = what.find("] ");
        !what.empty() && what[0] == '[' && tag != std::string::npos)
      what.erase(0, tag + 2);
    throw Failure("not valid JSON: " + what);
  }
  if (!j.is_object()) throw Failure("it must hold one JSON object");
  return j;
}

WizardAnswers parseWizardAnswers(const std::string& jsonText, const std::string& baseFolder) {
  json j = parseAnswersObject(jsonText);

  WizardAnswers a;
  if (j.contains("source")) {
    if (!j["source"].is_string()) throw badField("source", "a path");
    std::filesystem::path source = j["source"].get<std::string>();
    if (source.is_relative() && !baseFolder.empty())
      source = std::filesystem::path(baseFolder) / source;
    a.source = source.lexically_normal().string();
  }
  if (j.contains("groups")) {
    const json& g = j["groups"];
    if (!g.is_object()) throw badField("groups", "an object");
    a.contacts = optionalBool(g, "contacts", "groups.");
    a.timeEntries = optionalBool(g, "timeEntries", "groups.");
    a.invoices = optionalBool(g, "invoices", "groups.");
    a.workCodes = optionalBool(g, "workCodes", "groups.");
  }
  a.businessClients = clientChoice(j, "businessClients");
  a.personalClients = clientChoice(j, "personalClients");
  a.timeEntryDates = dateChoice(j, "timeEntries");
  a.invoiceDates = dateChoice(j, "invoices");
  if (j.contains("timeEntries") && j["timeEntries"].is_object())
    a.onlyWIP = optionalBool(j["timeEntries"], "onlyWIP", "timeEntries.");
  if (j.contains("category") && !j["category"].is_null()) {
    if (!j["category"].is_number_integer()) throw badField("category", "a category ID");
    a.category = j["category"].get<long>();
  }
  a.onlyNewEntries = optionalBool(j, "onlyNewEntries", "");
  a.duplicateCheck = optionalBool(j, "duplicateCheck", "");
  if (j.contains("questions")) {
    const json& q = j["questions"];
    if (!q.is_object()) throw badField("questions", "an object");
    if (q.contains("default")) a.defaultAnswerYes = answerWord(q["default"], "questions.default");
    if (q.contains("answers")) {
      if (!q["answers"].is_object()) throw badField("questions.answers", "an object");
      for (const auto& [text, answer] : q["answers"].items()) {
        const std::string field = "questions.answers." + text;
        if (answer.is_string() && answer.get<std::string>() == "cancel")
          a.cancelled.insert(text);
        else if (answer.is_boolean() ||
                 (answer.is_string() &&
                  (answer.get<std::string>() == "yes" || answer.get<std::string>() == "no")))
          a.answers[text] = answerWord(answer, field);
        else
          throw badField(field, "\"yes\", \"no\" or \"cancel\"");
      }
    }
  }
  return a;
}

std::string readAnswersFileText(const std::string& path) {
  if (std::filesystem::is_directory(path))
    throw Failure("the answers file '" + path + "' is a folder");
  std::ifstream in(path, std::ios::binary);
  if (!in) throw Failure("cannot read the answers file '" + path + "'");
  std::ostringstream contents;
  contents << in.rdbuf();
  std::string text = contents.str();
  makeCleanText(text);
  return text;
}

WizardAnswers readWizardAnswers(const std::string& path) {
  return readAnswersFile(path, parseWizardAnswers);
}

bool runSyncWizardFromAnswers(SyncWizard& wizard, const WizardAnswers& answers) {
  wizard.Initialize();
  // Each step is passed at most a few times on the way forward; the bound only stops a loop.
  for (int moves = 0; wizard.isOpen() && moves < 32; ++moves) {
    const int step = wizard.step();
    switch (step) {
      case 0:
        if (answers.contacts)
          wizard.chkSynchObjects[SyncWizard::kSynchContacts] = *answers.contacts;
        if (answers.timeEntries)
          wizard.chkSynchObjects[SyncWizard::kSynchTimeEntries] = *answers.timeEntries;
        if (answers.invoices)
          wizard.chkSynchObjects[SyncWizard::kSynchInvoices] = *answers.invoices;
        if (answers.workCodes)
          wizard.chkSynchObjects[SyncWizard::kSynchWorkCodes] = *answers.workCodes;
        break;
      case 2:
        if (!answers.source.empty()) {
          PresetFileDialog dialog(answers.source);
          wizard.cmdOpenFile_Click(dialog);
        }
        break;
      case 3:
        applyClientChoice(wizard, answers.businessClients);
        break;
      case 8:
        applyClientChoice(wizard, answers.personalClients);
        break;
      case 5:
        if (!applyDateChoice(wizard, 5, answers.timeEntryDates)) return false;
        if (answers.onlyWIP) wizard.chkImportOnlyWIP = *answers.onlyWIP;
        break;
      case 7:
        if (!applyDateChoice(wizard, 7, answers.invoiceDates)) return false;
        break;
      case 6:
        if (answers.category) {
          const int node = wizard.tvwCategories.findKey(
              ClientTree::categoryKey(std::to_string(*answers.category)));
          if (node >= 0) wizard.tvwCategories.checkAllChildNodes(true, node);
        }
        break;
      case 4:
        if (answers.onlyNewEntries) wizard.chkOnlySynchNewItems = *answers.onlyNewEntries;
        if (answers.duplicateCheck) wizard.duplicateCheckEnabled = *answers.duplicateCheck;
        wizard.cmdNav_Click(SyncWizard::kNavFinish);
        return wizard.finished();
    }
    wizard.cmdNav_Click(SyncWizard::kNavNext);
    if (wizard.step() == step) return false;
  }
  return wizard.finished();
}

std::unique_ptr<TerminalMessageBox> makeAnswersMessageBox(const WizardAnswers& answers,
                                                          RunReport* report, std::ostream* out) {
  auto box = std::make_unique<TerminalMessageBox>(
      report, out, false, answers.defaultAnswerYes ? kAnswerYes : kAnswerNo);
  std::map<std::string, int> given;
  for (const auto& [text, yes] : answers.answers) given[text] = yes ? kAnswerYes : kAnswerNo;
  for (const std::string& text : answers.cancelled) given[text] = kAnswerCancel;
  for (const auto& [text, answer] : given) box->addAnswer(text, answer);
  return box;
}

}  // namespace lf
