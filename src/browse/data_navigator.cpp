#include "browse/data_navigator.h"

#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "controls/navigator.h"

namespace veldrin::browse {

namespace {

constexpr int ButtonWidth = 17;  // pixels

}  // namespace

DataNavigator::DataNavigator(catalogue::RecordList& data1, QWidget* parent) : QWidget(parent), Data1(data1) {
  setObjectName(QStringLiteral("Data1"));
  const controls::NavigatorStep<DataNavigator> steps[] = {
      {"", "First Record", &DataNavigator::First_Click},
      {"", "Previous Record", &DataNavigator::Previous_Click},
      {"", "Next Record", &DataNavigator::Next_Click},
      {"", "Last Record", &DataNavigator::Last_Click}};
  Buttons = controls::MakeNavigator<QToolButton>(*this, *this, steps);
  for (QToolButton* button : Buttons) {
    button->setIconSize(QSize(12, 12));
    button->setAutoRaise(true);
    button->setAutoRepeat(true);
  }
}

void DataNavigator::SetCaption(const QString& caption) {
  TheCaption = caption;
  update();
}

QRect DataNavigator::CaptionRect() const {
  return rect().adjusted(2 * ButtonWidth + 1, 1, -2 * ButtonWidth - 1, -1);
}

void DataNavigator::resizeEvent(QResizeEvent*) {
  const int right = width() - 1;
  const int lefts[] = {1, 1 + ButtonWidth, right - 2 * ButtonWidth, right - ButtonWidth};
  for (int i = 0; i < 4; ++i) Buttons[i]->setGeometry(lefts[i], 1, ButtonWidth, height() - 2);
}

void DataNavigator::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.setPen(palette().color(QPalette::Text));
  // Large counts are drawn smaller rather than cut off.
  const QString shown = TheCaption.trimmed();
  QFont small = font();
  const int needed = QFontMetrics(small).horizontalAdvance(shown);
  if (needed > CaptionRect().width()) {
    small.setPointSizeF(std::max(5.0, small.pointSizeF() * CaptionRect().width() / needed));
  }
  painter.setFont(small);
  painter.drawText(CaptionRect(), Qt::AlignCenter | Qt::TextSingleLine, shown);
}

}  // namespace veldrin::browse
