// Reading the answers file of the corporate Profile import.
#include "tax/profile_t2_answers.hpp"

#include <filesystem>

#include "host/import_duplicates_control.hpp"

namespace lf {
namespace {

using nlohmann::json;

Failure badField(const std::string& name, const std::string& expected) {
  return answersFieldError(name, expected);
}

bool boolean(const json& value, const std::string& name) {
  if (!value.is_boolean()) throw badField(name, "true or false");
  return value.get<bool>();
}

std::string word(const json& value) {
  return value.is_string() ? value.get<std::string>() : std::string();
}

}  // namespace

ProfileT2Answers parseProfileT2Answers(const std::string& jsonText, const std::string& baseFolder) {
  json j = parseAnswersObject(jsonText);
  ProfileT2Answers a;
  if (j.contains("folder")) {
    if (!j["folder"].is_string()) throw badField("folder", "a path");
    std::filesystem::path path = j["folder"].get<std::string>();
    if (path.is_relative() && !baseFolder.empty()) path = std::filesystem::path(baseFolder) / path;
    a.folder = path.lexically_normal().string();
  }
  if (j.contains("select")) {
    const json& s = j["select"];
    if (s.is_object()) {
      if (s.contains("mostRecent"))
        a.selectMostRecent = boolean(s["mostRecent"], "select.mostRecent");
      if (s.contains("notInLedgerfolio"))
        a.selectNotInLedgerfolio = boolean(s["notInLedgerfolio"], "select.notInLedgerfolio");
    } else if (word(s) != "all") {
      throw badField("select", "\"all\" or {\"mostRecent\": true, \"notInLedgerfolio\": true}");
    }
  }
  if (j.contains("address")) {
    const std::string w = word(j["address"]);
    int found = -1;
    for (int i = 0; i < 4; ++i)
      if (w == kProfileT2AddressWords[i]) found = i;
    if (found < 0) throw badField("address", "head-office, mailing, books or signing-officer");
    a.address = found;
  }
  if (j.contains("duplicates")) {
    const json& d = j["duplicates"];
    if (!d.is_object()) throw badField("duplicates", "an object");
    if (d.contains("check")) a.duplicateCheck = boolean(d["check"], "duplicates.check");
    if (d.contains("matchBy")) {
      const std::string w = word(d["matchBy"]);
      if (w == "business-number")
        a.matchBy = kMatchByBusinessNumber;
      else if (w == "corporate-name")
        a.matchBy = kMatchByCorporateName;
      else
        throw badField("duplicates.matchBy", "business-number or corporate-name");
    }
    if (d.contains("action")) a.action = duplicateActionOf(d["action"], "duplicates.action");
  }
  if (j.contains("passwords")) a.passwords = textListOf(j["passwords"], "passwords");
  if (j.contains("questions"))
    a.questions = parseWizardAnswers(json{{"questions", j["questions"]}}.dump(), "");
  return a;
}

ProfileT2Answers readProfileT2Answers(const std::string& path) {
  return readAnswersFile(path, parseProfileT2Answers);
}

}  // namespace lf
