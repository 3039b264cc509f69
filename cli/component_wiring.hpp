// The one place where the component is wired together: the hooks through which lower layers
// call up (client records into the summaries and the merge engine) are installed here, and
// every front end (the lfimport program, the tests) calls it once before any work.
#pragma once

namespace lf {

// Installs every hook of the component. Idempotent.
void installComponentWiring();

}  // namespace lf
