// Damaged Access files through the reader that makes the SQLite copy of an export. Whatever the
// bytes, the reader ends in a copy or in one Failure, within its time bound, and leaves no copy
// behind when it refuses. Best started from the real Access samples kept beside the project
// (tools/fuzz.sh adds them when they are there), so that the mutations are damaged files.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/failure.hpp"
#include "db/access_export_copy.hpp"

namespace {

const std::filesystem::path& folder() {
  static const std::filesystem::path path = [] {
    std::filesystem::path p =
        std::filesystem::temp_directory_path() / ("lf-fuzz-access-" + std::to_string(::getpid()));
    std::filesystem::create_directories(p);
    return p;
  }();
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input = (folder() / "input.mdb").string();
  const std::string copy = (folder() / "copy.db").string();
  {
    std::ofstream out(input, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::filesystem::remove(copy);
  try {
    lf::copyAccessFileToSqlite(input, copy, 5);
  } catch (const lf::Failure& e) {
    const std::string message = e.what();
    if (message.find('\n') != std::string::npos) std::abort();  // one line, always
    if (std::filesystem::exists(copy)) std::abort();            // a refused copy is gone
  }
  return 0;
}
