// Rendering of the Profile import wizards' pages as text, and the commands that work them.
#include "tax/profile_wizard_terminal.hpp"

#include <functional>
#include <memory>
#include <sstream>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/progress_dialog.hpp"
#include "tax/profile_import_wizard.hpp"
#include "tax/profile_question_forms.hpp"
#include "tax/profile_t1_option_captions.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;

const char* onOff(bool on) {
  return on ? "on" : "off";
}

const char* const kActionWords[] = {"skip", "new", "update", "ask"};

int actionOfWord(const std::string& word) {
  for (int i = 0; i < 4; ++i)
    if (word == kActionWords[i]) return i;
  return -1;
}

class ProfileWizardTerminal {
 public:
  ProfileWizardTerminal(ProfileImportWizard& wizard, std::istream& in, std::ostream& out)
      : w_(wizard),
        t1_(dynamic_cast<frmImportProfileT1*>(&wizard)),
        t2_(dynamic_cast<frmImportProfileT2*>(&wizard)),
        in_(in),
        out_(out) {}

  bool run() {
    if (!w_.isOpen()) w_.Initialize();
    while (w_.isOpen()) {
      showPage();
      std::string line;
      if (!std::getline(in_, line)) {
        w_.cmdCancel_Click();
        break;
      }
      command(GU::trim(line));
    }
    out_ << (w_.finished() ? "Finished.\n" : "Cancelled: nothing was imported.\n");
    return w_.finished();
  }

 private:
  void showFiles() {
    out_ << (t1_ != nullptr ? "Select The Files You Want To Import"
                            : "Select Which Profile Files You Want To Import:")
         << "\n";
    if (!w_.lblNoFiles.empty()) out_ << w_.lblNoFiles << "\n";
    for (size_t i = 0; i < w_.File1.size(); ++i)
      out_ << (w_.File1[i].checked ? "[x] " : "[ ] ") << i + 1 << " " << w_.File1[i].text << "\n";
    out_ << "File Selection Options\n"
         << (w_.chkSelectFiles[0] ? "[x] " : "[ ] ")
         << "Select Only Clients Not Already Entered In Ledgerfolio. (not-known on|off)\n"
         << (w_.chkSelectFiles[1] ? "[x] " : "[ ] ");
    if (t1_ != nullptr)
      out_ << "Select Only Tax File From The " << t1_->cboSelectYear
           << " Tax Year (tax-year Y|off)\n";
    else
      out_ << "Select Only The Most Recent Profile File For Each Company. (most-recent on|off)\n";
    out_ << "toggle N | " << w_.cmdSelectAllCaption() << ": all | Select Files: select\n";
  }

  void showT1Page() {
    const int page = w_.freStep();
    if (page >= 1 && page <= 3) {
      const int first = page == 1 ? 0 : page == 2 ? 15 : 28;
      const int last = page == 1 ? 14 : page == 2 ? 27 : 37;
      if (page == 3)
        out_ << "Spouse Information Import\nThis only applies if you check the checkbox which will "
                "bring the spouse information as a separate individual.\n";
      auto option = [&](int i) {
        out_ << (t1_->ProfileImport.chkOption[static_cast<size_t>(i)] ? "[x] " : "[ ] ") << i << " "
             << profileT1OptionCaptions()[static_cast<size_t>(i)] << "\n";
      };
      for (int i = first; i <= last; ++i) option(i);
      if (page == 2) option(38);
      out_ << "tick N | untick N | finish (Back To Start)\n";
    } else if (page == frmImportProfileT1::kOptionsPage) {
      out_ << "Profile T1 Import Options\nadvanced: the options | business: the business options\n"
           << "business information: " << onOff(t1_->ProfileImport.chkImprtBusinessInformation)
           << " (business-info on|off)\nCouples Returns Options\n";
      for (int i = 0; i < 3; ++i)
        out_ << (t1_->ProfileImport.optCouplesReturn == i ? "(o) " : "( ) ") << i << " "
             << profileT1CouplesCaptions()[static_cast<size_t>(i)] << "\n";
      out_ << "couples N\n";
    } else if (page == frmImportProfileT1::kDuplicatesPage) {
      showDuplicates(t1_->contactDuplicates(), "sin|name|client-id");
      out_ << "Personal Tax Year Clients Will Be Imported Into: " << t1_->cboYear << " (year Y)\n";
    } else if (page == frmImportProfileT1::kBusinessPage) {
      out_ << kProfileT1CompanyMatchLabel << "\n";
      showDuplicates(t1_->companyDuplicates(), "business-number|name");
      out_ << "import shareholders: " << onOff(t1_->chkImportShareholders)
           << " (shareholders on|off) | finish (Back To Start)\n";
    }
  }

