// clsImportBusinessTextFile: construction and the category set-up of a business import.
#include "text/cls_import_business_text_file.hpp"

#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "host/client_drop_down.hpp"
#include "records/lookups.hpp"

namespace lf {

clsImportBusinessTextFile::clsImportBusinessTextFile()
    : DelimitedTextImport("clsImportBusinessTextFile", 2) {}

void clsImportBusinessTextFile::setupCategoryParameters() {
  procedure(label("setupCategoryParameters"), [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    if (dropDown == nullptr) return;
    const long fallback = dropDown->getCurrentCategoryID();
    if (importCategory <= 0 || !validCategoryID(importCategory)) importCategory = fallback;
    if (importCategory >= 0 && !importForAddressBook &&
        !dropDown->getCategoryInfo(importCategory).needsRecord)
      importCategory = fallback;
    if (dropDown->getCategoryInfo(importCategory).needsRecord) showThisClient = true;
  });
}

}  // namespace lf
