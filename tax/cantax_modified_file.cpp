// Writing the modified file of an export repair, atomically.
#include "tax/cantax_modified_file.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/failure.hpp"

namespace lf {

std::string modifiedFilePathFor(const std::string& rawPath, const std::string& fileName) {
  return (std::filesystem::path(rawPath).parent_path() / fileName).string();
}

void writeModifiedFile(const std::string& path, const std::string& text) {
  namespace fs = std::filesystem;
  const std::string temporary = path + ".tmp" + std::to_string(::getpid());
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    if (!out) {
      std::error_code ignored;
      fs::remove(temporary, ignored);
      throw Failure("cannot write the modified file '" + path + "'");
    }
  }
  std::error_code error;
  fs::rename(temporary, path, error);
  if (error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw Failure("cannot replace the modified file '" + path + "': " + error.message());
  }
}

}  // namespace lf
