#include "catalogue/schema.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

using test::AnswerBoxes;
using test::ReadFile;
using test::TestCatalogue;
using test::WriteFile;

QString NotConnected() { return QStringLiteral("Veldrin|Unable to Connect to the Access Tables."); }
QString NotInitialized() { return QStringLiteral("Veldrin|Unable to Initialize User Tables."); }

bool Start(TestCatalogue& catalogue) {
  return CreateWorkFile(catalogue.Paths(), catalogue.Engine(), catalogue.ProgramPath()) &&
         OpenCatalogue(catalogue.Paths(), catalogue.Engine());
}

void ExpectRefusal(TestCatalogue& catalogue, const QString& box, const std::string& what) {
  bool started = true;
  const QStringList seen = AnswerBoxes([&] { started = Start(catalogue); }, {QMessageBox::Ok});
  EXPECT_FALSE(started) << what;
  EXPECT_EQ(seen, QStringList(box)) << what;
}

void ExpectEmptyCatalogue(TestCatalogue& catalogue) {
  for (const char* table : {"tblPhotos", "tblPhotoLinks", "tblLevel1", "tblLevel10", "ActPhotoLinks",
                            "Photos", "CheckPhotos", "qryPhotos"}) {
    EXPECT_EQ(catalogue.Value(QStringLiteral("SELECT Count(*) FROM ") + QLatin1String(table)),
              QStringLiteral("0"));
  }
  EXPECT_EQ(catalogue.Rows(QStringLiteral("SELECT * FROM ActFolder")),
            QStringList(QStringLiteral("Default|0")));
}

enum class Damage { Missing, Empty, CutShort, OtherFormat, OtherProgram, Directory };

void Inflict(Damage damage, const QString& file) {
  const QByteArray bytes = ReadFile(file);
  ASSERT_TRUE(QFile::remove(file));
  switch (damage) {
    case Damage::Missing:
      return;
    case Damage::Empty:
      return WriteFile(file, {});
    case Damage::CutShort:
      return WriteFile(file, bytes.chopped(100));
    case Damage::OtherFormat:
      return WriteFile(file, QByteArray("not a database\n").repeated(1000));
    case Damage::OtherProgram: {
      sqlite3* db = nullptr;
      ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
      ASSERT_EQ(sqlite3_exec(db, "CREATE TABLE tblPhotos (PhotoID)", nullptr, nullptr, nullptr), SQLITE_OK);
      sqlite3_close(db);
      return;
    }
    case Damage::Directory:
      ASSERT_TRUE(QDir().mkpath(file));
  }
}

TEST(Schema, StartsEmpty) {
  TestCatalogue catalogue;
  ExpectEmptyCatalogue(catalogue);
  EXPECT_EQ(catalogue.Paths().WorkFile, catalogue.Paths().TempDir + QStringLiteral("TmpPhotos.mdb"));
  catalogue.AddPhoto(1, QStringLiteral("t"), {QStringLiteral("0001")});
  EXPECT_EQ(catalogue.Value(QStringLiteral("SELECT Count(*) FROM qryPhotos")), QStringLiteral("0"));
}

TEST(Schema, DamagedFilesAreReported) {
  struct {
    const char* File;
    QString WhenMissing;
  } const files[] = {
      {"TmpPhotos.mdb", NotConnected()}, {"Photos.mdb", NotInitialized()}, {"Veldrin.MDW", NotInitialized()}};
  for (const auto& [name, whenMissing] : files) {
    for (const Damage damage : {Damage::Missing, Damage::Empty, Damage::CutShort, Damage::OtherFormat,
                                Damage::OtherProgram, Damage::Directory}) {
      TestCatalogue catalogue(false);
      Inflict(damage, catalogue.ProgramPath() + QStringLiteral("/Database/") + QLatin1String(name));
      const bool noFile = damage == Damage::Missing || damage == Damage::Directory;
      ExpectRefusal(catalogue, noFile ? whenMissing : NotInitialized(),
                    std::string(name) + " damage " + std::to_string(static_cast<int>(damage)));
    }
  }
}

