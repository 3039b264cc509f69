// The TPS wizard: the sync wizard on the TPS description and contact tree.
#include "sync/tps_wizard.hpp"

#include <memory>
#include <utility>

#include "sync/sources/tps_source.hpp"

namespace lf {

frmTPSWizard::frmTPSWizard(TPSImportOptions& engine, TPSWizardHooks hooks)
    : SyncWizard(engine,
                 {std::move(hooks.setTPSDatabaseLocation), std::move(hooks.sourceDatabase),
                  std::move(hooks.importTPSInformation), std::move(hooks.categories),
                  std::move(hooks.showProgressCaption)},
                 tpsSourceDescription(), std::make_unique<clsTPSContactTree>()) {}

}  // namespace lf
