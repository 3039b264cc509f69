// The merge language: rewriting of older and foreign spellings, the checks of a template
// with their messages, and the order in which a merge replaces tokens.
//
// Placeholders are «Name», «(Name, format)» and «(Todays Date, format)», or the same with
// the RTF escapes \'ab and \'bb. All searches and rewrites ignore case; the date format
// check of testRTBComment does not.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <unordered_set>
#include <vector>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "host/locale_service.hpp"
#include "merge/catalogue_words.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "merge/date_formats.hpp"
#include "merge/text_search.hpp"

namespace lf {
namespace {

using merge::replaceNoCase;

constexpr std::string_view kOpen = "\xC2\xAB";   // «
constexpr std::string_view kClose = "\xC2\xBB";  // »
constexpr std::string_view kOpenRtf = "\\'ab";
constexpr std::string_view kCloseRtf = "\\'bb";

struct Rewrite {
  std::string_view from;
  std::string_view to;
};

// Applied in every locale, in this order. "Contact Full Name", "Docket" and the three date
// words are bare words and are replaced in prose too: intended.
const Rewrite kCommonRewrites[] = {
    {"<<", "«"},
    {">>", "»"},
    {"«(Due Date", "«(Task Due Date"},
    {"«(in-House Due Date", "«(Task in-House Due Date"},
    // "Due" here but not in the weekday rename below: intended.
    {"«(Calendar Date", "«(Task Calendar Due Date"},
    {"\\'ab(Due Date", "\\'ab(Task Due Date"},
    {"\\'ab(in-House Due Date", "\\'ab(Task in-House Due Date"},
    {"\\'ab(Calendar Date", "\\'ab(Task Calendar Due Date"},
    {"«Contact Full Name»", "«Contact Display Name»"},
    {"\\'abContact Full Name\\'bb", "\\'abContact Display Name\\'bb"},
    {"Contact Full Name", "Contact Display Name"},
    {"Docket", "Time Entry"},
    {"Long Date", "dddd, mmmm d yyyy"},
    {"Medium Date", "mmm d yyyy"},
    {"Short Date", "dd/mm/yy"},
    {"«Notified Date»", "«Calendar Date»"},
    {"«Weekday Date»", "«Calendar Date»"},
    {"\\'abNotified Date\\'bb", "\\'abCalendar Date\\'bb"},
    {"\\'abWeekday Date\\'bb", "\\'abCalendar Date\\'bb"},
    {"«Remittance Name»", "«Task Name»"},
    {"«Remittance Due Date»", "«Task Due Date»"},
    {"«Remittance in-House Due Date»", "«Task in-House Due Date»"},
    {"«Remittance Weekday Due Date»", "«Task Calendar Date»"},
    {"«Task Weekday Due Date»", "«Task Calendar Date»"},
    {"«Remittance Year»", "«Task Year»"},
    {"«Custom Remitt Field 1»", "«Custom Task Field 1»"},
    {"«Custom Remitt Field 2»", "«Custom Task Field 2»"},
    {"«Custom Remitt Field 3»", "«Custom Task Field 3»"},
    {"«Custom Remitt Field 4»", "«Custom Task Field 4»"},
    {"«Custom Remitt Field 5»", "«Custom Task Field 5»"},
    {"«Contact Full Name»", "«Contact Display Name»"},
    {"\\'abRemittance Name\\'bb", "\\'abTask Name\\'bb"},
    {"\\'abRemittance Due Date\\'bb", "\\'abTask Due Date\\'bb"},
    {"\\'abRemittance in-House Due Date\\'bb", "\\'abTask in-House Due Date\\'bb"},
    {"\\'abRemittance Weekday Due Date\\'bb", "\\'abTask Calendar Date\\'bb"},
    {"\\'abTask Weekday Due Date\\'bb", "\\'abTask Calendar Date\\'bb"},
    {"\\'abRemittance Year\\'bb", "\\'abTask Year\\'bb"},
    {"\\'abCustom Remitt Field 1\\'bb", "\\'abCustom Task Field 1\\'bb"},
    {"\\'abCustom Remitt Field 2\\'bb", "\\'abCustom Task Field 2\\'bb"},
    {"\\'abCustom Remitt Field 3\\'bb", "\\'abCustom Task Field 3\\'bb"},
    {"\\'abCustom Remitt Field 4\\'bb", "\\'abCustom Task Field 4\\'bb"},
    {"\\'abCustom Remitt Field 5\\'bb", "\\'abCustom Task Field 5\\'bb"},
    {"\\'abContact Full Name\\'bb", "\\'abContact Display Name\\'bb"},
};

const Rewrite kUnitedStatesRewrites[] = {
    {"«Province»", "«State»"},
    {"«Postal Code»", "«Zip Code»"},
    {"«Contact Business Province»", "«Contact Business State»"},
    {"«Contact Business Postal Code»", "«Contact Business Zip Code»"},
    {"«Contact Home Province»", "«Contact Home State»"},
    {"«Contact Home Postal Code»", "«Contact Home Zip Code»"},
    {"«Spouse Home Province»", "«Spouse Home State»"},
    {"«Spouse Home Postal Code»", "«Spouse Home Zip Code»"},
    {"«Your Province»", "«Your State»"},
    {"«Your Postal Code»", "«Your Zip Code»"},
    {"«Contact SIN»", "«Contact SSN»"},
    {"«Spouse SIN»", "«Spouse SSN»"},
};

const Rewrite kCanadaRewrites[] = {
    {"«State»", "«Province»"},
    {"«Zip Code»", "«Postal Code»"},
    {"«Contact Business State»", "«Contact Business Province»"},
    {"«Contact Business Zip Code»", "«Contact Business Postal Code»"},
    {"«Contact Home State»", "«Contact Home Province»"},
    {"«Contact Home Zip Code»", "«Contact Home Postal Code»"},
    {"«Spouse Home State»", "«Spouse Home Province»"},
    {"«Spouse Home Zip Code»", "«Spouse Home Postal Code»"},
    {"«Your State»", "«Your Province»"},
    {"«Your Zip Code»", "«Your Postal Code»"},
    {"«Contact SSN»", "«Contact SIN»"},
    {"«Spouse SSN»", "«Spouse SIN»"},
};

// The corporate tax number family, in the order in which its members are rewritten.
const std::string_view kCorpTaxTokens[] = {
    "«ON Corp. Tax Number»",       "«BC Corp. Tax Number»",    "«Alberta Corp. Tax Number»",
    "«Manitoba Corp. Tax Number»", "«Sask. Corp. Tax Number»", "«Que. Corp. Tax Number»",
    "«N.B. Corp. Tax Number»",     "«N.S. Corp. Tax Number»",  "«Nfld. Corp. Tax Number»",
    "«P.E.I. Corp. Tax Number»",
};

// The rewrites of one text. Which pairs of adjacent bytes (case folded) the text holds is
// known, so that a rewrite whose search text has a pair the text lacks is skipped without a
// search of the whole text; the pairs that a replacement can bring in are added as it is made.
class Rewriter {
 public:
  explicit Rewriter(std::string& text) : text_(text) {
    if (text.empty()) return;
    size_t last = merge::foldByte(text[0]);
    for (size_t i = 1; i < text.size(); ++i) {
      const size_t next = merge::foldByte(text[i]);
      add(last << 8 | next);
      last = next;
    }
  }
  void operator()(std::string_view from, std::string_view to) {
    for (size_t i = 1; i < from.size(); ++i)
      if (!has(pair(from[i - 1], from[i]))) return;
    if (replaceNoCase(text_, from, to) == 0) return;
    if (to.empty()) {  // the bytes around it meet: any pair may be new
      std::fill(std::begin(pairs_), std::end(pairs_), ~std::uint64_t{0});
      return;
    }
    // The pairs inside the new text, and any pair at its two ends.
    for (size_t i = 1; i < to.size(); ++i) add(pair(to[i - 1], to[i]));
    for (int c = 0; c < 256; ++c) {
      add(pair(static_cast<char>(c), to.front()));
      add(pair(to.back(), static_cast<char>(c)));
    }
  }

