#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>

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

// The child on a catalogue and sources of its own.
struct Trial {
  Trial() {
    for (int i = 0; i < PhotoCount; ++i) {
      Originals << test::Jpeg(i);
      test::WriteFile(SourcePath(i), Originals[i]);
    }
  }

  // True when it was killed, false when it came to its end.
  bool KillAt(int call) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start("env", {QStringLiteral("LD_PRELOAD=" CRASH_POINT), QStringLiteral("CRASH_AT=%1").arg(call),
                        "ASAN_OPTIONS=verify_asan_link_order=0", QStringLiteral(STORING_CHILD),
                        Catalogue.ProgramPath(), Paths.DatabaseFile, Paths.ImageDir, Paths.TempDir,
                        Catalogue.Engine().SystemDB, Sources.path()});
    EXPECT_TRUE(child.waitForFinished());
    if (child.exitStatus() == QProcess::CrashExit) return true;
    EXPECT_EQ(child.exitCode(), 0);
    return false;
  }

  void OpenCatalogue() {
    SQLite::Database db(Paths.DatabaseFile.toStdString(), SQLite::OPEN_READWRITE);
    EXPECT_EQ(db.execAndGet("PRAGMA integrity_check").getString(), "ok");
    ASSERT_TRUE(catalogue::CreateWorkFile(Paths, Catalogue.Engine(), Catalogue.ProgramPath()));
    ASSERT_TRUE(catalogue::OpenCatalogue(Paths, Catalogue.Engine()));
  }

  QStringList Rows() { return Catalogue.Rows("SELECT PhotoID, ImageType FROM tblPhotos ORDER BY PhotoID"); }
  QString SourcePath(int i) const { return Sources.filePath(QStringLiteral("%1.jpg").arg(i + 10)); }
  QByteArray StoredBytes(const QString& row) {
    return test::ReadFile(
        catalogue::ImageFileName(Paths, row.section(u'|', 0, 0).toInt(), row.section(u'|', 1)));
  }

  // The rows were made in the order of the sources, and a source goes when its row is there.
  void ExpectNoPictureLost() {
    const QStringList rows = Rows();
    for (int i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(rows[i], QStringLiteral("%1|jpg").arg(i + 1));
      EXPECT_EQ(StoredBytes(rows[i]), Originals[i]);
    }
    for (auto i = static_cast<int>(rows.size()); i < PhotoCount; ++i)
      EXPECT_EQ(test::ReadFile(SourcePath(i)), Originals[i]);
  }

  // The next run of the program stores what is still to be stored.
  void StoreTheRest() {
    PhotoBatch batch;
    batch.Directory = Sources.path();
    batch.Names = QDir(Sources.path()).entryList(QDir::Files, QDir::Name);
    batch.LinkKey = folders::LinkKey({});
    batch.RemoveSources = true;
    StorePhotos(Paths, Catalogue.Engine(), batch);
    EXPECT_TRUE(QDir(Sources.path()).isEmpty());
    QSet<QByteArray> stored;
    for (const QString& row : Rows()) stored.insert(StoredBytes(row));
    EXPECT_EQ(stored, QSet<QByteArray>(Originals.begin(), Originals.end()));
    EXPECT_EQ(QDir(Paths.ImageDir).entryList({".new*"}, QDir::Files | QDir::Hidden), QStringList());
  }

  QList<QByteArray> Originals;
  test::TestCatalogue Catalogue{false};
  catalogue::Paths& Paths = Catalogue.Paths();
  QTemporaryDir Sources;
};

TEST(Crash, AtNoPointOfTheStoringAPictureIsLost) {
  int crashes = 0;
  bool killed = true;
  for (int call = 1 + QRandomGenerator::global()->bounded(Stride); killed; call += Stride) {
    SCOPED_TRACE("killed in front of call " + std::to_string(call));
    Trial run;
    killed = run.KillAt(call);
    crashes += killed ? 1 : 0;
    run.OpenCatalogue();
    run.ExpectNoPictureLost();
    EXPECT_TRUE(killed || run.Rows().size() == PhotoCount);
    run.StoreTheRest();
    if (testing::Test::HasFailure()) return;
  }
  // Each photo is copied, flushed, renamed and its source removed: fewer would mean that the counting broke.
  EXPECT_GE(crashes, PhotoCount * 4 / Stride);
}

}  // namespace
}  // namespace veldrin::records
