// Reading the answers file of the personal Profile import.
#include "tax/profile_t1_answers.hpp"

#include <filesystem>

#include "host/import_duplicates_control.hpp"
#include "tax/profile_t1_option_captions.hpp"

namespace lf {
namespace {

using nlohmann::json;

Failure badField(const std::string& name, const std::string& expected) {
  return answersFieldError(name, expected);
}

long wholeNumber(const json& value, const std::string& name, long low, long high) {
  if (!value.is_number_integer() || value.get<long long>() < low || value.get<long long>() > high)
    throw badField(name,
                   "a whole number from " + std::to_string(low) + " to " + std::to_string(high));
  return static_cast<long>(value.get<long long>());
}

bool boolean(const json& value, const std::string& name) {
  if (!value.is_boolean()) throw badField(name, "true or false");
  return value.get<bool>();
}

}  // namespace

ProfileT1Answers parseProfileT1Answers(const std::string& jsonText, const std::string& baseFolder) {
  json j = parseAnswersObject(jsonText);
  ProfileT1Answers a;
  if (j.contains("folder")) {
    if (!j["folder"].is_string()) throw badField("folder", "a path");
    std::filesystem::path path = j["folder"].get<std::string>();
    if (path.is_relative() && !baseFolder.empty()) path = std::filesystem::path(baseFolder) / path;
    a.folder = path.lexically_normal().string();
  }
  if (j.contains("year")) a.year = wholeNumber(j["year"], "year", 1951, 3999);
  if (j.contains("options")) {
    const json& o = j["options"];
    if (o.is_string() && o.get<std::string>() == "all") {
      for (int i = 0; i <= 38; ++i) a.options.push_back(i);
    } else if (o.is_array()) {
      for (const json& n : o) {
        if (!n.is_string()) {
          a.options.push_back(static_cast<int>(wholeNumber(n, "options", 0, 38)));
          continue;
        }
        const int option = profileT1OptionOfName(n.get<std::string>());
        if (option < 0)
          throw badField("options",
                         "option numbers from 0 to 38, their captions or field keys (\"" +
                             n.get<std::string>() + "\" is none)");
        a.options.push_back(option);
      }
    } else {
      throw badField("options", "\"all\" or a list of option numbers from 0 to 38");
    }
  }
  if (j.contains("couples")) {
    const json& c = j["couples"];
    std::string word = c.is_string() ? c.get<std::string>() : "";
    const auto& captions = profileT1CouplesCaptions();
    if (word == "both" || word == captions[0])
      a.couples = 0;
    else if (word == "primary" || word == captions[1])
      a.couples = 1;
    else if (word == "one" || word == captions[2])
      a.couples = 2;
    else
      throw badField("couples", "both, primary, one or the caption of one of the three");
  }
  if (j.contains("business")) a.business = boolean(j["business"], "business");
  if (j.contains("select")) {
    const json& s = j["select"];
    if (s.is_object()) {
      if (s.contains("year")) {
        a.selectByYear = true;
        a.selectYear = wholeNumber(s["year"], "select.year", 2004, 2018);
      }
      if (s.contains("notInLedgerfolio"))
        a.selectNotInLedgerfolio = boolean(s["notInLedgerfolio"], "select.notInLedgerfolio");
    } else if (!(s.is_string() && s.get<std::string>() == "all")) {
      throw badField("select", "\"all\" or {\"year\": Y, \"notInLedgerfolio\": true}");
    }
  }
  if (j.contains("duplicates")) {
    const json& d = j["duplicates"];
    if (!d.is_object()) throw badField("duplicates", "an object");
    if (d.contains("check")) a.duplicateCheck = boolean(d["check"], "duplicates.check");
    if (d.contains("action")) a.action = duplicateActionOf(d["action"], "duplicates.action");
  }
  if (j.contains("passwords")) a.passwords = textListOf(j["passwords"], "passwords");
  if (j.contains("questions"))
    a.questions = parseWizardAnswers(json{{"questions", j["questions"]}}.dump(), "");
  return a;
}

ProfileT1Answers readProfileT1Answers(const std::string& path) {
  return readAnswersFile(path, parseProfileT1Answers);
}

}  // namespace lf
