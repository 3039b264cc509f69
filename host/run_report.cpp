// Collecting and printing the run report.
#include "host/run_report.hpp"

#include <fmt/format.h>

#include "host/message_box.hpp"

namespace lf {
namespace {

// The text as JSON can carry it. Texts come from source databases in legacy code pages too;
// what is not UTF-8 becomes U+FFFD, by the JSON writer's own replacement, so that writing the
// report never fails.
std::string utf8(const std::string& text) {
  const std::string quoted =
      nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return nlohmann::json::parse(quoted).get<std::string>();
}

}  // namespace

void StageCounters::skip(const std::string& reason) {
  ++skipped;
  ++skipReasons[reason];
}

void StageCounters::fail(const std::string& reason) {
  ++failed;
  ++failReasons[reason];
}

void RunReport::addMessage(const std::string& text, int kind) {
  messages_.push_back({{"text", utf8(text)}, {"kind", kind}});
}

void RunReport::addQuestion(const std::string& text, int kind, int answer,
                            const std::string& answeredBy) {
  questions_.push_back({{"text", utf8(text)},
                        {"kind", kind},
                        {"answer", answer == kAnswerYes      ? "yes"
                                   : answer == kAnswerCancel ? "cancel"
                                                             : "no"},
                        {"answeredBy", utf8(answeredBy)}});
}

void RunReport::addError(const std::string& procedure, long number, const std::string& description,
                         const std::vector<std::string>& trace, int action) {
  std::vector<std::string> lines;
  for (const std::string& line : trace) lines.push_back(utf8(line));
  errors_.push_back({{"procedure", utf8(procedure)},
                     {"number", number},
                     {"description", utf8(description)},
                     {"trace", lines},
                     {"action", action}});
}

StageCounters& RunReport::stage(const std::string& name) {
  if (!stages_.count(name)) stageOrder_.push_back(name);
  return stages_[name];
}

long RunReport::failedRows() const {
  long failed = 0;
  for (const auto& [name, counters] : stages_) failed += counters.failed;
  return failed;
}

nlohmann::json RunReport::toJson() const {
  nlohmann::json stages = nlohmann::json::array();
  for (const std::string& name : stageOrder_) {
    const StageCounters& c = stages_.at(name);
    stages.push_back({{"stage", utf8(name)},
                      {"read", c.read},
                      {"created", c.created},
                      {"updated", c.updated},
                      {"skipped", c.skipped},
                      {"failed", c.failed},
                      {"skippedBecause", c.skipReasons},
                      {"failedBecause", c.failReasons}});
  }
  return {
      {"stages", stages}, {"messages", messages_}, {"questions", questions_}, {"errors", errors_}};
}

std::string RunReport::summary() const {
  std::string out;
  for (const std::string& name : stageOrder_) {
    const StageCounters& c = stages_.at(name);
    out += fmt::format(
        "{:<28} read {:>7}  created {:>7}  updated {:>7}  skipped {:>7}  failed {:>5}\n", name,
        c.read, c.created, c.updated, c.skipped, c.failed);
    for (const auto& [reason, rows] : c.skipReasons)
      out += fmt::format("    skipped {:>7}  {}\n", rows, reason);
    for (const auto& [reason, rows] : c.failReasons)
      out += fmt::format("    failed  {:>7}  {}\n", rows, reason);
  }
  out += fmt::format("{} message(s), {} question(s), {} error(s)\n", messages_.size(),
                     questions_.size(), errors_.size());
  return out;
}

}  // namespace lf
