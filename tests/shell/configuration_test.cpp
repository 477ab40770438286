#include "shell/configuration.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "support/test_support.h"

namespace veldrin::shell {
namespace {

using test::AnswerBoxes;
using test::TestCatalogue;

class Configuration : public testing::Test {
 protected:
  void WriteIni(const QString& text) {
    QDir().mkpath(Program + QStringLiteral("/Ini"));
    test::WriteFile(Program + QStringLiteral("/Ini/Veldrin.ini"), text.toUtf8());
  }
  bool Load() { return LoadConfiguration(Paths, Engine, App); }

  TestCatalogue Catalogue{false};
  const QString Program = Catalogue.ProgramPath();
  platform::App App{Program, Program + QStringLiteral("/own temp")};
  catalogue::Paths Paths;
  platform::DBEngine Engine;
};

TEST_F(Configuration, WithoutAnIniFileEverythingIsLocal) {
  ASSERT_TRUE(Load());
  const QString database = Program + QStringLiteral("/Database");
  EXPECT_EQ(Paths.IniFile, Program + QStringLiteral("/Ini/Veldrin.ini"));
  EXPECT_EQ(Paths.DatabaseFile, database + QStringLiteral("/Photos.mdb"));
  EXPECT_EQ(Paths.ImageDir, database + QStringLiteral("/Images/"));
  EXPECT_EQ(Paths.ThumbDir, database + QStringLiteral("/Images/Thumbnails/"));
  EXPECT_EQ(Paths.MusicDir, database + QStringLiteral("/Music/"));
  EXPECT_EQ(Engine.SystemDB, database + QStringLiteral("/Veldrin.MDW"));
  EXPECT_EQ(Paths.TempDir, Program + QStringLiteral("/own temp/"));
  EXPECT_EQ(Paths.WorkFile, Paths.TempDir + QStringLiteral("TmpPhotos.mdb"));
  EXPECT_EQ(Paths.BrowserPath, QStringLiteral("/usr/bin/xdg-open"));
  EXPECT_EQ(QFileInfo(Paths.TempDir).permissions() & ~QFileDevice::Permissions(0x7000),
            QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser)
      << "nobody else reads the working copy";
  EXPECT_FALSE(QDir(Program + QStringLiteral("/Ini")).exists());
}

TEST_F(Configuration, TheCatalogueFollowsItsDirectoryButTheTemplateStays) {
  const QString network = Program + QStringLiteral("/net share");
  ASSERT_TRUE(QDir().mkpath(network));
  for (const char* name : {"/Photos.mdb", "/Veldrin.MDW"}) {
    ASSERT_TRUE(QFile::rename(Program + QStringLiteral("/Database") + QLatin1String(name),
                              network + QLatin1String(name)));
  }
  WriteIni(QStringLiteral("[Directories]\nDatabase=%1/\n[Programs]\nWebbrowser=/opt/my browser/run\n")
               .arg(network));
  ASSERT_TRUE(Load());
  EXPECT_EQ(Paths.DatabaseFile, network + QStringLiteral("//Photos.mdb")) << "used as it was written";
  EXPECT_EQ(Paths.ThumbDir, network + QStringLiteral("//Images/Thumbnails/"));
  EXPECT_EQ(Paths.BrowserPath, QStringLiteral("/opt/my browser/run"));
}

TEST_F(Configuration, ABadStartIsReportedOnce) {
  struct {
    const char* Database;
    bool Template;
    const char* Text;
  } const cases[] = {
      {"/no/such/directory", true, "Veldrin|Unable to Initialize User Tables."},
      {"", false, "Veldrin|Unable to Connect to the Access Tables."},
  };
  for (const auto& [database, hasTemplate, text] : cases) {
    WriteIni(QStringLiteral("[Directories]\nDatabase=%1\n").arg(QLatin1String(database)));
    if (!hasTemplate) QFile::remove(Program + QStringLiteral("/Database/TmpPhotos.mdb"));
    bool loaded = true;
    const QStringList boxes = AnswerBoxes([&] { loaded = Load(); }, {QMessageBox::Ok});
    EXPECT_FALSE(loaded);
    EXPECT_EQ(boxes, QStringList(QLatin1String(text)));
  }
}

TEST_F(Configuration, AnUnusableTempDirIsReported) {
  test::WriteFile(Program + QStringLiteral("/own temp"), "a file in its place");
  bool loaded = true;
  AnswerBoxes([&] { loaded = Load(); }, {QMessageBox::Ok});
  EXPECT_FALSE(loaded);
  EXPECT_EQ(Paths.BrowserPath, DefaultBrowser()) << "the steps before went on";
}

/// A home directory of the test's own, in which the first start of an installed program puts its files.
class FirstStart : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : Names) {
      Before << qgetenv(name);
      qputenv(name, Home.path().toUtf8());
    }
  }
  void TearDown() override {
    for (size_t i = 0; i < std::size(Names); ++i) {
      if (Before[static_cast<qsizetype>(i)].isEmpty()) {
        qunsetenv(Names[i]);
      } else {
        qputenv(Names[i], Before[static_cast<qsizetype>(i)]);
      }
    }
  }

  static constexpr const char* Names[] = {"HOME", "XDG_CONFIG_HOME", "TMPDIR"};
  QTemporaryDir Home;
  QByteArrayList Before;
};

TEST_F(FirstStart, FillsTheUsersDirectoryOnce) {
  const QString program = Home.path() + QStringLiteral("/Pictures/Veldrin");
  {
    const platform::App app;
    catalogue::Paths paths;
    platform::DBEngine engine;
    EXPECT_EQ(app.Path(), program);
    // What a crash in the middle of the copying left.
    QDir().mkpath(program + QStringLiteral("/Database.part/half"));
    ASSERT_TRUE(LoadConfiguration(paths, engine, app));
    EXPECT_TRUE(QDir(paths.ThumbDir).exists());
    EXPECT_TRUE(QFileInfo(program + QStringLiteral("/Ini")).isDir());
    EXPECT_FALSE(QFileInfo::exists(program + QStringLiteral("/Database/half")));
    EXPECT_FALSE(QFileInfo::exists(program + QStringLiteral("/Database.part")));
  }
  // A catalogue that is gone from its directory is missed, not begun anew.
  ASSERT_TRUE(QFile::remove(program + QStringLiteral("/Database/Photos.mdb")));
  const platform::App app;
  catalogue::Paths paths;
  platform::DBEngine engine;
  bool loaded = true;
  AnswerBoxes([&] { loaded = LoadConfiguration(paths, engine, app); }, {QMessageBox::Ok});
  EXPECT_FALSE(loaded);
}

}  // namespace
}  // namespace veldrin::shell
