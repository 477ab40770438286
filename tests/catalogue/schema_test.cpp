#include "catalogue/schema.h"

#include <unistd.h>

#include "desktop/shared_locks.h"
#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

using test::HeldCatalogue;
using test::ReadFile;
using test::TestCatalogue;
using test::WriteFile;

const char* const Opened = "opened";
const char* const NotConnected = "no working copy";
const char* const NotInitialized = "no catalogue";

std::string Start(TestCatalogue& catalogue) {
  if (!CreateWorkFile(catalogue.Paths(), catalogue.Engine(), catalogue.ProgramPath())) return NotConnected;
  return OpenCatalogue(catalogue.Paths(), catalogue.Engine()) ? Opened : NotInitialized;
}

void ExpectEmptyCatalogue(TestCatalogue& catalogue) {
  for (const char* table : {"tblPhotos", "tblPhotoLinks", "tblLevel1", "tblLevel10", "ActPhotoLinks",
                            "Photos", "CheckPhotos", "qryPhotos"}) {
    EXPECT_EQ(catalogue.Rows(QString("SELECT * FROM ") + table), QStringList()) << table;
  }
  EXPECT_EQ(catalogue.Rows("SELECT * FROM ActFolder"), QStringList("Default|0"));
}

TEST(Schema, DamagedFilesAreReported) {
  const std::pair<const char*, std::function<void(const QString& file)>> damages[] = {
      {"missing", [](const QString&) {}},
      {"a directory", [](const QString& file) { QDir().mkpath(file); }},
      {"empty", [](const QString& file) { WriteFile(file, {}); }},
      {"cut short", [](const QString& file) { WriteFile(file, ReadFile(file + ".old").chopped(100)); }},
      {"a page of it overwritten",
       [](const QString& file) {
         const QByteArray whole = ReadFile(file + ".old");
         constexpr qsizetype page = 4096;
         WriteFile(file, whole.chopped(page) + QByteArray(page, 'x'));
       }},
      {"another format", [](const QString& file) { WriteFile(file, QByteArray(16000, 'x')); }},
      {"another program's",
       [](const QString& file) { HeldCatalogue(file, "CREATE TABLE tblPhotos (PhotoID)"); }},
  };
  const std::pair<const char*, const char*> files[] = {
      {"TmpPhotos.mdb", NotConnected}, {"Photos.mdb", NotInitialized}, {"Veldrin.MDW", NotInitialized}};
  for (const auto& [name, whenMissing] : files) {
    for (const auto& [what, inflict] : damages) {
      SCOPED_TRACE(std::string(name) + " " + what);
      TestCatalogue catalogue(false);
      const QString file = catalogue.ProgramPath() + "/Database/" + name;
      ASSERT_TRUE(QFile::rename(file, file + ".old"));
      inflict(file);
      EXPECT_EQ(Start(catalogue), QFileInfo(file).isFile() ? NotInitialized : whenMissing);
    }
  }
  TestCatalogue catalogue(false);
  HeldCatalogue(catalogue, "DROP TABLE tblLevel10");
  EXPECT_EQ(Start(catalogue), NotInitialized);
}

TEST(Schema, ALockedCatalogueIsReported) {
  for (const char* name : {"Photos.mdb", "Veldrin.MDW"}) {
    TestCatalogue catalogue(false);
    catalogue.Engine().LockTimeout = 0;
    {
      const HeldCatalogue held(catalogue.ProgramPath() + "/Database/" + name, "BEGIN EXCLUSIVE");
      EXPECT_EQ(Start(catalogue), NotInitialized);
    }
    EXPECT_EQ(Start(catalogue), Opened) << name;
  }
}

