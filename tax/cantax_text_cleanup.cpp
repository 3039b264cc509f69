// The shared clean-up of exported CANTAX and Dr. Tax text.
#include "tax/cantax_text_cleanup.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"

namespace lf {

namespace {

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
  if (what.empty() || text.find(what) == std::string::npos) return;
  std::string out;
  out.reserve(text.size());
  size_t from = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    out.append(text, from, at - from);
    out.append(with);
    from = at + what.size();
  }
  out.append(text, from, std::string::npos);
  text.swap(out);
}

bool allDigits(std::string_view text) {
  if (text.empty()) return false;
  for (char c : text)
    if (c < '0' || c > '9') return false;
  return true;
}

}  // namespace

void removeCANTAXErrorMarks(std::string& text) {
  replaceAll(text, "\r\n*ERROR* ", "");
  replaceAll(text, "\r*ERROR* ", "");
  replaceAll(text, "\n*ERROR* ", "");
  replaceAll(text, "*ERROR* ", "");
  replaceAll(text, "*ERROR*", "");
  replaceAll(text, "<- Unknown variable name", ",");
  replaceAll(text, "YYYY/MM/DD", "");
}

std::vector<std::string> splitExportText(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  size_t from = 0;
  for (size_t at = text.find(separator); at != std::string_view::npos;
       at = text.find(separator, from)) {
    parts.emplace_back(text.substr(from, at - from));
    from = at + separator.size();
  }
  parts.emplace_back(text.substr(from));
  return parts;
}

std::vector<std::string> splitExportRows(std::string_view text) {
  std::vector<std::string> rows;
  size_t start = 0;
  size_t i = 0;
  while (i < text.size()) {
    if (text[i] == '\r' || text[i] == '\n') {
      rows.emplace_back(text.substr(start, i - start));
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      start = ++i;
    } else {
      ++i;
    }
  }
  if (start < text.size() || rows.empty()) rows.emplace_back(text.substr(start));
  return rows;
}

std::string cleanExportValue(std::string_view value) {
  std::string out;
  out.reserve(value.size());
  for (char c : value)
    if (c != '"') out += c;
  if (out.size() >= 2 && out.compare(out.size() - 2, 2, ", ") == 0)
    out.resize(out.size() - 2);
  else if (!out.empty() && out.back() == ',')
    out.pop_back();
  return out;
}

std::string dateInWords(std::string_view value, char separator) {
  if (GeneralUtilities::isBlank(value)) return std::string(value);
  const std::vector<std::string> parts = splitExportText(value, std::string_view(&separator, 1));
  if (parts.size() != 3) return std::string(value);
  const std::string month = GeneralUtilities::trim(parts[1]);
  if (!allDigits(month) || month.size() > 2) return std::string(value);
  const std::string name = DateUtilities::monthName(std::stoi(month));
  if (name.empty()) return std::string(value);
  return name + " " + parts[2] + "," + parts[0];
}

std::string splitNameColumns(std::string_view name) {
  const size_t blank = name.find(' ');
  if (blank == std::string_view::npos) return std::string(name) + "\",\"";
  return std::string(name.substr(0, blank)) + "\",\"" + std::string(name.substr(blank + 1));
}

void appendQuotedValue(std::string& out, std::string_view value) {
  out += '"';
  out += value;
  out += "\",";
}

void endModifiedRow(std::string& out) {
  if (!out.empty() && out.back() == ',') out.pop_back();
}

}  // namespace lf
