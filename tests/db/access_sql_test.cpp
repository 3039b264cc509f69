// Translation of Access-dialect statements.
#include "db/access_sql.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <vector>

#include "base/failure.hpp"

namespace lf {
namespace {

std::string plain(std::string_view sql) {
  return translateAccessSql(sql, SqlDialect::SQLite, false).sql;
}

// What SQLite makes of a statement against a table T: the number of its parameters, -1 when
// more than one statement stands in the text, -2 when SQLite cannot prepare it.
int sqliteParameters(const std::string& sql) {
  sqlite3* db = nullptr;
  sqlite3_open(":memory:", &db);
  sqlite3_exec(db, "CREATE TABLE T (A, B, N, D);", nullptr, nullptr, nullptr);
  sqlite3_stmt* stmt = nullptr;
  const char* tail = nullptr;
  int result = -2;
  if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, &tail) == SQLITE_OK && stmt != nullptr) {
    result = sqlite3_bind_parameter_count(stmt);
    sqlite3_stmt* next = nullptr;
    if (sqlite3_prepare_v2(db, tail, -1, &next, nullptr) != SQLITE_OK || next != nullptr)
      result = -1;
    sqlite3_finalize(next);
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return result;
}

TEST(AccessSqlTranslation, DateLiteralsInEveryFormBecomeIsoText) {
  EXPECT_EQ(plain("SELECT * FROM Dockets WHERE DateFrom = #2010-12-31#;"),
            "SELECT * FROM Dockets WHERE DateFrom = '2010-12-31 00:00:00'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE D >= #12/31/2010 2:05:00 PM#"),
            "SELECT * FROM T WHERE D >= '2010-12-31 14:05:00'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE D <= #December 31, 2010#"),
            "SELECT * FROM T WHERE D <= '2010-12-31 00:00:00'");
  EXPECT_THROW(plain("SELECT * FROM T WHERE D = #31st of the 31st month#"), DatabaseFailure);
}

TEST(AccessSqlTranslation, BooleansNamesAndStrings) {
  EXPECT_EQ(plain("SELECT [Client Id] FROM Clients WHERE ShowThisClient = True AND X=false"),
            "SELECT \"Client Id\" FROM Clients WHERE ShowThisClient = 1 AND X=0");
  EXPECT_EQ(plain("SELECT * FROM T WHERE Name = \"O'Brien\""),
            "SELECT * FROM T WHERE Name = 'O''Brien'");
  // True inside a string stays text.
  EXPECT_EQ(plain("SELECT * FROM T WHERE Name = 'True'"), "SELECT * FROM T WHERE Name = 'True'");
  EXPECT_EQ(plain("SELECT A & ' ' & B FROM T"), "SELECT A || ' ' || B FROM T");
}

TEST(AccessSqlTranslation, QualifiedColumnsMayBeSqliteKeywords) {
  EXPECT_EQ(plain("SELECT ClientContacts.ClientID, ClientContacts.Primary FROM ClientContacts;"),
            "SELECT ClientContacts.\"ClientID\", ClientContacts.\"Primary\" FROM ClientContacts");
}

TEST(AccessSqlTranslation, LikeWildcardsAndNullTests) {
  EXPECT_EQ(plain("SELECT * FROM Clients WHERE Clients.[Client Status] Not Like 'Deleted';"),
            "SELECT * FROM Clients WHERE Clients.\"Client Status\" Not Like 'Deleted'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE N Like 'Sm*th?'"),
            "SELECT * FROM T WHERE N Like 'Sm%th_'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE N Like '100%*'"),
            "SELECT * FROM T WHERE N Like '100\\%%' ESCAPE '\\'");
  EXPECT_EQ(plain("SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.Parent Is Null;"),
            "SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.\"Parent\" Is Null");
}

