// Dr. Tax exports of any bytes, read as outside text, through the T1 and the T2 repair. Neither
// may crash or hang; a repaired text starts with its heading, holds only clean text, and has
// one line per row written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text_encoding.hpp"
#include "tax/cantax_text_cleanup.hpp"
#include "tax/drtax_repair.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text =
      lf::textFromOutside(std::string_view(reinterpret_cast<const char*>(data), size));
  for (lf::DrTaxProduct product : {lf::DrTaxProduct::T1, lf::DrTaxProduct::T2}) {
    std::string modified;
    long rows = 0, dropped = 0;
    if (!lf::repairDrTaxText(product, text, 2024, modified, rows, dropped)) {
      if (!modified.empty()) std::abort();
      continue;
    }
    const std::string& heading = lf::drTaxModifiedHeading(product);
    if (modified.compare(0, heading.size(), heading) != 0) std::abort();
    if (!lf::isCleanText(modified)) std::abort();
    if (static_cast<long>(lf::splitExportText(modified, "\r\n").size()) != rows + 1) std::abort();
  }
  return 0;
}
