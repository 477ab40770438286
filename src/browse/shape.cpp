#include "browse/shape.h"

#include <QPainter>
#include <algorithm>

namespace veldrin::browse {

Shape::Shape(int borderWidth, int margin, QColor color, QWidget* parent)
    : QWidget(parent), Outer(std::min(borderWidth / 2, margin)), Color(color) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void Shape::SetBorderColor(QColor color) {
  Color = color;
  update();
}

void Shape::Surround(const QWidget& control) {
  setGeometry(control.geometry().adjusted(-Outer, -Outer, Outer, Outer));
}

void Shape::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Color);
  painter.drawRoundedRect(rect(), 3, 3);
}

}  // namespace veldrin::browse
