// The vocabularies of the enumerated company columns, as tables.
#include "text/value_vocabularies.hpp"

#include <initializer_list>

#include "base/general_utilities.hpp"

namespace lf {

namespace {

struct Word {
  std::string_view word;
  int value;
};

struct ExactVocabulary {
  std::string_view key;
  std::initializer_list<Word> words;
};

const ExactVocabulary kExactVocabularies[] = {
    {"RC59PERMISSION", {{"NONE", 0}, {"FULL", 1}, {"LIMITED", 2}}},
    {"RC59STATUS",
     {{"NOT FILED", 0}, {"AWAITING SIGNATURE", 1}, {"CRA PROCESSING", 2}, {"COMPLETED", 3}}},
    {"GSTFILINGMETHOD",
     {{"NOT SPECIFIED", 0}, {"TRADITIONAL", 1}, {"SIMPLE METHOD", 2}, {"QUICK METHOD", 3}}},
    {"COMPANYTYPE",
     {{"CORPORATION", 1},
      {"SOLE PROPRIETORSHIP", 2},
      {"PARTNERSHIP", 3},
      {"NON PROFIT", 4},
      {"TRUSTS", 5},
      {"JOINT VENTURES", 6}}},
};

constexpr std::string_view kFinancialStatementsKey = "FINANCIALSTATEMENTS";
// Searched in this order; the first word the cell contains decides.
const Word kFinancialStatementWords[] = {
    {"NTR", 2}, {"READER", 2}, {"COMPILATION", 2}, {"REVIEW", 3}, {"ENGAGEMENT", 3}, {"AUDIT", 5},
};
constexpr int kFinancialStatementsOther = 1;

}  // namespace

bool isVocabularyKey(std::string_view key) {
  if (key == kFinancialStatementsKey) return true;
  for (const ExactVocabulary& vocabulary : kExactVocabularies)
    if (vocabulary.key == key) return true;
  return false;
}

std::optional<int> vocabularyValue(std::string_view key, std::string_view cell) {
  const std::string word = GeneralUtilities::upperCase(GeneralUtilities::trim(cell));
  if (key == kFinancialStatementsKey) {
    for (const Word& w : kFinancialStatementWords)
      if (word.find(w.word) != std::string::npos) return w.value;
    return kFinancialStatementsOther;
  }
  for (const ExactVocabulary& vocabulary : kExactVocabularies) {
    if (vocabulary.key != key) continue;
    for (const Word& w : vocabulary.words)
      if (w.word == word) return w.value;
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace lf
