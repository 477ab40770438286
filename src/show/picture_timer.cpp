#include "show/picture_timer.h"

#include <utility>

#include "controls/named.h"

namespace veldrin::show {

PictureTimer::PictureTimer(int interval, std::function<bool()> isReady, QObject* parent)
    : QObject(parent), IsReady(std::move(isReady)), Clock(controls::Named(new QTimer(this), "Timer1")) {
  Clock->setInterval(interval);
  Clock->setSingleShot(true);
  Clock->setTimerType(Qt::PreciseTimer);
  connect(Clock, &QTimer::timeout, this, &PictureTimer::Elapsed);
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
  IsDue = !IsReady();
  if (!IsDue) Q_EMIT Timer();
}

void PictureTimer::PictureShown() {
  if (Clock->isActive() || IsDue) SetEnabled(true);
}

void PictureTimer::PictureReady() {
  if (IsDue && IsReady()) {
    IsDue = false;
    Q_EMIT Timer();
  }
}

}  // namespace veldrin::show
