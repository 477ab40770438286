#include "records/control_drag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

namespace veldrin::records {

namespace {

// With the process's number: a drag from another user's window of this program means nothing here.
QString DragFormat() {
  return QStringLiteral("application/x-veldrin-control-%1").arg(QCoreApplication::applicationPid());
}

}  // namespace

std::unique_ptr<QMimeData> MakeControlDrag(const QWidget& source) {
  auto data = std::make_unique<QMimeData>();
  data->setData(DragFormat(), source.objectName().toUtf8());
  return data;
}

QString DraggedControl(const QMimeData& data) { return QString::fromUtf8(data.data(DragFormat())); }

void DragControl(QWidget& source, const QPixmap& picture) {
  auto* drag = new QDrag(&source);  // It deletes itself when it has ended.
  drag->setMimeData(MakeControlDrag(source).release());
  drag->setPixmap(picture);
  const QSize size = picture.size() / picture.devicePixelRatio();
  drag->setHotSpot(QPoint(size.width() / 2, size.height() / 2));
  drag->exec(Qt::CopyAction);
}

DropTarget::DropTarget(QWidget* parent) : QLabel(parent) {
  setAcceptDrops(true);
  setAlignment(Qt::AlignCenter);
}

void DropTarget::SetHovered(bool hovered) {
  Hovered = hovered;
  update();
}

void DropTarget::dragEnterEvent(QDragEnterEvent* event) {
  if (DraggedControl(*event->mimeData()).isEmpty()) return event->ignore();
  event->acceptProposedAction();
  SetHovered(true);
}

void DropTarget::dragLeaveEvent(QDragLeaveEvent*) { SetHovered(false); }

void DropTarget::dropEvent(QDropEvent* event) {
  SetHovered(false);
  const QString source = DraggedControl(*event->mimeData());
  if (source.isEmpty()) return event->ignore();
  event->acceptProposedAction();
  Q_EMIT DragDrop(source);
}

void DropTarget::paintEvent(QPaintEvent* event) {
  if (Hovered) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor light = palette().color(QPalette::Highlight);
    painter.setPen(QPen(light, 2));
    light.setAlpha(48);
    painter.setBrush(light);
    painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 6, 6);
  }
  QLabel::paintEvent(event);
}

}  // namespace veldrin::records
