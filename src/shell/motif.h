// The program's picture, drawn at any size: a lake below mountains, and the same as a print on a stack of
// prints.
#pragma once

#include <QIcon>
#include <QPainter>
#include <QRectF>
#include <QWidget>

namespace veldrin::shell {

/// Fills the area.
void PaintLandscape(QPainter& painter, const QRectF& area);
/// Needs a square.
void PaintPrints(QPainter& painter, const QRectF& area);

/// PaintPrints in the sizes that windows ask for.
QIcon ProgramIcon();

/// A control that shows one of the two and tells of clicks.
class MotifBox : public QWidget {
  Q_OBJECT

 public:
  using Painting = void (*)(QPainter&, const QRectF&);

  MotifBox(Painting painting, QWidget* parent) : QWidget(parent), Paint(painting) {}

 Q_SIGNALS:
  void Click();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Painting Paint;
};

}  // namespace veldrin::shell
