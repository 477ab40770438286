#include "controls/fitted_image.h"

#include <QEvent>
#include <algorithm>

#include "controls/twips.h"

namespace veldrin::controls {

FittedImage::FittedImage(const QString& name, QWidget& box) : QLabel(&box) {
  setObjectName(name);
  setScaledContents(true);
  box.installEventFilter(this);
  Resized.setSingleShot(true);
  Resized.setInterval(200);  // A window that is drawn larger sends many sizes.
  connect(&Resized, &QTimer::timeout, this, &FittedImage::CheckSize);
  hide();
}

pictures::TwipSize FittedImage::BoxSize() const {
  return {base::ToTwips(parentWidget()->width()), base::ToTwips(parentWidget()->height())};
}

void FittedImage::SetPicture(const QString& file, const pictures::Picture& picture) {
  pictures::FitToBox(picture, BoxSize());  // Refuses a picture without size while the former one is whole.
  File = file;
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

// Of a picture that is stretched from its natural size there is no more to load.
void FittedImage::CheckSize() {
  const int needed = base::RoundToInt(width() * devicePixelRatioF());
  if (!isHidden() && pixmap(Qt::ReturnByValue).width() < std::min(needed, Natural.width()))
    Q_EMIT Outgrown(File);
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
