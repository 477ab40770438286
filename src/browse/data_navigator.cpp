#include "browse/data_navigator.h"

#include <QIcon>
#include <QPainter>
#include <algorithm>

#include "base/failure.h"

namespace veldrin::browse {

namespace {

constexpr int ButtonWidth = 17;  // pixels

}  // namespace

DataNavigator::DataNavigator(catalogue::RecordList& data1, QWidget* parent)
    : QWidget(parent),
      Data1(data1),
      First(MakeButton("go-first", QStringLiteral("First Record"))),
      Previous(MakeButton("go-previous", QStringLiteral("Previous Record"))),
      Next(MakeButton("go-next", QStringLiteral("Next Record"))),
      Last(MakeButton("go-last", QStringLiteral("Last Record"))) {
  setObjectName(QStringLiteral("Data1"));
  connect(First, &QToolButton::clicked, this, [this] { Step(0); });
  connect(Previous, &QToolButton::clicked, this, [this] { Step(Data1.AbsolutePosition() - 1); });
  connect(Next, &QToolButton::clicked, this, [this] { Step(Data1.AbsolutePosition() + 1); });
  connect(Last, &QToolButton::clicked, this, [this] { Step(Data1.RecordCount() - 1); });
}

QToolButton* DataNavigator::MakeButton(const char* icon, const QString& tip) {
  auto* button = new QToolButton(this);
  button->setIcon(QIcon::fromTheme(QLatin1String(icon)));
  button->setIconSize(QSize(12, 12));
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setAutoRepeat(true);
  return button;
}

// Past either end of the list there is nowhere to go.
void DataNavigator::Step(int position) {
  base::ResumeNext([&] { Data1.SetAbsolutePosition(position); });
}

void DataNavigator::SetCaption(const QString& caption) {
  TheCaption = caption;
  update();
}

QRect DataNavigator::CaptionRect() const {
  return rect().adjusted(2 * ButtonWidth + 1, 1, -2 * ButtonWidth - 1, -1);
}

void DataNavigator::resizeEvent(QResizeEvent*) {
  First->setGeometry(1, 1, ButtonWidth, height() - 2);
  Previous->setGeometry(1 + ButtonWidth, 1, ButtonWidth, height() - 2);
  Next->setGeometry(width() - 1 - 2 * ButtonWidth, 1, ButtonWidth, height() - 2);
  Last->setGeometry(width() - 1 - ButtonWidth, 1, ButtonWidth, height() - 2);
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
