#include "shell/configuration.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "shell/ini_file.h"
#include "shell/setup.h"
#include "support/environment.h"
#include "support/small_disk.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Configuration : testing::Test, test::Controls {
  void WriteDatabase(const QString& directory, const QByteArray& rest = {}) {
    QDir().mkpath(Program + "/Ini");
    test::WriteFile(Program + "/Ini/Veldrin.ini",
                    "[Directories]\nDatabase=" + directory.toUtf8() + '\n' + rest);
  }
  bool Load() { return LoadConfiguration(Paths, Engine, TheApp); }
  std::string BoxOfAFailedLoad() {
    return test::AnswerBoxes([&] { EXPECT_FALSE(Load()); }, {QMessageBox::Ok})
        .join(u' ')
        .remove(Program)
        .toStdString();
  }

  test::TestCatalogue Catalogue{false};
  const QString Program = Catalogue.ProgramPath();
  App TheApp{Program, Program + "/own temp"};
  catalogue::Paths Paths;
  engine::DBEngine Engine;
  // A home directory of the test's own, in which the first start of an installed program puts its files.
  const QByteArray HomePath = Program.toUtf8();
  const test::Environment Home{
      {"HOME", HomePath}, {"XDG_CONFIG_HOME", HomePath}, {"TMPDIR", HomePath}, {"XDG_RUNTIME_DIR", "none"}};
};

TEST_F(Configuration, WithoutAnIniFileEverythingIsLocal) {
  ASSERT_TRUE(Load());
  EXPECT_EQ(Paths.DatabaseFile, Program + "/Database/Photos.mdb");
  EXPECT_EQ(Paths.WorkFile, Program + "/own temp/TmpPhotos.mdb");
  EXPECT_EQ(Paths.BrowserPath, "/usr/bin/xdg-open");
  EXPECT_EQ(QFileInfo(Paths.TempDir).permissions() & ~QFileDevice::Permissions(0x7000),
            QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser)
      << "nobody else reads the working copy";
  EXPECT_FALSE(QDir(Program + "/Ini").exists());
}

TEST_F(Configuration, TheCatalogueFollowsItsDirectoryButTheTemplateStays) {
  const QString network = Program + "/net share";
  ASSERT_TRUE(QDir().mkpath(network));
  for (const char* name : {"/Photos.mdb", "/Veldrin.MDW"}) {
    ASSERT_TRUE(QFile::rename(Program + "/Database" + name, network + name));
  }
  WriteDatabase(network + '/', "[Programs]\nWebbrowser=/opt/my browser/run\n");
  ASSERT_TRUE(Load());
  EXPECT_EQ(Paths.DatabaseFile, network + "//Photos.mdb") << "used as it was written";
  EXPECT_EQ(Paths.ThumbDir, network + "//Images/Thumbnails/");
  EXPECT_EQ(Paths.BrowserPath, "/opt/my browser/run");
}

TEST_F(Configuration, ABadStartIsReportedOnce) {
  WriteDatabase("/no/such/directory");
  EXPECT_THAT(BoxOfAFailedLoad(), testing::AllOf(StartsWith("Veldrin|Unable to Initialize User Tables.\n\n"),
                                                 HasSubstr("/no/such/directory/Veldrin.MDW")));
  WriteDatabase("");
  // A strange file may do anything: each is put in the place of the catalogue in turn.
  const QByteArray whole = test::ReadFile(Program + "/Database/Photos.mdb");
  for (const char* sql :
       {"CREATE TRIGGER Empty AFTER INSERT ON tblPhotos BEGIN DELETE FROM tblPhotos; END",
        "DROP TABLE tblLevel3", "ALTER TABLE tblPhotos ADD COLUMN More", "CREATE VIEW More AS SELECT 1",
        "DROP TABLE tblLevel4; CREATE TABLE tblLevel4 (IDNo TEXT(40), FolderName TEXT(255))"}) {
    const std::string file = (Program + "/Database/Photos.mdb").toStdString();
    SQLite::Database(file, SQLite::OPEN_READWRITE).exec(sql);
    EXPECT_THAT(BoxOfAFailedLoad(), StartsWith("Veldrin|Unable to Initialize User Tables.\n\n")) << sql;
    test::WriteFile(Program + "/Database/Photos.mdb", whole);
  }
  ASSERT_TRUE(QDir(Program + "/own temp").removeRecursively());
  test::WriteFile(Program + "/own temp", "a file in its place");
  EXPECT_THAT(BoxOfAFailedLoad(), StartsWith("Veldrin|Unable to Connect to the Access Tables.\n\n"));
}

