// The TPS wizard: the sync wizard on the TPS description and contact tree.
#include "sync/tps_wizard.hpp"

#include <memory>
#include <utility>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/file_dialog.hpp"
#include "host/file_utilities.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "records/node_keys.hpp"
#include "sync/sources/tps_source.hpp"

namespace lf {

frmTPSWizard::frmTPSWizard(TPSImportOptions& engine, TPSWizardHooks hooks)
    : SyncWizard(engine,
                 {std::move(hooks.setTPSDatabaseLocation), std::move(hooks.sourceDatabase),
                  std::move(hooks.importTPSInformation), std::move(hooks.categories),
                  std::move(hooks.showProgressCaption)},
                 tpsSourceDescription(), std::make_unique<clsTPSContactTree>()) {}

}  // namespace lf
