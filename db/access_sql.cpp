// Tokenizer and rewriter of Access-dialect SQL.
#include "db/access_sql.hpp"

#include <sqlite3.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <set>

#include "base/failure.hpp"
#include "base/variant.hpp"

namespace lf {
namespace {

enum class Tok { Word, Number, String, Quoted, DateLit, Punct, Semicolon };

struct Token {
  Tok kind;
  std::string text;   // translated text
  std::string space;  // white space before the token
};

std::string upper(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

bool isWordStart(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) || c == '_' ||
         (static_cast<unsigned char>(c) >= 0x80);
}
bool isWordChar(char c) {
  return isWordStart(c) || std::isdigit(static_cast<unsigned char>(c));
}

std::string quoteString(std::string_view raw) {
  std::string out = "'";
  for (char c : raw) {
    if (c == '\'')
      out += "''";
    else
      out += c;
  }
  out += "'";
  return out;
}

int monthFromName(std::string_view name) {
  static const std::array<const char*, 12> names = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                    "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
  std::string u = upper(name);
  if (u.size() < 3) return 0;
  for (size_t i = 0; i < names.size(); ++i)
    if (u.compare(0, 3, names[i]) == 0) return static_cast<int>(i) + 1;
  return 0;
}

// Reads an optional time "h:nn[:ss] [AM|PM]" from the rest of a literal.
bool parseTimePart(std::string_view rest, int& h, int& mi, int& s) {
  h = mi = s = 0;
  size_t i = 0;
  while (i < rest.size() && rest[i] == ' ') ++i;
  if (i == rest.size()) return true;
  std::string t(rest.substr(i));
  char ampm[4] = {0};
  int n = std::sscanf(t.c_str(), "%d:%d:%d %2s", &h, &mi, &s, ampm);
  if (n < 3) {
    s = 0;
    n = std::sscanf(t.c_str(), "%d:%d %2s", &h, &mi, ampm);
    if (n < 2) return false;
  }
  std::string ap = upper(ampm);
  if (ap == "PM" && h < 12) h += 12;
  if (ap == "AM" && h == 12) h = 0;
  return h >= 0 && h < 24 && mi >= 0 && mi < 60 && s >= 0 && s < 60;
}

}  // namespace

bool parseSqlDateText(std::string_view text, std::string& isoOut) {
  if (text.size() == 19 && text[10] == ' ') {  // the stored form, the common case
    if (Date::fromIso(text)) {
      isoOut = std::string(text);
      return true;
    }
  }
  std::string t(text);
  while (!t.empty() && t.front() == ' ') t.erase(t.begin());
  while (!t.empty() && t.back() == ' ') t.pop_back();
  int y = 0, m = 0, d = 0, h = 0, mi = 0, s = 0;
  int consumed = 0;
  char monthName[16] = {0};
  if (std::sscanf(t.c_str(), "%4d-%2d-%2d%n", &y, &m, &d, &consumed) == 3) {
    std::string rest = t.substr(consumed);
    if (!rest.empty() && rest[0] == 'T') rest[0] = ' ';
    if (!parseTimePart(rest, h, mi, s)) return false;
  } else if (std::sscanf(t.c_str(), "%2d/%2d/%4d%n", &m, &d, &y, &consumed) == 3) {
    if (!parseTimePart(t.substr(consumed), h, mi, s)) return false;
  } else if (std::sscanf(t.c_str(), "%15[A-Za-z] %d, %d%n", monthName, &d, &y, &consumed) == 3) {
    m = monthFromName(monthName);
    if (!parseTimePart(t.substr(consumed), h, mi, s)) return false;
  } else if (std::sscanf(t.c_str(), "%d:%d", &h, &mi) == 2) {
    // A time alone stands on the legacy day zero.
    y = 1899, m = 12, d = 30;
    if (!parseTimePart(t, h, mi, s)) return false;
  } else {
    return false;
  }
  if (y < 100) y += y < 30 ? 2000 : 1900;
  if (m < 1 || m > 12 || d < 1 || d > 31) return false;
  Date date = Date::fromParts(y, m, d, h, mi, s);
  if (date.day() != d) return false;
  isoOut = date.toIso();
  return true;
}

namespace {

std::vector<Token> tokenize(std::string_view sql) {
  std::vector<Token> tokens;
  size_t i = 0;
  std::string space;
  bool ended = false;
  while (i < sql.size()) {
    char c = sql[i];
    if (std::isspace(static_cast<unsigned char>(c))) {
      space += c;
      ++i;
      continue;
    }
    if (ended) throw DatabaseFailure("Characters found after end of SQL statement.");
    Token tok{Tok::Punct, "", space};
    space.clear();
    if (c == '\'' || c == '"') {
      std::string raw;
      size_t j = i + 1;
      bool closed = false;
      while (j < sql.size()) {
        if (sql[j] == c) {
          if (j + 1 < sql.size() && sql[j + 1] == c) {
            raw += c;
            j += 2;
            continue;
          }
          closed = true;
          break;
        }
        raw += sql[j++];
      }
      if (!closed) throw DatabaseFailure("Syntax error in string in query expression.");
      tok.kind = Tok::String;
      tok.text = quoteString(raw);
      i = j + 1;
    } else if (c == '[') {
      size_t j = sql.find(']', i);
      if (j == std::string_view::npos) throw DatabaseFailure("Syntax error: unclosed [name].");
      std::string name(sql.substr(i + 1, j - i - 1));
      std::string q = "\"";
      for (char ch : name) q += ch == '"' ? std::string("\"\"") : std::string(1, ch);
      tok.kind = Tok::Quoted;
      tok.text = q + "\"";
      i = j + 1;
    } else if (c == '#') {
      size_t j = sql.find('#', i + 1);
      if (j == std::string_view::npos)
        throw DatabaseFailure("Syntax error in date in query expression.");
      std::string iso;
      if (!parseSqlDateText(sql.substr(i + 1, j - i - 1), iso))
        throw DatabaseFailure("Syntax error in date in query expression '#" +
                              std::string(sql.substr(i + 1, j - i - 1)) + "#'.");
      tok.kind = Tok::DateLit;
      tok.text = "'" + iso + "'";
      i = j + 1;
    } else if (isWordStart(c)) {
      size_t j = i;
      while (j < sql.size() && isWordChar(sql[j])) ++j;
      tok.kind = Tok::Word;
      tok.text = std::string(sql.substr(i, j - i));
      i = j;
    } else if (std::isdigit(static_cast<unsigned char>(c)) ||
               (c == '.' && i + 1 < sql.size() &&
                std::isdigit(static_cast<unsigned char>(sql[i + 1])))) {
      size_t j = i;
      while (j < sql.size() && (std::isalnum(static_cast<unsigned char>(sql[j])) || sql[j] == '.'))
        ++j;
      tok.kind = Tok::Number;
      tok.text = std::string(sql.substr(i, j - i));
      i = j;
    } else if (c == ';') {
      tok.kind = Tok::Semicolon;
      ended = true;
      ++i;
      continue;  // the closing ";" is dropped
    } else {
      static const std::array<const char*, 4> pairs = {"<>", "<=", ">=", "!="};
      tok.text = std::string(1, c);
      for (const char* p : pairs)
        if (sql.substr(i, 2) == p) tok.text = p;
      if (tok.text == "&") tok.text = "||";
      i += tok.text == "||" ? 1 : tok.text.size();
    }
    tokens.push_back(std::move(tok));
  }
  return tokens;
}

bool isWord(const Token& t, const char* word) {
  return t.kind == Tok::Word && upper(t.text) == word;
}

// Access wildcards into SQLite LIKE wildcards; % and _ are literal in Access.
std::string likePattern(const std::string& quoted, bool& needsEscape) {
  std::string raw = quoted.substr(1, quoted.size() - 2);
  std::string out;
  for (size_t i = 0; i < raw.size(); ++i) {
    char c = raw[i];
    if (c == '*')
      out += '%';
    else if (c == '?')
      out += '_';
    else if (c == '[' && i + 2 < raw.size() && raw[i + 2] == ']') {
      char lit = raw[i + 1];
      if (lit == '%' || lit == '_' || lit == '\\') {
        out += '\\';
        needsEscape = true;
      }
      out += lit;
      i += 2;
    } else if (c == '%' || c == '_' || c == '\\') {
      out += '\\';
      out += c;
      needsEscape = true;
    } else {
      out += c;
    }
  }
  return "'" + out + "'";
}

const std::set<std::string>& fromStopWords() {
  static const std::set<std::string> words = {
      "ON",    "INNER",  "LEFT",  "RIGHT", "OUTER", "JOIN", "WHERE",   "ORDER",
      "GROUP", "HAVING", "UNION", "AS",    "CROSS", "FULL", "NATURAL", "LIMIT"};
  return words;
}

std::string unquoted(const Token& t) {
  if (t.kind == Tok::Quoted) return t.text.substr(1, t.text.size() - 2);
  return t.text;
}

}  // namespace

TranslatedSql translateAccessSql(std::string_view accessSql, bool appendRowids) {
  std::vector<Token> tokens = tokenize(accessSql);
  TranslatedSql result;

  for (size_t i = 0; i < tokens.size(); ++i) {
    Token& t = tokens[i];
    // A qualified column name may be an SQLite keyword (ClientContacts.Primary): quote it.
    if (t.kind == Tok::Word && i > 0 && tokens[i - 1].text == "." && t.space.empty()) {
      t.kind = Tok::Quoted;
      t.text = "\"" + t.text + "\"";
      continue;
    }
    if (t.kind == Tok::Word) {
      std::string u = upper(t.text);
      if (u == "TRUE") {
        t.text = "1";
        t.kind = Tok::Number;
      } else if (u == "FALSE") {
        t.text = "0";
        t.kind = Tok::Number;
      } else if (u == "DISTINCTROW") {
        t.text = "DISTINCT";
      } else if (i > 0 && tokens[i - 1].text == "." &&
                 sqlite3_keyword_check(t.text.c_str(), static_cast<int>(t.text.size())) != 0) {
        // A column named by an SQL keyword (ClientContacts.Primary) is an identifier here.
        t.text = "\"" + t.text + "\"";
      } else if (u == "LIKE" && i + 1 < tokens.size() && tokens[i + 1].kind == Tok::String) {
        bool escape = false;
        tokens[i + 1].text = likePattern(tokens[i + 1].text, escape);
        if (escape) tokens[i + 1].text += " ESCAPE '\\'";
      }
    }
  }

  // Tables of a plain SELECT, for the rowid columns.
  bool plain = appendRowids && !tokens.empty() && isWord(tokens[0], "SELECT");
  size_t fromIndex = 0;
  int depth = 0;
  for (size_t i = 0; plain && i < tokens.size(); ++i) {
    const Token& t = tokens[i];
    if (t.text == "(") ++depth;
    if (t.text == ")") --depth;
    if (t.kind != Tok::Word) continue;
    std::string u = upper(t.text);
    if (u == "DISTINCT" || u == "UNION" || u == "GROUP" || u == "COUNT" || u == "SUM" ||
        u == "MAX" || u == "MIN" || u == "AVG" || u == "TOP")
      plain = false;
    if (depth == 0 && u == "FROM" && fromIndex == 0) fromIndex = i;
  }
  if (plain && fromIndex > 0) {
    bool expectTable = true;
    depth = 0;
    for (size_t i = fromIndex + 1; i < tokens.size(); ++i) {
      const Token& t = tokens[i];
      if (t.text == "(") {
        ++depth;
        continue;
      }
      if (t.text == ")") {
        --depth;
        continue;
      }
      std::string u = t.kind == Tok::Word ? upper(t.text) : "";
      if (depth == 0 && (u == "WHERE" || u == "ORDER" || u == "GROUP" || u == "HAVING")) break;
      if (u == "JOIN" || t.text == ",") {
        expectTable = true;
        continue;
      }
      if (expectTable && (t.kind == Tok::Word || t.kind == Tok::Quoted)) {
        FromTable ft{unquoted(t), unquoted(t)};
        size_t k = i + 1;
        if (k < tokens.size() && isWord(tokens[k], "AS")) ++k;
        if (k < tokens.size() &&
            (tokens[k].kind == Tok::Quoted ||
             (tokens[k].kind == Tok::Word && !fromStopWords().count(upper(tokens[k].text)))))
          ft.alias = unquoted(tokens[k]);
        result.tables.push_back(ft);
        expectTable = false;
      }
    }
  }

  std::string out, parameterized;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (plain && i == fromIndex && fromIndex > 0 && !result.tables.empty()) {
      std::string rowids;
      for (size_t k = 0; k < result.tables.size(); ++k)
        rowids +=
            ", \"" + result.tables[k].alias + "\".rowid AS \"__rowid" + std::to_string(k) + "\"";
      out += rowids;
      parameterized += rowids;
      result.rowidsAppended = true;
    }
    std::string space = i > 0 ? tokens[i].space : "";
    out += space;
    out += tokens[i].text;
    const Token& t = tokens[i];
    bool literal = (t.kind == Tok::Number || t.kind == Tok::DateLit ||
                    (t.kind == Tok::String && t.text.find(" ESCAPE ") == std::string::npos));
    if (plain && literal) {
      TranslatedSql::Parameter parameter;
      parameter.number = t.kind == Tok::Number;
      if (parameter.number) {
        parameter.text = t.text;
      } else {  // a quoted literal: drop the quotes and undo the doubling
        for (size_t k = 1; k + 1 < t.text.size(); ++k) {
          parameter.text += t.text[k];
          if (t.text[k] == '\'' && t.text[k + 1] == '\'') ++k;
        }
      }
      result.parameters.push_back(std::move(parameter));
      parameterized += space + "?";
    } else {
      parameterized += space + t.text;
    }
  }
  result.sql = out;
  result.parameterizedSql = plain ? parameterized : out;
  if (!plain) result.parameters.clear();
  return result;
}

}  // namespace lf
