// The small window that tells how far a long work is, and stops it.
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

namespace veldrin::controls {

/// "8.333333%": what the bar holds, from 0 to 100, as a number of single precision prints.
QString PercentText(float value);

/// `frmProg`. Stop, Esc and the close box only ask the work to end; the window goes with its owner.
class ProgressWindow : public QDialog {
  Q_OBJECT

 public:
  ProgressWindow(const QString& caption, QWidget* parent);

  void SetValue(float value);
  void SetPercent(const QString& caption);

  void reject() override { Q_EMIT Stop(); }

 Q_SIGNALS:
  void Stop();

 private:
  QProgressBar* ProgressBar1;
  QLabel* lblPercent;
};

}  // namespace veldrin::controls
