// Putting values into merge text, clearing what is left, and the glue between the pick
// lists and the rich-text box of the template editor.
#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "merge/date_formats.hpp"
#include "merge/text_search.hpp"

namespace lf {
namespace {

constexpr std::string_view kOpen = "\xC2\xAB";   // «
constexpr std::string_view kClose = "\xC2\xBB";  // »

// Bytes of the UTF-8 character that starts with this byte.
size_t characterLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if ((lead & 0xE0) == 0xC0) return 2;
  if ((lead & 0xF0) == 0xE0) return 3;
  return 4;
}

enum class Blanking { Done, Tangled, Unclosed };

// The blanking of replaceUnfoundMergeFieldsWithBlanks for one delimiter pair in one pass.
// That procedure removes the first span and every exact copy of it, then looks again from the
// start. Where no span holds a second opening delimiter (escaped: no backslash at all) and no
// removal joins the bytes on its two sides into an opening delimiter, every copy of a removed
// span is met later as a span of its own, so removing each span as it is met gives the same
// text in linear time. Any other text answers Tangled and is left alone. Unclosed (plain pair
// only): an opening delimiter without a closing one after it; the text holds what was removed
// before it.
Blanking blankSpansInOnePass(std::string& text, std::string_view open, std::string_view close,
                             bool& removed) {
  const bool escaped = open.front() == '\\';
  const size_t closeKept = characterLength(static_cast<unsigned char>(close.front()));
  size_t o = merge::findNoCase(text, open);
  if (o == std::string_view::npos) return Blanking::Done;
  std::string out;
  out.reserve(text.size());
  size_t copied = 0;  // text[copied..] is not in out yet
  bool any = false;
  Blanking result = Blanking::Done;
  while (o != std::string_view::npos) {
    size_t c = merge::findNoCase(text, close, o + open.size());
    if (c == std::string_view::npos) {
      // An escaped span ends at the backslash of its closing delimiter, so a copy of an
      // earlier span can stand beyond the last closing delimiter.
      if (escaped) return Blanking::Tangled;
      result = Blanking::Unclosed;
      break;
    }
    std::string_view inner(text.data() + o + open.size(), c - o - open.size());
    if (escaped ? inner.find('\\') != std::string_view::npos
                : merge::findNoCase(inner, open) != std::string_view::npos)
      return Blanking::Tangled;
    out.append(text, copied, o - copied);
    copied = c + closeKept;
    any = true;
    if (!escaped && !out.empty() && copied < text.size() && out.back() == open[0] &&
        text[copied] == open[1])
      return Blanking::Tangled;
    o = merge::findNoCase(text, open, copied);
  }
  out.append(text, copied, std::string::npos);
  text.swap(out);
  removed = removed || any;
  return result;
}

}  // namespace

bool clsInsertFieldsInRTB::replaceText(std::string& text, std::string_view token,
                                       std::string_view value, size_t first) {
  bool replaced = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-replaceText", [&] {
    size_t pos = first != std::string_view::npos ? first : merge::findNoCase(text, token);
    if (pos == std::string_view::npos) {
      // The escaped form is looked for and nothing is done with it: the text stays.
      if (ConvertStrToRTF) (void)merge::findNoCase(text, convertFieldName(token));
      return;
    }
    if (!ConvertStrToRTF) {
      replaced = merge::replaceNoCase(text, token, value, -1, pos) > 0;
      return;
    }
    // A field right after a word gets a separating blank, judged by its first occurrence.
    if (pos == 0 || text[pos - 1] == ' ') {
      replaced = merge::replaceNoCase(text, token, value, -1, pos) > 0;
    } else {
      std::string spaced = " ";
      spaced += value;
      replaced = merge::replaceNoCase(text, token, spaced, -1, pos) > 0;
    }
  });
  return replaced;
}

std::string clsInsertFieldsInRTB::removeBlankLinesFromRTFText(std::string& text) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-removeBlankLinesFromRTFText", [&] {
    const std::string blankLine{static_cast<char>(92), static_cast<char>(112),
                                static_cast<char>(97), static_cast<char>(114),
                                static_cast<char>(32), static_cast<char>(13),
                                static_cast<char>(10)};
    std::string copy = text;
    merge::replaceNoCase(copy, blankLine, "");
    // The cleaned copy is not what is returned: callers get their text back. Intended.
    result = text;
  });
  return result;
}

