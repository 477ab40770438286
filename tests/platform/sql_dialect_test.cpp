#include "platform/sql_dialect.h"

#include <gtest/gtest.h>

#include <QLocale>

#include "platform/dates.h"
#include "platform/like.h"
#include "platform/runtime_error.h"

namespace veldrin::platform {
namespace {

struct Translation {
  const char* Name;
  const char* Sql;
  const char* Sqlite;
};

class SqlDialect : public testing::TestWithParam<Translation> {};

TEST_P(SqlDialect, IsTranslated) {
  EXPECT_EQ(ToSqlite(QString::fromUtf8(GetParam().Sql)).toStdString(), GetParam().Sqlite);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SqlDialect,
    testing::Values(
        Translation{
            "SubtreeByRange", "DELETE FROM tblPhotoLinks WHERE IDNo Like '0003*' AND PhotoID = 7",
            "DELETE FROM tblPhotoLinks WHERE ( IDNo >= '0003' AND IDNo < '0003' || char ( 1114111 ) ) AND "
            "PhotoID = 7"},
        Translation{"RootIsEmptyPrefix", "SELECT IDNo FROM t WHERE IDNo LIKE '*'",
                    "SELECT IDNo FROM t WHERE ( IDNo >= '' AND IDNo < '' || char ( 1114111 ) )"},
        Translation{"TextPattern", "SELECT * FROM t WHERE Title Like '*o''clock [5]*'",
                    "SELECT * FROM t WHERE MatchesLike ( '*o''clock [5]*' , Title )"},
        Translation{"BracketedName", "[Title] LIKE '*a*'", "MatchesLike ( '*a*' , Title )"},
        Translation{"BracketedNameWithBlank", "[Made By] = 7", "[Made By] = 7"},
        Translation{"DateOnTheLeft", "#7/4/2001# >= DateValue(CreateDate)",
                    "'2001-07-04 00:00:00' >= ( substr ( CreateDate , 1 , 10 ) || ' 00:00:00' )"},
        Translation{"TextsEqualWithoutCase", "UPDATE t SET a = 'X' WHERE b = '0012' AND c <> 'y'",
                    "UPDATE t SET a = 'X' COLLATE Folded WHERE b = '0012' AND c <> 'y' COLLATE Folded"},
        Translation{"LeftOfTwoFields", "Left(a.IDNo, 8) = Left(b.IDNo, 8)",
                    "substr ( a . IDNo , 1 , 8 ) = substr ( b . IDNo , 1 , 8 )"},
        Translation{
            "JoinDelete",
            "DELETE t.* FROM t INNER JOIN u ON t.PhotoID = u.PhotoID WHERE t.IDNo = '0001' OR 1",
            "DELETE FROM t WHERE ( t . PhotoID ) IN ( SELECT u . PhotoID FROM u ) AND ( t . IDNo = '0001' "
            "OR 1 )"},
        Translation{"JoinDeleteByTwoColumns", "DELETE t.* FROM t INNER JOIN u ON t.a = u.b AND t.c = u.d",
                    "DELETE FROM t WHERE ( t . a , t . c ) IN ( SELECT u . b , u . d FROM u )"},
        Translation{"CommentSignsStayOperators", "SELECT 1 -- 2", "SELECT 1 - - 2"}),
    [](const auto& test) { return std::string(test.param.Name); });

TEST(SqlDialect, DropsClashesOfKeysOnly) {
  EXPECT_EQ(ToSqlite(QStringLiteral("INSERT INTO a SELECT '1' as IDNo, PhotoID FROM b"), true).toStdString(),
            "INSERT INTO a SELECT '1' as IDNo , PhotoID FROM b WHERE 1 ON CONFLICT DO NOTHING");
  EXPECT_EQ(ToSqlite(QStringLiteral("UPDATE a SET b = 1"), true).toStdString(),
            "UPDATE OR IGNORE a SET b = 1");
  EXPECT_EQ(ToSqlite(QStringLiteral("DELETE FROM a"), true).toStdString(), "DELETE FROM a");
}

TEST(SqlDialect, RefusesWhatIsNoStatement) {
  const QString zeroByte = QStringLiteral("SELECT 'a") + QChar::Null + QStringLiteral("b'");
  for (const QString& sql :
       {QString(), QStringLiteral("SELECT 'open"), QStringLiteral("a = #soon#"),
        QStringLiteral("a = #2001-12-31"), QStringLiteral("DELETE FROM a; DELETE FROM b"),
        QStringLiteral("Like '*'"), QStringLiteral("Left(a = 1"), QStringLiteral("DELETE a.* FROM a JOIN b"),
        QStringLiteral("DELETE a.* FROM a INNER JOIN b ON a.c < b.c"),
        QStringLiteral("DELETE a.* FROM a INNER JOIN b ON a.c = b.c OR 1"), zeroByte}) {
    try {
      ToSqlite(sql);
      ADD_FAILURE() << sql.toStdString();
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), errSyntax) << sql.toStdString();
    }
  }
}

