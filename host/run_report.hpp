// The report of one run of lfimport: every message shown, every question with its answer,
// every error with its procedure trace, and counters per stage. Written as JSON at the end.
//
// A stage's counters explain every row it read: read = created + updated + skipped + failed,
// and every skip and failure is counted under its reason.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace lf {

struct StageCounters {
  long read = 0;
  long created = 0;
  long updated = 0;
  long skipped = 0;
  long failed = 0;
  // Why rows were skipped, and why they failed: each reason with its number of rows.
  std::map<std::string, long> skipReasons;
  std::map<std::string, long> failReasons;

  void skip(const std::string& reason);
  void fail(const std::string& reason);
};

class RunReport {
 public:
  void addMessage(const std::string& text, int kind);
  void addQuestion(const std::string& text, int kind, int answer, const std::string& answeredBy);
  void addError(const std::string& procedure, long number, const std::string& description,
                const std::vector<std::string>& trace, int action);
  StageCounters& stage(const std::string& name);

  long errorCount() const { return static_cast<long>(errors_.size()); }
  long failedRows() const;
  const std::vector<nlohmann::json>& messages() const { return messages_; }
  const std::vector<nlohmann::json>& questions() const { return questions_; }

  nlohmann::json toJson() const;
  // A few lines for the terminal.
  std::string summary() const;

 private:
  std::vector<nlohmann::json> messages_;
  std::vector<nlohmann::json> questions_;
  std::vector<nlohmann::json> errors_;
  std::vector<std::string> stageOrder_;
  std::map<std::string, StageCounters> stages_;
};

}  // namespace lf
