// The RTF frame of the summaries; see rtf_summary_text.hpp.
#include "summaries/rtf_summary_text.hpp"

#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "summaries/address_blocks.hpp"

namespace lf {

RtfSummaryText::RtfSummaryText() {
  text_ += kFontTable;
  text_ += kViewKind;
}

void RtfSummaryText::line(std::string_view label, std::string_view value) {
  if (GeneralUtilities::isBlank(value)) return;
  text_ += label;
  text_ += value;
  text_ += kParLine;
  written_ = true;
}

void RtfSummaryText::line(std::string_view label, const Variant& value) {
  if (GeneralUtilities::isBlank(value)) return;
  line(label, value.toString());
}

void RtfSummaryText::dateLine(std::string_view label, const Variant& value,
                              std::string_view pattern) {
  if (GeneralUtilities::isBlank(value)) return;
  std::optional<Date> date = value.toDate();
  line(label, date ? formatDate(*date, pattern) : value.toString());
}

void RtfSummaryText::block(std::string_view label, std::string_view text) {
  if (GeneralUtilities::isBlank(text)) return;
  // The label is a line of its own: the CR LF ends its "\par" before the text begins.
  if (!label.empty()) {
    text_ += label;
    text_ += "\r\n";
  }
  text_ += convertToRTF(text);
  text_ += kParLine;
  written_ = true;
}

void RtfSummaryText::heading(std::string_view heading) {
  text_ += heading;
  text_ += "\r\n";
  written_ = true;
}

void RtfSummaryText::append(std::string_view text) {
  text_ += text;
  written_ = true;
}

void RtfSummaryText::sectionBreak() {
  if (!written_) return;
  text_ += kParLine;
  written_ = false;
}

void RtfSummaryText::sectionHeader(std::string_view title) {
  text_ += title;
  text_ += "\r\n";
  text_ += "\\b\\pard\\fi-1425\\li1425\\ri0 _______________________\\b0   ";
  text_ += "\\par";
  text_ += "\r\n\r\n";
}

std::string RtfSummaryText::finish() {
  text_ += kParLine;
  text_ += "}";
  return text_;
}

}  // namespace lf
