#include "engine/sql_dialect.h"

#include <QLocale>

#include "base/dates.h"
#include "engine/like.h"
#include "engine/sqlite/dialect.h"
#include "support/test_support.h"

namespace veldrin::engine {
namespace {

QString Sqlite(const QString& sql, Clashes clashes = Clashes::Fail) {
  return TranslateStatement(sql, SqliteDialect(), clashes).Sql;
}
QString SqliteCondition(const QString& condition) { return TranslateCondition(condition, SqliteDialect()); }

TEST(SqlDialect, IsTranslated) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT * FROM t WHERE [Title] Not Like '*o''clock [5]*'",
       "SELECT * FROM t WHERE NOT MatchesLike ( '*o''clock [5]*' , [Title] )"},
      {"UPDATE t SET a = 'X' WHERE b = '0012' AND c <> 'y'",
       "UPDATE t SET a = 'X' WHERE b = '0012' AND c <> 'y' COLLATE Folded"},
      {"DELETE t.* FROM t INNER JOIN u ON t.a = u.b AND t.c = u.d WHERE t.IDNo = '0001' OR 1",
       "DELETE FROM t WHERE ( t . a , t . c ) IN ( SELECT u . b , u . d FROM u ) AND ( t . IDNo = '0001' OR "
       "1 )"},
      {"SELECT 1 -- 2 FROM t", "SELECT 1 - - 2 FROM t"},
  };
  for (const auto& [sql, sqlite] : cases) EXPECT_EQ(Sqlite(sql), sqlite);
  // Clashes of keys only are left out, and by no UPDATE.
  EXPECT_EQ(Sqlite("INSERT INTO a SELECT '1' as IDNo, PhotoID FROM b", Clashes::LeaveOut),
            "INSERT INTO a SELECT '1' as IDNo , PhotoID FROM b WHERE 1 = 1 ON CONFLICT DO NOTHING");
  for (const char* sql : {"UPDATE a SET b = 1", "DELETE FROM a"}) {
    EXPECT_EQ(Sqlite(sql, Clashes::LeaveOut), sql);
  }
}

TEST(SqlDialect, RefusesWhatIsNoStatement) {
  for (const QString& sql :
       QStringList{"", "SELECT 'open", "SELECT a FROM t WHERE a = #soon#", "a = #2001-12-31",
                   "DELETE FROM a; DELETE FROM b", "DELETE a.* FROM a JOIN b",
                   "DELETE a.* FROM a INNER JOIN b ON a.c < b.c", "DROP TABLE a", "PRAGMA a",
                   "DELETE a.* FROM a INNER JOIN b ON a.c = b.c OR 1",
                   "SELECT 'a" + QString(1, '\0') + "b' FROM t", "SELECT a FROM t UNION SELECT a FROM u",
                   "SELECT a FROM t LIMIT 1", "INSERT OR REPLACE INTO a VALUES (1)"}) {
    EXPECT_EQ(test::ErrorOf([&] { Sqlite(sql); }), base::errSyntax) << sql.toStdString();
  }
}

