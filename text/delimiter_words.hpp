// The words for the delimiter and qualifier choices of the wizard, as the command line and
// the answers file give them: "tab", "semicolon", "comma", "space" or another text; a
// qualifier character or "none" ("(None)" as the wizard's list says it).
#pragma once

#include <string>
#include <string_view>

namespace lf {

// The delimiter a word stands for; another text stands for itself.
std::string delimiterFromWord(std::string_view word);
// The word of a delimiter for display: "comma", "tab", ...; another text as it is.
std::string delimiterWord(std::string_view delimiter);
// The qualifier a word stands for: "none" and "(None)" (any case) give the empty text.
std::string qualifierFromWord(std::string_view word);
// True when the text is exactly one character, as a delimiter or qualifier must be.
bool isOneCharacter(std::string_view text);

}  // namespace lf