bool clsInsertFieldsInRTB::replaceUnfoundMergeFieldsWithBlanks(std::string& text) {
  bool removed = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-replaceUnfoundMergeFieldsWithBlanks", [&] {
    if (fieldList_.empty()) return;
    const std::string_view pairs[2][2] = {{kOpen, kClose}, {"\\'ab", "\\'bb"}};
    for (const auto& pair : pairs) {
      const std::string_view open = pair[0];
      const std::string_view close = pair[1];
      Blanking fast = blankSpansInOnePass(text, open, close, removed);
      if (fast == Blanking::Unclosed) throw Failure("Invalid procedure call or argument", 5);
      while (fast == Blanking::Tangled) {
        size_t o = merge::findNoCase(text, open);
        if (o == std::string_view::npos) break;
        size_t c = merge::findNoCase(text, close, o + open.size());
        if (c == std::string_view::npos) throw Failure("Invalid procedure call or argument", 5);
        // The span counts one character of the closing delimiter, so the escaped pair
        // leaves "'bb" behind. Intended.
        size_t length = c - o + characterLength(static_cast<unsigned char>(close[0]));
        std::string span = text.substr(o, length);
        merge::replaceExact(text, span, "");
        removed = true;
      }
      if (removed) break;
    }
  });
  return removed;
}

std::string clsInsertFieldsInRTB::getDBFieldFromListItem(long itemData) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDBFieldFromListItem", [&] {
    if (itemData < 0) return;
    const FieldItem* item = fieldList_.itemByKey(static_cast<std::int32_t>(itemData));
    if (item == nullptr) return;
    if (item->fieldType == kFieldDate)
      result = "(" + item->displayName + ", mmmm d yyyy)";
    else
      result = item->databaseField;
  });
  return result;
}

std::string clsInsertFieldsInRTB::parseListItem(long itemData, bool withBrackets) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-parseListItem", [&] {
    if (itemData < 0) return;
    const FieldItem* item = fieldList_.itemByKey(static_cast<std::int32_t>(itemData));
    if (item == nullptr) return;
    if (withBrackets) result = kOpen;
    // A date picked from the list always comes with the long month format.
    if (item->fieldType == kFieldDate)
      result += "(" + item->displayName + ", mmmm d yyyy)";
    else
      result += item->displayName;
    if (withBrackets) result += kClose;
  });
  return result;
}

namespace {
long cursorOf(RichTextBoxControl* box) {
  Variant start = box->SelStart();
  if (start.isNull()) return 1;
  if (start.isText() && !GeneralUtilities::isNumeric(start.toString())) return 1;
  return static_cast<long>(start.toLong());
}
}  // namespace

void clsInsertFieldsInRTB::onListClick(long itemData) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-onListClick", [&] {
    if (RTB == nullptr) return;
    long position = cursorOf(RTB);
    std::string text = parseListItem(itemData, true);
    if (!text.empty()) RTB->insertText(text, position);
  });
}

std::string clsInsertFieldsInRTB::insertCurrentDateMergeField(int format, bool withBrackets) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-insertCurrentDateMergeField", [&] {
    std::string_view pattern;
    if (format >= 1 && format <= 14) pattern = merge::kDateFormats[format - 1].token;
    result = "(Todays Date, " + std::string(pattern) + ")";
    if (withBrackets) result = std::string(kOpen) + result + std::string(kClose);
  });
  return result;
}

void clsInsertFieldsInRTB::insertCurrentDate(int format) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-insertCurrentDate", [&] {
    if (RTB == nullptr) return;
    long position = cursorOf(RTB);
    std::string_view pattern;
    if (format >= 1 && format <= 14) pattern = merge::kDateFormats[format - 1].token;
    // An unknown number still inserts the token, with an empty format.
    RTB->insertText(
        std::string(kOpen) + "(Todays Date, " + std::string(pattern) + ")" + std::string(kClose),
        position);
  });
}

std::string clsInsertFieldsInRTB::convertToRTF(std::string_view value) {
  std::string result(value);
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-convertToRTF", [&] {
    if (!useWordWrap_) {
      merge::replaceExact(result, "\r\n", ", ");  // keeps the value on one line
      return;
    }
    if (result.find("\r\n") == std::string::npos) return;
    // Carry the paragraph's indent: what follows the last \par before the token, up to the
    // next "<" or the token.
    std::string prefix;
    if (mergeText_ != nullptr) {
      const std::string& text = *mergeText_;
      size_t tokenPos = std::min(mergeTokenPosition_, text.size());
      size_t par = tokenPos >= 4 ? text.rfind("\\par", tokenPos - 4) : std::string::npos;
      if (par != std::string::npos) {
        size_t from = par + 4;
        size_t stop = text.find('<', from);
        if (stop == std::string::npos || stop > tokenPos) stop = tokenPos;
        prefix = text.substr(from, stop - from);
      }
    }
    merge::replaceExact(result, "\r\n", "\\par " + prefix);
  });
  return result;
}

}  // namespace lf
