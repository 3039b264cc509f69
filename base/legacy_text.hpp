// The legacy run-time's text functions that the imports are written with: Val, Left, Mid,
// Right, InStr and Replace, with the run-time's forgiving bounds (a start or length past the
// end gives what there is, never a failure). Positions are 1-based, as the run-time's are.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// Val: the number at the start of a text, blanks anywhere ignored ("1 2 3" is 123), stopping
// at the first character that cannot continue it ("12abc" is 12, "1,234" is 1); 0 when none.
double val(std::string_view text);

std::string leftText(std::string_view text, long length);
std::string rightText(std::string_view text, long length);
// Mid(text, start[, length]); a negative length means "to the end".
std::string midText(std::string_view text, long start, long length = -1);

// InStr: 1-based position of `find` in `text` from `start`, 0 when absent. An empty `find`
// answers `start` while it lies within the text.
long inStr(std::string_view text, std::string_view find, long start = 1, bool ignoreCase = true);

// Replace: every occurrence (or the first `count` when count >= 0) of `find` by `with`,
// scanning left to right without re-reading replaced text.
std::string replaceAll(std::string_view text, std::string_view find, std::string_view with,
                       bool ignoreCase = true, long count = -1);

}  // namespace lf
