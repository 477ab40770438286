#include "controls/progress_window.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/units.h"
#include "controls/named.h"

namespace veldrin::controls {

QString PercentText(float value) {
  constexpr int digits = 7;
  return QString::number(static_cast<double>(value), 'g', digits) + QLatin1Char('%');
}

ProgressWindow::ProgressWindow(const QString& caption, QWidget* parent)
    : QDialog(parent),
      ProgressBar1(Named(new QProgressBar(this), "ProgressBar1")),
      lblPercent(Named(new QLabel(this), "lblPercent")) {
  setObjectName(QStringLiteral("frmProg"));
  setWindowTitle(caption);
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setTextVisible(false);
  lblPercent->setAlignment(Qt::AlignCenter);
  auto* stop = Named(new QPushButton(QStringLiteral("&Stop"), this), "bttnStop");
  // The Enter that began the work, held a little longer, must not end it.
  stop->setAutoDefault(false);
  connect(stop, &QPushButton::clicked, this, &ProgressWindow::Stop);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(20, 16, 20, 16);
  column->setSpacing(8);
  column->addWidget(lblPercent);
  column->addWidget(ProgressBar1);
  column->addSpacing(6);
  column->addWidget(stop, 0, Qt::AlignHCenter);
  // Of fixed sizes, so that a text that changes with every photo costs no new layout.
  constexpr int width = 320;
  lblPercent->setFixedSize(width, lblPercent->fontMetrics().height());
  ProgressBar1->setFixedWidth(width);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void ProgressWindow::SetValue(float value) {
  ProgressBar1->setValue(base::RoundToInt(static_cast<double>(value)));
}

void ProgressWindow::SetPercent(const QString& caption) { lblPercent->setText(caption); }

}  // namespace veldrin::controls
