// The frame of the stored rich-text summaries: prologue, labelled lines, blocks of several
// lines, section breaks and section headers, and the end. Contact and company summaries are
// written with it; the host reads the stored text as it stands.
//
// A line is its label, the value, "\par" and CR LF; a blank value writes nothing. A block is a
// label line (a label that ends in "\par", then CR LF, which keeps "\par" apart from the text),
// the text with each CR LF followed by "\par ", then "\par" CR LF.
// A section break ("\par" CR LF) is written only when something was written since the last
// one. Values are not escaped.
#pragma once

#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

class RtfSummaryText {
 public:
  // Starts with the prologue: Arial at 8 points, one font, no colour table.
  RtfSummaryText();

  // The two prologue strings, and the end.
  static constexpr std::string_view kFontTable =
      "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang4105{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}}";
  static constexpr std::string_view kViewKind = "\\viewkind4\\uc1\\pard\\f0\\fs16";
  static constexpr std::string_view kParLine = "\\par\r\n";

  // label + value + "\par" CR LF, when value is not blank.
  void line(std::string_view label, std::string_view value);
  void line(std::string_view label, const Variant& value);
  // A date value in the given Format() pattern, when it is a date.
  void dateLine(std::string_view label, const Variant& value, std::string_view pattern);
  // label + CR LF + the text made rich text + "\par" CR LF, when text is not blank. An empty
  // label writes the text alone.
  void block(std::string_view label, std::string_view text);
  // A heading that ends in "\par", as a line of its own (CR LF follows).
  void heading(std::string_view heading);
  // Text written as it is; counts as something written.
  void append(std::string_view text);

  void sectionBreak();
  // The title (which ends in "\par"), CR LF, the rule line, "\par", CR LF, CR LF.
  void sectionHeader(std::string_view title);

  // "\par" CR LF and the closing brace; the whole text.
  std::string finish();

 private:
  std::string text_;
  bool written_ = false;
};

}  // namespace lf
