#include "show/full_screen_show.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <utility>

namespace veldrin::show {

frmPic::frmPic(const ShowParts& parts, pictures::PictureCache& cache, QSlider& ctlSlider, QWidget& mainWindow)
    : QDialog(&mainWindow, Qt::Dialog | Qt::FramelessWindowHint),
      Stage(new ShowStage(parts, ShowWindow::FullScreen, cache, ctlSlider, *this, *this)) {
  setObjectName(QStringLiteral("frmPic"));
  setMouseTracking(true);
  Stage->Toolbar().setAutoFillBackground(true);
  Stage->Toolbar().hide();
  if (!parts.TheMusic.HasSoundCard()) Stage->Toolbar().Button(MusicOnOff).setEnabled(false);
  CoverScreen(mainWindow);
  connect(Stage, &ShowStage::DblClick, this, &frmPic::close);
  connect(Stage, &ShowStage::WindowChanged, this, &frmPic::close);
}

void frmPic::CoverScreen(const QWidget& mainWindow) {
  setScreen(mainWindow.screen());
  setGeometry(mainWindow.screen()->geometry());
  setWindowState(windowState() | Qt::WindowFullScreen);
}

void frmPic::PlaceToolbar() {
  ShowToolbar& tbarShow = Stage->Toolbar();
  const QSize size = tbarShow.sizeHint();
  BarTop = height() - 2 * size.height();
  tbarShow.setGeometry((width() - size.width()) / 2, BarTop, size.width(), size.height());
}

void frmPic::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  PlaceToolbar();
}

void frmPic::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  PlaceToolbar();
  if (!std::exchange(IsActivated, true)) Stage->Show().TakeUp();
}

// Not by the palette, which the buttons would inherit.
void frmPic::paintEvent(QPaintEvent* event) { QPainter(this).fillRect(event->rect(), Qt::black); }

void frmPic::mouseMoveEvent(QMouseEvent* event) {
  Stage->Toolbar().setVisible(event->position().y() >= BarTop);
}

void frmPic::mouseDoubleClickEvent(QMouseEvent*) { close(); }

void frmPic::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) close();
  // A key that is held down doesn't walk back through the list.
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) Stage->Show().tbarShow_ButtonClick(PausePlay);
}

void frmPic::closeEvent(QCloseEvent* event) {
  Stage->Show().DisableTimer();
  QDialog::closeEvent(event);
}

}  // namespace veldrin::show
