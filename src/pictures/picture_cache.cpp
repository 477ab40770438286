#include "pictures/picture_cache.h"

#include <QFileInfo>

namespace veldrin::pictures {

bool FittedSource::Serves(const FittedSource& other) const {
  return File == other.File && Size == other.Size && Changed == other.Changed &&
         Box.Width * PixelRatio >= other.Box.Width * other.PixelRatio &&
         Box.Height * PixelRatio >= other.Box.Height * other.PixelRatio;
}

FittedSource SourceOf(const QString& file, TwipSize box, double pixelRatio) {
  const QFileInfo info(file);
  return {file, info.size(), info.lastModified(), box, pixelRatio};
}

Picture PictureCache::Find(const FittedSource& source) const {
  const Entry* entry = Kept.object(source.File);
  return entry != nullptr && entry->Source.Serves(source) ? entry->Result : Picture();
}

void PictureCache::Keep(const FittedSource& source, const Picture& picture) {
  Kept.insert(source.File, new Entry{source, picture}, picture.Image().sizeInBytes());
}

}  // namespace veldrin::pictures