TEST(AccessSqlTranslation, LiteralsBecomeParametersOfTheSharedStatement) {
  TranslatedSql a = translateAccessSql(
      "SELECT Contacts.* FROM Contacts WHERE ContactID=12 AND LastName = 'O''Hara';",
      SqlDialect::SQLite);
  TranslatedSql b = translateAccessSql(
      "SELECT Contacts.* FROM Contacts WHERE ContactID=7 AND LastName = 'Ng';", SqlDialect::SQLite);
  EXPECT_EQ(a.parameterizedSql, b.parameterizedSql);
  ASSERT_EQ(a.parameters.size(), 2u);
  EXPECT_EQ(a.parameters[0].text, "12");
  EXPECT_TRUE(a.parameters[0].number);
  EXPECT_EQ(a.parameters[1].text, "O'Hara");
  TranslatedSql d =
      translateAccessSql("SELECT * FROM Dockets WHERE DateFrom = #12/31/2010# AND Invoiced = True",
                         SqlDialect::SQLite);
  ASSERT_EQ(d.parameters.size(), 2u);
  EXPECT_EQ(d.parameters[0].text, "2010-12-31 00:00:00");
  EXPECT_EQ(d.parameters[1].text, "1");
}

TEST(AccessSqlTranslation, OnlyOneStatementIsAccepted) {
  EXPECT_THROW(plain("SELECT * FROM T WHERE N = 'x'; DROP TABLE T;"), DatabaseFailure);
  // A value holding the attack stays inside its literal.
  EXPECT_EQ(plain("SELECT * FROM T WHERE N = 'x''; DROP TABLE T; --'"),
            "SELECT * FROM T WHERE N = 'x''; DROP TABLE T; --'");
  EXPECT_THROW(plain("SELECT * FROM T WHERE N = 'unterminated"), DatabaseFailure);
}

TEST(AccessSqlTranslation, JoinedSelectNamesItsTablesAndAppendsRowids) {
  TranslatedSql t = translateAccessSql(
      "SELECT Companies.*, ClientData.* FROM (Companies INNER JOIN ClientData ON "
      "Companies.CompanyID = ClientData.CompanyIDNum) INNER JOIN Clients AS c ON c.CompanyIDNum = "
      "Companies.CompanyID WHERE ClientData.ActiveStatus=1 ORDER BY Companies.CompanyName;",
      SqlDialect::SQLite);
  ASSERT_EQ(t.tables.size(), 3u);
  EXPECT_EQ(t.tables[0].table, "Companies");
  EXPECT_EQ(t.tables[1].table, "ClientData");
  EXPECT_EQ(t.tables[2].alias, "c");
  EXPECT_TRUE(t.keysAppended);
  EXPECT_EQ(t.keyWidths, (std::vector<size_t>{1, 1, 1}));
  EXPECT_NE(t.sql.find("\"c\".rowid AS \"__key2_0\" FROM"), std::string::npos);
  // Keys told per table: a pair key gives two columns; a table without one leaves none.
  TranslatedSql pair =
      translateAccessSql("SELECT * FROM PersonalTaxStatus WHERE TaxYear = 2010;",
                         SqlDialect::SQLite, true, [](const std::string&) {
                           return std::vector<std::string>{"\"ContactNum\"", "\"TaxYear\""};
                         });
  EXPECT_NE(pair.sql.find("\"PersonalTaxStatus\".\"ContactNum\" AS \"__key0_0\", "
                          "\"PersonalTaxStatus\".\"TaxYear\" AS \"__key0_1\" FROM"),
            std::string::npos);
  TranslatedSql none =
      translateAccessSql("SELECT * FROM V;", SqlDialect::SQLite, true,
                         [](const std::string&) { return std::vector<std::string>{}; });
  EXPECT_FALSE(none.keysAppended);
  EXPECT_EQ(none.sql, "SELECT * FROM V");
  EXPECT_FALSE(translateAccessSql("SELECT DISTINCT A FROM T", SqlDialect::SQLite).keysAppended);
}

TEST(AccessSqlTranslation, CommentsAreWhiteSpaceAsSqliteReadsThem) {
  // The quote inside the comment opens no literal: the translation shows what SQLite runs.
  EXPECT_EQ(plain("DELETE FROM Companies WHERE CompanyID = 1 /* ' */ OR 1=1 --'"),
            "DELETE FROM Companies WHERE CompanyID = 1   OR 1=1");
  TranslatedSql t = translateAccessSql(
      "SELECT * FROM T WHERE N = 'x' /* it's 'y' */ AND B = 2 -- don't\nAND D = 'z';",
      SqlDialect::SQLite);
  ASSERT_EQ(t.parameters.size(), 3u);
  EXPECT_EQ(t.parameters[0].text, "x");
  EXPECT_EQ(t.parameters[1].text, "2");
  EXPECT_EQ(t.parameters[2].text, "z");
  // Comment marks inside literals and names are text.
  EXPECT_EQ(plain("SELECT [a--b] FROM T WHERE N = '/* x */'"),
            "SELECT \"a--b\" FROM T WHERE N = '/* x */'");
  EXPECT_EQ(plain("SELECT A FROM T; -- done"), "SELECT A FROM T");
  EXPECT_THROW(plain("SELECT A FROM T /* never closed"), DatabaseFailure);
  EXPECT_THROW(plain("SELECT A FROM T; /* x */ DROP TABLE T"), DatabaseFailure);
}