TEST(Schema, ACatalogueWhoseLocksDontHoldIsShownButNotWritten) {
  TestCatalogue catalogue(false);
  ASSERT_EQ(Start(catalogue), Opened);
  catalogue.AddPhoto(1, "t", {});
  const QString file = catalogue.Paths().DatabaseFile;
  ASSERT_TRUE(CreateWorkFile(catalogue.Paths(), catalogue.Engine(), catalogue.ProgramPath()));
  const auto database = catalogue.Engine().OpenDatabase(catalogue.Paths().WorkFile);
  engine::TableDef links;
  links.Name = links.SourceTableName = "tblPhotoLinks";
  links.Connect = ";DATABASE=" + file;
  links.Fields = {{"IDNo", engine::dbText, 40}, {"PhotoID", engine::dbLong}};
  links.ReadOnly = true;
  database->Append(links);
  EXPECT_EQ(database->OpenRecordset("SELECT * FROM tblPhotoLinks", engine::dbOpenSnapshot)->RecordCount(), 0);
  EXPECT_EQ(
      test::ErrorOf([&] { database->Execute("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('', 1)"); }),
      base::errReadOnly);

  using desktop::LocksOf;
  EXPECT_FALSE(LocksOf("ext4", "rw,nolock").MustBeTried) << "a disk of this machine";
  EXPECT_EQ(LocksOf("nfs", "rw,vers=3,nolock,addr=10.0.0.1").StayHere, "nolock");
  EXPECT_EQ(LocksOf("nfs4", "rw,local_lock=posix").StayHere, "local_lock=posix");
  EXPECT_EQ(LocksOf("cifs", "rw,nobrl").StayHere, "nobrl");
  const auto sound = LocksOf("fuse.sshfs", "rw,local_lock=none");
  EXPECT_TRUE(sound.MustBeTried && sound.StayHere.isEmpty());
}

TEST(Schema, ALeftoverWorkingCopyIsReplaced) {
  TestCatalogue catalogue;
  const QString file = catalogue.Paths().WorkFile;
  catalogue.Execute({"INSERT INTO CheckPhotos (PhotoID) VALUES (1)", "UPDATE ActFolder SET Length = 4"});
  EXPECT_EQ(Start(catalogue), Opened) << "of a run that crashed, or in this very run";
  ExpectEmptyCatalogue(catalogue);

  for (const char* rest : {"", "-journal", ".part"}) WriteFile(file + rest, "torn");
  ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner));
  ASSERT_TRUE(
      QFile::setPermissions(catalogue.ProgramPath() + "/Database/TmpPhotos.mdb", QFileDevice::ReadOwner));
  EXPECT_TRUE(CreateWorkFile(catalogue.Paths(), catalogue.Engine(), catalogue.ProgramPath()));
  EXPECT_EQ(test::NamesIn(catalogue.Paths().TempDir), "TmpPhotos.mdb") << "nothing to roll back is beside it";
  EXPECT_EQ(Start(catalogue), Opened);
  ExpectEmptyCatalogue(catalogue);
  EXPECT_TRUE(QFile::permissions(file).testFlag(QFileDevice::WriteOwner));

  const QString victim = catalogue.ProgramPath() + "/victim";
  WriteFile(victim, "mine");
  ASSERT_TRUE(QFile::remove(file) && QFile::link(victim, file));
  EXPECT_EQ(Start(catalogue), Opened);
  EXPECT_EQ(ReadFile(victim), "mine");
}

TEST(Schema, ThePlaceOfTheWorkingCopyMustBeTheUsersOwn) {
  const std::pair<const char*, std::function<void(const QString& directory)>> cases[] = {
      {"missing", [](const QString& directory) { QDir().rmdir(directory); }},
      {"a link",
       [](const QString& directory) {
         ASSERT_TRUE(QDir().rename(directory, directory + ".real"));
         ASSERT_TRUE(QFile::link(directory + ".real", directory));
       }},
      {"the copy's name taken by a directory",
       [](const QString& directory) { QDir().mkpath(directory + "/TmpPhotos.mdb/x"); }},
      {"somebody else's",
       [](const QString& directory) {
         ASSERT_EQ(::chown(QFile::encodeName(directory).constData(), 12345, 12345), 0);
       }},
  };
  for (const auto& [name, prepare] : cases) {
    SCOPED_TRACE(name);
    if (std::string(name) == "somebody else's" && ::geteuid() != 0) continue;
    TestCatalogue catalogue(false);
    prepare(catalogue.Paths().TempDir.chopped(1));
    EXPECT_EQ(Start(catalogue), NotConnected);
    EXPECT_EQ(catalogue.Paths().WorkFile, "TmpPhotos.mdb");
  }
}

TEST(Schema, OnlyTheWorkingCopyIsDeletedAtTheEnd) {
  TestCatalogue catalogue;
  DeleteWorkFile(catalogue.Paths());
  EXPECT_FALSE(QFile::exists(catalogue.Paths().WorkFile));
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(catalogue.ProgramPath() + "/Database"));
  catalogue.Paths().WorkFile = "TmpPhotos.mdb";
  DeleteWorkFile(catalogue.Paths());
  EXPECT_TRUE(QFile::exists("TmpPhotos.mdb"));
  QDir::setCurrent(before);
}

}  // namespace
}  // namespace veldrin::catalogue
