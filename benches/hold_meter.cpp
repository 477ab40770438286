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
  std::atomic<bool> stopped = false;
  std::atomic<int> beats = 0;
  qint64 longest = 0;
  std::thread heart([&] {
    while (!ended) {
      QElapsedTimer waited;
      waited.start();
      auto heard = std::make_shared<QSemaphore>();
      QMetaObject::invokeMethod(
          &receiver, [heard] { heard->release(); }, Qt::QueuedConnection);
      heard->acquire();
      longest = std::max(longest, waited.nsecsElapsed());
      ++beats;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    stopped = true;
  });
  bool begun = false;
  QTimer::singleShot(0, &receiver, [&] {
    begun = true;
    action();
  });
  while (!begun || !isDone()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  // The one that waited for the action is heard, too.
  for (const int heard = beats; beats < heard + 2;)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  ended = true;
  while (!stopped) QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
  heart.join();
  return static_cast<double>(longest) / nanosecondsPerMillisecond;
}

void Look(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace veldrin::benches
