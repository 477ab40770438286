#include "records/photo_storing.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include "base/runtime_error.h"
#include "catalogue/staging.h"
#include "folders/folder_keys.h"
#include "support/small_disk.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

using test::Jpeg;
using test::NamesIn;
using test::ReadFile;
using test::WriteFile;

class PhotoStoring : public testing::Test {
 protected:
  // Writes a source; it counts as a picture that must not be lost.
  void AddSource(const QString& name, const QByteArray& bytes) {
    WriteFile(Sources.filePath(name), bytes);
    Originals << bytes;
    Batch.Names << name;
  }
  void AddJpegs(int count) {
    for (int i = 1; i <= count; ++i) AddSource(QStringLiteral("p%1.jpg").arg(i), Jpeg(i));
  }

  // The number of each file, and why it wasn't stored, or not in full.
  std::string Store() {
    Batch.Directory = Sources.path();
    Batch.LinkKey = folders::LinkKey("0001");
    QStringList outcomes;
    for (const StoredFile& file : StorePhotos(Catalogue.Paths(), Catalogue.Engine(), Batch))
      outcomes << QString::number(file.PhotoID) + file.Failure.left(12);
    return outcomes.join(u' ').toStdString();
  }

  std::string StoreWithin(rlim_t bytes) {
    const test::SmallDisk disk(bytes);
    return Store();
  }

  QString StoredPath(const char* name) { return Catalogue.Paths().ImageDir + QString::fromUtf8(name); }
  std::string StoredFiles() { return NamesIn(Catalogue.Paths().ImageDir); }
  std::string RemainingSources() const { return NamesIn(Sources.path()); }
  std::string Rows() {
    return Catalogue.RowsText("SELECT PhotoID, ImageType FROM tblPhotos ORDER BY PhotoID");
  }
  std::string LinkedIDs() {
    return Catalogue.RowsText("SELECT PhotoID FROM tblPhotoLinks WHERE IDNo Like '00010*' ORDER BY PhotoID");
  }

  void ExpectNothingLost() {
    QSet<QByteArray> kept;
    for (const QString& directory : {Catalogue.Paths().ImageDir, Sources.path()}) {
      for (const auto& file : QDir(directory).entryInfoList(QDir::Files | QDir::Hidden))
        kept.insert(ReadFile(file.filePath()));
    }
    for (const QByteArray& original : Originals) EXPECT_TRUE(kept.contains(original));
  }

  test::TestCatalogue Catalogue;
  QTemporaryDir Sources;
  PhotoBatch Batch;
  QList<QByteArray> Originals;
};

TEST_F(PhotoStoring, KeepsOrderNumbersTextsAndDates) {
  Catalogue.AddPhoto(41, {}, {});
  AddJpegs(7);
  Batch.GroupSize = 3;
  Batch.Title = QString(61, u'x');
  Batch.Description = "It's" + QString(251, u'x');
  Batch.MadeBy = "me";
  const QDateTime date(QDate(2001, 7, 4), QTime(10, 15, 7));
  for (const QString& name : Batch.Names) {
    QFile file(Sources.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(date, QFileDevice::FileModificationTime));
  }

  EXPECT_EQ(Store(), "42 43 44 45 46 47 48");

  EXPECT_EQ(ReadFile(StoredPath("47.jpg")), Originals[5]);
  EXPECT_EQ(Catalogue.Rows("SELECT DISTINCT ImageType, Title, Description, MadeBy, CreateDate, "
                           "LastModifyDate FROM tblPhotos WHERE PhotoID > 41"),
            QStringList(
                QStringLiteral("jpg|<null>|%1|me|%2|%2").arg(Batch.Description, "2001-07-04T10:15:07.000Z")))
      << "a text too long leaves its field unset";
  EXPECT_EQ(LinkedIDs(), "42 43 44 45 46 47 48");
  EXPECT_EQ(StoredFiles(), "42.jpg 43.jpg 44.jpg 45.jpg 46.jpg 47.jpg 48.jpg") << "no temporary files";
  EXPECT_EQ(RemainingSources(), "p1.jpg p2.jpg p3.jpg p4.jpg p5.jpg p6.jpg p7.jpg");
}

