#include "shell/configuration.h"

#include "support/test_support.h"

namespace veldrin::shell {
namespace {

struct Configuration : testing::Test {
  // A home directory of the test's own, in which the first start of an installed program puts its files.
  Configuration() {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "TMPDIR"}) {
      Before[name] = qgetenv(name);
      qputenv(name, Program.toUtf8());
    }
  }
  ~Configuration() override {
    for (const auto& [name, value] : Before) value.isEmpty() ? qunsetenv(name) : qputenv(name, value);
  }
  void WriteDatabase(const QString& directory, const QByteArray& rest = {}) {
    QDir().mkpath(Program + "/Ini");
    test::WriteFile(Program + "/Ini/Veldrin.ini",
                    "[Directories]\nDatabase=" + directory.toUtf8() + '\n' + rest);
  }
  bool Load() { return LoadConfiguration(Paths, Engine, TheApp); }
  QStringList BoxesOfAFailedLoad() {
    return test::AnswerBoxes([&] { EXPECT_FALSE(Load()); }, {QMessageBox::Ok});
  }

  test::TestCatalogue Catalogue{false};
  const QString Program = Catalogue.ProgramPath();
  App TheApp{Program, Program + "/own temp"};
  catalogue::Paths Paths;
  engine::DBEngine Engine;
  std::map<const char*, QByteArray> Before;
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
  EXPECT_EQ(BoxesOfAFailedLoad(), QStringList("Veldrin|Unable to Initialize User Tables."));
  WriteDatabase("");
  ASSERT_TRUE(QDir(Program + "/own temp").removeRecursively());
  test::WriteFile(Program + "/own temp", "a file in its place");
  EXPECT_EQ(BoxesOfAFailedLoad(), QStringList("Veldrin|Unable to Connect to the Access Tables."));
}

TEST_F(Configuration, TheFirstStartFillsTheUsersDirectoryOnce) {
  const QString program = Program + "/Pictures/Veldrin";
  // What a crash in the middle of the copying left.
  QDir().mkpath(program + "/Database.part/half");
  ASSERT_TRUE(LoadConfiguration(Paths, Engine, App()));
  EXPECT_TRUE(QDir(program + "/Database/Images/Thumbnails").exists());
  EXPECT_FALSE(QFileInfo::exists(program + "/Database/half"));
  EXPECT_FALSE(QFileInfo::exists(program + "/Database.part"));
  // A catalogue that is gone from its directory is missed, not begun anew.
  ASSERT_TRUE(QFile::remove(program + "/Database/Photos.mdb"));
  const auto start = [&] { EXPECT_FALSE(LoadConfiguration(Paths, Engine, App())); };
  test::AnswerBoxes(start, {QMessageBox::Ok});
}

}  // namespace
}  // namespace veldrin::shell
