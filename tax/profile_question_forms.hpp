// The two small questions of the Profile imports as step machines: frmProfileTaxYear (the year
// of a new personal return) and frmEnterFilePassword (the password of a protected return).
// Front ends fill the boxes and press the buttons; the validation message goes through
// MsgboxClass.
#pragma once

#include <string>
#include <vector>

namespace lf {

class frmProfileTaxYear {
 public:
  // Shows the question with the years to offer; the first is picked.
  void Initialize(std::vector<long> years);
  const std::vector<long>& cboEditYear() const { return years_; }
  static constexpr const char* kLabel = "Select year for new Profile T1 file:";

  void cboEditYear_Click(size_t index);
  // A year typed into the box; what is not a whole number is the year 0.
  void cboEditYear_Change(const std::string& text);
  void cmdOK_Click() { visible_ = false; }
  void cmdCancel_Click();
  bool visible() const { return visible_; }
  // The chosen year, 0 after Cancel.
  long result() const { return result_; }

 private:
  std::vector<long> years_;
  long result_ = 0;
  bool visible_ = false;
};

class frmEnterFilePassword {
 public:
  // Shows the question; the remember box only when asked for.
  void Initialize(const std::string& title, const std::string& message,
                  const std::string& fieldLabel, bool showRememberBox);
  std::string txtPassword;
  bool chkRememberPassword = false;
  static constexpr const char* kRememberCaption =
      "Remember this pasword for this session only";  // Intended: the caption's spelling

  const std::string& title() const { return title_; }
  const std::string& message() const { return message_; }
  const std::string& lblField() const { return lblField_; }
  bool rememberBoxShown() const { return rememberShown_; }

  // OK with a blank box gives the message and keeps the question; otherwise it is answered.
  void cmdOK_Click();
  void cmdCancel_Click();
  bool visible() const { return visible_; }
  const std::string& text() const { return text_; }
  bool rememberPassword() const { return remember_; }

 private:
  std::string title_, message_, lblField_;
  bool rememberShown_ = false;
  bool visible_ = false;
  std::string text_;
  bool remember_ = false;
};

}  // namespace lf
