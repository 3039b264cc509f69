// The year and password questions of the Profile imports.
#include "tax/profile_question_forms.hpp"

#include <charconv>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/message_box.hpp"

namespace lf {

void frmProfileTaxYear::Initialize(std::vector<long> years) {
  years_ = std::move(years);
  result_ = years_.empty() ? 0 : years_.front();
  visible_ = true;
}

void frmProfileTaxYear::cboEditYear_Click(size_t index) {
  if (index < years_.size()) result_ = years_[index];
}

void frmProfileTaxYear::cboEditYear_Change(const std::string& text) {
  const std::string trimmed = GeneralUtilities::trim(text);
  long year = 0;
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), year);
  result_ = error == std::errc() && end == trimmed.data() + trimmed.size() ? year : 0;
}

void frmProfileTaxYear::cmdCancel_Click() {
  result_ = 0;
  visible_ = false;
}

void frmEnterFilePassword::Initialize(const std::string& title, const std::string& message,
                                      const std::string& fieldLabel, bool showRememberBox) {
  title_ = title;
  message_ = message;
  lblField_ = fieldLabel;
  rememberShown_ = showRememberBox;
  txtPassword.clear();
  chkRememberPassword = false;
  text_.clear();
  remember_ = false;
  visible_ = true;
}

void frmEnterFilePassword::cmdOK_Click() {
  if (txtPassword.empty()) {
    if (MessageBox* box = moduleState().MsgboxClass)
      box->show("You must enter text in the textbox before continuing.", kMessageValidation);
    return;
  }
  text_ = txtPassword;
  remember_ = chkRememberPassword;
  visible_ = false;
}

void frmEnterFilePassword::cmdCancel_Click() {
  text_.clear();
  remember_ = false;
  visible_ = false;
}

}  // namespace lf
