// Client files of any bytes through the delimiter guess and both passes of the text import
// reader, with the options taken from the first byte. None may crash or hang, the grid must
// be as wide as the measuring pass said, the filling pass must find the same width, and every
// cell must be clean text.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/text_encoding.hpp"
#include "text/delimited_file_reader.hpp"

namespace {

const std::string& fuzzFile() {
  static const std::string path = "/tmp/lf_fuzz_reader_" + std::to_string(::getpid()) + ".txt";
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t options = data[0];
  FILE* file = std::fopen(fuzzFile().c_str(), "wb");
  if (file == nullptr) return 0;
  std::fwrite(data + 1, 1, size - 1, file);
  std::fclose(file);

  lf::DelimitedFileReader reader("clsImportBusinessTextFile");
  reader.fileLocation = fuzzFile();
  std::string found;
  reader.determineDelimiter(found);
  static const char* const kDelimiters[] = {nullptr, "\t", ";", " ", "|", "\xC2\xA6", "::", ""};
  if (const char* delimiter = kDelimiters[options & 7]) reader.strDelimiter = delimiter;
  static const char* const kQualifiers[] = {"\"", "'", "", "\xC3\xBE"};
  reader.strTextQualifier = kQualifiers[(options >> 3) & 3];
  reader.firstRowFieldNames = (options & 0x20) != 0;
  reader.checkRemoveCaps = (options & 0x40) != 0;
  lf::ImportGrid grid;
  reader.gridControl = &grid;
  reader.loadGrid();
  long columns = 0;
  reader.countOnly = true;
  reader.populateData(columns);
  if (grid.cols() != columns + 1) std::abort();
  // The measuring pass counts the plain start of a line on its own: the filling pass, which
  // splits every field, must find the same width.
  lf::ImportGrid second;
  reader.gridControl = &second;
  reader.countOnly = false;
  long filled = 0;
  reader.populateData(filled);
  if (filled != columns) std::abort();
  for (int row = 0; row < grid.rows(); ++row)
    for (int col = 0; col < grid.cols(); ++col)
      if (!lf::isCleanText(grid.textMatrix(row, col))) std::abort();
  return 0;
}
