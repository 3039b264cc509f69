// The input test of long loops: whether user input is waiting, so that a loop knows it should
// serve events. On Linux the user's input is the terminal on standard input.
#pragma once

namespace lf {

// True when standard input is a terminal and has input waiting; false otherwise (a pipe, a
// file or no terminal never counts as user input).
bool getInputState();

}  // namespace lf
