#include "show/picture_timer.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::show {
namespace {

class PictureTimerTest : public testing::Test {
 protected:
  PictureTimerTest() {
    Box.resize(400, 300);
    test::WritePicture(File, QSize(6000, 4000));
    Pictures = new PicturePair(Box);
  }

  QTemporaryDir Directory;
  QString File = Directory.filePath(QStringLiteral("large.jpg"));
  QWidget Box;
  PicturePair* Pictures = nullptr;
};

TEST_F(PictureTimerTest, PutsTheTickOffUntilThePictureIsReady) {
  PictureTimer timer(*Pictures, nullptr, 0);
  const QSignalSpy ticks(&timer, &PictureTimer::Timer);
  bool wasReady = true;
  QObject::connect(&timer, &PictureTimer::Timer, &Box, [&] { wasReady = wasReady && Pictures->IsReady(); });
  const auto ticked = [&](int count) { return QTest::qWaitFor([&] { return ticks.size() == count; }); };
  timer.SetEnabled(true);
  EXPECT_TRUE(ticked(1));  // nothing is being prepared
  Pictures->Prepare(File);
  timer.SetEnabled(true);
  EXPECT_TRUE(ticked(2));
  Pictures->Prepare({});
  Pictures->Prepare(File);
  timer.SetEnabled(true);
  QCoreApplication::processEvents();
  timer.SetEnabled(false);  // while it is due
  EXPECT_TRUE(QTest::qWaitFor([&] { return Pictures->IsReady(); }));
  QCoreApplication::processEvents();
  EXPECT_EQ(ticks.size(), 2);
  EXPECT_TRUE(wasReady);
}

TEST_F(PictureTimerTest, ShowsWhatTheFileIsAtTheMoment) {
  const auto width = [&] {
    for (const auto* image : Box.findChildren<catalogue::FittedImage*>()) {
      if (!image->isHidden()) return image->width();
    }
    return 0;
  };
  const auto prepare = [&] {
    Pictures->Prepare(File);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Pictures->IsReady(); }));
  };
  prepare();
  Pictures->Show(File);
  EXPECT_EQ(width(), 400);
  // Another picture under the name, another box, a broken file, none.
  prepare();
  test::WritePicture(File, QSize(30, 60));
  Pictures->Show(File);
  EXPECT_EQ(width(), 150);
  prepare();
  Box.resize(400, 200);
  Pictures->Show(File);
  EXPECT_EQ(width(), 100);
  for (const bool broken : {true, false}) {
    prepare();
    broken ? test::WriteFile(File, "no picture") : (void)QFile::remove(File);
    EXPECT_THROW(Pictures->Show(File), platform::RuntimeError);
    EXPECT_EQ(width(), 100);
  }
}

}  // namespace
}  // namespace veldrin::show
