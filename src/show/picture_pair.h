// The two images of a show, which take turns, so that no blank frame comes between two pictures.
#pragma once

#include <QObject>
#include <QTimer>

#include "controls/fitted_image.h"
#include "controls/picture_loader.h"

namespace veldrin::show {

/// `PictureShow(0)` and `PictureShow(1)`, hidden at first.
class PicturePair : public QObject {
  Q_OBJECT

 public:
  /// The images lie in the box and are fitted into it.
  PicturePair(QWidget& box, pictures::PictureCache& cache);

  /// The picture before it stays until this one is decoded, or for good when it can't be.
  void Show(const QString& file) { Loader->Load(file); }
  /// Decodes a picture in the background.
  void Prepare(const QString& file);
  bool IsReady() const { return !Resized.isActive() && Loader->IsIdle(); }
  void Hide();

 Q_SIGNALS:
  /// What was prepared is ready.
  void Ready();
  /// A picture has come to stand on the screen.
  void Shown();
  void DblClick();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Take(const QString& file, const pictures::Picture& picture);

  controls::PictureLoader* Loader;
  QString NextFile;
  QTimer Resized;
  controls::FittedImage* Images[2];
  int ShowImageIndex = 0;  ///< which image receives the next picture
};

}  // namespace veldrin::show
