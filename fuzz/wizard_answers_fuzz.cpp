// Answers files of any bytes: either they read, or the reader throws its Failure naming what is
// wrong; nothing else may come out. What reads is then used as the run would use it: the
// questions of the run answered by the message box, with the report written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "base/failure.hpp"
#include "host/run_report.hpp"
#include "host/terminal_message_box.hpp"
#include "sync/wizard_answers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::WizardAnswers answers;
  try {
    answers = lf::parseWizardAnswers(text, "/srv/exports");
  } catch (const lf::Failure&) {
    return 0;
  }
  lf::RunReport report;
  std::ostringstream out;
  auto box = lf::makeAnswersMessageBox(answers, &report, &out);
  for (const auto& [part, yes] : answers.answers)
    box->ask("Sunrise Bakery Ltd, " + part + ": Is this a business client?", 4);
  // A question without a Cancel button is never answered Cancel; one with it may be.
  for (const std::string& part : answers.cancelled) {
    if (box->ask("Keep " + part + "?", 4) == lf::kAnswerCancel) std::abort();
    box->askYesNoCancel("Use " + part + "?", 9);
    box->pressesCancel("Form " + part, 4);
  }
  box->ask("Is this a business client?", 4);
  box->show(answers.source, 0);
  report.toJson().dump();
  return 0;
}
