// The general utilities (generalUtilities): the one blank test of the component, number and
// text helpers, and the host's telephone, business-number and corporation-number forms.
#pragma once

#include <string>
#include <string_view>

#include "db/variant.hpp"

namespace lf {

class ErrorService;

class GeneralUtilities {
 public:
  void setErrorService(ErrorService* errorClass) { errorClass_ = errorClass; }

  // True for a null, an empty text and a text of only spaces.
  static bool isBlank(const Variant& value);
  static bool isBlank(std::string_view text);

  // Legacy IsNumeric: optional sign, digits with an optional decimal point, optional
  // exponent, surrounding blanks allowed, thousands commas allowed.
  static bool isNumeric(std::string_view text);
  static bool parseNumber(std::string_view text, double& out);

  static std::string trim(std::string_view text);
  static std::string upperCase(std::string_view text);
  static std::string lowerCase(std::string_view text);

 private:
  ErrorService* errorClass_ = nullptr;
};

}  // namespace lf
