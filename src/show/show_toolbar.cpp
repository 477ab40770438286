#include "show/show_toolbar.h"

#include <QIcon>
#include <algorithm>

#include "controls/named.h"

namespace veldrin::show {

namespace {

struct ButtonLook {
  int Number;
  const char* Tip;
  const char* FullScreenTip;
  const char* Icon;
  const char* OffIcon = nullptr;
};

constexpr ButtonLook Looks[] = {
    {PlayBackward, "Play Backward", "Play Backward", "media-playback-start"},  // mirrored
    {StopPlay, "Stop Play", "Stop Play", "media-playback-stop"},
    {PlayForward, "Play Forward", "Play Forward", "media-playback-start"},
    {StepBackward, "Step Backward", "Step Backward", "media-skip-backward"},
    {PausePlay, "Pause", "Pause", "media-playback-pause"},
    {StepForward, "Step Forward", "Step Forward", "media-skip-forward"},
    {PlayOnce, "Play Once", "Play Once", "media-playlist-normal"},
    {PlayRepeat, "Play Repeat", "Play Repeat", "media-playlist-repeat"},
    {PlayFullScreen, "Play Full Screen", "Play Window", "view-fullscreen"},
    {MusicOnOff, "Music On/Off", "Music On/Off", "audio-volume-high", "audio-volume-muted"},
    {SetupMusic, "Setup Music", "", "view-media-playlist"},
};

QIcon IconOf(int number, bool on = true) {
  const ButtonLook& look =
      *std::ranges::find_if(Looks, [&](const ButtonLook& entry) { return entry.Number == number; });
  QIcon icon = QIcon::fromTheme(QLatin1String(on ? look.Icon : look.OffIcon));
  if (number != PlayBackward) return icon;
  // No theme has a picture for playing backward.
  constexpr int LargeEnough = 88;
  return QIcon(icon.pixmap(LargeEnough).transformed(QTransform::fromScale(-1, 1)));
}

}  // namespace

ShowToolbar::ShowToolbar(ShowWindow window, QWidget* parent) : QToolBar(parent) {
  setObjectName(QStringLiteral("tbarShow"));
  setIconSize(QSize(22, 22));
  // What happens on a button, a disabled one too, is no business of the picture behind it.
  setAttribute(Qt::WA_NoMousePropagation);
  MakeButtons(window);
}

void ShowToolbar::MakeButtons(ShowWindow window) {
  int next = PlayBackward;
  for (const ButtonLook& look : Looks) {
    // A number between two buttons is a separator.
    if (look.Number > next) addSeparator();
    next = look.Number + 1;
    QAction* action = addAction(
        IconOf(look.Number), QLatin1String(window == ShowWindow::FullScreen ? look.FullScreenTip : look.Tip));
    action->setObjectName(QStringLiteral("tbarShow(%1)").arg(look.Number));
    widgetForAction(action)->setFocusPolicy(Qt::NoFocus);
    connect(action, &QAction::triggered, this, [this, number = look.Number] { Q_EMIT ButtonClick(number); });
  }
}

QAction& ShowToolbar::Button(int number) const {
  return controls::Get<QAction>(*this, QStringLiteral("tbarShow(%1)").arg(number));
}

void ShowToolbar::SetShowButtons(const ShowSettings& settings) {
  for (const ShowButtonState& state : ShowButtonsFor(settings, Button(StopPlay).isEnabled())) {
    Button(state.Button).setEnabled(state.Enabled);
  }
  Button(MusicOnOff).setIcon(IconOf(MusicOnOff, settings.MusicOn));
}

}  // namespace veldrin::show
