// The year question and the waiting dialog of a new Profile return, at the terminal and from
// the run's answers.
#include "tax/profile_new_return_questions.hpp"

#include <poll.h>

#include <cstdlib>
#include <string>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "tax/profile_blank_returns.hpp"
#include "tax/profile_question_forms.hpp"
#include "tax/profile_t1_import.hpp"

namespace lf {

std::vector<long> profileTaxYearItems() {
  long current = kLastBlankProfileYear;
  if (LocaleService* locale = moduleState().LocaleReference)
    current = locale->getCurrentPersonalYear();
  std::vector<long> years;
  for (long year = current; year >= kFirstBlankProfileYear; --year) years.push_back(year);
  return years;
}

long askProfileTaxYearAtTerminal(const std::vector<long>& years, std::istream& in,
                                 std::ostream& out) {
  frmProfileTaxYear form;
  form.Initialize(years);
  out << "\n-- " << frmProfileTaxYear::kLabel << " --\n";
  for (size_t i = 0; i < years.size(); ++i) out << "  " << i + 1 << " " << years[i] << "\n";
  out << "Enter: " << form.result() << " | N: that year of the list | a year | cancel\n> "
      << std::flush;
  std::string line;
  if (!std::getline(in, line) || GeneralUtilities::trim(line) == "cancel") {
    form.cmdCancel_Click();
    return form.result();
  }
  line = GeneralUtilities::trim(line);
  if (!line.empty()) {
    const long n = std::atol(line.c_str());
    if (n >= 1 && static_cast<size_t>(n) <= years.size() && line == std::to_string(n))
      form.cboEditYear_Click(static_cast<size_t>(n - 1));
    else
      form.cboEditYear_Change(line);
  }
  form.cmdOK_Click();
  return form.result();
}

long askProfileTaxYearFromAnswers(const std::vector<long>& years, std::optional<long> year) {
  frmProfileTaxYear form;
  form.Initialize(years);
  MessageBox* box = moduleState().MsgboxClass;
  if (box != nullptr && box->pressesCancel(frmProfileTaxYear::kLabel, kMessageTaxQuestion)) {
    form.cmdCancel_Click();
    return form.result();
  }
  if (year) form.cboEditYear_Change(std::to_string(*year));
  form.cmdOK_Click();
  return form.result();
}

void connectNewProfileFileDialogToTerminal(clsImportProfileT1& profile, std::istream& in, int fd,
                                           std::ostream& out) {
  profile.onCaption = [&out](const std::string& caption) {
    if (!caption.empty()) out << caption << " (Enter: Cancel)\n" << std::flush;
  };
  profile.betweenPolls = [&profile, &in, fd] {
    if (fd >= 0) {
      pollfd ready{fd, POLLIN, 0};
      if (::poll(&ready, 1, 50) <= 0) return;
    }
    // A line, or the end of the input, is the press of the dialog's one button.
    std::string line;
    std::getline(in, line);
    profile.newProfileFileDialog_ButtonClicked();
  };
}

void connectNewProfileFileDialogToAnswers(clsImportProfileT1& profile) {
  profile.onCaption = [&profile](const std::string& caption) {
    MessageBox* box = moduleState().MsgboxClass;
    if (!caption.empty() && box != nullptr && box->pressesCancel(caption, kMessageTaxQuestion))
      profile.newProfileFileDialog_ButtonClicked();
  };
}

}  // namespace lf
