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
  /// The box is the parent; the control follows its size, and loads its file again when that has grown beyond
  /// what was decoded. Hidden at first.
  FittedImage(const QString& name, QWidget& box);

  /// Loads a file and takes its place in the middle of the box. Raises what LoadPicture raises, 11 for a
  /// picture without size; the control is as it was then. Does not show it.
  void Load(const QString& path);
  /// The same with a picture that was decoded elsewhere from the file, for a box of BoxSize.
  void SetPicture(const pictures::Picture& picture, const QString& path);
  pictures::TwipSize BoxSize() const;

 Q_SIGNALS:
  void DblClick();

 protected:
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsLoaded() const { return Natural.isValid(); }
  void Place();
  void LoadLarger();

  QString Path;
  QSize Natural;  ///< of the picture, in pixels
  QTimer Resized;
};

}  // namespace veldrin::controls
