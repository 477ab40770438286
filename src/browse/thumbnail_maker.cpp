#include "browse/thumbnail_maker.h"

#include <utility>

#include "base/nice_thread.h"
#include "catalogue/image_store.h"

namespace veldrin::browse {

namespace {

// Takes little from whoever else wants to compute.
constexpr int SpareNice = 10;

}  // namespace

ThumbnailMaker::ThumbnailMaker(const catalogue::Paths& paths) : ThePaths(paths) {}

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
  SpareRunning.clear();
  Wishes.clear();
  SpareWishes.clear();
}

// No more at a time than there are cores: what is wanted next goes before what was wanted once.
void ThumbnailMaker::Start() {
  while (!Wishes.empty() && std::ssize(Running) < Pool.maxThreadCount()) {
    const Wish wish = Wishes.front();
    Wishes.pop_front();
    if (Running.insert(wish.PhotoID).second && !SpareRunning.contains(wish.PhotoID)) Make(wish, Pool);
  }
  if (!IsIdle()) return;
  while (!SpareWishes.empty() && std::ssize(SpareRunning) < SparePool.maxThreadCount()) {
    const Wish wish = SpareWishes.front();
    SpareWishes.pop_front();
    if (SpareRunning.insert(wish.PhotoID).second) Make(wish, SparePool);
  }
}

void ThumbnailMaker::Make(const Wish& wish, QThreadPool& pool) {
  pool.start([this, wish, isSpare = &pool == &SparePool, round = Round, ratio = PixelRatio] {
    if (isSpare) base::BeNice(SpareNice);
    const auto thumbnail = catalogue::CreateThumbnail(ThePaths, wish.PhotoID, wish.ImageType, ratio);
    const auto take = [this, photo = wish.PhotoID, round, thumbnail] { Take(photo, round, thumbnail); };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
  });
}

void ThumbnailMaker::Take(int photoId, int round, const pictures::Picture& thumbnail) {
  if (round == Round) {
    Running.erase(photoId);
    SpareRunning.erase(photoId);
    Q_EMIT Made(photoId, thumbnail);
  }
  Start();
  if (IsIdle() && SpareWishes.empty()) Q_EMIT HasTimeToSpare();
}

}  // namespace veldrin::browse