TEST(Schema, AMissingTableIsReported) {
  TestCatalogue catalogue(false);
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(catalogue.Paths().DatabaseFile.toUtf8().constData(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "DROP TABLE tblLevel10", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(db);
  ExpectRefusal(catalogue, NotInitialized(), "tblLevel10");
  // The half-built copy stays, closed.
  EXPECT_TRUE(QFile::exists(catalogue.Paths().WorkFile));
}

TEST(Schema, ALockedCatalogueIsReported) {
  for (const char* name : {"Photos.mdb", "Veldrin.MDW"}) {
    TestCatalogue catalogue(false);
    catalogue.Engine().LockTimeout = 0;
    const QString file = catalogue.ProgramPath() + QStringLiteral("/Database/") + QLatin1String(name);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    ExpectRefusal(catalogue, NotInitialized(), name);
    sqlite3_close(db);
    EXPECT_TRUE(Start(catalogue)) << name;
  }
}

TEST(Schema, AReadOnlyCatalogueIsShownButNotWritten) {
  if (::geteuid() == 0) GTEST_SKIP() << "root writes to every file";
  TestCatalogue catalogue(false);
  ASSERT_TRUE(QFile::setPermissions(catalogue.Paths().DatabaseFile, QFileDevice::ReadOwner));
  ASSERT_TRUE(Start(catalogue));
  ExpectEmptyCatalogue(catalogue);
  try {
    catalogue.AddPhoto(1, QStringLiteral("t"), {});
    ADD_FAILURE();
  } catch (const platform::RuntimeError& error) {
    EXPECT_EQ(error.Number(), platform::errReadOnly);
  }
}

TEST(Schema, ALeftoverWorkingCopyIsReplaced) {
  TestCatalogue catalogue;
  catalogue.Execute({QStringLiteral("INSERT INTO CheckPhotos (PhotoID) VALUES (1)"),
                     QStringLiteral("UPDATE ActFolder SET IDNo = '0001', Length = 4")});
  const QString file = catalogue.Paths().WorkFile;
  EXPECT_TRUE(Start(catalogue)) << "of a run that crashed, or in this very run";
  ExpectEmptyCatalogue(catalogue);

  WriteFile(file, "torn");
  WriteFile(file + QStringLiteral("-journal"), "torn too");
  WriteFile(file + QStringLiteral(".part"), "and this");
  ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner));
  EXPECT_TRUE(Start(catalogue));
  ExpectEmptyCatalogue(catalogue);
  EXPECT_EQ(QDir(catalogue.Paths().TempDir).entryList(QDir::Files),
            QStringList(QStringLiteral("TmpPhotos.mdb")));

  const QString victim = catalogue.ProgramPath() + QStringLiteral("/victim");
  WriteFile(victim, "mine");
  ASSERT_TRUE(QFile::remove(file));
  ASSERT_TRUE(QFile::link(victim, file));
  EXPECT_TRUE(Start(catalogue));
  ExpectEmptyCatalogue(catalogue);
  EXPECT_EQ(ReadFile(victim), QByteArray("mine"));
}

TEST(Schema, AReadOnlyTemplateMakesAWritableCopy) {
  TestCatalogue catalogue(false);
  ASSERT_TRUE(QFile::setPermissions(catalogue.ProgramPath() + QStringLiteral("/Database/TmpPhotos.mdb"),
                                    QFileDevice::ReadOwner));
  EXPECT_TRUE(Start(catalogue));
  EXPECT_TRUE(QFile::permissions(catalogue.Paths().WorkFile).testFlag(QFileDevice::WriteOwner));
}

TEST(Schema, ThePlaceOfTheWorkingCopyMustBeTheUsersOwn) {
  struct {
    const char* Name;
    void (*Prepare)(const QString& directory);
  } const cases[] = {
      {"missing", [](const QString& directory) { QDir().rmdir(directory); }},
      {"a link",
       [](const QString& directory) {
         ASSERT_TRUE(QDir().rename(directory, directory + QStringLiteral(".real")));
         ASSERT_TRUE(QFile::link(directory + QStringLiteral(".real"), directory));
       }},
      {"the copy's name taken by a directory",
       [](const QString& directory) { QDir().mkpath(directory + QStringLiteral("/TmpPhotos.mdb/x")); }},
      {"somebody else's",
       [](const QString& directory) {
         ASSERT_EQ(::chown(QFile::encodeName(directory).constData(), 12345, 12345), 0);
       }},
  };
  for (const auto& [name, prepare] : cases) {
    if (std::string(name) == "somebody else's" && ::geteuid() != 0) continue;
    TestCatalogue catalogue(false);
    prepare(catalogue.Paths().TempDir.chopped(1));
    ExpectRefusal(catalogue, NotConnected(), name);
    EXPECT_EQ(catalogue.Paths().WorkFile, QStringLiteral("TmpPhotos.mdb")) << name;
  }
}

TEST(Schema, OnlyTheWorkingCopyIsDeletedAtTheEnd) {
  TestCatalogue catalogue;
  DeleteWorkFile(catalogue.Paths());
  EXPECT_FALSE(QFile::exists(catalogue.Paths().WorkFile));
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(catalogue.ProgramPath() + QStringLiteral("/Database")));
  catalogue.Paths().WorkFile = QStringLiteral("TmpPhotos.mdb");
  DeleteWorkFile(catalogue.Paths());
  EXPECT_TRUE(QFile::exists(QStringLiteral("TmpPhotos.mdb")));
  QDir::setCurrent(before);
}

}  // namespace
}  // namespace veldrin::catalogue
