#include "output/progress_dialog.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "base/units.h"
#include "controls/named.h"

namespace veldrin::output {

using controls::Named;

frmProg::frmProg(WebPages& pages, QWidget* parent)
    : QDialog(parent),
      Pages(pages),
      ProgressBar1(Named(new QProgressBar(this), "ProgressBar1")),
      lblPercent(Named(new QLabel(this), "lblPercent")) {
  setObjectName(QStringLiteral("frmProg"));
  setWindowTitle(QStringLiteral("Generating Report...."));
  setModal(true);
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setTextVisible(false);
  lblPercent->setAlignment(Qt::AlignCenter);
  auto* stop = Named(new QPushButton(QStringLiteral("&Stop"), this), "bttnStop");
  connect(stop, &QPushButton::clicked, this, &frmProg::bttnStop_Click);
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

void frmProg::ShowModal() {
  Form_Load();
  // A window that is covered may not be painted at all.
  constexpr int patience = 500;  // milliseconds
  QTimer::singleShot(patience, this, &frmProg::Form_Activate);
  exec();
}

void frmProg::Form_Load() {
  Progress = true;
  Activated = false;
  SetProgressValue(0);
  SetPercent({});
  ShowProgress();
  Shown.invalidate();
}

// The run keeps the window from painting until its first photo is done, so it begins behind the first
// painting.
void frmProg::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  if (!Activated) QMetaObject::invokeMethod(this, &frmProg::Form_Activate, Qt::QueuedConnection);
}

void frmProg::Form_Activate() {
  if (!isVisible() || std::exchange(Activated, true)) return;
  const QScopedValueRollback<bool> running(Running, true);
  if (WebMode) {
    Pages.MakeWeb(*this);
  } else {
    Pages.MakeReport(*this);
  }
}

bool frmProg::Form_Unload() { return std::exchange(Progress, false); }

void frmProg::Unload() {
  ShowProgress();
  if (!Form_Unload()) QDialog::reject();
}

// Esc and the close box. However often they come, the run is to end first, also one that hasn't begun.
void frmProg::reject() {
  if (Running || !Activated) {
    Progress = false;
  } else {
    Unload();
  }
}

void frmProg::ShowProgress() {
  ProgressBar1->setValue(base::RoundToInt(static_cast<double>(TheValue)));
  lblPercent->setText(Caption);
  Shown.start();
}

// A run may be quicker than any screen: the progress is painted as often as people can see, not for each
// photo.
void frmProg::DoEvents() {
  constexpr qint64 frame = 20;  // milliseconds
  if (!Shown.isValid() || Shown.hasExpired(frame)) ShowProgress();
  QCoreApplication::processEvents();
}

}  // namespace veldrin::output
