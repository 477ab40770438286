// Makes the missing thumbnails of a page side by side, on all cores, while the page is filled in order.
#pragma once

#include <QFuture>
#include <QThreadPool>
#include <atomic>
#include <map>
#include <memory>

#include "catalogue/paths.h"

namespace veldrin::browse {

class ThumbnailMaker {
 public:
  ThumbnailMaker(const catalogue::Paths& paths, double pixelRatio)
      : ThePaths(paths), PixelRatio(pixelRatio) {}
  /// Gives up what hasn't begun and waits for the rest.
  ~ThumbnailMaker();
  ThumbnailMaker(const ThumbnailMaker&) = delete;
  ThumbnailMaker& operator=(const ThumbnailMaker&) = delete;

  void Begin(int photoId, const QString& imageType);
  /// Waits for the thumbnail of a photo; false when it wasn't begun. The file may still be missing: the photo
  /// has no readable image then.
  bool Finish(int photoId);

 private:
  const catalogue::Paths& ThePaths;
  double PixelRatio;
  std::atomic_bool GivenUp = false;
  QThreadPool Pool;
  std::map<int, QFuture<void>> Begun;
};

}  // namespace veldrin::browse