  void showDuplicates(ImportDuplicatesControl& d, const char* matchWords) {
    out_ << "duplicate check: " << onOff(d.checkingOn()) << " (duplicates on|off), match by "
         << d.getMatchBy() << " (match " << matchWords << "), action "
         << kActionWords[d.getAction() & 3] << " (action skip|new|update|ask)\n";
  }

  void showPage() {
    const int page = w_.freStep();
    out_ << "\n-- page " << page << " --\n";
    if (page == 0) {
      out_ << "Select Profile " << (t1_ != nullptr ? "T1" : "T2")
           << " Folder: " << w_.txtFileLocation << " (folder DIR)\n";
    } else if (page == w_.filesPage()) {
      showFiles();
    } else if (t1_ != nullptr) {
      showT1Page();
    } else if (page == frmImportProfileT2::kOptionsPage) {
      out_ << "Profile Address to Import: " << t2_->cboProfileAddress << "\n";
      const auto& items = frmImportProfileT2::profileAddressItems();
      for (size_t i = 0; i < items.size(); ++i)
        out_ << "  address " << i + 1 << ": " << items[i] << "\n";
    } else if (page == frmImportProfileT2::kDuplicatesPage) {
      out_ << kProfileT2BusinessMatchLabel << " | " << kProfileT2CorporateMatchLabel << "\n";
      showDuplicates(t2_->companyDuplicates(), "business-number|corporate-name");
    }
    out_ << "next | back | cancel" << (w_.cmdFinishEnabled() ? " | finish" : "") << "\n> "
         << std::flush;
  }

  // Runs a command that scans the folder with the scan's panels drawn as the host's progress
  // line: the folder-scan panel's folder, then the progress panel's label and bar.
  void withScanProgress(const std::function<void()>& work) {
    const auto& make = moduleState().makeProgressDialog;
    std::unique_ptr<ProgressDialog> dialog = make ? make() : nullptr;
    if (dialog == nullptr) {
      work();
      return;
    }
    std::string shown;
    w_.progressChanged = [&] {
      const ProfileProgressPanel& panel = w_.fraProgress;
      const std::string caption = panel.visible             ? panel.label
                                  : w_.fraFolderScanVisible ? w_.lblFolderName
                                                            : shown;
      if (panel.visible) {
        dialog->setMaximum(panel.count);
        dialog->setValue(panel.position);
      }
      if (caption != shown) dialog->setCaption(shown = caption);
    };
    dialog->setMinimum(0);
    dialog->showDialog([&] {
      work();
      dialog->closeDialog();
    });
    w_.progressChanged = nullptr;
  }

  ImportDuplicatesControl* duplicates() {
    if (t2_ != nullptr) return &t2_->companyDuplicates();
    return w_.freStep() == frmImportProfileT1::kBusinessPage
               ? static_cast<ImportDuplicatesControl*>(&t1_->companyDuplicates())
               : &t1_->contactDuplicates();
  }

