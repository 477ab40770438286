#include "show/image_play.h"

#include <QMouseEvent>
#include <algorithm>

#include "controls/named.h"
#include "controls/panel_size.h"
#include "controls/twips.h"
#include "show/full_screen_show.h"

namespace veldrin::show {

using controls::MoveTwips;
using controls::Named;

namespace {

constexpr int PlayLeft = 120;
constexpr int PlayWidth = 12135;
constexpr int ScreenTop = 420;
// What lies below the pictures keeps its distance from the lower edge.
constexpr int BelowScreen = controls::PanelHeight - 8640;
constexpr int SliderFromEdge = controls::PanelHeight - 8730;
constexpr int ToolbarFromEdge = controls::PanelHeight - 9120;
constexpr int LeastScreenHeight = 1500;

}  // namespace

ImagePlay::ImagePlay(const ShowParts& parts, pictures::PictureCache& cache, QWidget* parent)
    : QWidget(parent),
      Parts(parts),
      Cache(cache),
      lblShow(Named(new QLabel(QStringLiteral("Photo Image Show"), this), "lblShow")),
      picScreen(Named(new QWidget(this), "picScreen")),
      Slider(Named(new QSlider(Qt::Horizontal, this), "Slider1")),
      Stage(new ShowStage(parts, ShowWindow::Main, Cache, *Slider, *picScreen, *this)) {
  MakeControls();
  PlaceControls();
  SetShowButtons();
  Slider->installEventFilter(this);
  connect(Slider, &QSlider::actionTriggered, this, &ImagePlay::Slider1_Action);
  // Of an empty list it keeps the range.
  connect(&Parts.Data1, &catalogue::RecordList::Refreshed, this, [this] {
    if (Parts.Data1.RecordCount() > 0) Slider->setMaximum(Parts.Data1.RecordCount());
  });
  connect(Stage, &ShowStage::WindowChanged, this, &ImagePlay::PlayFullScreen);
  connect(Stage, &ShowStage::MusicSwitched, this, &ImagePlay::MusicSwitched);
}

void ImagePlay::MakeControls() {
  setObjectName(QStringLiteral("TabPannel(3)"));
  lblShow->setAlignment(Qt::AlignCenter);
  picScreen->setAutoFillBackground(true);
  picScreen->setPalette(QPalette(Qt::black));
}

void ImagePlay::PlaceControls() {
  const int bottom = std::max(base::ToTwips(height()), ScreenTop + LeastScreenHeight + BelowScreen);
  MoveTwips(*lblShow, PlayLeft, 60, PlayWidth, 300);
  MoveTwips(*picScreen, PlayLeft, ScreenTop, PlayWidth, bottom - BelowScreen - ScreenTop);
  MoveTwips(*Slider, PlayLeft, bottom - SliderFromEdge, PlayWidth, 360);
  ShowToolbar& tbarShow = Stage->Toolbar();
  const int width = base::ToTwips(tbarShow.sizeHint().width());
  MoveTwips(tbarShow, PlayLeft + pictures::Centre(PlayWidth, width), bottom - ToolbarFromEdge, width, 585);
}

void ImagePlay::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceControls();
}

bool ImagePlay::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed =
      event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (pressed) {
    SliderHeld = true;
    TheShow().Slider1_MouseDown();
  }
  if (event->type() == QEvent::MouseButtonRelease) {
    SliderHeld = false;
    // The slider takes its last value first.
    watched->event(event);
    TheShow().Slider1_MouseUp(Slider->value());
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

// By keys and wheel. What the slider shows may be a record apart from the list: only the way counts.
void ImagePlay::Slider1_Action() {
  if (!SliderHeld) TheShow().MoveBy(Slider->sliderPosition() - Slider->value());
}

void ImagePlay::PlayFullScreen() {
  Stage->GiveUpPreparation();
  frmPic(Parts, Cache, *Slider, *window()).exec();
  Stage->HidePictures();
  Q_EMIT MusicSwitched();
  TheShow().TakeUp();
}

}  // namespace veldrin::show
