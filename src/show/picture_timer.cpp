#include "show/picture_timer.h"

namespace veldrin::show {

PictureTimer::PictureTimer(const PicturePair& pictures, QObject* parent, int interval)
    : QObject(parent), Pictures(pictures), Clock(new QTimer(this)) {
  Clock->setObjectName(QStringLiteral("Timer1"));
  Clock->setInterval(interval);
  Clock->setSingleShot(true);
  Clock->setTimerType(Qt::PreciseTimer);
  connect(Clock, &QTimer::timeout, this, &PictureTimer::Elapsed);
  connect(&Pictures, &PicturePair::Ready, this, &PictureTimer::PictureReady);
}

void PictureTimer::SetEnabled(bool enabled) {
  IsDue = false;
  if (enabled) {
    Clock->start();
  } else {
    Clock->stop();
  }
}

void PictureTimer::Elapsed() {
  IsDue = !Pictures.IsReady();
  if (!IsDue) Q_EMIT Timer();
}

void PictureTimer::PictureReady() {
  if (IsDue && Pictures.IsReady()) {
    IsDue = false;
    Q_EMIT Timer();
  }
}

}  // namespace veldrin::show
