#include "catalogue/fitted_image.h"

#include <QEvent>
#include <algorithm>

#include "platform/failure.h"
#include "platform/twips.h"

namespace veldrin::catalogue {

FittedImage::FittedImage(const QString& name, QWidget& box) : QLabel(&box) {
  setObjectName(name);
  setScaledContents(true);
  box.installEventFilter(this);
  Resized.setSingleShot(true);
  Resized.setInterval(200);  // A window that is drawn larger sends many sizes.
  connect(&Resized, &QTimer::timeout, this, &FittedImage::LoadLarger);
  hide();
}

TwipSize FittedImage::BoxSize() const {
  return {platform::ToTwips(parentWidget()->width()), platform::ToTwips(parentWidget()->height())};
}

void FittedImage::Load(const QString& path) {
  SetPicture(LoadPictureForBox(path, BoxSize(), devicePixelRatioF()), path);
}

void FittedImage::SetPicture(const platform::Picture& picture, const QString& path) {
  FitToBox(picture, BoxSize());  // Refuses a picture without size while the former one is whole.
  Path = path;
  Natural = picture.NaturalPixels();
  setPixmap(QPixmap::fromImage(picture.Image()));
  Place();
}

void FittedImage::Place() {
  const TwipSize box = BoxSize();
  const TwipSize size = FitToBox(platform::Picture({}, Natural), box);
  platform::MoveTwips(*this, Centre(box.Width, size.Width), Centre(box.Height, size.Height), size.Width,
                      size.Height);
}

// Of a picture that is stretched from its natural size there is no more to load. A file that has gone stays
// as it is shown.
void FittedImage::LoadLarger() {
  const int needed = platform::RoundToInt(width() * devicePixelRatioF());
  if (isHidden() || pixmap(Qt::ReturnByValue).width() >= std::min(needed, Natural.width())) return;
  platform::EndSilently([this] { Load(Path); });
}

void FittedImage::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT DblClick(); }

bool FittedImage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && IsLoaded()) {
    Place();
    Resized.start();
  }
  return QLabel::eventFilter(watched, event);
}

}  // namespace veldrin::catalogue
