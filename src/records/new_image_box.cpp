#include "records/new_image_box.h"

#include <QApplication>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>

#include "controls/named.h"
#include "controls/twips.h"
#include "records/control_drag.h"

namespace veldrin::records {

using base::ToTwips;
using controls::Named;
using pictures::TwipSize;

namespace {

constexpr int MultiMargin = 400;  // twips
constexpr int MarkPixels = 22;
constexpr int CrossPixels = 64;
constexpr int DragPixels = 112;
constexpr double DragOpacity = 0.7;  // The folder must show through.

QLabel* MakeMark(QWidget* parent, const QString& icon, int size) {
  auto* mark = new QLabel(parent);
  mark->setPixmap(QIcon::fromTheme(icon).pixmap(QSize(size, size), parent->devicePixelRatioF()));
  mark->setAlignment(Qt::AlignCenter);
  mark->hide();
  return mark;
}

}  // namespace

NewImageBox::NewImageBox(QWidget* parent) : QFrame(parent), ImgNew(Named(new QLabel(this), "ImgNew")) {
  setObjectName(QStringLiteral("picNew"));
  QPalette dark = palette();
  dark.setColor(QPalette::Window, Qt::black);
  setPalette(dark);
  setAutoFillBackground(true);
  ImgNew->setScaledContents(true);
  ImgNew->hide();
  ImageNew = Named(MakeMark(this, QStringLiteral("document-multiple"), MarkPixels), "ImageNew");
  ImageCross = Named(MakeMark(this, QStringLiteral("dialog-error"), CrossPixels), "imageCross");
  // Icons of one colour need a ground of the theme's, not the black one that the mark would take over.
  dark.setColor(QPalette::Window, QApplication::palette().color(QPalette::Window));
  ImageNew->setPalette(dark);
  ImageNew->setAutoFillBackground(true);
  for (QLabel* handle : {ImgNew, ImageNew}) {
    handle->installEventFilter(this);
    handle->setCursor(Qt::OpenHandCursor);
  }
}

TwipSize NewImageBox::Room(bool multi) const {
  const int margin = multi ? MultiMargin : 0;
  return {ToTwips(width()) - margin, ToTwips(height()) - margin};
}

void NewImageBox::ShowImage(const pictures::Picture& picture, bool multi, bool crossed) {
  const TwipSize size = pictures::FitToBox(picture, Room(multi));
  controls::MoveTwips(*ImgNew, pictures::Centre(ToTwips(width()), size.Width),
                      pictures::Centre(ToTwips(height()), size.Height), size.Width, size.Height);
  const double ratio = devicePixelRatioF();
  QPixmap pixmap = QPixmap::fromImage(
      picture.Image().scaled(ImgNew->size() * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(ratio);
  ImgNew->setPixmap(pixmap);
  ImgNew->show();
  ImageNew->setGeometry(width() - MarkPixels - 8, height() - MarkPixels - 8, MarkPixels + 4, MarkPixels + 4);
  ImageNew->setVisible(multi);
  ImageCross->setGeometry((width() - CrossPixels) / 2, (height() - CrossPixels) / 2, CrossPixels,
                          CrossPixels);
  ImageCross->setVisible(crossed);
}

void NewImageBox::HideImage() {
  for (QLabel* part : {ImgNew, ImageNew, ImageCross}) part->hide();
}

// The button down begins the drag as soon as the pointer moves a little, so that a mere click drags nothing.
bool NewImageBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress)
    PressedAt = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
  if (event->type() == QEvent::MouseMove) {
    const auto* move = static_cast<QMouseEvent*>(event);
    const int way = (move->globalPosition().toPoint() - PressedAt).manhattanLength();
    if (move->buttons() != Qt::NoButton && way >= QApplication::startDragDistance()) {
      Drag();
      return true;
    }
  }
  return QFrame::eventFilter(watched, event);
}

void NewImageBox::Drag() {
  const double ratio = devicePixelRatioF();
  const QSize size = ImgNew->size().scaled(DragPixels, DragPixels, Qt::KeepAspectRatio) * ratio;
  QPixmap picture(size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setOpacity(DragOpacity);
  painter.drawPixmap(0, 0, ImgNew->pixmap().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  painter.end();
  picture.setDevicePixelRatio(ratio);
  DragControl(*this, picture);
}

}  // namespace veldrin::records
