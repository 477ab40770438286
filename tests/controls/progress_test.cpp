#include "controls/progress.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "support/test_support.h"

namespace veldrin::controls {
namespace {

class ProgressTest : public testing::Test {
 protected:
  ProgressTest() {
    Window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
    Field.setFocus();
  }
  // Steps until the window is there.
  static ProgressWindow& WindowOf(Progress& progress) {
    ProgressWindow* shown = nullptr;
    EXPECT_TRUE(QTest::qWaitFor([&] {
      progress.Step(1);
      for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName() == "frmProg")
          shown = static_cast<ProgressWindow*>(window);
      return shown != nullptr;
    }));
    return *shown;
  }

  QWidget Window;
  QLineEdit Field{&Window};
  LongWork Work{Window};
};

TEST_F(ProgressTest, DropsWhatIsMeantForOtherWindowsAndStopsByItsOwn) {
  const std::pair<const char*, std::function<void(ProgressWindow&)>> stops[] = {
      {"button", [](auto& window) { window.template findChild<QPushButton*>("bttnStop")->click(); }},
      {"Esc", [](auto& window) { QTest::keyClick(&window, Qt::Key_Escape); }},
      {"close box", [](auto& window) { window.close(); }},
      {"the program's close box", [this](auto&) { Window.close(); }}};
  for (const auto& [name, stop] : stops) {
    SCOPED_TRACE(name);
    Progress progress(Work, "Storing Photos....", 3);
    QTest::keyClick(&Field, Qt::Key_A);
    ProgressWindow& window = WindowOf(progress);
    EXPECT_EQ(window.findChild<QLabel*>("lblPercent")->text(), "33.33333%");
    QTest::keyClick(&Field, Qt::Key_B);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
      QKeyEvent held(QEvent::KeyPress, key, {}, {}, true);
      QCoreApplication::sendEvent(window.findChild<QPushButton*>("bttnStop"), &held);
      QTest::keyRelease(&window, key);
    }
    QLabel tip(&Window, Qt::ToolTip);
    tip.show();
    tip.close();
    EXPECT_TRUE(progress.Step(2)) << "a tool tip that goes by itself";
    EXPECT_FALSE(tip.isVisible());
    stop(window);
    EXPECT_FALSE(progress.Step(3));
    EXPECT_TRUE(window.isVisible()) << "until the work has ended";
    EXPECT_TRUE(Window.isVisible());
  }
  QMessageBox box(QMessageBox::Warning, "Error", "2 photos were not stored", QMessageBox::Ok, &Window);
  bool isRead = false;
  QObject::connect(&box, &QDialog::finished, [&] { isRead = true; });
  box.open();
  QTimer::singleShot(250, &box, &QDialog::reject);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !Window.isVisible(); })) << "which the user wanted to close";
  EXPECT_TRUE(isRead) << "what the work had to tell comes first";
  Window.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
  EXPECT_EQ(Field.text(), "");
  QTest::keyClick(&Field, Qt::Key_C);
  EXPECT_EQ(Field.text(), "c");
}

// Or all would wait for it.
TEST_F(ProgressTest, ABoxThatComesUpMeanwhileCanBeAnswered) {
  for (const bool windowStands : {false, true}) {
    Progress progress(Work, "Storing Photos....", 3);
    if (windowStands) WindowOf(progress);
    QMessageBox box(QMessageBox::Warning, "Error", "Duplicate", QMessageBox::Ok, &Window);
    box.open();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&box));
    QTest::keyClick(&Field, Qt::Key_A);
    QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    EXPECT_FALSE(box.isVisible());
    EXPECT_TRUE(progress.Step(2));
  }
  EXPECT_EQ(Field.text(), "");
}

TEST_F(ProgressTest, ALockIsTriedAgainUntilItIsFreeOrPatienceOrTheUserEndsIt) {
  int tries = 0;
  const auto locked = [&] {
    ++tries;
    throw base::RuntimeError(base::errLocked, "locked");
  };
  Work.Retry([&] {
    if (tries < 3) locked();
  });
  EXPECT_EQ(tries, 3);
  Work.Patience = 0;
  EXPECT_EQ(test::ErrorOf([&] { Work.Retry(locked); }), base::errLocked);
  EXPECT_EQ(tries, 4);
  Work.Patience = 600'000;
  QTimer::singleShot(0, &Window, [&] {
    // What comes up meanwhile, as by a timer, doesn't wait in its turn.
    EXPECT_EQ(test::ErrorOf([&] { Work.Retry(locked); }), base::errLocked);
    Window.close();
  });
  EXPECT_EQ(test::ErrorOf([&] { Work.Retry(locked); }), base::errLocked);
  Progress progress(Work, "Storing Photos....", 3);
  EXPECT_THROW(progress.Run([] { throw std::runtime_error("in another thread"); }), std::runtime_error);
}

}  // namespace
}  // namespace veldrin::controls
