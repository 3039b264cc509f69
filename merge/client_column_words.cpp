// The word-valued client columns of the merge engine, over the shared enumeration texts.
#include "merge/client_column_words.hpp"

#include "base/general_utilities.hpp"
#include "merge/text_search.hpp"
#include "records/enumerations.hpp"

namespace lf::merge {

namespace {
using WordOf = std::string (*)(long);
struct ClientColumn {
  std::string_view upperName;
  WordOf word;
  long defaultNum;
  long first;  // numbers tried when writing a word back
  long last;
};
const ClientColumn kClientColumns[] = {
    {"RC59PERMISSION", getRC59PermissionStringFromRC59PermissionNum, 0, 0, 2},
    {"RC59STATUS", getRC59FormStatusStringFromRC59FormStatusNum, 0, 0, 3},
    {"GSTFILINGMETHOD", getGSTFilingMethodStringFromGSTFilingMethodNum, 0, 0, 3},
    {"FINANCIALSTATEMENTS", getFinancialStatementsStringFromFinancialStatementsNum, 1, 1, 5},
    {"CORPORATIONTYPE", getCorporationTypeStringFromCorporationTypeNum, 0, 0, 1},
    {"CORPORATIONLEVEL", getCorporationLevelStringFromCorporationLevelNum, 1, 1, 2},
};
const ClientColumn* clientColumn(std::string_view upperField) {
  for (const ClientColumn& c : kClientColumns)
    if (c.upperName == upperField) return &c;
  return nullptr;
}
}  // namespace

bool clientColumnWord(std::string_view upperField, long num, std::string& word) {
  const ClientColumn* c = clientColumn(upperField);
  if (c == nullptr) return false;
  word = c->word(num);
  return true;
}

bool clientColumnNumber(std::string_view upperField, std::string_view value, long& num) {
  const ClientColumn* c = clientColumn(upperField);
  if (c == nullptr) return false;
  const std::string wanted = upper(GeneralUtilities::trim(value));
  for (long n = c->first; n <= c->last; ++n) {
    if (upper(c->word(n)) == wanted) {
      num = n;
      return true;
    }
  }
  double numeric = 0;
  if (GeneralUtilities::parseNumber(value, numeric)) {
    num = static_cast<long>(numeric);
    return true;
  }
  return false;
}

long clientColumnDefault(std::string_view upperField) {
  const ClientColumn* c = clientColumn(upperField);
  return c ? c->defaultNum : 0;
}

}  // namespace lf::merge
