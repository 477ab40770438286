#include "browse/thumbnail_maker.h"

#include <utility>

#include "catalogue/image_store.h"

namespace veldrin::browse {

ThumbnailMaker::ThumbnailMaker(const catalogue::Paths& paths) : ThePaths(paths) {}

ThumbnailMaker::~ThumbnailMaker() { Pool.waitForDone(); }

void ThumbnailMaker::Want(std::deque<Wish> wishes, double pixelRatio) {
  Wishes = std::move(wishes);
  PixelRatio = pixelRatio;
  Start();
}

void ThumbnailMaker::Forget() {
  ++Round;
  Running.clear();
  Wishes.clear();
}

// No more at a time than there are cores: what is wanted next goes before what was wanted once.
void ThumbnailMaker::Start() {
  while (!Wishes.empty() && std::ssize(Running) < Pool.maxThreadCount()) {
    const Wish wish = Wishes.front();
    Wishes.pop_front();
    if (Running.insert(wish.PhotoID).second) Make(wish);
  }
}

void ThumbnailMaker::Make(const Wish& wish) {
  Pool.start([this, wish, round = Round, ratio = PixelRatio] {
    const auto thumbnail = catalogue::CreateThumbnail(ThePaths, wish.PhotoID, wish.ImageType, ratio);
    const auto take = [this, photo = wish.PhotoID, round, thumbnail] { Take(photo, round, thumbnail); };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
  });
}

void ThumbnailMaker::Take(int photoId, int round, const pictures::Picture& thumbnail) {
  if (round == Round) {
    Running.erase(photoId);
    Q_EMIT Made(photoId, thumbnail);
  }
  Start();
}

}  // namespace veldrin::browse
