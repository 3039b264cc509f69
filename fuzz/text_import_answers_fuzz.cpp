// Answers files of the text import of any bytes: either they read, or the reader throws its
// Failure naming what is wrong; nothing else may come out. What reads must hold what the
// wizard relies on: row ranges in order, and the questions answered as in a run.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "base/failure.hpp"
#include "host/run_report.hpp"
#include "host/terminal_message_box.hpp"
#include "text/text_import_answers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::TextImportAnswers answers;
  try {
    answers = lf::parseTextImportAnswers(text, "/srv/clients");
  } catch (const lf::Failure&) {
    return 0;
  }
  for (const auto& [first, last] : answers.rowRanges)
    if (first > last) std::abort();  // a range reads only in order
  lf::RunReport report;
  std::ostringstream out;
  auto box = lf::makeAnswersMessageBox(answers.questions, &report, &out);
  for (const auto& [part, yes] : answers.questions.answers)
    box->ask("Ledgerfolio has found that there is already a client named '" + part +
                 "'.  Do you want to update this client?",
             4);
  report.toJson().dump();
  return 0;
}
