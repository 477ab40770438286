#include "show/image_play.h"

#include <QMouseEvent>
#include <algorithm>

#include "platform/panel_size.h"
#include "platform/twips.h"
#include "show/audio_dialog.h"
#include "show/full_screen_show.h"

namespace veldrin::show {

using platform::MoveTwips;

namespace {

constexpr int PlayLeft = 120;
constexpr int PlayWidth = 12135;
constexpr int ScreenTop = 420;
// What lies below the pictures keeps its distance from the lower edge.
constexpr int BelowScreen = platform::PanelHeight - 8640;
constexpr int SliderFromEdge = platform::PanelHeight - 8730;
constexpr int ToolbarFromEdge = platform::PanelHeight - 9120;
constexpr int LeastScreenHeight = 1500;

}  // namespace

ImagePlay::ImagePlay(const ShowParts& parts, QWidget* parent)
    : QWidget(parent),
      Parts(parts),
      lblShow(new QLabel(QStringLiteral("Photo Image Show"), this)),
      picScreen(new QWidget(this)),
      Pictures(new PicturePair(*picScreen, Loader)),
      Slider(new QSlider(Qt::Horizontal, this)),
      tbarShow(new ShowToolbar(ShowWindow::Main, this)),
      Timer1(new PictureTimer(
          parts.Interval, [this] { return Pictures->IsReady(); }, this)),
      Show(parts, *this, *Timer1, ShowWindow::Main) {
  MakeControls();
  PlaceControls();
  ImagePlay::SetShowButtons();
  Slider->installEventFilter(this);
  connect(tbarShow, &ShowToolbar::ButtonClick, this, &ImagePlay::tbarShow_ButtonClick);
  connect(Pictures, &PicturePair::Ready, Timer1, &PictureTimer::PictureReady);
  connect(Timer1, &PictureTimer::Timer, this, [this] { Show.Timer1_Timer(); });
  connect(&Parts.Data1, &catalogue::RecordList::Refreshed, this, [this] { Show.ListChanged(); });
}

void ImagePlay::MakeControls() {
  setObjectName(QStringLiteral("TabPannel(3)"));
  lblShow->setObjectName(QStringLiteral("lblShow"));
  lblShow->setAlignment(Qt::AlignCenter);
  picScreen->setObjectName(QStringLiteral("picScreen"));
  picScreen->setAutoFillBackground(true);
  picScreen->setPalette(QPalette(Qt::black));
  Slider->setObjectName(QStringLiteral("Slider1"));
}

void ImagePlay::PlaceControls() {
  const int bottom = std::max(platform::ToTwips(height()), ScreenTop + LeastScreenHeight + BelowScreen);
  MoveTwips(*lblShow, PlayLeft, 60, PlayWidth, 300);
  MoveTwips(*picScreen, PlayLeft, ScreenTop, PlayWidth, bottom - BelowScreen - ScreenTop);
  MoveTwips(*Slider, PlayLeft, bottom - SliderFromEdge, PlayWidth, 360);
  const int width = platform::ToTwips(tbarShow->sizeHint().width());
  MoveTwips(*tbarShow, PlayLeft + catalogue::Centre(PlayWidth, width), bottom - ToolbarFromEdge, width, 585);
}

void ImagePlay::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceControls();
}

void ImagePlay::SetShowButtons() { tbarShow->SetShowButtons(Parts.Settings); }

bool ImagePlay::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed =
      event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (pressed) Show.Slider1_MouseDown();
  if (event->type() == QEvent::MouseButtonRelease) {
    // The slider takes its last value first.
    watched->event(event);
    Show.Slider1_MouseUp(Slider->value());
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ImagePlay::ChangeWindow() {
  // What comes next is for the other window to prepare.
  Pictures->Prepare({});
  frmPic(Parts, Loader, *Slider, *window()).exec();
  Pictures->Hide();
  Q_EMIT MusicSwitched();
  Show.TakeUp();
}

void ImagePlay::ShowAudioDialog() {
  frmAudio(Parts.Data1, Parts.TheMusic.MusicList(), Parts.TheMusic.MusicDir(), window()).exec();
}

}  // namespace veldrin::show
