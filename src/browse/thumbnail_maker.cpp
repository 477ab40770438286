#include "browse/thumbnail_maker.h"

#include <QThread>
#include <utility>

#include "catalogue/image_store.h"

namespace veldrin::browse {

ThumbnailMaker::ThumbnailMaker(const catalogue::Paths& paths) : ThePaths(paths) {
  SparePool.setMaxThreadCount(1);
  SparePool.setThreadPriority(QThread::IdlePriority);
}

ThumbnailMaker::~ThumbnailMaker() {
  SparePool.waitForDone();
  Pool.waitForDone();
}

void ThumbnailMaker::Want(std::deque<Wish> wishes, double pixelRatio) {
  Wishes = std::move(wishes);
  PixelRatio = pixelRatio;
  Start();
}

void ThumbnailMaker::Spare(std::deque<Wish> wishes, double pixelRatio) {
  SpareWishes = std::move(wishes);
  PixelRatio = pixelRatio;
  Start();
}

void ThumbnailMaker::Forget() {
  ++Round;
  Running.clear();
  SpareRunning = 0;
  Wishes.clear();
  SpareWishes.clear();
}

// No more at a time than there are cores: what is wanted next goes before what was wanted once.
void ThumbnailMaker::Start() {
  while (!Wishes.empty() && std::ssize(Running) < Pool.maxThreadCount()) {
    const Wish wish = Wishes.front();
    Wishes.pop_front();
    if (Running.insert(wish.PhotoID).second && wish.PhotoID != SpareRunning) Make(wish, Pool);
  }
  if (!IsIdle() || SpareRunning != 0 || SpareWishes.empty()) return;
  const Wish wish = SpareWishes.front();
  SpareWishes.pop_front();
  SpareRunning = wish.PhotoID;
  Make(wish, SparePool);
}

void ThumbnailMaker::Make(const Wish& wish, QThreadPool& pool) {
  pool.start([this, wish, round = Round, ratio = PixelRatio] {
    const auto thumbnail = catalogue::CreateThumbnail(ThePaths, wish.PhotoID, wish.ImageType, ratio);
    const auto take = [this, photo = wish.PhotoID, round, thumbnail] { Take(photo, round, thumbnail); };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
  });
}

void ThumbnailMaker::Take(int photoId, int round, const pictures::Picture& thumbnail) {
  if (round == Round) {
    Running.erase(photoId);
    if (photoId == SpareRunning) SpareRunning = 0;
    Q_EMIT Made(photoId, thumbnail);
  }
  Start();
  if (IsIdle() && SpareRunning == 0) Q_EMIT Idle();
}

}  // namespace veldrin::browse
