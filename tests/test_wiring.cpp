// The tests run against the wired component, as the lfimport program does.
#include "cli/component_wiring.hpp"

namespace {
const bool kWired = (lf::installComponentWiring(), true);
}  // namespace
