#include "show/picture_pair.h"

#include <QEvent>

namespace veldrin::show {

using controls::FittedImage;

PicturePair::PicturePair(QWidget& box, PictureLoader& loader)
    : QObject(&box),
      Loader(loader),
      Images{new FittedImage(QStringLiteral("PictureShow(0)"), box),
             new FittedImage(QStringLiteral("PictureShow(1)"), box)} {
  for (FittedImage* image : Images) {
    image->setMouseTracking(true);
    connect(image, &FittedImage::DblClick, this, &PicturePair::DblClick);
  }
  connect(&Loader, &PictureLoader::Ready, this, &PicturePair::Ready);
  box.installEventFilter(this);
  Resized.setSingleShot(true);
  Resized.setInterval(200);  // A window that is drawn larger sends many sizes.
  connect(&Resized, &QTimer::timeout, this, [this] {
    Prepare(NextFile);
    if (IsReady()) Q_EMIT Ready();
  });
}

void PicturePair::Show(const QString& file) {
  FittedImage& next = *Images[ShowImageIndex];
  next.SetPicture(Loader.Load(file, next.BoxSize(), next.devicePixelRatioF()), file);
  next.show();
  ShowImageIndex = (ShowImageIndex + 1) & 1;
  Images[ShowImageIndex]->hide();
}

void PicturePair::Prepare(const QString& file) {
  NextFile = file;
  Resized.stop();
  Loader.Prepare(file, Images[0]->BoxSize(), Images[0]->devicePixelRatioF());
}

void PicturePair::Hide() {
  for (FittedImage* image : Images) image->hide();
}

// A box of another size needs another picture.
bool PicturePair::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && !NextFile.isEmpty()) Resized.start();
  return QObject::eventFilter(watched, event);
}

}  // namespace veldrin::show
