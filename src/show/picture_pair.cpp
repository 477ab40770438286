#include "show/picture_pair.h"

#include <QEvent>

namespace veldrin::show {

using controls::FittedImage;

PicturePair::PicturePair(QWidget& box, pictures::PictureCache& cache)
    : QObject(&box),
      Loader(new controls::PictureLoader(cache, box)),
      Images{new FittedImage(QStringLiteral("PictureShow(0)"), box),
             new FittedImage(QStringLiteral("PictureShow(1)"), box)} {
  for (FittedImage* image : Images) {
    image->setMouseTracking(true);
    connect(image, &FittedImage::DblClick, this, &PicturePair::DblClick);
    connect(image, &FittedImage::Outgrown, this, &PicturePair::Show);
  }
  connect(Loader, &controls::PictureLoader::Loaded, this, &PicturePair::Take);
  connect(Loader, &controls::PictureLoader::Idle, this, &PicturePair::Ready);
  box.installEventFilter(this);
  Resized.setSingleShot(true);
  Resized.setInterval(200);  // A window that is drawn larger sends many sizes.
  connect(&Resized, &QTimer::timeout, this, [this] {
    Prepare(NextFile);
    if (IsReady()) Q_EMIT Ready();
  });
}

void PicturePair::Take(const QString& file, const pictures::Picture& picture) {
  if (picture.IsEmpty()) return;
  FittedImage& next = *Images[ShowImageIndex];
  next.SetPicture(file, picture);
  next.show();
  ShowImageIndex = (ShowImageIndex + 1) & 1;
  Images[ShowImageIndex]->hide();
  Q_EMIT Shown();
}

void PicturePair::Prepare(const QString& file) {
  NextFile = file;
  Resized.stop();
  Loader->Prepare(file);
}

void PicturePair::Hide() {
  Loader->Load({});
  for (FittedImage* image : Images) image->hide();
}

// A box of another size needs another picture.
bool PicturePair::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && !NextFile.isEmpty()) Resized.start();
  return QObject::eventFilter(watched, event);
}

}  // namespace veldrin::show