 private:
  static size_t pair(char a, char b) {
    return static_cast<size_t>(merge::foldByte(a)) << 8 | merge::foldByte(b);
  }
  void add(size_t pair) { pairs_[pair >> 6] |= std::uint64_t{1} << (pair & 63); }
  bool has(size_t pair) const { return (pairs_[pair >> 6] >> (pair & 63)) & 1; }

  std::string& text_;
  std::uint64_t pairs_[65536 / 64] = {};
};

void apply(Rewriter& rewrite, std::initializer_list<Rewrite> rewrites) {
  for (const Rewrite& r : rewrites) rewrite(r.from, r.to);
}

void corpTaxTo(Rewriter& rewrite, std::string_view target, std::string_view keep = {}) {
  for (std::string_view token : kCorpTaxTokens)
    if (token != target && token != keep) rewrite(token, target);
}

// The rewrites of the user's province.
void applyProvince(Rewriter& rewrite, int province, const Date& today) {
  // British Columbia and Ontario: the date test comes first and the unconditional
  // «HST Number» to «GST Number» after it undoes it, so these provinces always end with
  // «GST Number». Intended.
  auto dateTest = [&] {
    if (today.datePart() >= Date::fromParts(2010, 7, 1)) rewrite("«GST Number»", "«HST Number»");
  };
  auto westernBoard = [&] {
    apply(rewrite, {{"«WSIB Number»", "«WCB Number»"},
                    {"«NEQ Number»", "«WCB Number»"},
                    {"«WHSCC Number»", "«WCB Number»"},
                    {"«WSIB Premium Rate»", "«WCB Premium Rate»"}});
  };
  switch (province) {
    case 0:
      westernBoard();
      apply(rewrite, {{"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«Alberta Corp. Tax Number»");
      break;
    case 1:
      westernBoard();
      dateTest();
      apply(rewrite, {{"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«BC Corp. Tax Number»");
      break;
    case 2:
      westernBoard();
      apply(rewrite, {{"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«Manitoba Corp. Tax Number»");
      break;
    case 4:
      westernBoard();
      apply(rewrite, {{"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«Sask. Corp. Tax Number»");
      break;
    case 8:
      apply(rewrite, {{"«WSIB Number»", "«NEQ Number»"},
                      {"«WHSCC Number»", "«WCB Number»"},
                      {"«WSIB Premium Rate»", "«CSST Premium Rate»"},
                      {"«HST Number»", "«GST Number»"}});
      // The Saskatchewan number is left alone in Quebec: intended.
      corpTaxTo(rewrite, "«Que. Corp. Tax Number»", "«Sask. Corp. Tax Number»");
      apply(rewrite, {{"«ON Corp. MCBS Number»", "«Quebec ID Number»"}});
      break;
    case 9:
      apply(rewrite, {{"«WSIB Number»", "«WCB Number»"},
                      {"«WHSCC Number»", "«WCB Number»"},
                      {"«NEQ Number»", "«WCB Number»"},
                      {"«WSIB Premium Rate»", "«WCB Premium Rate»"},
                      {"«GST Number»", "«HST Number»"}});
      corpTaxTo(rewrite, "«N.S. Corp. Tax Number»");
      break;
    case 10:
    case 11:
      apply(rewrite, {{"«WSIB Number»", "«WHSCC Number»"},
                      {"«WCB Number»", "«WHSCC Number»"},
                      {"«NEQ Number»", "«WHSCC Number»"},
                      {"«WSIB Premium Rate»", "«WHSCC Premium Rate»"},
                      {"«GST Number»", "«HST Number»"}});
      corpTaxTo(rewrite, province == 10 ? "«N.B. Corp. Tax Number»" : "«Nfld. Corp. Tax Number»");
      break;
    case 12:
      apply(rewrite, {{"«WSIB Number»", "«WCB Number»"},
                      {"«WHSCC Number»", "«WCB Number»"},
                      {"«NEQ Number»", "«WCB Number»"},
                      {"«WSIB Premium Rate»", "«WCB Premium Rate»"},
                      {"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«P.E.I. Corp. Tax Number»");
      break;
    default:  // Ontario and any other index
      apply(rewrite, {{"«WCB Number»", "«WSIB Number»"},
                      {"«NEQ Number»", "«WSIB Number»"},
                      {"«WHSCC Number»", "«WSIB Number»"},
                      {"«WCB Premium Rate»", "«WSIB Premium Rate»"},
                      {"«WCB Firm Number»", "«WSIB Firm Number»"}});
      dateTest();
      apply(rewrite, {{"«HST Number»", "«GST Number»"}});
      corpTaxTo(rewrite, "«ON Corp. Tax Number»");
      apply(rewrite, {{"«Quebec ID Number»", "«ON Corp. MCBS Number»"}});
      break;
  }
}

// The token spans present in a text (what stands between each opening delimiter and the
// next closing one, upper-cased). A merge asks it before searching the text for a token;
// it answers "maybe" for everything when the text is too tangled to be sure.
class TokenIndex {
 public:
  void build(const std::string& text, std::string_view open, std::string_view close) {
    spans_.clear();
    datedNames_.clear();
    reliable_ = true;
    size_t p = merge::findNoCase(text, open);
    while (p != std::string_view::npos) {
      if (p > 0) {
        // A delimiter that a replacement could complete from the left.
        char before = text[p - 1];
        if (before == '\\' || before == '\'' || before == '\xC2') reliable_ = false;
      }
      size_t start = p + open.size();
      size_t q = merge::findNoCase(text, close, start);
      if (q == std::string_view::npos) break;
      std::string span = merge::upper(std::string_view(text).substr(start, q - start));
      if (merge::containsNoCase(span, open)) reliable_ = false;
      if (!span.empty() && span.front() == '(') {
        size_t comma = span.find(", ");
        if (comma != std::string::npos) datedNames_.insert(span.substr(1, comma - 1));
      }
      spans_.insert(std::move(span));
      p = merge::findNoCase(text, open, start);
    }
  }
  bool mayHave(const std::string& upperSpan) const {
    return !reliable_ || spans_.count(upperSpan) > 0;
  }
  bool mayHaveDated(const std::string& upperName) const {
    return !reliable_ || datedNames_.count(upperName) > 0;
  }

 private:
  std::unordered_set<std::string> spans_;
  std::unordered_set<std::string> datedNames_;
  bool reliable_ = true;
};

// A value that could make a new token appear when it is put into the text.
bool couldFormDelimiter(std::string_view value) {
  for (char c : value)
    if (c == '\\' || c == '\'' || c == '\xC2' || c == '\xAB' || c == '\xBB' || c == '<' || c == '>')
      return true;
  return false;
}

bool isSafeName(std::string_view name) {
  return !couldFormDelimiter(name);
}

}  // namespace

std::string clsInsertFieldsInRTB::convertProvinceFields(std::string text) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-convertProvinceFields", [&] {
    Rewriter rewrite(text);
    for (const Rewrite& r : kCommonRewrites) rewrite(r.from, r.to);
    const int country = merge::localeCountryMode();
    if (country == kCountryUnitedStates) {
      for (const Rewrite& r : kUnitedStatesRewrites) rewrite(r.from, r.to);
    } else if (country == kCountryCanada) {
      applyProvince(rewrite, merge::localeProvinceIndex(), today());
      for (const Rewrite& r : kCanadaRewrites) rewrite(r.from, r.to);
    }
  });
  return text;
}

std::string clsInsertFieldsInRTB::convertFieldName(std::string_view text) {
  std::string out(text);
  replaceNoCase(out, kOpen, kOpenRtf);
  replaceNoCase(out, kClose, kCloseRtf);
  return out;
}

bool clsInsertFieldsInRTB::testStr(std::string_view name) {
  bool known = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-testStr", [&] {
    known = merge::upper(name) == "TODAYS DATE" || fieldList_.findByDisplayName(name) != nullptr;
  });
  return known;
}

void clsInsertFieldsInRTB::sendFault(bool showErrors, const std::string& message) {
  if (showErrors && testErrorComment) testErrorComment(message);
}

bool clsInsertFieldsInRTB::testRTBComment(std::string text, bool isRTFText, bool showErrors,
                                          bool skipFieldNameTest) {
  bool fault = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-testRTBComment", [&] {
    static const std::string kM1 =
        "You are missing your opening brackets, '«' in one of your expressions";
    static const std::string kM2 =
        "You are missing the closing round bracket, ')' in one of your date expressions";
    static const std::string kM4 =
        "You are missing the opening round bracket, '(' in one of your date expressions";
    static const std::string kM5 =
        "You are missing a closing bracket, '»' in one of your expressions.  Make sure you have "
        "a bracket immediately before and after a field.\r\n\r\neg. «Company Name»";

    text = convertProvinceFields(std::move(text));
    const std::string open = isRTFText ? convertFieldName(kOpen) : std::string(kOpen);
    const std::string close = isRTFText ? convertFieldName(kClose) : std::string(kClose);

    // The walk shortens the text from the left; `rest` marks where the shortened text begins,
    // so that no copy is made per expression. Positions are 1-based within the rest, 0 when
    // absent, as the comparisons below need.
    size_t rest = 0;
    auto inRest = [&](std::string_view needle) {
      size_t p = merge::findNoCase(text, needle, rest);
      return p == std::string_view::npos ? 0 : p - rest + 1;
    };
    size_t openPos = inRest(open);
    size_t closePos = inRest(close);
    // An absent closing delimiter counts as 0, so a lone opening one reports M1; a lone
    // closing one passes. Both intended.
    if (closePos < openPos) {
      fault = true;
      sendFault(showErrors, kM1);
    }
    while (openPos >= 1 && !fault) {
      size_t exprStart = rest + openPos - 1 + open.size();
      size_t next = merge::findNoCase(text, close, exprStart);
      if (next == std::string_view::npos) next = text.size();
      std::string expression = text.substr(exprStart, next - exprStart);
      rest = std::min(next + close.size(), text.size());
      std::string name = expression;
      if (!expression.empty() && expression.front() == '(') {
        if (expression.back() != ')') {
          fault = true;
          sendFault(showErrors, kM2);
        } else {
          std::string inner = expression.substr(1, expression.size() - 2);
          size_t comma = inner.find(',');
          name = GeneralUtilities::trim(inner.substr(0, comma));
          // No second part is the legacy "Subscript out of range", left to the guard.
          if (comma == std::string::npos) throw SubscriptOutOfRange();
          std::string format = GeneralUtilities::trim(inner.substr(comma + 1));
          bool known = std::any_of(merge::kDateFormats.begin(), merge::kDateFormats.end(),
                                   [&](const merge::DateFormatRow& row) {
                                     return row.token == format;  // case counts here
                                   });
          if (!known) {
            fault = true;
            sendFault(showErrors, "The date format of: '" + format +
                                      "' is not valid.  Please see help for valid date formats.");
          }
        }
      } else if (!expression.empty() && expression.back() == ')') {
        fault = true;
        sendFault(showErrors, kM4);
      }
      // A forgotten closing bracket runs the name on into the next expression.
      if (!fault && name.size() > 40) {
        fault = true;
        sendFault(showErrors, kM5);
      }
      if (!skipFieldNameTest && !fault && !testStr(name)) {
        fault = true;
        sendFault(showErrors, "The " + merge::localeApplicationName() +
                                  " Pad did not recognize: «" + name +
                                  "» as a valid placeholder field name.");
      }
      openPos = inRest(open);
      closePos = inRest(close);
      // Runs even with the fault already up, so one call can send two messages.
      if (closePos < openPos) {
        fault = true;
        sendFault(showErrors, kM1);
      }
    }
  });
  return fault;
}

bool clsInsertFieldsInRTB::verifyFieldListIsPopulated() {
  bool populated = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-verifyFieldListIsPopulated", [&] {
    populated = fieldList_.count() >= 1;
    if (populated) return;
    bool choose = true;
    if (appointmentID >= 0)
      ListType = 5;
    else if (TaskID >= 0)
      ListType = 8;
    else if (docketID >= 0)
      ListType = 6;
    else if (companyID >= 0 || contactID >= 0)
      ListType = 2;
    else
      choose = false;
    if (!choose) return;
    bool noListBox = false;
    bool clearListBox = false;
    createDefaultFieldListStructure(noListBox, clearListBox);
    // The answer stays the count read at the start: this call does no merging.
  });
  return populated;
}

std::string clsInsertFieldsInRTB::parseTodaysDateInRTBComment(std::string& text,
                                                              std::string_view open,
                                                              std::string_view close) {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-parseTodaysDateInRTBComment", [&] {
    std::vector<std::string> tokens;
    for (const merge::DateFormatRow& row : merge::kDateFormats)
      tokens.push_back(std::string(open) + "(Todays Date, " + std::string(row.token) + ")" +
                       std::string(close));
    // The formats that stand in the text, from one walk over the places where a today token
    // begins, so that the text is searched only for those. A date value brings in no token.
    const std::string start = std::string(open) + "(Todays Date, ";
    std::vector<bool> present(tokens.size(), false);
    for (size_t p = merge::findNoCase(text, start); p != std::string_view::npos;
         p = merge::findNoCase(text, start, p + 1))
      for (size_t k = 0; k < tokens.size(); ++k)
        if (!present[k] &&
            merge::equalsNoCase(std::string_view(text).substr(p, tokens[k].size()), tokens[k]))
          present[k] = true;
    for (size_t k = 0; k < tokens.size(); ++k) {
      if (!present[k]) continue;
      size_t pos = merge::findNoCase(text, tokens[k]);
      if (pos == std::string_view::npos) continue;
      mergeText_ = &text;
      mergeTokenPosition_ = pos;
      std::string value = getTodaysDate(merge::kDateFormats[k].todayPattern);
      replaceText(text, tokens[k], value, pos);
      mergeText_ = nullptr;
    }
  });
  return text;
}

