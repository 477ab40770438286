#include "platform/ini_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/test_support.h"

namespace veldrin::platform {
namespace {

class IniFile : public testing::Test {
 protected:
  QString Read(const char* section, const char* key) const {
    return GetPrivateProfileString(QLatin1String(section), QLatin1String(key), File, 255);
  }
  bool Write(const char* section, const char* key, const QString& value) const {
    return WritePrivateProfileString(QLatin1String(section), QLatin1String(key), value, File);
  }

  QTemporaryDir Directory;
  const QString File = Directory.path() + QStringLiteral("/Test.ini");
};

TEST_F(IniFile, ReadsWhatPeopleWriteByHand) {
  static constexpr char garbage[] =
      "\x01\xFF garbage\n[unclosed\n=x\n[Directories]\n\0\xFE\n;Database=/c\nDatabase=/a\n";
  struct {
    const char* Name;
    QByteArray Text;
    const char* Value;
  } const cases[] = {
      {"plain", "[Directories]\nDatabase=/srv/photos\n", "/srv/photos"},
      {"blanks, case, other line ends", "[directories]\r\n  DATABASE  =  /srv/my photos  \r\n",
       "/srv/my photos"},
      {"quotes", "[Directories]\nDatabase=\"/srv/a b\"\n", "/srv/a b"},
      {"no end of line", "[Directories]\nDatabase=/a=b", "/a=b"},
      {"byte order mark", "\xEF\xBB\xBF[Directories]\nDatabase=/ä\n", "/ä"},
      {"garbage", QByteArray(garbage, sizeof garbage - 1), "/a"},
      {"another section", "[Programs]\nDatabase=/a\n[Directories]\n", ""},
      {"comment", "[Directories]\n;Database=/a\n", ""},
      {"empty file", "", ""},
  };
  for (const auto& [name, text, value] : cases) {
    test::WriteFile(File, text);
    EXPECT_EQ(Read("Directories", "Database").toStdString(), value) << name;
  }
  test::WriteFile(File, QByteArray(100000, '\xFE'));
  EXPECT_EQ(Read("Directories", "Database"), QString());
}

TEST_F(IniFile, CutsLongValuesWhenReading) {
  for (const int length : {254, 255, 10000}) {
    const QString value = QStringLiteral("ä").repeated(length);
    ASSERT_TRUE(Write("Directories", "Database", value));
    EXPECT_EQ(Read("Directories", "Database"), value.left(254));
    EXPECT_EQ(GetPrivateProfileString(QStringLiteral("Directories"), QStringLiteral("Database"), File, 20000),
              value);
  }
  // A character of two units is not torn.
  ASSERT_TRUE(Write("Directories", "Database", QStringLiteral("x") + QStringLiteral("🏔").repeated(200)));
  EXPECT_EQ(Read("Directories", "Database").size(), 253);
}

TEST_F(IniFile, KeepsEverythingElseWhenWriting) {
  test::WriteFile(
      File,
      "; my settings\n\n[Directories]\n; the server\nDatabase=/old\nOther=1 2\n\n[Mine]\nKey=value\n"
      "; Database=/spare\n# the end\n");
  ASSERT_TRUE(Write("Directories", "Database", QStringLiteral("/new dir/ö")));
  ASSERT_TRUE(Write("Programs", "Webbrowser", QString()));
  const QByteArray text = test::ReadFile(File);
  for (const char* line :
       {"; my settings\n", "; the server\nDatabase=/new dir/ö\n", "Other=1 2\n", "Key=value\n",
        "[Programs]\nWebbrowser=\n", "; Database=/spare\n", "# the end\n"}) {
    EXPECT_EQ(text.count(line), 1) << line << "in\n" << text.toStdString();
  }
  EXPECT_EQ(Read("Mine", "Key"), QStringLiteral("value"));
  EXPECT_EQ(QDir(Directory.path()).entryList(QDir::Files), QStringList(QStringLiteral("Test.ini")));
}

TEST_F(IniFile, WritesNothingWhereItsDirectoryIsMissing) {
  const QString file = Directory.path() + QStringLiteral("/Ini/Test.ini");
  EXPECT_FALSE(
      WritePrivateProfileString(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), file));
  EXPECT_FALSE(QDir(Directory.path() + QStringLiteral("/Ini")).exists());
}

}  // namespace
}  // namespace veldrin::platform
