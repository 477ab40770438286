#include "shell/ini_file.h"

#include "support/test_support.h"

namespace veldrin::shell {
namespace {

struct IniFile : testing::Test {
  QString Read(int size = 255) const {
    return GetPrivateProfileString("Directories", "Database", File, size);
  }
  bool Write(const QString& value) const {
    return WritePrivateProfileString("Directories", "Database", value, File);
  }

  QTemporaryDir Directory;
  const QString File = Directory.filePath("Test.ini");
};

TEST_F(IniFile, ReadsWhatPeopleWriteByHand) {
  static constexpr char garbage[] =
      "\x01\xFF garbage\n[unclosed\n=x\n[Directories]\n\0\xFE\n;Database=/c\nDatabase=/a\n";
  const std::pair<QByteArray, const char*> cases[] = {
      {"[directories]\r\n  DATABASE  =  /srv/my photos  \r\n", "/srv/my photos"},
      {"[Directories]\nDatabase=\"/srv/a b\"\n", "/srv/a b"},
      {"[Directories]\nDatabase=/a=b", "/a=b"},
      {"\xEF\xBB\xBF[Directories]\nDatabase=/ä\n", "/ä"},
      {QByteArray(garbage, sizeof garbage - 1), "/a"},
      {QByteArray(100000, '\xFE'), ""},
      {"[Programs]\nDatabase=/a\n[Directories]\n;Database=/a\n", ""},
      {"", ""},
  };
  for (const auto& [text, value] : cases) {
    test::WriteFile(File, text);
    EXPECT_EQ(Read(), value) << text.left(80).toStdString();
  }
}

TEST_F(IniFile, CutsLongValuesWhenReading) {
  for (const int length : {254, 255, 10000}) {
    const QString value = QStringLiteral("ä").repeated(length);
    ASSERT_TRUE(Write(value));
    EXPECT_EQ(Read(), value.left(254));
    EXPECT_EQ(Read(20000), value);
  }
  // A character of two units is not torn.
  ASSERT_TRUE(Write("x" + QStringLiteral("🏔").repeated(200)));
  EXPECT_EQ(Read().size(), 253);
}

TEST_F(IniFile, KeepsEverythingElseWhenWriting) {
  test::WriteFile(
      File,
      "; my settings\n\n[Directories]\n; the server\nDatabase=/old\nOther=1 2\n\n[Mine]\nKey=value\n"
      "; Database=/spare\n# the end\n");
  ASSERT_TRUE(Write("/new dir/ö"));
  ASSERT_TRUE(WritePrivateProfileString("Programs", "Webbrowser", {}, File));
  const QByteArray text = test::ReadFile(File);
  for (const char* line :
       {"; my settings\n", "; the server\nDatabase=/new dir/ö\n", "Other=1 2\n", "[Mine]\nKey=value\n",
        "[Programs]\nWebbrowser=\n", "; Database=/spare\n", "# the end\n"}) {
    EXPECT_EQ(text.count(line), 1) << line << "in\n" << text.toStdString();
  }
  EXPECT_EQ(QDir(Directory.path()).entryList(QDir::Files), QStringList("Test.ini"));
  ASSERT_TRUE(Directory.remove());
  EXPECT_FALSE(Write("/c")) << "where its directory is missing";
}

}  // namespace
}  // namespace veldrin::shell
