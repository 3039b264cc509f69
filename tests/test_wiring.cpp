// The tests run against the wired component, as the lfimport program does. With
// LF_TEST_BACKEND=declared-keys every database of the suite is SQLite keyed by the declared
// keys only, as an engine without rowids keys its rows.
#include <cstdlib>
#include <string_view>

#include "cli/component_wiring.hpp"
#include "db/database_factory.hpp"

namespace {

bool wire() {
  lf::installComponentWiring();
  const char* backend = std::getenv("LF_TEST_BACKEND");
  if (backend != nullptr && std::string_view(backend) == "declared-keys")
    lf::setDatabaseBackendMaker(
        [](std::string_view) { return lf::makeSqliteBackend(lf::SqliteKeys::DeclaredKeysOnly); });
  return true;
}

const bool kWired = wire();

}  // namespace
