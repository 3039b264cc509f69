// The run report file of a command.
#include "cli/report_file.hpp"

#include <filesystem>
#include <fstream>

#include "base/failure.hpp"
#include "cli/json_output.hpp"

namespace lf::cli {

void requireReportPath(const std::string& path) {
  namespace fs = std::filesystem;
  if (fs::is_directory(path)) throw Failure("the report '" + path + "' is a folder");
  const fs::path folder = fs::path(path).parent_path();
  if (!folder.empty() && !fs::is_directory(folder))
    throw Failure("the folder of the report '" + path + "' does not exist");
}

void writeReportFile(const RunReport& report, const std::string& path) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (out) out << jsonText(report.toJson()) << "\n";
  out.close();
  if (!out) throw Failure("cannot write the report '" + path + "'");
}

}  // namespace lf::cli
