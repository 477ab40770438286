// The picture show on the whole screen.
#pragma once

#include <QDialog>
#include <QSlider>

#include "show/picture_pair.h"
#include "show/picture_show.h"
#include "show/picture_timer.h"
#include "show/show_toolbar.h"

namespace veldrin::show {

/// A black window without a border, over the screen that the main window is on. Its buttons are seen while
/// the pointer is at the lower edge. To be opened with exec.
class frmPic : public QDialog, private ShowSurface {
  Q_OBJECT

 public:
  /// `ctlSlider`: the slider of the main window, which moves on behind.
  frmPic(const ShowParts& parts, PictureLoader& loader, QSlider& ctlSlider, QWidget& mainWindow);

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowPicture(const QString& file) override { Pictures->Show(file); }
  void PreparePicture(const QString& file) override { Pictures->Prepare(file); }
  void HidePictures() override { Pictures->Hide(); }
  void SetSlider(int value) override { ctlSlider.setValue(value); }
  bool IsEnabled(int button) const override { return tbarShow->Button(button).isEnabled(); }
  void SetShowButtons() override { tbarShow->SetShowButtons(Parts.Settings); }
  void MusicOnChanged() override {}
  void ChangeWindow() override { close(); }
  void ShowAudioDialog() override;

  void CoverScreen(const QWidget& mainWindow);
  void PlaceToolbar();

  ShowParts Parts;
  QSlider& ctlSlider;
  PicturePair* Pictures;
  ShowToolbar* tbarShow;
  PictureTimer* Timer1;
  PictureShow Show;
  bool IsActivated = false;
  int BarTop = 0;  ///< in pixels
};

}  // namespace veldrin::show
