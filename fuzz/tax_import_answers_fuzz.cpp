// Answers files of the CANTAX and Dr. Tax imports of any bytes: either they read, or the reader
// throws its Failure naming what is wrong; nothing else may come out. What reads must hold
// what the wizard relies on: option numbers from 0 to 30, row ranges in order, an address of 1
// or 2.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.hpp"
#include "tax/cantax_wizard_answers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::TaxImportAnswers answers;
  try {
    answers = lf::parseTaxImportAnswers(text, "/srv/exports");
  } catch (const lf::Failure&) {
    return 0;
  }
  for (const auto& [first, last] : answers.text.rowRanges)
    if (first > last) std::abort();
  if (answers.options)
    for (int option : *answers.options)
      if (option < 0 || option > 30) std::abort();
  if (answers.address && *answers.address != 1 && *answers.address != 2) std::abort();
  return 0;
}
