#include "controls/fitted_image.h"

#include <QEvent>
#include <algorithm>

#include "base/failure.h"
#include "controls/twips.h"

namespace veldrin::controls {

FittedImage::FittedImage(const QString& name, QWidget& box) : QLabel(&box) {
  setObjectName(name);
  setScaledContents(true);
  box.installEventFilter(this);
  Resized.setSingleShot(true);
  Resized.setInterval(200);  // A window that is drawn larger sends many sizes.
  connect(&Resized, &QTimer::timeout, this, &FittedImage::LoadLarger);
  hide();
}

pictures::TwipSize FittedImage::BoxSize() const {
  return {base::ToTwips(parentWidget()->width()), base::ToTwips(parentWidget()->height())};
}

void FittedImage::Load(const QString& path) {
  SetPicture(pictures::LoadPictureForBox(path, BoxSize(), devicePixelRatioF()), path);
}

void FittedImage::SetPicture(const pictures::Picture& picture, const QString& path) {
  pictures::FitToBox(picture, BoxSize());  // Refuses a picture without size while the former one is whole.
  Path = path;
  Natural = picture.NaturalPixels();
  setPixmap(QPixmap::fromImage(picture.Image()));
  Place();
}

void FittedImage::Place() {
  const pictures::TwipSize box = BoxSize();
  const pictures::TwipSize size = pictures::FitToBox(pictures::Picture({}, Natural), box);
  MoveTwips(*this, pictures::Centre(box.Width, size.Width), pictures::Centre(box.Height, size.Height),
            size.Width, size.Height);
}

// Of a picture that is stretched from its natural size there is no more to load. A file that has gone stays
// as it is shown.
void FittedImage::LoadLarger() {
  const int needed = base::RoundToInt(width() * devicePixelRatioF());
  if (isHidden() || pixmap(Qt::ReturnByValue).width() >= std::min(needed, Natural.width())) return;
  base::EndSilently([this] { Load(Path); });
}

void FittedImage::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT DblClick(); }

bool FittedImage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && IsLoaded()) {
    Place();
    Resized.start();
  }
  return QLabel::eventFilter(watched, event);
}

}  // namespace veldrin::controls
