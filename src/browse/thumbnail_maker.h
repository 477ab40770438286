// Makes the missing thumbnails of a page side by side, on all cores, while the page is filled in order.
#pragma once

#include <QFuture>
#include <QThreadPool>
#include <atomic>
#include <map>
#include <optional>

#include "catalogue/paths.h"
#include "pictures/picture.h"

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
  /// Waits for the thumbnail of a photo; nothing when it wasn't begun. It is empty for a photo without a
  /// readable image.
  std::optional<pictures::Picture> Finish(int photoId);

 private:
  const catalogue::Paths& ThePaths;
  double PixelRatio;
  std::atomic_bool GivenUp = false;
  QThreadPool Pool;
  std::map<int, QFuture<pictures::Picture>> Begun;
};

}  // namespace veldrin::browse
