// The one rule for text that enters the component from outside: values of a source or
// practice database, files read (templates, answers files) and text given on the command line.
//
// Inside, all text is UTF-8. The exports that reach the component are mostly UTF-8, but older
// ones hold Windows-1252 bytes, and a single such byte must not make a value unusable. So:
// every valid UTF-8 sequence stands as it is; every other byte is read as the Windows-1252
// character of that byte (the five bytes that code page leaves undefined as the control
// characters of the same number); NUL characters, the padding of fixed-width fields, are
// dropped. The result is always valid UTF-8, and text that is already valid and free of NUL
// comes back unchanged, so applying the rule twice changes nothing.
//
// These functions depend on nothing else in the project.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// True when the bytes are valid UTF-8 without NUL: text the rule leaves as it is.
bool isCleanText(std::string_view bytes);

// The bytes as text by the rule above.
std::string textFromOutside(std::string_view bytes);

// Applies the rule in place; does nothing (and copies nothing) for clean text.
void makeCleanText(std::string& text);

}  // namespace lf
