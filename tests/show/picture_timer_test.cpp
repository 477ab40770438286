// The timer of the show and the pictures that it waits for.
#include "show/picture_timer.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>
#include <atomic>

#include "show/picture_pair.h"
#include "support/test_support.h"

namespace veldrin::show {
namespace {

TEST(PictureTimer, PutsTheTickOffUntilThePictureIsReady) {
  bool ready = true;
  PictureTimer timer(0, [&] { return ready; });
  const QSignalSpy ticks(&timer, &PictureTimer::Timer);
  const auto elapse = [&] {
    timer.SetEnabled(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !timer.findChild<QTimer*>()->isActive(); }));
  };
  elapse();
  EXPECT_EQ(ticks.size(), 1);
  ready = false;
  elapse();
  timer.PictureReady();  // another one
  EXPECT_EQ(ticks.size(), 1);
  ready = true;
  timer.PictureReady();
  timer.PictureReady();
  EXPECT_EQ(ticks.size(), 2);
  ready = false;
  elapse();
  timer.SetEnabled(false);  // while it is due
  ready = true;
  timer.PictureReady();
  EXPECT_EQ(ticks.size(), 2);
}

class PicturesOfAShow : public testing::Test {
 protected:
  PicturesOfAShow() {
    Box.resize(400, 300);
    Box.show();
    test::WritePicture(File, QSize(60, 40));
  }

  // It can't be told from the picture before without being read.
  void Spoil() {
    const QDateTime date = QFileInfo(File).lastModified();
    test::WriteFile(File, QByteArray(QFileInfo(File).size(), 'x'));
    QFile file(File);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(date, QFileDevice::FileModificationTime));
  }
  void Prepare() {
    Pictures->Prepare(File);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Pictures->IsReady(); }));
  }
  int ShownWidth() const {
    test::WaitForPictures();
    int width = 0;
    for (const auto* image : Box.findChildren<controls::FittedImage*>()) {
      if (image->isHidden()) continue;
      EXPECT_EQ(width, 0);  // One of the two is seen at a time.
      width = image->width();
    }
    return width;
  }

  QTemporaryDir Directory;
  QString File = Directory.filePath("photo.bmp");
  pictures::PictureCache Cache;
  QWidget Box;
  PicturePair* Pictures = new PicturePair(Box, Cache);
};

TEST_F(PicturesOfAShow, AreWhatTheFileIsAtTheMoment) {
  Prepare();
  Pictures->Show(File);
  EXPECT_EQ(ShownWidth(), 400);
  // Another picture under the name, another box, a broken file, none.
  test::WritePicture(File, QSize(30, 60));
  Pictures->Show(File);
  EXPECT_EQ(ShownWidth(), 150);
  Prepare();
  Box.resize(400, 200);
  Pictures->Show(File);
  EXPECT_EQ(ShownWidth(), 100);
  for (const bool broken : {true, false}) {
    Prepare();
    broken ? test::WriteFile(File, "no picture") : (void)QFile::remove(File);
    Pictures->Show(File);
    EXPECT_EQ(ShownWidth(), 100);
  }
}

TEST_F(PicturesOfAShow, AreDecodedOnce) {
  Box.resize(200, 150);
  Prepare();
  for (const QSize size : {QSize(500, 400), QSize(600, 500), QSize(400, 300)}) Box.resize(size);
  EXPECT_FALSE(Pictures->IsReady());
  EXPECT_TRUE(QTest::qWaitFor([&] { return Pictures->IsReady(); }));
  Spoil();
  Pictures->Show(File);
  Pictures->Prepare({});
  Pictures->Show(File);  // as a pause does that ends
  EXPECT_EQ(ShownWidth(), 400);
  // The picture will do for a smaller window, too.
  QWidget window;
  PicturePair other(window, Cache);
  window.resize(300, 300);
  const QSignalSpy shown(&other, &PicturePair::Shown);
  other.Show(File);
  EXPECT_EQ(shown.size(), 1);
  window.resize(800, 600);
  other.Show(File);
  test::WaitForPictures();
  EXPECT_EQ(shown.size(), 1);
}

TEST_F(PicturesOfAShow, AreNotWaitedForWhenNobodyNeedsThem) {
  QSemaphore goOn;
  std::atomic_int waited = 0;
  QThreadPool& threads = *QThreadPool::globalInstance();
  for (int i = 0; i < threads.maxThreadCount(); ++i) {
    threads.start([&] { waited += goOn.tryAcquire(1, 5000) ? 0 : 1; });
  }
  auto box = std::make_unique<QWidget>();
  auto* loader = new controls::PictureLoader(Cache, *box);
  loader->Prepare(File);
  EXPECT_FALSE(loader->IsIdle());
  loader->Prepare({});
  EXPECT_TRUE(loader->IsIdle());
  loader->Load(File);
  box.reset();
  goOn.release(threads.maxThreadCount());
  threads.waitForDone();
  EXPECT_EQ(waited, 0);
}

}  // namespace
}  // namespace veldrin::show
