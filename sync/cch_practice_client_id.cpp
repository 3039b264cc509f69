// The CCH Practice client-ID record, parsed by the source's client key shape.
#include "sync/cch_practice_client_id.hpp"

#include "sync/sources/cch_practice_source.hpp"

namespace lf {

void clsCCHPracticeClientID::parseClientID(std::string_view text) {
  const std::vector<std::string> parts = cchPracticeSourceDescription().clientKey.parse(text);
  cCHClientID = parts[0];
  cCHEngagement = parts[1];
}

std::string clsCCHPracticeClientID::clientIDText() const {
  return ClientKeyShape::join({cCHClientID, cCHEngagement});
}

}  // namespace lf