  void command(const std::string& line) {
    std::istringstream words(line);
    std::string c, arg;
    words >> c;
    std::getline(words, arg);
    arg = GU::trim(arg);
    const int n = std::atoi(arg.c_str());
    if (c == "next" && w_.freStep() == 0) {
      withScanProgress([&] { w_.cmdNext_Click(); });
    } else if (c == "next") {
      w_.cmdNext_Click();
    } else if (c == "back") {
      w_.cmdBack_Click();
    } else if (c == "cancel") {
      w_.cmdCancel_Click();
    } else if (c == "finish") {
      w_.cmdFinish_Click();
    } else if (c == "folder") {
      w_.txtFileLocation = arg;
    } else if (c == "toggle" && n >= 1 && static_cast<size_t>(n) <= w_.File1.size()) {
      w_.setFileChecked(static_cast<size_t>(n - 1), !w_.File1[static_cast<size_t>(n - 1)].checked);
    } else if (c == "all") {
      w_.cmdSelectAll_Click(0);
    } else if (c == "select") {
      w_.cmdSelectAll_Click(1);
    } else if (c == "not-known") {
      w_.chkSelectFiles[0] = arg == "on";
    } else if (c == "most-recent" && t2_ != nullptr) {
      w_.chkSelectFiles[1] = arg == "on";
    } else if (c == "tax-year" && t1_ != nullptr) {
      w_.chkSelectFiles[1] = arg != "off";
      if (arg != "off") t1_->cboSelectYear = arg;
    } else if ((c == "tick" || c == "untick") && t1_ != nullptr && n >= 0 && n <= 38) {
      t1_->ProfileImport.chkOption[static_cast<size_t>(n)] = c == "tick";
    } else if (c == "advanced" && t1_ != nullptr) {
      t1_->cmdAdvancedOptions_Click();
    } else if (c == "business" && t1_ != nullptr) {
      t1_->cmdBusinessImportOptions_Click();
    } else if (c == "business-info" && t1_ != nullptr) {
      t1_->ProfileImport.chkImprtBusinessInformation = arg == "on";
    } else if (c == "couples" && t1_ != nullptr && n >= 0 && n <= 2) {
      t1_->ProfileImport.optCouplesReturn = n;
    } else if (c == "year" && t1_ != nullptr) {
      t1_->cboYear = arg;
    } else if (c == "shareholders" && t1_ != nullptr) {
      t1_->chkImportShareholders = arg == "on";
    } else if (c == "address" && t2_ != nullptr && n >= 1 && n <= 4) {
      t2_->cboProfileAddress =
          frmImportProfileT2::profileAddressItems()[static_cast<size_t>(n - 1)];
    } else if (c == "duplicates") {
      duplicates()->setCheckingOn(arg == "on");
    } else if (c == "match") {
      duplicates()->setMatchBy(arg == "name"             ? kMatchByName
                               : arg == "corporate-name" ? kMatchByCorporateName
                               : arg == "client-id"      ? kMatchByClientID
                                                         : kMatchBySIN);
    } else if (c == "action" && actionOfWord(arg) >= 0) {
      duplicates()->setAction(actionOfWord(arg));
    } else if (!c.empty()) {
      out_ << "unknown command '" << c << "'\n";
    }
  }

  ProfileImportWizard& w_;
  frmImportProfileT1* t1_;
  frmImportProfileT2* t2_;
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace

bool runProfileWizardAtTerminal(ProfileImportWizard& wizard, std::istream& in, std::ostream& out) {
  return ProfileWizardTerminal(wizard, in, out).run();
}

ProfilePasswordEntry ProfilePasswordTerminal::ask(const std::string& title,
                                                  const std::string& label,
                                                  const std::string& text) {
  frmEnterFilePassword form;
  form.Initialize(title, text, label, true);
  out_ << "\n-- " << form.title() << " --\n" << form.message() << "\n";
  while (form.visible()) {
    out_ << form.lblField() << " (!cancel to cancel) " << std::flush;
    std::string line;
    if (!std::getline(in_, line) || line == "!cancel") {
      form.cmdCancel_Click();
      break;
    }
    form.txtPassword = line;
    if (!line.empty()) {
      out_ << frmEnterFilePassword::kRememberCaption << "? (y/n) " << std::flush;
      std::string answer;
      std::getline(in_, answer);
      form.chkRememberPassword = GU::trim(answer) == "y";
    }
    form.cmdOK_Click();
  }
  return {form.text(), form.rememberPassword(), false};
}

}  // namespace lf
