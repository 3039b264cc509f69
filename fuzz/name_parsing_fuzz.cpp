// Personal names of any bytes through the name procedures: none may crash, hang or read out
// of bounds, whatever the parse makes of them.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "records/name_parsing.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view name(reinterpret_cast<const char*>(data), size);
  lf::parsePrefixFromNameString(name);
  lf::parseDoublePrefexesFromNameString(name);
  lf::parseSingleNameString(name);
  lf::ContactNameFields fields = lf::parseNameForContactFields(name);
  if (!fields.spouse.empty()) lf::parseSingleNameString(fields.spouse);
  return 0;
}
