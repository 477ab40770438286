// The timer of a show. A picture that takes longer than its predecessor's time puts the tick off instead of
// holding the window.
#pragma once

#include <QTimer>
#include <functional>

#include "show/picture_show.h"

namespace veldrin::show {

class PictureTimer : public QObject, public ShowTimer {
  Q_OBJECT

 public:
  /// `interval` in milliseconds. `isReady`: whether the picture of the next tick is there.
  PictureTimer(int interval, std::function<bool()> isReady, QObject* parent = nullptr);

  void SetEnabled(bool enabled) override;
  /// To be told when a picture has become ready.
  void PictureReady();
  /// To be told when a picture has come to stand: its time begins.
  void PictureShown();

 Q_SIGNALS:
  /// The time is over and the next picture is ready.
  void Timer();

 private:
  void Elapsed();

  std::function<bool()> IsReady;
  QTimer* Clock;
  bool IsDue = false;  ///< the time is over, the picture isn't ready
};

}  // namespace veldrin::show
