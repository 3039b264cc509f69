// Tokenizer and rewriter of Access-dialect SQL into the dialect of a backend.
#include "db/access_sql.hpp"

#include <sqlite3.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <set>

#include "base/failure.hpp"
#include "base/variant.hpp"

namespace lf {
namespace {

enum class Tok { Word, Number, String, Quoted, DateLit, Punct, Semicolon };

struct Token {
  Tok kind;
  std::string text;              // translated text
  std::string space;             // white space before the token
  std::string_view source = {};  // the token as written
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

// Character classes as SQLite's tokenizer has them, so that what this translator takes for one
// token SQLite takes for the same token.
bool isSqlSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r';
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool isIdChar(char c) {
  return isWordChar(c) || c == '$';
}

// The end of the number at i, read as SQLite reads one: 0x and hex digits, or digits, an
// optional fraction and an optional exponent.
size_t numberEnd(std::string_view sql, size_t i, bool& hex) {
  auto at = [&](size_t k) { return k < sql.size() ? sql[k] : '\0'; };
  hex = at(i) == '0' && (at(i + 1) == 'x' || at(i + 1) == 'X') && isHexDigit(at(i + 2));
  size_t j = i;
  if (hex) {
    for (j = i + 2; isHexDigit(at(j));) ++j;
    return j;
  }
  while (isDigit(at(j))) ++j;
  if (at(j) == '.')
    for (++j; isDigit(at(j));) ++j;
  if ((at(j) == 'e' || at(j) == 'E') &&
      (isDigit(at(j + 1)) || ((at(j + 1) == '+' || at(j + 1) == '-') && isDigit(at(j + 2)))))
    for (j += 2; isDigit(at(j));) ++j;
  return j;
}

// The text of a quoted run from i (the opening quote q) with doubled quotes undone; `end` is
// set past the closing quote. Throws when the run is not closed.
std::string quotedRun(std::string_view sql, size_t i, char q, size_t& end, const char* what) {
  std::string raw;
  size_t j = i + 1;
  while (j < sql.size()) {
    if (sql[j] == q) {
      if (j + 1 < sql.size() && sql[j + 1] == q) {
        raw += q;
        j += 2;
        continue;
      }
      end = j + 1;
      return raw;
    }
    raw += sql[j++];
  }
  throw DatabaseFailure(what);
}

std::string quoteName(std::string_view name) {
  std::string q = "\"";
  for (char ch : name) q += ch == '"' ? std::string("\"\"") : std::string(1, ch);
  return q + "\"";
}

// Splits a statement into tokens exactly where SQLite would, comments being white space, and
// refuses what SQLite would take for something this translator does not know: parameter
// markers, blob literals, numbers run into names, characters SQLite has no token for, NUL.
std::vector<Token> tokenize(std::string_view sql) {
  // SQLite ends a statement's text at a NUL, wherever it stands.
  if (sql.find('\0') != std::string_view::npos)
    throw DatabaseFailure("Syntax error: NUL character in the statement.");
  std::vector<Token> tokens;
  size_t i = 0;
  std::string space;
  bool ended = false;
  while (i < sql.size()) {
    char c = sql[i];
    if (isSqlSpace(c)) {
      space += c;
      ++i;
      continue;
    }
    if (c == '-' && i + 1 < sql.size() && sql[i + 1] == '-') {  // to the end of the line
      size_t j = sql.find('\n', i);
      i = j == std::string_view::npos ? sql.size() : j;
      space += ' ';
      continue;
    }
    if (c == '/' && i + 1 < sql.size() && sql[i + 1] == '*') {
      size_t j = i + 2 < sql.size() ? sql.find("*/", i + 2) : std::string_view::npos;
      if (j == std::string_view::npos) throw DatabaseFailure("Syntax error: unclosed comment.");
      i = j + 2;
      space += ' ';
      continue;
    }
    if (ended) throw DatabaseFailure("Characters found after end of SQL statement.");
    Token tok{Tok::Punct, "", space};
    space.clear();
    const size_t begin = i;
    if (c == '\'' || c == '"') {
      tok.kind = Tok::String;
      tok.text =
          quoteString(quotedRun(sql, i, c, i, "Syntax error in string in query expression."));
    } else if (c == '`') {
      tok.kind = Tok::Quoted;
      tok.text = quoteName(quotedRun(sql, i, c, i, "Syntax error: unclosed `name`."));
    } else if (c == '[') {
      size_t j = sql.find(']', i);
      if (j == std::string_view::npos) throw DatabaseFailure("Syntax error: unclosed [name].");
      tok.kind = Tok::Quoted;
      tok.text = quoteName(sql.substr(i + 1, j - i - 1));
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
      if (static_cast<unsigned char>(c) == 0xEF && sql.substr(i, 3) == "\xEF\xBB\xBF")
        throw DatabaseFailure("Syntax error: byte order mark in the statement.");
      if ((c == 'x' || c == 'X') && i + 1 < sql.size() && sql[i + 1] == '\'')
        throw DatabaseFailure("Syntax error: blob literals are not supported.");
      size_t j = i;
      while (j < sql.size() && isIdChar(sql[j])) ++j;
      tok.kind = Tok::Word;
      tok.text = std::string(sql.substr(i, j - i));
      i = j;
    } else if (isDigit(c) || (c == '.' && i + 1 < sql.size() && isDigit(sql[i + 1]))) {
      bool hex = false;
      size_t j = numberEnd(sql, i, hex);
      if (j < sql.size() && isIdChar(sql[j]))
        throw DatabaseFailure("Syntax error in number in query expression '" +
                              std::string(sql.substr(i, j - i + 1)) + "'.");
      tok.kind = hex ? Tok::Punct : Tok::Number;  // a hex number stays in the text
      tok.text = std::string(sql.substr(i, j - i));
      i = j;
    } else if (c == ';') {
      tok.kind = Tok::Semicolon;
      ended = true;
      ++i;
      continue;  // the closing ";" is dropped
    } else {
      // The operators of SQLite, longest first; "&" is the Access concatenation.
      static const std::array<std::string_view, 19> operators = {
          "->>", "<>", "<=", ">=", "!=", "==", "<<", ">>", "||", "->",
          "(",   ")",  "+",  "-",  "*",  "/",  "%",  ",",  "."};
      static const std::string_view singles = "<>=|&~";
      for (std::string_view op : operators)
        if (sql.substr(i, op.size()) == op) {
          tok.text = std::string(op);
          break;
        }
      if (tok.text.empty() && singles.find(c) != std::string_view::npos) tok.text = c;
      if (tok.text.empty()) {
        char code[8];
        std::snprintf(code, sizeof code, "0x%02X", static_cast<unsigned char>(c));
        throw DatabaseFailure(std::string("Syntax error: unexpected character ") + code +
                              " in query expression.");
      }
      i += tok.text.size();
      if (tok.text == "&") tok.text = "||";
    }
    tok.source = sql.substr(begin, i - begin);
    tokens.push_back(std::move(tok));
  }
  return tokens;
}

// Two tokens written with nothing between them that SQLite could read as other tokens than
// these two ("x" and '...' as a blob, '' as a doubled quote, "1" and ".5" as one number,
// "|" and "||" as "||" and "|", "?" and a digit as a numbered parameter).
bool mayJoin(char a, char b) {
  auto word = [](char ch) { return isIdChar(ch) || ch == '.'; };
  auto quote = [](char ch) { return ch == '\'' || ch == '"' || ch == '`'; };
  auto op = [](char ch) { return ch != '\0' && std::strchr("<>=!|-/*&", ch) != nullptr; };
  return (word(a) && word(b)) || (isIdChar(a) && b == '\'') || (quote(a) && quote(b)) ||
         (op(a) && op(b)) || (a == '?' && isDigit(b));
}

// A statement being written out token by token: a token that the translation changed gets a
// blank before it, or after it, where it would otherwise run into its neighbour.
class Writer {
 public:
  void add(std::string_view space, std::string_view piece, bool changed) {
    if (piece.empty()) return;
    if (space.empty() && (changed || lastChanged_) && mayJoin(last_, piece.front())) text_ += ' ';
    text_ += space;
    text_ += piece;
    last_ = piece.back();
    lastChanged_ = changed;
  }
  std::string& text() { return text_; }