// What stands around a condition holds, whatever the condition says.
TEST(SqlDialect, AConditionIsClosedAndHoldsNoQuery) {
  EXPECT_EQ(SqliteCondition("a = 1 OR (b = 2)"), "( a = 1 OR ( b = 2 ) )");
  EXPECT_EQ(SqliteCondition("[Made By] In (7, 'x') AND NOT b Between -1 And +1.5"),
            "( [Made By] In ( 7 , 'x' ) AND NOT b Between - 1 And + 1.5 )");
  const auto errorOf = [](const QString& condition) {
    return test::ErrorOf([&] { SqliteCondition(condition); });
  };
  for (const char* condition :
       {"a = 1) OR (1 = 1", "a = (1", "a = 1)", "a = `(` OR `)`", "a = ?", "a = @x", "[a]]) OR [b] = 1", "[]",
        "a = 1;", "Like '*'", "Left(a = 1", "a = 1.2.3", "a = 1e5", "a In (SELECT 1 FROM t)",
        "(SELECT 1 FROM t)", "load_extension('x')", "random()", "a = 1 COLLATE b", "CASE WHEN a THEN b END"})
    EXPECT_EQ(errorOf(condition), base::errSyntax) << condition;
  EXPECT_EQ(errorOf(QString("(").repeated(100'000)), base::errSyntax);
  EXPECT_EQ(errorOf("a = " + QString("DateValue(").repeated(100'000)), base::errSyntax);
  EXPECT_EQ(SqliteCondition(QString("a LIKE '*") + QChar(0xD83C) + "*'"),
            "( MatchesLike ( '*\uFFFD*' , a ) )");
}

// Each is a pattern and a text.
TEST(SqlDialect, LikeMatches) {
  const auto matches = [](const QString& pair) {
    return LikePattern(pair.section('|', 0, 0).toStdString()).Matches(pair.section('|', 1).toStdString());
  };
  for (const QString& pair :
       QStringList{"*beach*|At the BEACH, 2001", "*|", "a?c|abc", "Photo #|photo 7", "[a-c]x|Bx",
                   "*[*]*|2 * 3", "a[b|a[b", "*ab*ab|abxabab", "*ÜBUNGSSTRAßE*|an der übungsstraße",
                   "*οδός*|ΟΔΌΣ", "*моск?а*|МОСКВА", "*[а-д]ом*|Дом", "*🏔?|ab🏔🏔", "*ana*|BANaNA",
                   "*aab*|aaab", "****a|bbba", "a*b*c*d*e|abcdabcde"})
    EXPECT_TRUE(matches(pair)) << pair.toStdString();
  for (const QString& pair : QStringList{"*beach*|be ach", "|a", "a?c|ac", "Photo #|photo x", "[!a-c]x|bx",
                                         "*[*]*|2 x 3", "*ab*ab|ab", "*abc*|ab"})
    EXPECT_FALSE(matches(pair)) << pair.toStdString();
}

TEST(Dates, AreReadInTheLocalesFormFirst) {
  // Of no date there is an empty text.
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"en_US", "7/4/2001", "2001-07-04T00:00:00"},
      {"en_US", "7/4/30", "1930-07-04T00:00:00"},
      {"en_US", " 12/31/2001  11:59:07 PM ", "2001-12-31T23:59:07"},
      {"en_GB", "7/4/2001", "2001-04-07T00:00:00"},
      {"en_GB", "12/31/2001", "2001-12-31T00:00:00"},
      {"de_DE", "04.07.25 8:30", "2025-07-04T08:30:00"},
      {"en_US", "2001-07-04 08:30:15", "2001-07-04T08:30:15"},
      {"en_US", "2/29/00", "2000-02-29T00:00:00"},
      {"en_US", "2/29/1900", ""},
      {"en_US", "0099-01-01", ""},
      {"en_US", "2001-07-04 25:00", ""},
      {"en_US", "", ""},
  };
  for (const auto& [name, text, iso] : cases) {
    const auto date = base::ParseDate(text, QLocale(name));
    EXPECT_EQ(date ? date->toString("yyyy-MM-ddTHH:mm:ss") : "", iso) << name << " : " << text;
  }
}

// A form is filled from the catalogue and written back as a whole: what nobody touched must stay.
TEST(Dates, ComeBackAsTheyWereShown) {
  for (const char* name : {"en_US", "en_GB", "de_DE", "fr_FR", "fi_FI", "cs_CZ", "sv_SE", "hu_HU", "ja_JP"}) {
    for (const char* iso : {"1925-03-09T00:00:00", "2001-07-04T15:00:00", "2031-12-31T00:08:59"}) {
      const QDateTime date = QDateTime::fromString(iso, Qt::ISODate);
      const QString shown = base::FormatDate(date, QLocale(name));
      EXPECT_EQ(base::ParseDate(shown, QLocale(name)), date) << name << " : " << shown.toStdString();
    }
  }
}

}  // namespace
}  // namespace veldrin::engine
