#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>

#include "catalogue/image_store.h"
#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "records/photo_storing.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

constexpr int PhotoCount = 20;

#if defined(__SANITIZE_ADDRESS__)
constexpr int Stride = 17;  // A start takes long there.
#else
constexpr int Stride = 1;
#endif

// What reaches the disk is no matter here, since the machine goes on: a disk in memory serves as well, and
// quicker.
void UseMemoryDisk() {
  if (QFileInfo(QStringLiteral("/dev/shm")).isWritable()) qputenv("TMPDIR", "/dev/shm");
}

QList<QByteArray> MakeOriginals() {
  QList<QByteArray> originals;
  for (int i = 0; i < PhotoCount; ++i) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(QColor::fromHsv(i * 17, 255, 255));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG");
    originals << bytes;
  }
  return originals;
}

class Crash : public testing::Test {
 protected:
  // Runs the child on a catalogue and sources of its own; true when it was killed, false when it came to its
  // end.
  bool KillAt(int call) {
    Catalogue = std::make_unique<test::TestCatalogue>(false);
    Sources = std::make_unique<QTemporaryDir>();
    for (int i = 0; i < PhotoCount; ++i) {
      test::WriteFile(Sources->filePath(QStringLiteral("%1.jpg").arg(i, 2, 10, QLatin1Char('0'))),
                      Originals[i]);
    }
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(CRASH_POINT));
    environment.insert(QStringLiteral("CRASH_AT"), QString::number(call));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    const catalogue::Paths& paths = Catalogue->Paths();
    child.start(QStringLiteral(STORING_CHILD),
                {Catalogue->ProgramPath(), paths.DatabaseFile, paths.ImageDir, paths.TempDir,
                 Catalogue->Engine().SystemDB, Sources->path()});
    EXPECT_TRUE(child.waitForFinished());
    if (child.exitStatus() == QProcess::CrashExit) return true;
    EXPECT_EQ(child.exitCode(), 0);
    return false;
  }

  ~Crash() override { qputenv("TMPDIR", TempDirBefore); }

  void OpenCatalogue() {
    SQLite::Database db(Catalogue->Paths().DatabaseFile.toStdString(), SQLite::OPEN_READWRITE);
    EXPECT_EQ(db.execAndGet("PRAGMA integrity_check").getString(), "ok");
    ASSERT_TRUE(catalogue::CreateWorkFile(Catalogue->Paths(), Catalogue->Engine(), Catalogue->ProgramPath()));
    ASSERT_TRUE(catalogue::OpenCatalogue(Catalogue->Paths(), Catalogue->Engine()));
  }

  QStringList Rows() {
    return Catalogue->Rows(QStringLiteral("SELECT PhotoID, ImageType FROM tblPhotos ORDER BY PhotoID"));
  }
  QStringList SourceNames() const { return QDir(Sources->path()).entryList(QDir::Files, QDir::Name); }

  QByteArray StoredBytes(const QString& row) {
    return test::ReadFile(catalogue::ImageFileName(
        Catalogue->Paths(), row.section(QLatin1Char('|'), 0, 0).toInt(), row.section(QLatin1Char('|'), 1)));
  }

  // The rows were made in the order of the sources.
  void ExpectRowsHaveTheirFiles() {
    const QStringList rows = Rows();
    for (int i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(rows[i], QStringLiteral("%1|jpg").arg(i + 1));
      EXPECT_EQ(StoredBytes(rows[i]), Originals[i]);
    }
  }

  // A source goes when its row is there.
  void ExpectNoPictureLost() {
    const int rows = static_cast<int>(Rows().size());
    for (int i = rows; i < PhotoCount; ++i) {
      EXPECT_EQ(test::ReadFile(Sources->filePath(QStringLiteral("%1.jpg").arg(i, 2, 10, QLatin1Char('0')))),
                Originals[i]);
    }
  }

  // The next run of the program stores what is still to be stored.
  void StoreTheRest() {
    PhotoBatch batch;
    batch.Directory = Sources->path();
    batch.Names = SourceNames();
    batch.LinkKey = folders::LinkKey({});
    batch.RemoveSources = true;
    StorePhotos(Catalogue->Paths(), Catalogue->Engine(), batch);
    EXPECT_EQ(SourceNames(), QStringList());
    QSet<QByteArray> stored;
    for (const QString& row : Rows()) stored.insert(StoredBytes(row));
    EXPECT_EQ(stored, QSet<QByteArray>(Originals.begin(), Originals.end()));
    EXPECT_EQ(
        QDir(Catalogue->Paths().ImageDir).entryList({QStringLiteral(".new*")}, QDir::Files | QDir::Hidden),
        QStringList());
  }

  const QByteArray TempDirBefore = qgetenv("TMPDIR");
  QList<QByteArray> Originals = MakeOriginals();
  std::unique_ptr<test::TestCatalogue> Catalogue;
  std::unique_ptr<QTemporaryDir> Sources;
};

TEST_F(Crash, AtNoPointOfTheStoringAPictureIsLost) {
  int crashes = 0;
  bool killed = true;
  UseMemoryDisk();
  for (int call = 1 + QRandomGenerator::global()->bounded(Stride); killed; call += Stride) {
    SCOPED_TRACE("killed in front of call " + std::to_string(call));
    killed = KillAt(call);
    crashes += killed ? 1 : 0;
    OpenCatalogue();
    ExpectRowsHaveTheirFiles();
    ExpectNoPictureLost();
    EXPECT_TRUE(killed || Rows().size() == PhotoCount);
    StoreTheRest();
    if (HasFailure()) return;
  }
  // Each photo is copied, flushed, renamed and its source removed: fewer would mean that the counting broke.
  EXPECT_GE(crashes, PhotoCount * 4 / Stride);
}

}  // namespace
}  // namespace veldrin::records
