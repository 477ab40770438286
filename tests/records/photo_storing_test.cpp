#include "records/photo_storing.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>

#include "catalogue/image_store.h"
#include "folders/folder_keys.h"
#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

using test::ReadFile;
using test::WriteFile;

// A whole JPEG file, another one for each number.
QByteArray Jpeg(int number, int side = 24) {
  QImage image(side, side, QImage::Format_RGB32);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x)
      image.setPixelColor(x, y, QColor::fromHsv((x * 7 + number * 31) % 360, 200, (y * 5 + number) % 256));
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "JPG", 95);
  return bytes;
}

class PhotoStoring : public testing::Test {
 protected:
  // Writes a source; it counts as a picture that must not be lost.
  void AddSource(const QString& name, const QByteArray& bytes) {
    WriteFile(SourcePath(name), bytes);
    Originals.insert(name, bytes);
    Batch.Names << name;
  }

  void AddJpegs(int count, int side = 24) {
    for (int i = 1; i <= count; ++i)
      AddSource(QStringLiteral("p%1.jpg").arg(i, 3, 10, QLatin1Char('0')), Jpeg(i, side));
  }

  int Store() {
    Batch.Directory = Sources.path();
    Batch.LinkKey = folders::LinkKey(QStringLiteral("0001"));
    return StorePhotos(Catalogue.Paths(), Catalogue.Engine(), Batch);
  }

  QString SourcePath(const QString& name) const { return Sources.path() + QLatin1Char('/') + name; }
  QString StoredPath(const QString& name) { return Catalogue.Paths().ImageDir + name; }
  QStringList StoredFiles() {
    return QDir(Catalogue.Paths().ImageDir).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  QStringList RemainingSources() const { return QDir(Sources.path()).entryList(QDir::Files, QDir::Name); }
  QStringList Rows(
      const QString& sql = QStringLiteral("SELECT PhotoID, ImageType FROM tblPhotos ORDER BY PhotoID")) {
    return Catalogue.Rows(sql);
  }
  QStringList LinkedIDs() {
    return Rows(QStringLiteral("SELECT PhotoID FROM tblPhotoLinks WHERE IDNo = '0001%1' ORDER BY PhotoID")
                    .arg(QString(36, QLatin1Char('0'))));
  }

  void ExpectNothingLost() {
    QSet<QByteArray> kept;
    for (const QString& name : StoredFiles()) kept.insert(ReadFile(StoredPath(name)));
    for (const QString& name : RemainingSources()) kept.insert(ReadFile(SourcePath(name)));
    for (auto it = Originals.cbegin(); it != Originals.cend(); ++it) {
      EXPECT_TRUE(kept.contains(it.value())) << it.key().toStdString() << " is lost";
    }
  }

  // Statements on the permanent file that the program's own dialect has no words for.
  void ExecuteRaw(const char* sql) {
    SQLite::Database(Catalogue.Paths().DatabaseFile.toStdString(), SQLite::OPEN_READWRITE).exec(sql);
  }

  test::TestCatalogue Catalogue;
  QTemporaryDir Sources;
  PhotoBatch Batch;
  QMap<QString, QByteArray> Originals;
};

TEST_F(PhotoStoring, KeepsOrderNumbersTextsAndDates) {
  Catalogue.AddPhoto(41, QStringLiteral("earlier"), {});
  AddJpegs(10);
  Batch.GroupSize = 3;
  Batch.Title = QStringLiteral("It's a title");
  Batch.MadeBy = QStringLiteral("me");
  for (int i = 0; i < Batch.Names.size(); ++i) {
    QFile file(SourcePath(Batch.Names[i]));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        file.setFileTime(QDateTime(QDate(2001, 7, 4), QTime(10, 15, i)), QFileDevice::FileModificationTime));
  }

  EXPECT_EQ(Store(), 42);

  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("%1.jpg").arg(42 + i))), Originals[Batch.Names[i]]) << i;
    const QString date = platform::DateToStore(QDateTime(QDate(2001, 7, 4), QTime(10, 15, i)));
    SQLite::Database db(Catalogue.Paths().DatabaseFile.toStdString());
    EXPECT_EQ(db.execAndGet("SELECT CreateDate || LastModifyDate FROM tblPhotos WHERE PhotoID = " +
                            std::to_string(42 + i))
                  .getString(),
              (date + date).toStdString());
  }
  EXPECT_EQ(Rows(QStringLiteral(
                "SELECT DISTINCT ImageType, Title, Description, MadeBy FROM tblPhotos WHERE PhotoID > 41")),
            QStringList(QStringLiteral("jpg|It's a title|<null>|me")));
  EXPECT_EQ(LinkedIDs().size(), 10);
  EXPECT_EQ(StoredFiles().size(), 10) << "temporary files are left";
  EXPECT_EQ(RemainingSources().size(), 10);
}

