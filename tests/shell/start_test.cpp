#include <QWindow>
#include <cstdio>

#include "shell/application.h"
#include "shell/splash.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

struct Splash : testing::Test {
  void Show(bool loads = true) {
    Loads = MainShown = 0;
    Window = std::make_unique<frmSplash>(
        [this, loads] {
          ++Loads;
          EXPECT_TRUE(Window->windowHandle()->isExposed());
          return loads;
        },
        [this] { ++MainShown; });
    Timer1 = Window->findChild<QTimer*>("Timer1");
    Window->Show();
    EXPECT_EQ(Loads, 0) << "the load waits until the window is on screen";
    ASSERT_TRUE(QTest::qWaitFor([this] { return Timer1->isActive(); }));
    EXPECT_EQ(Loads, 1);
    EXPECT_EQ(Window->isVisible(), loads);
    EXPECT_EQ(MainShown, 0);
  }
  void ClickOn(const char* name) {
    const QPoint point = Window->findChild<QWidget*>(name)->geometry().center();
    QTest::mouseClick(Window->windowHandle(), Qt::LeftButton, {}, point);
  }
  void ExpectTheMainWindow() {
    EXPECT_EQ(MainShown, 1);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(Timer1->isActive());
  }

  int Loads = 0;
  int MainShown = 0;
  std::unique_ptr<frmSplash> Window;
  QTimer* Timer1 = nullptr;
};

TEST_F(Splash, AKeyOrAClickOnThePictureEndsTheWaitOnceAlsoWhenTheLoadFailed) {
  const std::function<void()> waysOut[] = {
      [this] { QTest::keyClick(Window.get(), Qt::Key_Escape); },
      [this] { ClickOn("Image1"); },
      [this] {
        Timer1->start(0);
        ASSERT_TRUE(QTest::qWaitFor([this] { return MainShown == 1; }));
      },
  };
  for (const auto& leave : waysOut) {
    const bool loads = &leave != &waysOut[2];
    Show(loads);
    EXPECT_EQ(Timer1->interval(), 1000);
    if (loads) ClickOn("lblVer");
    QTest::keyClick(Window.get(), Qt::Key_Shift);
    EXPECT_EQ(MainShown, 0) << "a modifier and a click beside the picture do nothing";
    leave();
    QTest::keyClick(Window.get(), Qt::Key_Space);
    ExpectTheMainWindow();
  }
}

TEST(Start, OpensTheCatalogueAndRefusesASecondInstance) {
  const test::TestCatalogue catalogue(false);
  const QString temp = catalogue.ProgramPath() + "/Temp";
  // The lock of a process that crashed doesn't refuse, nor one that a power cut left without a word.
  for (const char* left : {"", "99", "999999999\nveldrin\n\n\n\n"}) {
    QFile lock(temp + "/instance.lock");
    test::WriteFile(lock.fileName(), left);
    ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
    lock.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    EXPECT_FALSE(App(catalogue.ProgramPath(), temp).PrevInstance()) << left;
  }
  int made = 0;
  const auto makeMain = [&] {
    ++made;
    return std::make_unique<QWidget>();
  };
  StartUp first(std::make_unique<App>(catalogue.ProgramPath(), temp));
  ASSERT_TRUE(first.Main(makeMain));
  ASSERT_TRUE(QTest::qWaitFor([&] { return made == 1; }));
  const QString workFile = first.Paths().WorkFile;
  first.Engine().OpenDatabase(workFile)->Execute("INSERT INTO CheckPhotos (PhotoID) VALUES (7)");
  const QByteArray workingCopy = test::ReadFile(workFile);
  StartUp second(std::make_unique<App>(catalogue.ProgramPath(), temp));
  EXPECT_FALSE(second.Main(makeMain));
  EXPECT_EQ(second.Paths().WorkFile, "");
  EXPECT_EQ(test::ReadFile(workFile), workingCopy);
}

/// Runs in a process of its own: an error in a handler, its box answered. The box's text goes to the error
/// output.
[[noreturn]] void RunIntoError(const std::function<void()>& handler,
                               QMessageBox::StandardButton answer = QMessageBox::Ok) {
  // There is one application object; the tests' own makes room for the program's.
  qApp->~QCoreApplication();
  static int argc = 1;
  static char name[] = "veldrin";
  static char* argv[] = {name, nullptr};
  Application application(argc, argv);
  const auto end = application.End;
  int status = 0;
  bool cleaned = false;
  application.CleanUp = [&] { cleaned = true; };
  application.CanGoOn = [&] { return answer != QMessageBox::Ok; };
  application.End = [&](int ended) {
    status = cleaned && status == 0 ? ended : 77;
    Application::quit();
  };
  // As a window that fails to paint fails again behind the box.
  for (int i = 0; i < 2; ++i) QTimer::singleShot(0, &application, handler);
  const QStringList boxes = test::AnswerBoxes(
      [&] {
        if (answer == QMessageBox::Ignore) return QCoreApplication::processEvents();
        Application::exec();
      },
      {answer});
  std::fputs(qPrintable(boxes.join('\n')), stderr);
  end(status);
  std::abort();
}

TEST(Start, AnErrorThatNobodyCaughtEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto noTable = [] { throw base::RuntimeError(base::errNoSuchTable, "no <b>such</b> table"); };
  EXPECT_EXIT(RunIntoError(noTable), testing::ExitedWithCode(1),
              "Veldrin\\|Run-time error '3078':\n\nno <b>such</b> table$");
  EXPECT_EXIT(RunIntoError([] { throw std::out_of_range("beyond"); }), testing::ExitedWithCode(1),
              "Veldrin\\|Run-time error '5':\n\nbeyond$");
  // While there is a window to go on with the user is asked.
  EXPECT_EXIT(RunIntoError(noTable, QMessageBox::Close), testing::ExitedWithCode(1), "3078");
  EXPECT_EXIT(RunIntoError(noTable, QMessageBox::Ignore), testing::ExitedWithCode(0), "3078");
}

}  // namespace
}  // namespace veldrin::shell