// The type is what stands behind the first point, as far as the column has room for it.
TEST_F(PhotoStoring, NamesOfAllKindsAreStored) {
  Catalogue.AddPhoto(10, {}, {});
  const QString tooLong = "x." + QString(253, u'y');
  for (const QString& name :
       QStringList{"A.JPG", "photo", "summer.1999.jpg", "x.'\n%", "Bäume\n 木 \"%1\" `b`;.jpg",
                   QString(246, u'n') + ".jpg", tooLong}) {
    AddSource(name, Jpeg(static_cast<int>(Batch.Names.size())));
  }
  Batch.RemoveSources = true;
  EXPECT_EQ(Store(), "11 12 13 14 15 16 17");
  EXPECT_EQ(Rows(), "10|jpg 11|JPG 12| 13|jpg 14|'\n% 15|jpg 16|jpg 17|yyy");
  EXPECT_EQ(StoredFiles(), "11.JPG 12. 13.jpg 14.'\n% 15.jpg 16.jpg 17.yyy");
  EXPECT_EQ(RemainingSources(), "");
  ExpectNothingLost();
}

TEST_F(PhotoStoring, WhatIsNoPictureGivesARowWithoutAFileAndHarmsNoOther) {
  AddSource("good1.jpg", Jpeg(1));
  Batch.Names << "directory.tga"
              << "missing.tga";
  ASSERT_TRUE(QDir(Sources.path()).mkdir("directory.tga"));
  WriteFile(Sources.filePath("directory.tga/inside"), "kept");
  // The third is whole but for its end mark, as every viewer shows it.
  const QByteArray damaged[] = {{}, "These are no pixels.", Jpeg(9).chopped(2), Jpeg(9).left(30)};
  for (const QByteArray& bytes : damaged) {
    Batch.Names << QStringLiteral("bad%1.tga").arg(Batch.Names.size());
    WriteFile(Sources.filePath(Batch.Names.last()), bytes);
  }
  AddSource("good2.jpg", Jpeg(2));
  Batch.RemoveSources = true;
  EXPECT_EQ(Store(), "1 0File not fou 0File not fou 2no picture:  3no picture:  4 5no picture:  6");
  EXPECT_EQ(Rows(), "1|jpg 2|jpg 3|jpg 4|tga 5|jpg 6|jpg");
  EXPECT_EQ(StoredFiles(), "1.jpg 4.tga 6.jpg");
  EXPECT_EQ(LinkedIDs(), "1 2 3 4 5 6");
  EXPECT_EQ(RemainingSources(), "bad3.tga bad4.tga bad6.tga") << "what wasn't stored stays";
  EXPECT_EQ(ReadFile(Sources.filePath("directory.tga/inside")), "kept");
  ExpectNothingLost();
}

