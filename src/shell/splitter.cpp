#include "shell/splitter.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "controls/named.h"
#include "controls/twips.h"
#include "shell/layout.h"

namespace veldrin::shell {

using base::ToTwips;
using controls::MoveTwips;

namespace {

// Wider than the gap of the panes, so that it is easy to hit; it lies over their edges.
constexpr int GripWidth = 90;  // twips
constexpr int BarWidth = GripWidth / 2;

}  // namespace

Splitter::Splitter(QWidget* window, std::function<void(float)> arrange)
    : QAbstractButton(window),
      Arrange(std::move(arrange)),
      picSplitter(controls::Named(new QWidget(window), "picSplitter")) {
  setObjectName(QStringLiteral("bttnSplitter"));
  setCursor(Qt::SplitHCursor);
  setFocusPolicy(Qt::NoFocus);
  picSplitter->setAutoFillBackground(true);
  picSplitter->setPalette(QPalette(QColor(0x60, 0x60, 0x60)));
  picSplitter->hide();
}

void Splitter::Place(double left, double top, double height) {
  TheLeft = left;
  MoveTwips(*this, left, top, GripWidth, height);
  raise();
}

void Splitter::mousePressEvent(QMouseEvent*) {
  BarLeft = TheLeft;
  const int top = ToTwips(y());
  MoveTwips(*picSplitter, BarLeft, top, BarWidth, ToTwips(height()) - DragBarShrink);
  picSplitter->raise();
  picSplitter->show();
  SplitterDown = true;
}

void Splitter::mouseMoveEvent(QMouseEvent* event) {
  if (!SplitterDown) return;
  BarLeft = DragBarLeft(TheLeft + ToTwips(event->pos().x()), ToTwips(parentWidget()->width()));
  picSplitter->move(base::ToPixels(BarLeft), picSplitter->y());
}

void Splitter::mouseReleaseEvent(QMouseEvent*) {
  if (!SplitterDown) return;
  Arrange(static_cast<float>(BarLeft));
  picSplitter->hide();
  SplitterDown = false;
}

void Splitter::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Window));
  painter.fillRect(QRect(width() / 2, 0, 1, height()), palette().color(QPalette::Mid));
}

}  // namespace veldrin::shell
