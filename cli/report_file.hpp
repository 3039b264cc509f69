// The run report file of a command (--report): its path checked before the run, so that a
// path that cannot be written is refused before any work rather than after it, and the JSON
// written at the end.
#pragma once

#include <string>

#include "host/run_report.hpp"

namespace lf::cli {

// Throws Failure when the path is a folder or its folder does not exist.
void requireReportPath(const std::string& path);
// Writes the report as JSON; throws Failure naming the file when it cannot be written.
void writeReportFile(const RunReport& report, const std::string& path);

}  // namespace lf::cli
