#include "browse/thumbnail_maker.h"

#include <QtConcurrentRun>

#include "catalogue/image_store.h"

namespace veldrin::browse {

ThumbnailMaker::~ThumbnailMaker() {
  GivenUp = true;
  Pool.waitForDone();
}

void ThumbnailMaker::Begin(int photoId, const QString& imageType) {
  Begun[photoId] = QtConcurrent::run(&Pool, [this, photoId, imageType] {
    if (!GivenUp) catalogue::CreateThumbnail(ThePaths, photoId, imageType, PixelRatio);
  });
}

bool ThumbnailMaker::Finish(int photoId) {
  const auto found = Begun.find(photoId);
  if (found == Begun.end()) return false;
  found->second.waitForFinished();
  return true;
}

}  // namespace veldrin::browse