TEST_F(PhotoStoring, ATextTooLongLeavesItsFieldUnset) {
  AddJpegs(1);
  Batch.Title = QString(61, QLatin1Char('x'));
  Batch.Description = QString(255, QLatin1Char('x'));
  Store();
  EXPECT_EQ(Rows(QStringLiteral("SELECT Title, Description FROM tblPhotos")),
            QStringList(QStringLiteral("<null>|") + Batch.Description));
}

struct NameCase {
  const char* Name;
  QString File;
  QString ImageType;
  QString StoredFile;
};

class StoredNames : public PhotoStoring, public testing::WithParamInterface<NameCase> {};

TEST_P(StoredNames, StoresUnderTheTextBehindTheFirstPoint) {
  AddSource(GetParam().File, Jpeg(1));
  Batch.RemoveSources = true;
  Store();
  EXPECT_EQ(Rows(), QStringList(QStringLiteral("1|") + GetParam().ImageType));
  EXPECT_EQ(StoredFiles(), QStringList(GetParam().StoredFile));
  EXPECT_EQ(RemainingSources(), QStringList());
  ExpectNothingLost();
}

INSTANTIATE_TEST_SUITE_P(
    , StoredNames,
    testing::Values(
        NameCase{"Capitals", QStringLiteral("A.JPG"), QStringLiteral("JPG"), QStringLiteral("1.JPG")},
        NameCase{"NoPoint", QStringLiteral("photo"), QString(), QStringLiteral("1.")},
        NameCase{"TwoPoints", QStringLiteral("summer.1999.jpg"), QStringLiteral("<null>"),
                 QStringLiteral("1.1999.jpg")},
        NameCase{"LineBreak", QStringLiteral("a\nb.jpg"), QStringLiteral("jpg"), QStringLiteral("1.jpg")},
        NameCase{"Quotes", QStringLiteral("it's \"a\" %1 `b`;.jpg"), QStringLiteral("jpg"),
                 QStringLiteral("1.jpg")},
        NameCase{"QuotesBehindThePoint", QStringLiteral("x.'\n%"), QStringLiteral("'\n%"),
                 QStringLiteral("1.'\n%")},
        NameCase{"Unicode", QStringLiteral("Bäume 木.jpg"), QStringLiteral("jpg"), QStringLiteral("1.jpg")},
        NameCase{"Of250Characters", QString(246, QLatin1Char('n')) + QStringLiteral(".jpg"),
                 QStringLiteral("jpg"), QStringLiteral("1.jpg")}),
    test::CaseName);

// The stored name would be longer than a file system takes.
TEST_F(PhotoStoring, ACopyThatCantHaveItsNameLeavesTheSource) {
  Catalogue.AddPhoto(10, QStringLiteral("earlier"), {});
  AddSource(QStringLiteral("x.") + QString(253, QLatin1Char('y')), Jpeg(1));
  AddSource(QStringLiteral("good.jpg"), Jpeg(2));
  Batch.RemoveSources = true;
  Store();
  EXPECT_EQ(Rows(),
            QStringList({QStringLiteral("10|jpg"), QStringLiteral("11|<null>"), QStringLiteral("12|jpg")}));
  EXPECT_EQ(StoredFiles(), QStringList(QStringLiteral("12.jpg")));
  ExpectNothingLost();
}

struct BadCase {
  const char* Name;
  enum Damage { Empty, Text, Cut, CutInHeader, Directory, Missing } What;
  bool SourceGoes;
};

class BadSources : public PhotoStoring, public testing::WithParamInterface<BadCase> {
 protected:
  void Damage(const QString& path) {
    switch (GetParam().What) {
      case BadCase::Empty:
        return WriteFile(path, {});
      case BadCase::Text:
        return WriteFile(path, "These are no pixels.");
      case BadCase::Cut:
        return WriteFile(path, Jpeg(9).chopped(100));
      case BadCase::CutInHeader:
        return WriteFile(path, Jpeg(9).left(30));
      case BadCase::Directory:
        ASSERT_TRUE(QDir().mkdir(path));
        return WriteFile(path + QStringLiteral("/inside"), "kept");
      case BadCase::Missing:
        return;
    }
  }
};

