#include "benches/hold_meter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSemaphore>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <thread>

namespace veldrin::benches {

double LongestHold(const std::function<void()>& action, const std::function<bool()>& isDone) {
  constexpr double nanosecondsPerMillisecond = 1e6;
  QObject receiver;
  std::atomic<bool> ended = false;
  qint64 longest = 0;
  std::thread heart([&] {
    while (!ended) {
      QElapsedTimer waited;
      waited.start();
      auto heard = std::make_shared<QSemaphore>();
      QMetaObject::invokeMethod(
          &receiver, [heard] { heard->release(); }, Qt::QueuedConnection);
      while (!heard->tryAcquire(1, 100) && !ended) {
      }
      if (!ended) longest = std::max(longest, waited.nsecsElapsed());
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  bool begun = false;
  QTimer::singleShot(0, &receiver, [&] {
    begun = true;
    action();
  });
  while (!begun || !isDone()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  ended = true;
  heart.join();
  return static_cast<double>(longest) / nanosecondsPerMillisecond;
}

void Look(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace veldrin::benches
