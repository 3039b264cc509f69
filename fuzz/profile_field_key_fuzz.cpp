// Field keys of any bytes: a text either is no key or reads to a shape that writes back to the
// same text and reads again to the same shape.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "tax/profile_field_key.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  auto key = lf::parseProfileFieldKey(text);
  if (!key) return 0;
  if (key->toText() != text) std::abort();
  auto again = lf::parseProfileFieldKey(key->toText());
  if (!again || again->shape != key->shape || again->index != key->index ||
      again->cellKind != key->cellKind || again->lineNumber != key->lineNumber)
    std::abort();
  if (key->index.size() > 3) std::abort();
  return 0;
}
