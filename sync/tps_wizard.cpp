// The TPS wizard: the sync wizard on the TPS description and contact tree.
#include "sync/tps_wizard.hpp"

#include <memory>
#include <utility>

#include "sync/sources/tps_source.hpp"

namespace lf {

frmTPSWizard::frmTPSWizard(TPSImportOptions& engine, TPSWizardHooks hooks)
    : SyncWizard(engine, std::move(hooks), tpsSourceDescription(),
                 std::make_unique<clsTPSContactTree>()) {}

}  // namespace lf