bool clsInsertFieldsInRTB::runDelimiterPass(std::string& text, std::string_view open,
                                            std::string_view close) {
  bool replaced = false;
  parseTodaysDateInRTBComment(text, open, close);

  TokenIndex index;
  index.build(text, open, close);
  std::string token;
  std::string key;
  auto replaceFound = [&](std::int32_t itemKey, std::string_view pattern) {
    size_t pos = merge::findNoCase(text, token);
    if (pos == std::string_view::npos) return;
    mergeText_ = &text;
    mergeTokenPosition_ = pos;
    std::string value = getDataFieldInfo(itemKey, pattern);
    mergeText_ = nullptr;
    replaceText(text, token, value, pos);
    replaced = true;
    if (couldFormDelimiter(value)) index.build(text, open, close);
  };

  if (upperNamesBuild_ != listBuild_ || upperNames_.size() != fieldList_.items().size()) {
    upperNames_.clear();
    for (const FieldItem& item : fieldList_) upperNames_.push_back(merge::upper(item.displayName));
    upperNamesBuild_ = listBuild_;
  }

  // Every item is visited once, in list order; getDataFieldInfo runs once per token form.
  // (getDataFieldInfo moves the list's current item but never changes the list.)
  const std::vector<FieldItem>& items = fieldList_.items();
  for (size_t n = 0; n < items.size(); ++n) {
    const FieldItem& item = items[n];
    const bool safe = isSafeName(item.displayName);
    const std::string& upperName = upperNames_[n];
    if (item.fieldType == kFieldDate) {
      if (safe && !index.mayHaveDated(upperName)) continue;
      for (const merge::DateFormatRow& row : merge::kDateFormats) {
        if (safe) {
          key.assign("(");
          key += upperName;
          key += ", ";
          key += merge::upper(row.token);
          key += ')';
          if (!index.mayHave(key)) continue;
        }
        token.assign(open);
        token += '(';
        token += item.displayName;
        token += ", ";
        token += row.token;
        token += ')';
        token += close;
        replaceFound(item.key, row.fieldPattern);
      }
    } else {
      if (safe && !index.mayHave(upperName)) continue;
      token.assign(open);
      token += item.displayName;
      token += close;
      replaceFound(item.key, "");
    }
  }
  return replaced;
}

