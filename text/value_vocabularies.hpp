// The words a client file may hold for the enumerated company columns, and the numbers they
// store. The cell is trimmed and upper-cased first. RC59PERMISSION, RC59STATUS,
// GSTFILINGMETHOD and COMPANYTYPE take exact words, and a word not in their list writes
// nothing; FINANCIALSTATEMENTS is searched for words in order ("Audit Review" gives 3) and
// falls back to 1.
#pragma once

#include <optional>
#include <string_view>

namespace lf {

// True for the keys of this vocabulary.
bool isVocabularyKey(std::string_view key);

// The number a cell stores under the key; nothing for a word the key does not know (and for
// a key that is no vocabulary key).
std::optional<int> vocabularyValue(std::string_view key, std::string_view cell);

}  // namespace lf
