#include <gtest/gtest.h>

#include <QFile>
#include <QPushButton>
#include <QWindow>
#include <QtTest>
#include <cstdio>

#include "catalogue/schema.h"
#include "platform/runtime_error.h"
#include "shell/application.h"
#include "shell/splash.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

using test::TestCatalogue;

/// Counts how often a window was painted.
class PaintCounter : public QObject {
 public:
  int Count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++Count;
    return false;
  }
};

class Splash : public testing::Test {
 protected:
  void Show(bool loads = true) {
    Window = std::make_unique<frmSplash>(
        [this, loads] {
          ++Loads;
          PaintedAtLoad = Painted.Count;
          return loads;
        },
        [this] { ++MainShown; });
    Timer1 = Window->findChild<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_NE(Timer1, nullptr);
    Window->installEventFilter(&Painted);
    Window->Show();
    EXPECT_EQ(Loads, 0) << "the load waits until the window is on screen";
    ASSERT_TRUE(QTest::qWaitFor([this] { return Timer1->isActive(); }));
  }
  void ClickAt(QPoint point) { QTest::mouseClick(Window->windowHandle(), Qt::LeftButton, {}, point); }
  QPoint CentreOf(const char* name) const {
    const auto* control = Window->findChild<QWidget*>(QLatin1String(name));
    EXPECT_NE(control, nullptr) << name;
    return control->geometry().center();
  }

  PaintCounter Painted;
  int Loads = 0;
  int PaintedAtLoad = 0;
  int MainShown = 0;
  std::unique_ptr<frmSplash> Window;
  QTimer* Timer1 = nullptr;
};

TEST_F(Splash, LoadsWhenItIsPaintedAndGoesAfterASecond) {
  Show();
  EXPECT_EQ(Window->size(), QSize(498, 338));
  EXPECT_GE(PaintedAtLoad, 1);
  EXPECT_EQ(Timer1->interval(), 1000);
  EXPECT_TRUE(Window->isVisible());
  EXPECT_EQ(MainShown, 0);
  ASSERT_TRUE(QTest::qWaitFor([this] { return MainShown == 1; }));
  EXPECT_FALSE(Window->isVisible());
  EXPECT_FALSE(Timer1->isActive());
  EXPECT_EQ(Loads, 1);
}

TEST_F(Splash, AKeyOrAClickOnThePictureEndsTheWaitOnce) {
  const std::function<void()> waysOut[] = {
      [this] { QTest::keyClick(Window.get(), Qt::Key_Space); },
      [this] { QTest::keyClick(Window.get(), Qt::Key_Escape); },
      [this] { ClickAt(CentreOf("Image1")); },
      [this] { ClickAt(CentreOf("lblTitle(0)")); },
  };
  for (const auto& leave : waysOut) {
    Loads = MainShown = 0;
    Show();
    leave();
    EXPECT_EQ(MainShown, 1);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(Timer1->isActive());
    QTest::keyClick(Window.get(), Qt::Key_Space);
    EXPECT_EQ(MainShown, 1);
  }
}

TEST_F(Splash, AClickBesideThePictureDoesNothing) {
  Show();
  ClickAt(CentreOf("lblVer"));
  ClickAt(QPoint(Window->width() / 2, Window->height() - 3));
  QTest::keyClick(Window.get(), Qt::Key_Shift);
  EXPECT_TRUE(Window->isVisible());
  EXPECT_EQ(MainShown, 0);
}

TEST_F(Splash, AfterAFailedLoadItIsOutOfSightAndTheMainWindowComesAllTheSame) {
  Show(false);
  EXPECT_FALSE(Window->isVisible());
  EXPECT_EQ(MainShown, 0);
  ASSERT_TRUE(QTest::qWaitFor([this] { return MainShown == 1; }));
  EXPECT_FALSE(Timer1->isActive());
}

class Start : public testing::Test {
 protected:
  std::unique_ptr<platform::App> MakeApp() const {
    return std::make_unique<platform::App>(Catalogue.ProgramPath(),
                                           Catalogue.ProgramPath() + QStringLiteral("/Temp"));
  }
  static QWidget* SplashWindow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == QLatin1String("frmSplash")) return window;
    }
    return nullptr;
  }
  StartUp::MainWindowFactory Factory() {
    return [this] {
      ++Made;
      return std::make_unique<QWidget>();
    };
  }

  TestCatalogue Catalogue{false};
  int Made = 0;
};

