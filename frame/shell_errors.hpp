// The texts of the shell's document-opening failures, as the Profile file opener shows them.
#pragma once

#include <string>

namespace lf {

// The text of a shell result from 2 upward; the empty text for any code without one.
std::string shellErrorText(long code);

}  // namespace lf
