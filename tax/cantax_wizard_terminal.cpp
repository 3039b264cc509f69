// The terminal front end of the tax export import wizards.
#include "tax/cantax_wizard_terminal.hpp"

#include <sstream>

#include "base/general_utilities.hpp"
#include "tax/cantax_import_wizard.hpp"
#include "tax/cantax_t1_marks.hpp"
#include "tax/drtax_import_wizard.hpp"

namespace lf {

namespace {

constexpr int kShownRows = 5;
constexpr int kShownColumns = 8;

void showGrid(const ImportGrid& grid, std::ostream& out) {
  for (int row = 0; row < grid.rows() && row < kFirstDataRow + kShownRows; ++row) {
    if (row == kAssignmentRow) continue;
    out << (row < kFirstDataRow ? "   " : (grid.isRowSelected(row) ? "[x]" : "[ ]"));
    for (int col = 1; col < grid.cols() && col <= kShownColumns; ++col)
      out << " | " << grid.textMatrix(row, col);
    out << "\n";
  }
  out << grid.dataRowCount() << " data rows\n";
}

void showPage(TaxExportImportWizard& wizard, std::ostream& out) {
  auto* cantax = dynamic_cast<CANTAXImportWizard*>(&wizard);
  auto* t1 = dynamic_cast<frmImportCANTAXT1*>(&wizard);
  auto* t2plus = dynamic_cast<frmImportCANTAXT2Plus*>(&wizard);
  const int page = wizard.page();
  out << "\n-- page " << page + 1 << " of " << wizard.pageCount() << " --\n";
  if (cantax != nullptr && page == CANTAXImportWizard::kTemplatePage)
    out << "save [PATH]: save the CANTAX export template"
        << (cantax->templatePath().empty() ? "" : " (saved: " + cantax->templatePath() + ")")
        << "\n";
  if (page == wizard.openPage())
    out << "open PATH: open the export"
        << (wizard.fileOpened() ? " (open: " + wizard.exportPath() + ", " +
                                      std::to_string(wizard.modifiedRows()) + " rows)"
                                : "")
        << "\n";
  if (page == wizard.gridPage() && wizard.fileOpened()) {
    showGrid(wizard.import().grid, out);
    out << "toggle N: select or unselect data row N\n";
  }
  if (t1 != nullptr && page == CANTAXImportWizard::kAdvancedPage) {
    // Each box with its caption, by option number.
    for (int i = 0; i < kCANTAXT1OptionCount; ++i)
      for (const CANTAXT1Option& option : cantaxT1Options())
        if (option.option == i)
          out << (t1->chkOption[static_cast<size_t>(i)] ? "[x] " : "[ ] ") << i << " "
              << cantaxT1OptionCaption(option) << "\n";
    out << "tick N | untick N\n";
  }
  if (t2plus != nullptr && page == CANTAXImportWizard::kAdvancedPage)
    out << "Which CANTAX Address do you want to use for the main Ledgerfolio address? "
        << (t2plus->optAddress() == frmImportCANTAXT2Plus::kMailingAddress
                ? "Use CANTAX Mailing Address"
                : "Use CANTAX Main Address")
        << "\naddress main|mailing\n";
  if (page == wizard.pageCount() - 1) {
    ImportDuplicatesControl& duplicates =
        wizard.isPersonal() ? wizard.contactDuplicates() : wizard.companyDuplicates();
    out << "duplicate check: " << (duplicates.checkingOn() ? "on" : "off")
        << " (duplicates on|off)\n";
    if (wizard.hasYear()) out << "year: " << wizard.cboYear << " (year Y)\n";
  }
  out << "next | back | cancel" << (page == wizard.pageCount() - 1 ? " (next is Finish)" : "")
      << "\n> " << std::flush;
}

}  // namespace

bool runTaxImportWizardAtTerminal(TaxExportImportWizard& wizard, std::istream& in,
                                  std::ostream& out, const std::string& file) {
  if (!wizard.isOpen()) wizard.Initialize();
  auto* cantax = dynamic_cast<CANTAXImportWizard*>(&wizard);
  auto* t1 = dynamic_cast<frmImportCANTAXT1*>(&wizard);
  auto* t2plus = dynamic_cast<frmImportCANTAXT2Plus*>(&wizard);
  bool fileGiven = !file.empty();
  std::string line;
  while (wizard.isOpen()) {
    if (fileGiven && wizard.page() == wizard.openPage()) {
      fileGiven = false;
      wizard.openExportFile(file);
    }
    showPage(wizard, out);
    if (!std::getline(in, line)) {
      wizard.cmdCancel_Click();
      break;
    }
    std::istringstream words(line);
    std::string command, argument;
    words >> command;
    std::getline(words, argument);
    argument = GeneralUtilities::trim(argument);
    if (command == "next") {
      wizard.cmdNext_Click();
    } else if (command == "back") {
      wizard.cmdBack_Click();
    } else if (command == "cancel") {
      wizard.cmdCancel_Click();
    } else if (command == "save" && cantax != nullptr) {
      out << "saved " << cantax->cmdSaveTemplate_Click(argument) << "\n";
    } else if (command == "open") {
      wizard.openExportFile(argument);
    } else if (command == "toggle") {
      const int row = std::atoi(argument.c_str()) + kFirstDataRow - 1;
      ImportGrid& grid = wizard.import().grid;
      if (row >= kFirstDataRow && row < grid.rows())
        grid.setRowSelected(row, !grid.isRowSelected(row));
    } else if ((command == "tick" || command == "untick") && t1 != nullptr) {
      const int option = std::atoi(argument.c_str());
      if (option >= 0 && option < kCANTAXT1OptionCount)
        t1->chkOption[static_cast<size_t>(option)] = command == "tick";
    } else if (command == "address" && t2plus != nullptr) {
      t2plus->optAddress_Click(argument == "mailing" ? frmImportCANTAXT2Plus::kMailingAddress
                                                     : frmImportCANTAXT2Plus::kMainAddress);
    } else if (command == "duplicates") {
      (wizard.isPersonal() ? wizard.contactDuplicates() : wizard.companyDuplicates())
          .setCheckingOn(argument == "on");
    } else if (command == "year") {
      wizard.cboYear = argument;
    } else if (!command.empty()) {
      out << "unknown command '" << command << "'\n";
    }
  }
  return wizard.finished();
}

}  // namespace lf
