// The general utilities (generalUtilities): the one blank test of the component, number and
// text helpers, and the host's telephone, business-number and corporation-number forms.
#pragma once

#include <string>
#include <string_view>

#include "base/variant.hpp"

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

  // A telephone number in the host's form: ten digits "(416) 555-1234", seven "555-1234"; an
  // eleven-digit number starting with 1 drops the 1. An extension, marked by "x", "ext",
  // "ext." or "extension", or given as digits beyond the tenth ("416 5551234 22"), follows as
  // " x22". Anything else (letters, other digit counts) comes back trimmed.
  static std::string formatPhoneNumber(std::string_view text);

  // The nine-digit root of a Canadian business number in the host's printed form "12345 6789".
  // Reads "123456789", "12345 6789", "123456789RT0001", "12345 6789 RC 0002" and the like:
  // `suffix` receives the four-digit reference after the program letters ("0001" when the text
  // has none) and `valid` whether nine digits were found. An invalid text comes back trimmed.
  static std::string parseBusinessNumber(std::string_view text, std::string& suffix, bool& valid);
  // A corporation number in the printed form "12345 6789 RC0001" (or "12345 6789" without a
  // program); anything that is no business number comes back trimmed.
  static std::string parseCorporationNumber(std::string_view text);

  // Mixed case of a text typed in capitals: "JOHN SMITH" "John Smith", "o'brien" "O'Brien",
  // "mary-jane" "Mary-Jane", "JOHN'S" "John's", "1ST AVE" "1st Ave", "BENOÎT" "Benoît" (the
  // accented letters of the Latin-1 range change case too; other characters stay as they are).
  static std::string mixedCase(std::string_view text);

  // Identity and address forms; a text that does not fit the form comes back trimmed.
  static std::string formatSIN(std::string_view text);         // "123 456 789"
  static std::string formatSSN(std::string_view text);         // "123-45-6789"
  static std::string formatPostalCode(std::string_view text);  // "M5V 1A1", or a ZIP form
  static std::string formatZipCode(std::string_view text);     // "12345" or "12345-6789"

  // A duration in the calendar's words: "31 min", "1 hr", "1 hr 30 min", "2 hrs 5 min".
  static std::string minutesToText(long long minutes);

 private:
  ErrorService* errorClass_ = nullptr;
};

}  // namespace lf