TEST_P(BadSources, GiveARowWithoutAFileAndHarmNoOther) {
  AddSource(QStringLiteral("1.jpg"), Jpeg(1));
  Batch.Names << QStringLiteral("2.tga");
  Damage(SourcePath(QStringLiteral("2.tga")));
  AddSource(QStringLiteral("3.jpg"), Jpeg(3));
  Batch.RemoveSources = true;
  Store();
  EXPECT_EQ(Rows(), QStringList({QStringLiteral("1|jpg"), QStringLiteral("2|jpg"), QStringLiteral("3|jpg")}));
  EXPECT_EQ(StoredFiles(), QStringList({QStringLiteral("1.jpg"), QStringLiteral("3.jpg")}));
  EXPECT_EQ(LinkedIDs(), QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
  EXPECT_EQ(QFileInfo::exists(SourcePath(QStringLiteral("2.tga"))), !GetParam().SourceGoes);
  if (GetParam().What == BadCase::Directory) {
    EXPECT_EQ(ReadFile(SourcePath(QStringLiteral("2.tga/inside"))), "kept");
  }
  ExpectNothingLost();
}

INSTANTIATE_TEST_SUITE_P(, BadSources,
                         testing::Values(BadCase{"EmptyFile", BadCase::Empty, true},
                                         BadCase{"Text", BadCase::Text, true},
                                         BadCase{"CutShort", BadCase::Cut, true},
                                         BadCase{"CutInTheHeader", BadCase::CutInHeader, true},
                                         BadCase{"Directory", BadCase::Directory, false},
                                         BadCase{"Missing", BadCase::Missing, true}),
                         test::CaseName);

// --- room
// ---------------------------------------------------------------------------------------------------

// No file of this process may grow beyond the limit for as long as it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : Handler(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &Before);
    const rlimit limit{bytes, Before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &Before);
    std::signal(SIGXFSZ, Handler);
  }

 private:
  rlimit Before{};
  void (*Handler)(int);
};

TEST_F(PhotoStoring, LargePicturesThatFindNoRoomStayWhereTheyAre) {
  AddJpegs(2);
  AddSource(QStringLiteral("q.jpg"), Jpeg(7, 1500));
  ASSERT_GT(Originals[QStringLiteral("q.jpg")].size(), 400'000);
  AddSource(QStringLiteral("r.jpg"), Jpeg(8));
  Batch.RemoveSources = true;
  {
    const FileSizeLimit limit(400'000);
    Store();
  }
  EXPECT_EQ(Rows().size(), 4);
  EXPECT_EQ(StoredFiles(),
            QStringList({QStringLiteral("1.jpg"), QStringLiteral("2.jpg"), QStringLiteral("4.jpg")}));
  EXPECT_EQ(RemainingSources(), QStringList(QStringLiteral("q.jpg")));
  ExpectNothingLost();
}

TEST_F(PhotoStoring, WithNoRoomForRowsEverySourceStaysAndNoCopyIsLeft) {
  AddJpegs(5);
  Batch.RemoveSources = true;
  {
    const FileSizeLimit limit(2'000);
    Store();
  }
  EXPECT_EQ(Rows(), QStringList());
  EXPECT_EQ(LinkedIDs(), QStringList());
  EXPECT_EQ(StoredFiles(), QStringList());
  EXPECT_EQ(RemainingSources().size(), 5);
  EXPECT_EQ(Store(), 1) << "with room again";
  EXPECT_EQ(Rows().size(), 5);
  ExpectNothingLost();
}

TEST_F(PhotoStoring, OnAFullDiskNothingIsLost) {
  const QByteArray images = QFile::encodeName(Catalogue.Paths().ImageDir);
  if (::mount("none", images.constData(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no right to mount";
  AddJpegs(6, 200);
  Batch.RemoveSources = true;
  Batch.GroupSize = 2;
  Store();
  EXPECT_EQ(Rows().size(), 6);
  const QStringList stored = StoredFiles();
  EXPECT_GE(stored.size(), 1);
  EXPECT_EQ(stored.size() + RemainingSources().size(), 6);
  ExpectNothingLost();
  ::umount2(images.constData(), MNT_DETACH);
}

// --- others who write
// -------------------------------------------------------------------------------------------

TEST_F(PhotoStoring, AFileThatStandsUnderTheNameIsKeptAside) {
  WriteFile(StoredPath(QStringLiteral("1.jpg")), "first");
  AddJpegs(1);
  Store();
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("1.jpg.old"))), "first");
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("1.jpg"))), Jpeg(1));

  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos"), QStringLiteral("DELETE FROM tblPhotoLinks")});
  Store();
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("1.jpg.old"))), "first");
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("1.jpg.old2"))), Jpeg(1));
}

