#include "catalogue/fitted_image.h"

#include <QEvent>

#include "platform/twips.h"

namespace veldrin::catalogue {

FittedImage::FittedImage(const QString& name, QWidget& box) : QLabel(&box) {
  setObjectName(name);
  setScaledContents(true);
  box.installEventFilter(this);
  hide();
}

TwipSize FittedImage::BoxSize() const {
  return {platform::ToTwips(parentWidget()->width()), platform::ToTwips(parentWidget()->height())};
}

void FittedImage::Load(const QString& path) {
  SetPicture(LoadPictureForBox(path, BoxSize(), devicePixelRatioF()));
}

void FittedImage::SetPicture(const platform::Picture& picture) {
  Shown = picture;
  setPixmap(QPixmap::fromImage(Shown.Image()));
  Place();
}

void FittedImage::Place() {
  const TwipSize box = BoxSize();
  const TwipSize size = FitToBox(Shown, box);
  platform::MoveTwips(*this, Centre(box.Width, size.Width), Centre(box.Height, size.Height), size.Width,
                      size.Height);
}

void FittedImage::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT DblClick(); }

bool FittedImage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && !Shown.IsEmpty()) Place();
  return QLabel::eventFilter(watched, event);
}

}  // namespace veldrin::catalogue
