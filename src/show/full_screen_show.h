// The picture show on the whole screen.
#pragma once

#include <QDialog>
#include <QSlider>

#include "show/show_stage.h"

namespace veldrin::show {

/// A black window without a border, over the screen that the main window is on. Its buttons are seen while
/// the pointer is at the lower edge. To be opened with exec.
class frmPic : public QDialog {
  Q_OBJECT

 public:
  /// `ctlSlider`: the slider of the main window, which moves on behind.
  frmPic(const ShowParts& parts, pictures::PictureCache& cache, QSlider& ctlSlider, QWidget& mainWindow);

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void CoverScreen(const QWidget& mainWindow);
  void PlaceToolbar();

  ShowStage* Stage;
  bool IsActivated = false;
  int BarTop = 0;  ///< in pixels
};

}  // namespace veldrin::show
