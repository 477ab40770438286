// The two images of a show, which take turns, so that no blank frame comes between two pictures.
#pragma once

#include <QObject>
#include <QTimer>

#include "controls/fitted_image.h"
#include "show/picture_loader.h"

namespace veldrin::show {

/// `PictureShow(0)` and `PictureShow(1)`, hidden at first.
class PicturePair : public QObject {
  Q_OBJECT

 public:
  /// The images lie in the box and are fitted into it.
  PicturePair(QWidget& box, PictureLoader& loader);

  /// Raises what is wrong with the file; the picture before it stays then.
  void Show(const QString& file);
  /// Decodes a picture in the background.
  void Prepare(const QString& file);
  bool IsReady() const { return !Resized.isActive() && Loader.IsReady(); }
  void Hide();

 Q_SIGNALS:
  /// What was prepared is ready.
  void Ready();
  void DblClick();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  PictureLoader& Loader;
  QString NextFile;
  QTimer Resized;
  controls::FittedImage* Images[2];
  int ShowImageIndex = 0;  ///< which image receives the next picture
};

}  // namespace veldrin::show
