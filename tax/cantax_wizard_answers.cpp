// Reading the tax export answers file and answering the wizard's pages from it.
#include "tax/cantax_wizard_answers.hpp"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "sync/wizard_answers.hpp"
#include "tax/cantax_import_wizard.hpp"
#include "tax/drtax_import_wizard.hpp"

namespace lf {

namespace {

using json = nlohmann::json;

std::string relativeTo(const std::string& path, const std::string& baseFolder) {
  std::filesystem::path p = path;
  if (p.is_relative() && !baseFolder.empty()) p = std::filesystem::path(baseFolder) / p;
  return p.lexically_normal().string();
}

}  // namespace

TaxImportAnswers parseTaxImportAnswers(const std::string& jsonText, const std::string& baseFolder) {
  const json j = parseAnswersObject(jsonText);
  TaxImportAnswers a;
  a.text = parseTextImportAnswers(jsonText, baseFolder);
  if (j.contains("template") && !j["template"].is_null()) {
    if (!j["template"].is_string()) throw Failure("\"template\" must be a path");
    a.templatePath = relativeTo(j["template"].get<std::string>(), baseFolder);
  }
  if (j.contains("options") && !j["options"].is_null()) {
    const json& o = j["options"];
    std::vector<int> ticked;
    if (o.is_string() && GeneralUtilities::lowerCase(o.get<std::string>()) == "all") {
      for (int i = 0; i < kCANTAXT1OptionCount; ++i) ticked.push_back(i);
    } else if (!(o.is_string() && GeneralUtilities::lowerCase(o.get<std::string>()) == "none")) {
      if (!o.is_array()) throw Failure("\"options\" must be \"all\", \"none\" or option numbers");
      for (const json& n : o) {
        if (!n.is_number_integer() || n.get<int>() < 0 || n.get<int>() >= kCANTAXT1OptionCount)
          throw Failure("\"options\" must hold option numbers from 0 to 30");
        ticked.push_back(n.get<int>());
      }
    }
    a.options = ticked;
  }
  if (j.contains("address") && !j["address"].is_null()) {
    const std::string word = j["address"].is_string()
                                 ? GeneralUtilities::lowerCase(j["address"].get<std::string>())
                                 : "";
    if (word != "main" && word != "mailing")
      throw Failure("\"address\" must be \"main\" or \"mailing\"");
    a.address = word == "mailing" ? frmImportCANTAXT2Plus::kMailingAddress
                                  : frmImportCANTAXT2Plus::kMainAddress;
  }
  return a;
}

TaxImportAnswers readTaxImportAnswers(const std::string& path) {
  return readAnswersFile(path, parseTaxImportAnswers);
}

void openTaxExportOrFail(TaxExportImportWizard& wizard, const std::string& path) {
  if (wizard.openExportFile(path)) return;
  throw Failure("the file '" + path + "' is not recognised as " +
                (dynamic_cast<CANTAXImportWizard*>(&wizard) != nullptr
                     ? std::string("a CANTAX export of the template (too few values in its "
                                   "first row)")
                     : std::string("a Dr. Tax export (fewer than 15 values in its first row)")));
}

bool runTaxImportWizardFromAnswers(TaxExportImportWizard& wizard, const TaxImportAnswers& answers) {
  wizard.Initialize();
  auto* cantax = dynamic_cast<CANTAXImportWizard*>(&wizard);
  auto* t1 = dynamic_cast<frmImportCANTAXT1*>(&wizard);
  auto* t2plus = dynamic_cast<frmImportCANTAXT2Plus*>(&wizard);

  while (wizard.isOpen() && wizard.page() < wizard.openPage()) {
    if (cantax != nullptr && wizard.page() == CANTAXImportWizard::kTemplatePage &&
        answers.templatePath)
      cantax->cmdSaveTemplate_Click(*answers.templatePath);
    const int before = wizard.page();
    wizard.cmdNext_Click();
    if (wizard.page() == before) return false;
  }
  if (t2plus != nullptr && answers.address) t2plus->optAddress_Click(*answers.address);
  openTaxExportOrFail(wizard, answers.text.file);
  if (wizard.page() < wizard.gridPage()) wizard.cmdNext_Click();

  ImportGrid& grid = wizard.import().grid;
  if (!answers.text.allRows) {
    grid.selectAllRows(false);
    const long dataRows = grid.dataRowCount();
    for (const auto& [first, last] : answers.text.rowRanges) {
      if (first < 1 || last > dataRows)
        throw Failure("row " + std::to_string(first < 1 ? first : last) +
                      " does not exist: the modified file has " + std::to_string(dataRows) +
                      " data rows");
      for (long row = first; row <= last; ++row)
        grid.setRowSelected(static_cast<int>(row) + kFirstDataRow - 1, true);
    }
  }
  if (t1 != nullptr && answers.options) {
    t1->chkOption.fill(false);
    for (int option : *answers.options) t1->chkOption[static_cast<size_t>(option)] = true;
  }
  ImportDuplicatesControl& duplicates =
      wizard.isPersonal() ? wizard.contactDuplicates() : wizard.companyDuplicates();
  if (answers.text.duplicateCheck) duplicates.setCheckingOn(*answers.text.duplicateCheck);
  if (answers.text.matchBy) duplicates.setMatchBy(*answers.text.matchBy);
  if (answers.text.action) duplicates.setAction(*answers.text.action);
  if (!wizard.isPersonal()) {
    // The row's contact is matched by name with the same check and action, as in the text
    // import, so that a re-run finds the contacts it made.
    ImportDuplicatesControl& contacts = wizard.contactDuplicates();
    contacts.setCheckingOn(duplicates.checkingOn());
    contacts.setMatchBy(kMatchByName);
    contacts.setAction(duplicates.getAction());
  }
  if (wizard.hasYear() && answers.text.year) wizard.cboYear = *answers.text.year;

  while (wizard.isOpen()) {
    const int before = wizard.page();
    wizard.cmdNext_Click();
    if (wizard.isOpen() && wizard.page() == before) return false;
  }
  return wizard.finished();
}

}  // namespace lf
