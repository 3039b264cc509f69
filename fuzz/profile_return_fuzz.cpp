// Stand-in return files of any bytes: either they read, or the reader throws its Failure with
// the product's unspecified error; nothing else may come out. What reads is written back and
// must read again to the same return.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.hpp"
#include "tax/profile_automation.hpp"
#include "tax/profile_return_file.hpp"

namespace {

bool sameClient(const lf::ProfileReturnClient& a, const lf::ProfileReturnClient& b) {
  return a.clientStatus == b.clientStatus && a.efileStatus == b.efileStatus && a.fields == b.fields;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::ProfileReturn read;
  try {
    read = lf::readProfileReturn(text);
  } catch (const lf::Failure& failure) {
    if (failure.number() != lf::kProfileUnspecifiedError) std::abort();
    return 0;
  }
  lf::ProfileReturn again = lf::readProfileReturn(lf::writeProfileReturn(read));
  if (again.kind != read.kind || again.year != read.year ||
      again.password.has_value() != read.password.has_value() ||
      !sameClient(again.primary, read.primary) ||
      again.second.has_value() != read.second.has_value() ||
      (read.second && !sameClient(*again.second, *read.second)))
    std::abort();
  return 0;
}
