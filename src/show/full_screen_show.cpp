#include "show/full_screen_show.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <utility>

#include "show/audio_dialog.h"

namespace veldrin::show {

frmPic::frmPic(const ShowParts& parts, PictureLoader& loader, QSlider& slider, QWidget& mainWindow)
    : QDialog(&mainWindow, Qt::Dialog | Qt::FramelessWindowHint),
      Parts(parts),
      ctlSlider(slider),
      Pictures(new PicturePair(*this, loader)),
      tbarShow(new ShowToolbar(ShowWindow::FullScreen, this)),
      Timer1(new PictureTimer(
          parts.Interval, [this] { return Pictures->IsReady(); }, this)),
      Show(parts, *this, *Timer1, ShowWindow::FullScreen) {
  setObjectName(QStringLiteral("frmPic"));
  setMouseTracking(true);
  tbarShow->setAutoFillBackground(true);
  tbarShow->hide();
  if (!Parts.TheMusic.HasSoundCard()) tbarShow->Button(MusicOnOff).setEnabled(false);
  CoverScreen(mainWindow);
  connect(Pictures, &PicturePair::DblClick, this, &frmPic::close);
  connect(tbarShow, &ShowToolbar::ButtonClick, this,
          [this](int button) { Show.tbarShow_ButtonClick(button); });
  connect(Pictures, &PicturePair::Ready, Timer1, &PictureTimer::PictureReady);
  connect(Timer1, &PictureTimer::Timer, this, [this] { Show.Timer1_Timer(); });
  connect(&Parts.Data1, &catalogue::RecordList::Refreshed, this, [this] { Show.ListChanged(); });
}

void frmPic::CoverScreen(const QWidget& mainWindow) {
  setScreen(mainWindow.screen());
  setGeometry(mainWindow.screen()->geometry());
  setWindowState(windowState() | Qt::WindowFullScreen);
}

void frmPic::PlaceToolbar() {
  const QSize size = tbarShow->sizeHint();
  BarTop = height() - 2 * size.height();
  tbarShow->setGeometry((width() - size.width()) / 2, BarTop, size.width(), size.height());
}

void frmPic::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  PlaceToolbar();
}

void frmPic::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  PlaceToolbar();
  if (!std::exchange(IsActivated, true)) Show.TakeUp();
}

// Not by the palette, which the buttons would inherit.
void frmPic::paintEvent(QPaintEvent* event) { QPainter(this).fillRect(event->rect(), Qt::black); }

void frmPic::mouseMoveEvent(QMouseEvent* event) { tbarShow->setVisible(event->position().y() >= BarTop); }

void frmPic::mouseDoubleClickEvent(QMouseEvent*) { close(); }

void frmPic::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) close();
  // A key that is held down doesn't walk back through the list.
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) Show.tbarShow_ButtonClick(PausePlay);
}

void frmPic::closeEvent(QCloseEvent* event) {
  Show.DisableTimer();
  QDialog::closeEvent(event);
}

void frmPic::ShowAudioDialog() {
  frmAudio(Parts.Data1, Parts.TheMusic.MusicList(), Parts.TheMusic.MusicDir(), this).exec();
}

}  // namespace veldrin::show