// Whatever has its name, and whether or not a start knows the user's runtime directory.
TEST_F(Configuration, TheDirectoryForTemporaryFilesIsTheUsersAndItsLockIsMet) {
  const QString name = QStringLiteral("/veldrin-%1").arg(::getuid());
  const QString runtime = Program + "/run";
  QDir().mkdir(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  test::WriteFile(Program + name, "somebody's");
  const auto know = [](const QString& directory) { qputenv("XDG_RUNTIME_DIR", directory.toUtf8()); };
  auto first = std::make_unique<App>();
  const QString suffixed = first->TempDir();
  EXPECT_TRUE(suffixed.startsWith(Program + name + '-'));
  EXPECT_FALSE(first->PrevInstance());
  QFile::remove(Program + name);
  know(runtime);
  EXPECT_EQ(App().TempDir(), runtime + name);
  EXPECT_TRUE(App().PrevInstance());
  first.reset();
  first = std::make_unique<App>();
  EXPECT_FALSE(first->PrevInstance());
  know("none");
  EXPECT_TRUE(App().PrevInstance());
  QFile::setPermissions(runtime, QFile::permissions(runtime) | QFile::ReadOther);
  know(runtime);
  EXPECT_EQ(App().TempDir(), suffixed) << "others may look into that one";
}

TEST_F(Configuration, TheFirstStartFillsTheUsersDirectoryOnce) {
  const QString program = Program + "/Pictures/Veldrin";
  // What a crash in the middle of the copying left.
  QDir().mkpath(program + "/Database.part/half");
  const auto start = [&] { EXPECT_FALSE(LoadConfiguration(Paths, Engine, App())); };
  {
    const test::SmallDisk full(1000);
    test::AnswerBoxes(start, {QMessageBox::Ok});
  }
  ASSERT_FALSE(QFileInfo::exists(program + "/Database")) << "which would pass for the whole";
  ASSERT_TRUE(LoadConfiguration(Paths, Engine, App()));
  EXPECT_TRUE(QDir(program + "/Database/Images/Thumbnails").exists());
  EXPECT_FALSE(QFileInfo::exists(program + "/Database/half"));
  EXPECT_FALSE(QFileInfo::exists(program + "/Database.part"));
  // A catalogue that is gone from its directory is missed, not begun anew.
  ASSERT_TRUE(QFile::remove(program + "/Database/Photos.mdb"));
  test::AnswerBoxes(start, {QMessageBox::Ok});
}

TEST_F(Configuration, SetupWritesItsTwoValuesAndShowsThemAgain) {
  const QString ini = Program + "/Ini/Veldrin.ini";
  std::unique_ptr<frmSetup> dialog;
  const auto open = [&] {
    dialog = std::make_unique<frmSetup>(ini);
    Root = dialog.get();
    Root->show();
    return QTest::qWaitForWindowActive(Root);
  };
  const auto ok = [&] {
    EXPECT_EQ(test::AnswerBoxes([&] { Click("bttnOK"); }, {QMessageBox::Ok}),
              QStringList("Information|If you made any change, you need to restate the program to have it to "
                          "take place!"));
    EXPECT_FALSE(dialog->isVisible());
  };
  ASSERT_TRUE(open());
  EXPECT_FALSE(Field("txtDirectory").isVisible() || Field("txtBrowser").isVisible());
  Click("dirOption(1)");
  EXPECT_TRUE(Field("txtDirectory").isVisible() && !Field("txtBrowser").isVisible());
  Field("txtDirectory").setText(Program + "/Database");
  Click("webOption(1)");
  Field("txtBrowser").setText("/opt/b");
  ok();
  EXPECT_FALSE(QFile::exists(ini)) << "where nothing can be written the box comes all the same";
  QDir(Program).mkdir("Ini");
  ok();
  ASSERT_TRUE(Load());
  EXPECT_EQ(Paths.DatabaseFile + Paths.BrowserPath, Program + "/Database/Photos.mdb/opt/b");

  const QByteArray before = test::ReadFile(ini);
  ASSERT_TRUE(open());
  EXPECT_EQ(Field("txtDirectory").text(), Program + "/Database");
  Field("txtDirectory").setText("/new");
  QTest::keyClick(&Field("txtDirectory"), Qt::Key_Return);
  EXPECT_TRUE(dialog->isVisible());
  Click("bttnCancel");
  EXPECT_EQ(test::ReadFile(ini), before);
  // The text counts under the second option only; left empty it means the first.
  ASSERT_TRUE(open());
  Click("dirOption(0)");
  Field("txtBrowser").clear();
  ok();
  EXPECT_EQ(test::ReadFile(ini), "[Directories]\nDatabase=\n\n\n[Programs]\nWebbrowser=\n");
  ASSERT_TRUE(open());
  EXPECT_FALSE(Field("txtBrowser").isVisible());
}

// --- the file ------------------------------------------------------------------------------------------

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
      {"[Directories]\nDatabase=/a\nDatabase=/b\n", "/a"},
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