TEST_F(PhotoStoring, WhatFindsNoRoomStaysWhereItIs) {
  AddJpegs(2);
  AddSource("q.jpg", Jpeg(7) + QByteArray(400'000, 'x'));
  AddSource("r.jpg", Jpeg(8));
  Batch.RemoveSources = true;
  EXPECT_EQ(StoreWithin(2'000).front(), '0');  // No room for rows.
  EXPECT_EQ(Rows() + LinkedIDs() + StoredFiles(), "");
  EXPECT_EQ(RemainingSources(), "p1.jpg p2.jpg q.jpg r.jpg");
  EXPECT_EQ(StoreWithin(400'000), "1 2 0Disk full 3");
  EXPECT_EQ(Rows() + '|' + LinkedIDs(), "1|jpg 2|jpg 3|jpg|1 2 3");
  EXPECT_EQ(StoredFiles(), "1.jpg 2.jpg 3.jpg");
  EXPECT_EQ(RemainingSources(), "q.jpg");
  ExpectNothingLost();
}

TEST_F(PhotoStoring, AFileThatStandsUnderTheNameIsKeptAside) {
  WriteFile(StoredPath("1.jpg"), "first");
  WriteFile(StoredPath("2.jpg"), "second");
  WriteFile(StoredPath("2.jpg.old"), "third");
  WriteFile(StoredPath("Thumbnails/1t.bmp"), "of another picture");
  AddJpegs(2);
  Store();
  EXPECT_EQ(StoredFiles(), "1.jpg 1.jpg.old 2.jpg 2.jpg.old 2.jpg.old2");
  EXPECT_EQ(NamesIn(Catalogue.Paths().ThumbDir), "");
  EXPECT_EQ(ReadFile(StoredPath("1.jpg.old")), "first");
  EXPECT_EQ(ReadFile(StoredPath("2.jpg.old")) + ReadFile(StoredPath("2.jpg.old2")), "thirdsecond");
  EXPECT_EQ(ReadFile(StoredPath("2.jpg")), Jpeg(2));
}

// A trigger, for which the program's own dialect has no words, plays a row that is refused. Another machine
// may have taken numbers by the time a group is written.
// As on two machines of which one is a copy of the other.
TEST_F(PhotoStoring, TwoSavesAtOnceKeepTheirCopiesApart) {
  AddJpegs(2);
  auto other = std::make_unique<catalogue::Staging>(Catalogue.Paths());
  const QString copy = other->PlaceOf(0, "a.jpg");
  WriteFile(copy, "theirs");
  EXPECT_EQ(Store(), "1 2");
  catalogue::SweepStaging(Catalogue.Paths(), Catalogue.Engine());
  EXPECT_EQ(ReadFile(copy), "theirs");
  ExpectNothingLost();
  other.reset();
  EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(PhotoStoring, ARefusedRowLeavesTheOthersAloneAndNumbersAreTheNextFreeOnes) {
  const test::HeldCatalogue other(
      Catalogue,
      "CREATE TRIGGER OtherMachine AFTER INSERT ON tblPhotoLinks WHEN NEW.PhotoID = 2 "
      "BEGIN INSERT INTO tblPhotos (PhotoID, ImageType) VALUES (3, 'own'); END;"
      "CREATE TRIGGER RefuseLink BEFORE INSERT ON tblPhotoLinks WHEN NEW.PhotoID = 5 "
      "BEGIN SELECT RAISE(ABORT, 'no'); END");
  WriteFile(StoredPath("3.jpg"), "their picture");
  AddJpegs(4);
  Batch.GroupSize = 2;
  Batch.RemoveSources = true;
  EXPECT_EQ(Store().substr(0, 8), "1 2 4 0n");
  EXPECT_EQ(Rows(), "1|jpg 2|jpg 3|own 4|jpg");
  EXPECT_EQ(StoredFiles(), "1.jpg 2.jpg 3.jpg 4.jpg");
  EXPECT_EQ(ReadFile(StoredPath("3.jpg")), "their picture");
  EXPECT_EQ(RemainingSources(), "p4.jpg");
  EXPECT_EQ(LinkedIDs(), "1 2 4");
  ExpectNothingLost();
}

// Its own files are sources that must not go: they are other photos' pictures.
TEST_F(PhotoStoring, NothingIsRemovedFromTheImageStoreItself) {
  AddJpegs(2);
  Store();
  PhotoBatch again = Batch;
  again.Directory = Sources.filePath("by another name");
  ASSERT_TRUE(QFile::link(Catalogue.Paths().ImageDir.chopped(1), again.Directory));
  again.Names = QStringList({"1.jpg", "2.jpg"});
  again.RemoveSources = true;
  StorePhotos(Catalogue.Paths(), Catalogue.Engine(), again);
  EXPECT_EQ(StoredFiles(), "1.jpg 2.jpg 3.jpg 4.jpg");
}

TEST_F(PhotoStoring, WithoutANumberOrACatalogueNothingHappens) {
  Catalogue.AddPhoto(2147483646, {}, {});
  AddJpegs(2);
  Batch.RemoveSources = true;
  EXPECT_EQ(Store(), "2147483647 0Overflow");
  EXPECT_EQ(Rows(), "2147483646|jpg 2147483647|jpg");
  Batch.Names.removeFirst();
  EXPECT_EQ(Store(), "0Overflow");
  QFile::remove(Catalogue.Paths().WorkFile);
  EXPECT_EQ(Store().front(), '0');
  EXPECT_EQ(RemainingSources(), "p2.jpg");
  ExpectNothingLost();
}

}  // namespace
}  // namespace veldrin::records
