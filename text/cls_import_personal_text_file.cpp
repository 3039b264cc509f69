// clsImportPersonalTextFile: construction and the category set-up of a personal import.
#include "text/cls_import_personal_text_file.hpp"

#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "host/client_drop_down.hpp"
#include "host/locale_service.hpp"
#include "records/lookups.hpp"

namespace lf {

bool isValidImportYear(long year) {
  return year >= 1951 && year < 4000;
}

clsImportPersonalTextFile::clsImportPersonalTextFile()
    : DelimitedTextImport("clsImportPersonalTextFile", 3),
      importTaxYear(moduleState().LocaleReference != nullptr
                        ? moduleState().LocaleReference->getCurrentPersonalYear()
                        : 0) {}

void clsImportPersonalTextFile::setupCategoryParameters() {
  procedure(label("setupCategoryParameters"), [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    if (dropDown == nullptr) return;
    dropDown->getCategoryForYear(importTaxYear, "");
    importIsPersonalTax = true;
    if (validCategoryID(importCategory))
      importIsPersonalTax = dropDown->getCategoryInfo(importCategory).needsRecord;
  });
}

}  // namespace lf
