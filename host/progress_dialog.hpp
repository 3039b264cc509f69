// The progress dialog of a long run: showing it raises StartProgress, the work runs inside
// that handler, and closing it ends the run.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace lf {

class ProgressDialog {
 public:
  virtual ~ProgressDialog() = default;
  virtual void setTextAlignment(int alignment) = 0;
  virtual void setMinimum(long minimum) = 0;
  virtual void setMaximum(long maximum) = 0;
  virtual void setShowPercent(bool show) = 0;
  virtual void setStep(long step) = 0;
  virtual void setShowCancel(bool show) = 0;
  virtual void setDelay(long milliseconds) = 0;
  virtual void setCaption(std::string_view caption) = 0;
  virtual long getValue() = 0;
  virtual void setValue(long value) = 0;
  // Raises StartProgress (the handler given) and returns when the dialog is closed.
  virtual void showDialog(const std::function<void()>& startProgress) = 0;
  virtual void closeDialog() = 0;
};

// A progress bar on stderr, drawn only when stderr is a terminal (silent otherwise).
class TerminalProgressDialog : public ProgressDialog {
 public:
  TerminalProgressDialog();
  void setTextAlignment(int) override {}
  void setMinimum(long minimum) override { minimum_ = minimum; }
  void setMaximum(long maximum) override { maximum_ = maximum; }
  void setShowPercent(bool) override {}
  void setStep(long) override {}
  void setShowCancel(bool) override {}
  void setDelay(long) override {}
  void setCaption(std::string_view caption) override;
  long getValue() override { return value_; }
  void setValue(long value) override;
  void showDialog(const std::function<void()>& startProgress) override;
  void closeDialog() override;

  const std::string& caption() const { return caption_; }

 private:
  void draw();
  bool terminal_;
  bool open_ = false;
  long minimum_ = 0, maximum_ = 100, value_ = 0;
  int lastPercent_ = -1;
  std::string caption_;
};

}  // namespace lf