TEST(AccessSqlTranslation, SqliteSeesOneStatementWithTheParametersCounted) {
  for (const char* access : {
           "SELECT * FROM T WHERE N = 'x' /* 'y' */ AND A = 1",
           "SELECT * FROM T WHERE N = 'x' -- 'y'\n AND A = \"it's\"",
           "SELECT * FROM T WHERE `N` = 'a''b' AND [B] = #1/2/2010# AND D = True",
           "SELECT * FROM T WHERE N = 1e-5 OR N = .5 OR N = 2.5E+3 OR N = 0x1F",
           "SELECT * FROM T WHERE A&'x' = 'y' AND B Like 'a*'",
           "SELECT T.A, T.B FROM T WHERE T.N <> 3 AND T.D >= 'k'",
       }) {
    SCOPED_TRACE(access);
    TranslatedSql t = translateAccessSql(access, SqlDialect::SQLite);
    EXPECT_EQ(sqliteParameters(t.parameterizedSql), static_cast<int>(t.parameters.size()));
    EXPECT_EQ(sqliteParameters(t.sql), 0);
  }
  TranslatedSql numbers = translateAccessSql(
      "SELECT * FROM T WHERE N = 1e-5 OR N = .5 OR N = 2.5E+3 OR N = 0x1F", SqlDialect::SQLite);
  ASSERT_EQ(numbers.parameters.size(), 3u);  // the hexadecimal number stays in the text
  EXPECT_EQ(numbers.parameters[0].text, "1e-5");
  EXPECT_EQ(numbers.parameters[2].text, "2.5E+3");
}

TEST(AccessSqlTranslation, TranslatedTokensDoNotRunIntoTheirNeighbours) {
  EXPECT_EQ(plain("SELECT [A][B] FROM T"), "SELECT \"A\" \"B\" FROM T");
  EXPECT_EQ(plain("SELECT X#1/2/2010# FROM T"), "SELECT X '2010-01-02 00:00:00' FROM T");
  EXPECT_EQ(plain("SELECT \"a\"'b' FROM T"), "SELECT 'a' 'b' FROM T");
  EXPECT_EQ(plain("SELECT A|&B FROM T"), "SELECT A| ||B FROM T");
  EXPECT_EQ(plain("SELECT `a\"b` FROM T"), "SELECT \"a\"\"b\" FROM T");
  EXPECT_EQ(plain("SELECT * FROM T WHERE N = True.5"), "SELECT * FROM T WHERE N = 1 .5");
}

TEST(AccessSqlTranslation, RefusesWhatSqliteWouldReadAsSomethingElse) {
  for (const std::string& access : std::vector<std::string>{
           "SELECT * FROM T WHERE N = ?", "SELECT * FROM T WHERE N = :n",
           "SELECT * FROM T WHERE N = @n", "SELECT * FROM T WHERE N = $n",
           "SELECT x'00' FROM T",  // a blob literal
           "SELECT * FROM T WHERE N = 1abc", "SELECT * FROM T WHERE N = 1_000",
           "SELECT * FROM T WHERE N = !1", "SELECT * FROM T WHERE N = \\1",
           "SELECT * FROM T WHERE N = {1}", "SELECT * FROM T WHERE N = 1\v", "SELECT `A FROM T", "",
           "   ", ";", "-- nothing but a comment",
           std::string("SELECT * FROM T WHERE N = 1") + '\0' + "; DROP TABLE T",
           std::string("SELECT * FROM T WHERE N = 'a") + '\0' + "b'",
           "\xEF\xBB\xBFSELECT * FROM T"}) {
    SCOPED_TRACE(access);
    EXPECT_THROW(translateAccessSql(access, SqlDialect::SQLite), DatabaseFailure);
  }
}

}  // namespace
}  // namespace lf