std::string clsInsertFieldsInRTB::parseRTBComment() {
  std::string text;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-parseRTBComment", [&] {
    // The rewrite depends only on the text, the locale and the day.
    const int country = merge::localeCountryMode();
    const int province = merge::localeProvinceIndex();
    const double day = today().serial;
    RewriteMemo& memo = rewriteMemo_;
    if (memo.valid && memo.source == TemplateText && memo.country == country &&
        memo.province == province && memo.day == day) {
      text = memo.result;
    } else {
      text = convertProvinceFields(TemplateText);
      memo = {TemplateText, text, country, province, day, true};
    }

    if (ConvertCompanyNameToContactNameForContacts && companyID <= 0 && contactID >= 1) {
      if (merge::containsNoCase(text, "«Company Name»") &&
          !merge::containsNoCase(text, "«Contact Display Name»")) {
        replaceNoCase(text, "«Company Name»", "«Contact Display Name»");
      } else if (merge::containsNoCase(text, "\\'abCompany Name\\'bb") &&
                 !merge::containsNoCase(text, "\\'abContact Display Name\\'bb")) {
        replaceNoCase(text, "\\'abCompany Name\\'bb", "\\'abContact Display Name\\'bb");
      }
    }

    if (!verifyFieldListIsPopulated()) return;

    // One spelling per template: escaped tokens of a mixed text are left for the blanking.
    if (!runDelimiterPass(text, kOpen, kClose)) runDelimiterPass(text, kOpenRtf, kCloseRtf);

    replaceUnfoundMergeFieldsWithBlanks(text);
  });
  return text;
}

}  // namespace lf
