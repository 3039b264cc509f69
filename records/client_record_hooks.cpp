// The module's one set of hooks into the summaries and the merge engine.
#include "records/client_record_hooks.hpp"

namespace lf {

ClientRecordHooks& clientRecordHooks() {
  static ClientRecordHooks hooks;
  return hooks;
}

}  // namespace lf
