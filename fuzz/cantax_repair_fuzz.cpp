// Raw CANTAX exports of any bytes, read as outside text, through the T1 and the T2Plus repair.
// Neither may crash or hang; a repaired text starts with its heading, ends without a line end
// and holds only clean text, every line of it a run of double-quoted values.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text_encoding.hpp"
#include "tax/cantax_t1_repair.hpp"
#include "tax/cantax_t2plus_repair.hpp"
#include "tax/cantax_text_cleanup.hpp"

namespace {

void checkModified(const std::string& modified, const std::string& heading) {
  if (modified.compare(0, heading.size(), heading) != 0) std::abort();
  if (modified.size() >= 2 && modified.compare(modified.size() - 2, 2, "\r\n") == 0) std::abort();
  if (!lf::isCleanText(modified)) std::abort();
  for (const std::string& line : lf::splitExportText(modified, "\r\n"))
    if (line.size() < 2 || line.front() != '"' || line.back() != '"') std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text =
      lf::textFromOutside(std::string_view(reinterpret_cast<const char*>(data), size));
  std::string modified;
  long rows = 0;
  if (lf::repairCANTAXT1Text(text, modified, rows)) {
    checkModified(modified, lf::cantaxT1ModifiedHeading());
  } else if (!modified.empty()) {
    std::abort();
  }
  if (lf::repairCANTAXT2PlusText(text, 2024, modified, rows))
    checkModified(modified, lf::cantaxT2PlusModifiedHeading());
  return 0;
}
