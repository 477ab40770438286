#include "browse/thumbnail_maker.h"

#include <QtConcurrentRun>

#include "catalogue/image_store.h"

namespace veldrin::browse {

ThumbnailMaker::~ThumbnailMaker() {
  GivenUp = true;
  Pool.waitForDone();
}

void ThumbnailMaker::Begin(int photoId, const QString& imageType) {
  Begun[photoId] = QtConcurrent::run(&Pool, [this, photoId, imageType]() -> pictures::Picture {
    if (GivenUp) return {};
    return catalogue::CreateThumbnail(ThePaths, photoId, imageType, PixelRatio);
  });
}

std::optional<pictures::Picture> ThumbnailMaker::Finish(int photoId) {
  const auto found = Begun.find(photoId);
  if (found == Begun.end()) return {};
  return found->second.result();
}

}  // namespace veldrin::browse
