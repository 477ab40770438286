// The dialog inside which pages are written: it tells how far they are, and stops them.
#pragma once

#include <QDialog>
#include <QElapsedTimer>

#include "output/web_pages.h"

class QLabel;
class QProgressBar;

namespace veldrin::output {

/// `frmProg`. Showing it starts the run that its values ask for; the run closes it. Stop, Esc and the close
/// box only ask the run to end.
class frmProg : public QDialog, public ProgressForm {
  Q_OBJECT

 public:
  explicit frmProg(WebPages& pages, QWidget* parent = nullptr);

  /// Returns when the run is over.
  void ShowModal();
  /// What became of the photos of that run.
  const base::WorkReport& Report() const { return Pages.Report(); }

  float ProgressValue() const override { return TheValue; }
  void SetProgressValue(float value) override { TheValue = value; }
  void SetPercent(const QString& caption) override { Caption = caption; }
  void DoEvents() override;
  void Unload() override;

  void reject() override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Form_Load();
  void Form_Activate();
  void ShowProgress();
  /// Whether the unloading is cancelled.
  bool Form_Unload();
  void bttnStop_Click() { Progress = false; }

  WebPages& Pages;
  QProgressBar* ProgressBar1;
  QLabel* lblPercent;
  float TheValue = 0;
  QString Caption;      ///< of lblPercent, which has it a little later
  QElapsedTimer Shown;  ///< since lblPercent had one
  bool Activated = false;
  bool Running = false;
};

}  // namespace veldrin::output
