// The modified file of a CANTAX or Dr. Tax import ("CANTAX_Modified.txt", "DrTax_Modified.txt")
// beside the raw export. It is replaced on each run, and written to a temporary file in the
// same folder that is renamed over the old one, so that an import never reads a half-written
// file and an interrupted run leaves the previous one whole.
#pragma once

#include <string>

namespace lf {

// The path of the named modified file in the folder of the raw export.
std::string modifiedFilePathFor(const std::string& rawPath, const std::string& fileName);

// Writes the text as the whole file (temporary file, then rename). Throws Failure naming the
// file when it cannot be written; the old file then stays as it was.
void writeModifiedFile(const std::string& path, const std::string& text);

}  // namespace lf
