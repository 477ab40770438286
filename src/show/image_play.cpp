#include "show/image_play.h"

#include <QIcon>
#include <QToolButton>

#include "platform/twips.h"

namespace veldrin::show {

using platform::MoveTwips;

namespace {

struct ButtonLook {
  int Number;
  const char* Tip;
  const char* Icon;
};

constexpr ButtonLook Looks[] = {{PlayBackward, "Play Backward", "media-playback-start-rtl"},
                                {StopPlay, "Stop Play", "media-playback-stop"},
                                {PlayForward, "Play Forward", "media-playback-start"},
                                {StepBackward, "Step Backward", "media-skip-backward"},
                                {PausePlay, "Pause", "media-playback-pause"},
                                {StepForward, "Step Forward", "media-skip-forward"},
                                {PlayOnce, "Play Once", "media-playlist-normal"},
                                {PlayRepeat, "Play Repeat", "media-playlist-repeat"},
                                {PlayFullScreen, "Play Full Screen", "view-fullscreen"},
                                {MusicOnOff, "Music On/Off", "audio-volume-high"},
                                {SetupMusic, "Setup Music", "view-media-playlist"}};

}  // namespace

ImagePlay::ImagePlay(ShowSettings& settings, QWidget* parent)
    : QWidget(parent),
      Settings(settings),
      picScreen(new QWidget(this)),
      Slider(new QSlider(Qt::Horizontal, this)),
      tbarShow(new QToolBar(this)) {
  setObjectName(QStringLiteral("TabPannel(3)"));
  auto* title = new QLabel(QStringLiteral("Photo Image Show"), this);
  title->setObjectName(QStringLiteral("lblShow"));
  title->setAlignment(Qt::AlignCenter);
  MoveTwips(*title, 120, 60, 12135, 300);
  picScreen->setObjectName(QStringLiteral("picScreen"));
  picScreen->setAutoFillBackground(true);
  picScreen->setPalette(QPalette(Qt::black));
  MoveTwips(*picScreen, 120, 420, 12135, 8220);
  Slider->setObjectName(QStringLiteral("Slider1"));
  MoveTwips(*Slider, 120, 8730, 12135, 360);
  MakeToolbar();
  SetShowButtons();
}

void ImagePlay::MakeToolbar() {
  tbarShow->setObjectName(QStringLiteral("tbarShow"));
  tbarShow->setIconSize(QSize(22, 22));
  MoveTwips(*tbarShow, 3600, 9120, 5400, 585);
  int next = 4;
  for (const ButtonLook& look : Looks) {
    // A number between two buttons is a separator.
    if (look.Number > next) tbarShow->addSeparator();
    next = look.Number + 1;
    QAction* action =
        tbarShow->addAction(QIcon::fromTheme(QLatin1String(look.Icon)), QLatin1String(look.Tip));
    action->setObjectName(QStringLiteral("tbarShow(%1)").arg(look.Number));
  }
}

QAction& ImagePlay::Button(int number) const {
  return *tbarShow->findChild<QAction*>(QStringLiteral("tbarShow(%1)").arg(number));
}

void ImagePlay::SetShowButtons() {
  for (const ShowButtonState& state : show::SetShowButtons(Settings, Button(StopPlay).isEnabled())) {
    Button(state.Button).setEnabled(state.Enabled);
  }
  Button(MusicOnOff)
      .setIcon(QIcon::fromTheme(Settings.MusicOn ? QStringLiteral("audio-volume-high")
                                                 : QStringLiteral("audio-volume-muted")));
}

}  // namespace veldrin::show
