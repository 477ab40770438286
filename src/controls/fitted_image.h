// An image control that stretches its picture over the place which the fit rule gives it in the control's
// box.
#pragma once

#include <QLabel>
#include <QTimer>

#include "pictures/fit.h"

namespace veldrin::controls {

class FittedImage : public QLabel {
  Q_OBJECT

 public:
  /// The box is the parent; the control follows its size. Hidden at first.
  FittedImage(const QString& name, QWidget& box);

  /// Takes a picture of the file and its place in the middle of the box. Raises 11 for a picture without
  /// size; the control is as it was then. Does not show it.
  void SetPicture(const QString& file, const pictures::Picture& picture);

 Q_SIGNALS:
  void DblClick();
  /// The box has grown beyond what was decoded.
  void Outgrown(const QString& file);

 protected:
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsLoaded() const { return Natural.isValid(); }
  void Place();
  void CheckSize();
  pictures::TwipSize BoxSize() const;

  QString File;
  QSize Natural;  ///< of the picture, in pixels
  QTimer Resized;
};

}  // namespace veldrin::controls
