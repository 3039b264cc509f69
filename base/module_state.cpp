// The single instance of the module-level references.
#include "base/module_state.hpp"

namespace lf {

ModuleState& moduleState() {
  static ModuleState state;
  return state;
}

}  // namespace lf