TEST_F(Start, OpensTheCatalogueAndRefusesASecondInstance) {
  StartUp first(MakeApp());
  ASSERT_TRUE(first.Main(Factory()));
  ASSERT_NE(SplashWindow(), nullptr);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !first.Paths().DatabaseFile.isEmpty(); }));
  QTest::keyClick(SplashWindow(), Qt::Key_Space);
  ASSERT_EQ(Made, 1);
  EXPECT_EQ(SplashWindow(), nullptr);
  first.Engine()
      .OpenDatabase(first.Paths().WorkFile)
      ->Execute(QStringLiteral("INSERT INTO CheckPhotos (PhotoID) VALUES (7)"));
  const QByteArray workingCopy = test::ReadFile(first.Paths().WorkFile);

  StartUp second(MakeApp());
  EXPECT_FALSE(second.Main(Factory()));
  EXPECT_EQ(SplashWindow(), nullptr);
  EXPECT_EQ(second.Paths().WorkFile, QString());
  EXPECT_EQ(test::ReadFile(first.Paths().WorkFile), workingCopy);
  EXPECT_EQ(Made, 1);
}

TEST_F(Start, ALockOfAProcessThatCrashedDoesNotRefuse) {
  test::WriteFile(Catalogue.ProgramPath() + QStringLiteral("/Temp/instance.lock"),
                  "999999999\nveldrin\n\n\n\n");
  StartUp start(MakeApp());
  EXPECT_TRUE(start.Main(Factory()));
}

TEST_F(Start, AFailedLoadIsReportedAndThenTheMainWindowIsMade) {
  ASSERT_TRUE(QFile::remove(Catalogue.Paths().DatabaseFile));
  StartUp start(MakeApp());
  const QStringList boxes = test::AnswerBoxes(
      [&] {
        ASSERT_TRUE(start.Main(Factory()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return Made == 1; }));
      },
      {QMessageBox::Ok});
  EXPECT_EQ(boxes, QStringList(QStringLiteral("Veldrin|Unable to Initialize User Tables.")));
  EXPECT_EQ(SplashWindow(), nullptr);
}

/// Runs in a process of its own: an error in a handler, its box answered. The box's text goes to the error
/// output.
[[noreturn]] void RunIntoError(const QString& workFile, const std::function<void()>& handler) {
  // There is one application object; the tests' own makes room for the program's.
  qApp->~QCoreApplication();
  static int argc = 1;
  static char name[] = "veldrin";
  static char* argv[] = {name, nullptr};
  Application application(argc, argv);
  catalogue::Paths paths;
  paths.WorkFile = workFile;
  application.CleanUp = [&] { catalogue::DeleteWorkFile(paths); };
  QTimer answer;
  answer.setInterval(0);
  QObject::connect(&answer, &QTimer::timeout, &answer, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    const bool critical = box->icon() == QMessageBox::Critical;
    std::fprintf(stderr, "box %d %s: %s\n", critical, qPrintable(box->windowTitle()),
                 qPrintable(box->text()));
    box->button(QMessageBox::Ok)->click();
  });
  answer.start();
  QTimer failing;
  failing.setInterval(0);
  QObject::connect(&failing, &QTimer::timeout, &failing, handler);
  failing.start();
  Application::exec();
  std::_Exit(77);
}

TEST_F(Start, AnErrorThatNobodyCaughtEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // The other process runs this test from its beginning, on a catalogue of its own: it is told of this one's
  // copy.
  const char* const variable = "VELDRIN_TEST_COPY";
  if (qEnvironmentVariableIsEmpty(variable)) {
    qputenv(variable, (Catalogue.ProgramPath() + QStringLiteral("/TmpPhotos.mdb")).toUtf8());
  }
  const QString workFile = qEnvironmentVariable(variable);
  test::WriteFile(workFile, "a working copy");
  const auto noTable = [] {
    throw platform::RuntimeError(platform::errNoSuchTable, QStringLiteral("no <b>such</b> table"));
  };
  EXPECT_EXIT(RunIntoError(workFile, noTable), testing::ExitedWithCode(1),
              "^[^b]*box 1 Veldrin: Run-time error '3078':\n\nno <b>such</b> table\n$");
  EXPECT_FALSE(QFile::exists(workFile));
  EXPECT_EXIT(RunIntoError(workFile, [] { throw std::out_of_range("beyond"); }), testing::ExitedWithCode(1),
              "box 1 Veldrin: Run-time error '5':\n\nbeyond\n");
  qunsetenv(variable);
}

}  // namespace
}  // namespace veldrin::shell
