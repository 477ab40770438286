#include "show/full_screen_show.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "show/fakes.h"
#include "show/image_play.h"

namespace veldrin::show {
namespace {

/// Image Play on five photos, each of its own width.
class FullScreenTest : public testing::Test {
 protected:
  FullScreenTest() : Play(Fixture.Parts, Cache, nullptr) {
    for (int id = 1; id <= 5; ++id) Fixture.Catalogue.AddPhoto(id, QString(), {}, QSize(60 + id, 40));
    Fixture.Data1.Refresh();
    Play.Slider1().setMaximum(5);
    Play.resize(829, 654);
    Play.show();
  }

  // Opens the whole screen by its button and does something there.
  void OnWholeScreen(const std::function<void(QWidget& window)>& action) {
    test::InDialog([this] { Play.Button(PlayFullScreen).trigger(); },
                   [&](QWidget& window) {
                     EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
                     action(window);
                   });
  }
  static bool IsRunning(const QWidget& window) { return window.findChild<QTimer*>("Timer1")->isActive(); }
  // The width of the photo that a window shows; 0 for none.
  static int PhotoShown(const QWidget& window) {
    test::WaitForPictures();
    for (const char* name : {"PictureShow(0)", "PictureShow(1)"}) {
      const auto& image = *window.findChild<controls::FittedImage*>(name);
      if (!image.isHidden())  // From 60 + id by 40, enlarged.
        return static_cast<int>(std::lround(40.0 * image.width() / image.height())) - 60;
    }
    return 0;
  }
  std::string State() {
    return QStringLiteral("%1: %2 @ %3/%4")
        .arg(Fixture.Settings.ShowState)
        .arg(PhotoShown(Play))
        .arg(Fixture.Data1.AbsolutePosition() + 1)
        .arg(Play.Slider1().value())
        .toStdString();
  }

  ShowFixture Fixture{0};
  pictures::PictureCache Cache;
  ImagePlay Play;
};

// Runs once more on a platform with two screens.
TEST_F(FullScreenTest, IsABlackWindowOverTheScreenOfTheMainWindow) {
  const bool several = qEnvironmentVariableIsSet("SHOW_ON_TWO_SCREENS");
  ASSERT_EQ(QGuiApplication::screens().size(), several ? 2 : 1);
  for (const QScreen* screen : QGuiApplication::screens()) {
    Play.move(screen->geometry().topLeft() + QPoint(40, 30));
    OnWholeScreen([&](QWidget& window) {
      EXPECT_EQ(window.geometry(), screen->geometry());
      EXPECT_EQ(window.screen(), screen);
      EXPECT_TRUE(window.findChild<QAction*>("tbarShow(17)")->isEnabled());
    });
  }
  Fixture.Player.SoundCard = false;
  OnWholeScreen([&](QWidget& window) {
    EXPECT_FALSE(window.findChild<QAction*>("tbarShow(17)")->isEnabled());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window.isModal());
    EXPECT_EQ(window.grab().toImage().pixelColor(3, 3), QColor(Qt::black));
    EXPECT_EQ(PhotoShown(window), 0);  // the show is stopped
  });
  EXPECT_EQ(State(), "5: 0 @ 1/0");
}

void MovePointer(QWidget& control, QPoint place) {
  QMouseEvent event(QEvent::MouseMove, place, control.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
  QApplication::sendEvent(&control, &event);
}

TEST_F(FullScreenTest, ShowsItsButtonsAtTheLowerEdge) {
  Play.Button(PlayForward).trigger();
  OnWholeScreen([](QWidget& window) {
    const auto& bar = *window.findChild<ShowToolbar*>();
    const int barTop = window.height() - 2 * bar.height();
    EXPECT_TRUE(bar.isHidden());
    for (const auto& [y, visible] :
         std::map<int, bool>{{barTop - 1, false}, {barTop, true}, {window.height() - 1, true}}) {
      MovePointer(window, QPoint(5, 300));
      MovePointer(window, QPoint(5, y));
      EXPECT_EQ(bar.isVisible(), visible) << y;
    }
    EXPECT_EQ(bar.geometry().top(), barTop);
    EXPECT_NEAR(bar.geometry().center().x(), window.width() / 2, 1);
    // Over a picture it is the same place, and a button that is off doesn't let a double click through.
    QWidget& image = *window.findChild<QWidget*>("PictureShow(0)");
    MovePointer(image, QPoint(20, 20));
    EXPECT_TRUE(bar.isHidden());
    MovePointer(window, QPoint(5, barTop));
    QTest::mouseDClick(bar.widgetForAction(&bar.Button(StepBackward)), Qt::LeftButton);
    EXPECT_TRUE(window.isVisible());
  });
}

TEST_F(FullScreenTest, LeadsBackToTheWindow) {
  const auto escape = [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); };
  const auto pause = [&](QWidget& window) {
    QTest::keyClick(&window, Qt::Key_Space);
    escape(window);
  };
  // The button before, the way out, and the state after it.
  const std::tuple<ShowButton, std::function<void(QWidget&)>, const char*> waysOut[] = {
      {PlayForward, escape, "6: 2 @ 2/2"},
      {PlayForward, [](QWidget& window) { QTest::mouseDClick(&window, Qt::LeftButton, {}, QPoint(2, 2)); },
       "6: 3 @ 3/3"},
      {PlayBackward,
       [](QWidget& window) {
         QTest::mouseDClick(window.findChild<QWidget*>("PictureShow(0)"), Qt::LeftButton);
       },
       "4: 3 @ 3/3"},
      {PausePlay, [](QWidget& window) { window.findChild<QAction*>("tbarShow(15)")->trigger(); },
       "9: 3 @ 3/3"},
      {StopPlay, escape, "5: 0 @ 3/3"},
      {StopPlay, pause, "9: 3 @ 3/3"},
      {PlayForward, pause, "9: 3 @ 3/3"}};
  for (const auto& [button, leave, state] : waysOut) {
    Play.Button(button).trigger();
    const bool runs = button == PlayForward || button == PlayBackward;
    OnWholeScreen([&, shown = PhotoShown(Play)](QWidget& window) {
      EXPECT_EQ(PhotoShown(window), shown);
      EXPECT_EQ(IsRunning(window), runs);
      EXPECT_FALSE(IsRunning(Play));
      leave(window);
      EXPECT_FALSE(window.isVisible() || IsRunning(window));
    });
    EXPECT_EQ(State(), state);
    EXPECT_EQ(IsRunning(Play), *state == '6' || *state == '4');
  }
}

TEST_F(FullScreenTest, TheSliderIsTheMousesToDrag) {
  Play.Button(PlayForward).trigger();
  QSlider& slider = Play.Slider1();
  slider.setValue(0);
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(5, slider.height() / 2));
  EXPECT_FALSE(IsRunning(Play));
  QTest::mouseMove(&slider, QPoint(slider.width() / 2, slider.height() / 2));
  slider.setSliderPosition(3);
  EXPECT_FALSE(IsRunning(Play));
  const int dragged = slider.value();
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(slider.width() / 2, slider.height() / 2));
  EXPECT_TRUE(IsRunning(Play));
  EXPECT_EQ(PhotoShown(Play), dragged + 1);
  EXPECT_EQ(slider.value(), dragged + 1);
  // The second press of a double click is one, too.
  QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(5, 5), slider.mapToGlobal(QPointF(5, 5)),
                    Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&slider, &press);
  EXPECT_FALSE(IsRunning(Play));
}

}  // namespace
}  // namespace veldrin::show