// What stands around a condition holds, whatever the condition says.
TEST(SqlDialect, AConditionIsClosed) {
  EXPECT_EQ(ToSqliteCondition(QStringLiteral("a = 1 OR (b = 2)")).toStdString(), "( a = 1 OR ( b = 2 ) )");
  for (const char* condition : {"a = 1) OR (1 = 1", "a = (1", "a = 1)", "a = `(` OR `)`", "a = ?", "a = @x",
                                "[a]]) OR [b] = 1", "[]", "a = 1;"}) {
    EXPECT_THROW(ToSqliteCondition(QLatin1String(condition)), RuntimeError) << condition;
  }
  EXPECT_EQ(ToSqliteCondition(QStringLiteral("a LIKE '*") + QChar(0xD83C) + QStringLiteral("*'")),
            QString::fromUtf8("( MatchesLike ( '*\uFFFD*' , a ) )"));
}

TEST(SqlDialect, LikeMatches) {
  struct {
    const char* Pattern;
    const char* Text;
    bool Matches;
  } const cases[] = {
      {"*beach*", "At the BEACH, 2001", true},
      {"*beach*", "be ach", false},
      {"*", "", true},
      {"", "", true},
      {"", "a", false},
      {"a?c", "abc", true},
      {"a?c", "ac", false},
      {"Photo #", "photo 7", true},
      {"Photo #", "photo x", false},
      {"[a-c]x", "Bx", true},
      {"[!a-c]x", "bx", false},
      {"[!a-c]x", "dx", true},
      {"*[*]*", "2 * 3", true},
      {"*[*]*", "2 x 3", false},
      {"a[b", "a[b", true},
      {"*ab*ab", "abxabab", true},
      {"*ab*ab", "ab", false},
      {"*ÄPFEL*", "rote äpfel", true},
      {"*ÜBUNGSSTRAßE*", "an der übungsstraße", true},
      {"*οδός*", "ΟΔΌΣ", true},
      {"*моск?а*", "МОСКВА", true},
      {"*[а-д]ом*", "Дом", true},
      {"*🏔?", "ab🏔🏔", true},
      {"*ana*", "BANaNA", true},
      {"*aab*", "aaab", true},
      {"*abc*", "ab", false},
      {"****a", "bbba", true},
      {"a*b*c*d*e", "abcdabcde", true},
      {"a*b*c*d*e", "edcba", false},
  };
  for (const auto& [pattern, text, matches] : cases) {
    EXPECT_EQ(LikePattern(pattern).Matches(text), matches) << pattern << " : " << text;
  }
}

struct DateCase {
  const char* Locale;
  const char* Text;
  const char* Iso;  ///< empty for what is no date
};

TEST(Dates, AreReadInTheLocalesFormFirst) {
  const DateCase cases[] = {
      {"en_US", "7/4/2001", "2001-07-04T00:00:00"},
      {"en_US", "7/4/01", "2001-07-04T00:00:00"},
      {"en_US", "7/4/31", "1931-07-04T00:00:00"},
      {"en_US", " 12/31/2001  11:59:07 PM ", "2001-12-31T23:59:07"},
      {"en_GB", "7/4/2001", "2001-04-07T00:00:00"},
      {"en_GB", "12/31/2001", "2001-12-31T00:00:00"},
      {"de_DE", "04.07.2001", "2001-07-04T00:00:00"},
      {"de_DE", "04.07.25 8:30", "2025-07-04T08:30:00"},
      {"en_US", "2001-07-04 08:30:15", "2001-07-04T08:30:15"},
      {"en_US", "2/29/00", "2000-02-29T00:00:00"},
      {"en_US", "2/29/1900", ""},
      {"en_US", "13/13/2001", ""},
      {"en_US", "0099-01-01", ""},
      {"en_US", "2001-07-04 25:00", ""},
      {"en_US", "abc", ""},
      {"en_US", "", ""},
      {"en_US", "7/4", ""},
  };
  for (const auto& [name, text, iso] : cases) {
    const auto date = ParseDate(QString::fromUtf8(text), QLocale(QLatin1String(name)));
    EXPECT_EQ(date ? date->toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")).toStdString() : "", iso)
        << name << " : " << text;
  }
}

// A form is filled from the catalogue and written back as a whole: what nobody touched must stay.
TEST(Dates, ComeBackAsTheyWereShown) {
  for (const char* name : {"en_US", "en_GB", "de_DE", "fr_FR", "fi_FI", "cs_CZ", "sv_SE", "hu_HU", "ja_JP"}) {
    for (const char* iso : {"1925-03-09T00:00:00", "2001-07-04T15:08:00", "2031-12-31T00:00:59"}) {
      const QLocale locale{QLatin1String(name)};
      const QDateTime date = QDateTime::fromString(QLatin1String(iso), Qt::ISODate);
      const QString shown = FormatDate(date, locale);
      EXPECT_EQ(ParseDate(shown, locale), date) << name << " : " << shown.toStdString();
    }
  }
}

}  // namespace
}  // namespace veldrin::platform