 private:
  std::string text_;
  char last_ = '\0';
  bool lastChanged_ = false;
};

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

// What a target dialect decides; the tokens and their boundaries are shared.
struct DialectRules {
  const char* trueText;
  const char* falseText;
  const char* rowidName;
  // A date literal from its quoted ISO text ('YYYY-MM-DD HH:MM:SS').
  std::string (*dateLiteral)(const std::string& quotedIso);
  // A word the dialect reserves, which must be quoted to name a column.
  bool (*isKeyword)(const std::string& word);
};

const DialectRules& rulesOf(SqlDialect dialect) {
  static const DialectRules sqlite{
      "1", "0", "rowid", [](const std::string& quotedIso) { return quotedIso; },
      [](const std::string& word) {
        return sqlite3_keyword_check(word.c_str(), static_cast<int>(word.size())) != 0;
      }};
  switch (dialect) {
    case SqlDialect::SQLite:
      break;
  }
  return sqlite;
}

}  // namespace

TranslatedSql translateAccessSql(std::string_view accessSql, SqlDialect dialect, bool appendKeys,
                                 const KeyColumnsOf& keyColumns) {
  const DialectRules& rules = rulesOf(dialect);
  std::vector<Token> tokens = tokenize(accessSql);
  if (tokens.empty()) throw DatabaseFailure("Syntax error: the statement is empty.");
  TranslatedSql result;

  for (size_t i = 0; i < tokens.size(); ++i) {
    Token& t = tokens[i];
    // A qualified column name may be an SQLite keyword (ClientContacts.Primary): quote it.
    if (t.kind == Tok::Word && i > 0 && tokens[i - 1].text == "." && t.space.empty()) {
      t.kind = Tok::Quoted;
      t.text = "\"" + t.text + "\"";
      continue;
    }
    if (t.kind == Tok::DateLit) {
      t.text = rules.dateLiteral(t.text);
      continue;
    }
    if (t.kind == Tok::Word) {
      std::string u = upper(t.text);
      if (u == "TRUE") {
        t.text = rules.trueText;
        t.kind = Tok::Number;
      } else if (u == "FALSE") {
        t.text = rules.falseText;
        t.kind = Tok::Number;
      } else if (u == "DISTINCTROW") {
        t.text = "DISTINCT";
      } else if (i > 0 && tokens[i - 1].text == "." && rules.isKeyword(t.text)) {
        // A column named by an SQL keyword (ClientContacts.Primary) is an identifier here.
        t.text = "\"" + t.text + "\"";
      } else if (u == "LIKE" && i + 1 < tokens.size() && tokens[i + 1].kind == Tok::String) {
        bool escape = false;
        tokens[i + 1].text = likePattern(tokens[i + 1].text, escape);
        if (escape) tokens[i + 1].text += " ESCAPE '\\'";
      }
    }
  }

  // Tables of a plain SELECT, for the key columns.
  bool plain = appendKeys && !tokens.empty() && isWord(tokens[0], "SELECT");
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

  // The key columns of each table, or none when a table has no key to give.
  std::string keys;
  if (plain && fromIndex > 0 && !result.tables.empty()) {
    for (size_t k = 0; k < result.tables.size(); ++k) {
      std::vector<std::string> columns;
      if (!keyColumns) {
        columns.emplace_back(rules.rowidName);
      } else {
        try {
          columns = keyColumns(result.tables[k].table);
        } catch (const DatabaseFailure&) {
          columns.clear();  // not a table (a view or a sub-query): no keys
        }
      }
      if (columns.empty()) {
        keys.clear();
        break;
      }
      for (size_t c = 0; c < columns.size(); ++c)
        keys += ", \"" + result.tables[k].alias + "\"." + columns[c] + " AS \"__key" +
                std::to_string(k) + "_" + std::to_string(c) + "\"";
      result.keyWidths.push_back(columns.size());
    }
    if (keys.empty()) result.keyWidths.clear();
  }

  Writer out, parameterized;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (!keys.empty() && i == fromIndex) {
      out.add("", keys, true);
      parameterized.add("", keys, true);
      result.keysAppended = true;
    }
    const Token& t = tokens[i];
    std::string_view space = i > 0 ? std::string_view(t.space) : std::string_view();
    const bool changed = t.text != t.source;
    out.add(space, t.text, changed);
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
      parameterized.add(space, "?", true);
    } else {
      parameterized.add(space, t.text, changed);
    }
  }
  result.sql = std::move(out.text());
  result.parameterizedSql = plain ? std::move(parameterized.text()) : result.sql;
  if (!plain) result.parameters.clear();
  return result;
}

}  // namespace lf
