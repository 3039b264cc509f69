// The shell error table. The trailing blanks of codes 5 and 32 are part of the texts.
#include "frame/shell_errors.hpp"

namespace lf {

std::string shellErrorText(long code) {
  switch (code) {
    case 2:
      return "The specified file was not found.";
    case 3:
      return "The specified path was not found.";
    case 5:
      return "The operating system denied access to the specified file. ";
    case 8:
      return "There was not enough memory to complete the operation.";
    case 11:
      return "The .exe file is invalid (non-Win32® .exe or error in .exe image).";
    case 26:
      return "A sharing violation occurred.";
    case 27:
      return "The file name association is incomplete or invalid.";
    case 28:
      return "The DDE transaction could not be completed because the request timed out.";
    case 29:
      return "The DDE transaction failed.";
    case 30:
      return "The DDE transaction could not be completed because other DDE transactions were "
             "being processed.";
    case 31:
      return "There is no application associated with the given file name extension. This error "
             "will also be returned if you attempt to print a file that is not printable.";
    case 32:
      return "The specified dynamic-link library was not found. ";
    default:
      return "";
  }
}

}  // namespace lf
