// The timer of a show. A picture that takes longer than its predecessor's time puts the tick off instead of
// holding the window.
#pragma once

#include <QTimer>

#include "show/picture_pair.h"
#include "show/picture_show.h"

namespace veldrin::show {

/// How long a picture stands, in milliseconds.
constexpr int ShowInterval = 3000;

class PictureTimer : public QObject, public ShowTimer {
  Q_OBJECT

 public:
  /// `interval` in milliseconds.
  PictureTimer(const PicturePair& pictures, QObject* parent, int interval = ShowInterval);

  void SetEnabled(bool enabled) override;

 Q_SIGNALS:
  /// The time is over and the next picture is ready.
  void Timer();

 private:
  void Elapsed();
  void PictureReady();

  const PicturePair& Pictures;
  QTimer* Clock;
  bool IsDue = false;  ///< the time is over, the picture isn't ready
};

}  // namespace veldrin::show