// A trigger plays the other machine: as soon as the first row is there it takes the number of the second one.
TEST_F(PhotoStoring, ANumberTakenByAnotherMachineIsLeftToIt) {
  ExecuteRaw(
      "CREATE TRIGGER OtherMachine AFTER INSERT ON tblPhotos WHEN NEW.PhotoID = 1 "
      "BEGIN INSERT INTO tblPhotos (PhotoID, Title) VALUES (2, 'theirs'); END");
  WriteFile(StoredPath(QStringLiteral("2.jpg")), "their picture");
  AddJpegs(3);
  Batch.GroupSize = 1;
  Batch.RemoveSources = true;
  Batch.Title = QStringLiteral("ours");
  Store();
  EXPECT_EQ(Rows(QStringLiteral("SELECT Title FROM tblPhotos ORDER BY PhotoID")),
            QStringList({QStringLiteral("ours"), QStringLiteral("theirs"), QStringLiteral("ours")}));
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("2.jpg"))), "their picture");
  EXPECT_EQ(RemainingSources(), QStringList(QStringLiteral("p002.jpg")));
  EXPECT_EQ(LinkedIDs(), QStringList({QStringLiteral("1"), QStringLiteral("3")}));
  ExpectNothingLost();
}

TEST_F(PhotoStoring, OfAGroupWithOneRefusedRowTheOthersAreStored) {
  ExecuteRaw(
      "CREATE TRIGGER Refuse BEFORE INSERT ON tblPhotos WHEN NEW.PhotoID = 2 BEGIN SELECT RAISE(ABORT, "
      "'no'); END");
  AddJpegs(4);
  Batch.RemoveSources = true;
  Store();
  EXPECT_EQ(Rows(), QStringList({QStringLiteral("1|jpg"), QStringLiteral("3|jpg"), QStringLiteral("4|jpg")}));
  EXPECT_EQ(StoredFiles(),
            QStringList({QStringLiteral("1.jpg"), QStringLiteral("3.jpg"), QStringLiteral("4.jpg")}));
  EXPECT_EQ(RemainingSources(), QStringList(QStringLiteral("p002.jpg")));
  EXPECT_EQ(LinkedIDs().size(), 3);
  ExpectNothingLost();
}

TEST_F(PhotoStoring, OfAGroupWithOneRefusedLinkTheOthersAreFiled) {
  ExecuteRaw(
      "CREATE TRIGGER Refuse BEFORE INSERT ON tblPhotoLinks WHEN NEW.PhotoID = 2 BEGIN SELECT RAISE(ABORT, "
      "'no'); END");
  AddJpegs(3);
  Store();
  EXPECT_EQ(Rows().size(), 3);
  EXPECT_EQ(LinkedIDs(), QStringList({QStringLiteral("1"), QStringLiteral("3")}));
}

// Its own files are sources that must not go: they are other photos' pictures.
TEST_F(PhotoStoring, NothingIsRemovedFromTheImageStoreItself) {
  AddJpegs(2);
  Store();
  const QString store = Sources.path() + QStringLiteral("/by another name");
  ASSERT_TRUE(QFile::link(Catalogue.Paths().ImageDir.chopped(1), store));
  PhotoBatch again;
  again.Directory = store;
  again.Names = QStringList({QStringLiteral("1.jpg"), QStringLiteral("2.jpg")});
  again.LinkKey = folders::LinkKey({});
  again.RemoveSources = true;
  EXPECT_EQ(StorePhotos(Catalogue.Paths(), Catalogue.Engine(), again), 3);
  EXPECT_EQ(StoredFiles().size(), 4);
  EXPECT_EQ(ReadFile(StoredPath(QStringLiteral("3.jpg"))), Jpeg(1));
}

TEST_F(PhotoStoring, TheLastNumberIsTheEnd) {
  Catalogue.AddPhoto(2147483646, QStringLiteral("last but one"), {});
  AddJpegs(2);
  Batch.RemoveSources = true;
  EXPECT_EQ(Store(), 2147483647);
  EXPECT_EQ(RemainingSources(), QStringList(QStringLiteral("p002.jpg")));
  EXPECT_EQ(Store(), 0) << "no number is left";
  EXPECT_EQ(RemainingSources(), QStringList(QStringLiteral("p002.jpg")));
  EXPECT_EQ(Rows().size(), 2);
  ExpectNothingLost();
}

TEST_F(PhotoStoring, WithoutACatalogueNothingHappens) {
  AddJpegs(2);
  Batch.RemoveSources = true;
  QFile::remove(Catalogue.Paths().WorkFile);
  EXPECT_EQ(Store(), 0);
  EXPECT_EQ(RemainingSources().size(), 2);
}

}  // namespace
}  // namespace veldrin::records
