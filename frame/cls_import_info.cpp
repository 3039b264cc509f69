// The dispatcher of the tax-file and text imports.
#include "frame/cls_import_info.hpp"

#include <memory>

#include "base/procedure.hpp"

namespace lf {
namespace {

std::map<std::string, ImportFormOpener>& formOpeners() {
  static std::map<std::string, ImportFormOpener> openers;
  return openers;
}

}  // namespace

void registerImportForm(const std::string& formName, ImportFormOpener opener) {
  formOpeners()[formName] = std::move(opener);
}

void clsImportInfo::openImportForm(const char* label, const char* formName) {
  procedure(label, [&] {
    openForm_ = formName;
    auto it = formOpeners().find(formName);
    if (it != formOpeners().end()) it->second(*this);
    openForm_.clear();
  });
  openForm_.clear();
}

// Deliberately an empty entry point: no form opens and no error is shown.
void clsImportInfo::openTaxCycleT1ImportForm() {
  procedure("nvImportlf6.dll-clsImportInfo-openTaxCycleT1ImportForm", [] {});
}

void clsImportInfo::openProfileT1ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openProfileT1ImportForm", "frmImportProfileT1");
}
void clsImportInfo::openProfileT2ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openProfileT2ImportForm", "frmImportProfileT2");
}
void clsImportInfo::openCANTAXT1ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openCANTAXT1ImportForm", "frmImportCANTAXT1");
}
void clsImportInfo::openCANTAXT2ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openCANTAXT2ImportForm", "frmImportCANTAXT2Plus");
}
void clsImportInfo::openDrTaxT1ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openDrTaxT1ImportForm", "frmImportDrTaxT1");
}
void clsImportInfo::openDrTaxT2ImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openDrTaxT2ImportForm", "frmImportDrTaxT2");
}
void clsImportInfo::openPersonalClientsImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openPersonalClientsImportForm",
                 "frmImportPersonalClients");
}
void clsImportInfo::openBusinessClientsImportForm() {
  openImportForm("nvImportlf6.dll-clsImportInfo-openBusinessClientsImportForm", "frmImportCSV");
}

}  // namespace lf
