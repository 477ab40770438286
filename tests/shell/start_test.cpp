#include <gtest/gtest.h>

#include <QFile>
#include <QWindow>
#include <QtTest>
#include <cstdio>

#include "platform/runtime_error.h"
#include "shell/application.h"
#include "shell/splash.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

class Splash : public testing::Test {
 protected:
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

TEST_F(Splash, GoesAfterASecondAlsoWhenTheLoadFailed) {
  for (const bool loads : {true, false}) {
    Show(loads);
    EXPECT_EQ(Timer1->interval(), 1000);
    ASSERT_TRUE(QTest::qWaitFor([this] { return MainShown == 1; }));
    ExpectTheMainWindow();
  }
}

TEST_F(Splash, AKeyOrAClickOnThePictureEndsTheWaitOnce) {
  const std::function<void()> waysOut[] = {
      [this] { QTest::keyClick(Window.get(), Qt::Key_Escape); },
      [this] { ClickOn("Image1"); },
      [this] { ClickOn("lblTitle(0)"); },
  };
  for (const auto& leave : waysOut) {
    Show();
    ClickOn("lblVer");
    QTest::keyClick(Window.get(), Qt::Key_Shift);
    EXPECT_EQ(MainShown, 0) << "a modifier and a click beside the picture do nothing";
    leave();
    QTest::keyClick(Window.get(), Qt::Key_Space);
    ExpectTheMainWindow();
  }
}

class Start : public testing::Test {
 protected:
  std::unique_ptr<platform::App> MakeApp() const {
    return std::make_unique<platform::App>(Catalogue.ProgramPath(), Catalogue.ProgramPath() + "/Temp");
  }
  bool Main(StartUp& start) {
    return start.Main([this] {
      ++Made;
      return std::make_unique<QWidget>();
    });
  }

  test::TestCatalogue Catalogue{false};
  int Made = 0;
};

TEST_F(Start, OpensTheCatalogueAndRefusesASecondInstance) {
  // The lock of a process that crashed doesn't refuse.
  test::WriteFile(Catalogue.ProgramPath() + "/Temp/instance.lock", "999999999\nveldrin\n\n\n\n");
  StartUp first(MakeApp());
  ASSERT_TRUE(Main(first));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Made == 1; }));
  const QString workFile = first.Paths().WorkFile;
  first.Engine().OpenDatabase(workFile)->Execute("INSERT INTO CheckPhotos (PhotoID) VALUES (7)");
  const QByteArray workingCopy = test::ReadFile(workFile);

  StartUp second(MakeApp());
  EXPECT_FALSE(Main(second));
  EXPECT_EQ(second.Paths().WorkFile, "");
  EXPECT_EQ(test::ReadFile(workFile), workingCopy);
}

TEST_F(Start, AFailedLoadIsReportedAndThenTheMainWindowIsMade) {
  ASSERT_TRUE(QFile::remove(Catalogue.Paths().DatabaseFile));
  StartUp start(MakeApp());
  const auto run = [&] {
    ASSERT_TRUE(Main(start));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Made == 1; }));
  };
  EXPECT_EQ(test::AnswerBoxes(run, {QMessageBox::Ok}),
            QStringList("Veldrin|Unable to Initialize User Tables."));
}

/// Runs in a process of its own: an error in a handler, its box answered. The box's text goes to the error
/// output.
[[noreturn]] void RunIntoError(const std::function<void()>& handler) {
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
  application.End = [&](int ended) {
    status = cleaned ? ended : 77;
    Application::quit();
  };
  QTimer::singleShot(0, &application, handler);
  const QStringList boxes = test::AnswerBoxes([] { Application::exec(); }, {QMessageBox::Ok});
  std::fputs(qPrintable(boxes.join('\n')), stderr);
  end(status);
  std::abort();
}

TEST_F(Start, AnErrorThatNobodyCaughtEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto noTable = [] { throw platform::RuntimeError(platform::errNoSuchTable, "no <b>such</b> table"); };
  EXPECT_EXIT(RunIntoError(noTable), testing::ExitedWithCode(1),
              "Veldrin\\|Run-time error '3078':\n\nno <b>such</b> table$");
  EXPECT_EXIT(RunIntoError([] { throw std::out_of_range("beyond"); }), testing::ExitedWithCode(1),
              "Veldrin\\|Run-time error '5':\n\nbeyond$");
}

}  // namespace
}  // namespace veldrin::shell
