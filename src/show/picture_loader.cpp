#include "show/picture_loader.h"

#include <QFileInfo>
#include <QtConcurrentRun>

namespace veldrin::show {

using pictures::Picture;

PictureLoader::PictureLoader() {
  connect(&Watcher, &QFutureWatcherBase::finished, this, &PictureLoader::Ready);
}

PictureLoader::~PictureLoader() { ++*Wanted; }

bool PictureLoader::Source::Serves(const Source& other) const {
  return File == other.File && Size == other.Size && Changed == other.Changed && Width >= other.Width &&
         Height >= other.Height;
}

PictureLoader::Source PictureLoader::SourceOf(const QString& file, pictures::TwipSize box,
                                              double pixelRatio) {
  if (file.isEmpty()) return {};
  const QFileInfo info(file);
  return {file, info.size(), info.lastModified(), box.Width * pixelRatio, box.Height * pixelRatio};
}

void PictureLoader::Prepare(const QString& file, pictures::TwipSize box, double pixelRatio) {
  const Source source = SourceOf(file, box, pixelRatio);
  if (Prepared.Serves(source)) return;
  const int number = ++*Wanted;
  const bool isThere = LastSource.Serves(source);
  Prepared = isThere ? Source{} : source;
  if (file.isEmpty() || isThere) return Watcher.setFuture({});
  // On the program's threads, for which only the program's end waits.
  Watcher.setFuture(QtConcurrent::run([wanted = Wanted, number, file, box, pixelRatio] {
    Decoded decoded;
    try {
      if (*wanted == number) decoded.Result = pictures::LoadFittedPicture(file, box, pixelRatio);
    } catch (...) {
      decoded.Failure = std::current_exception();
    }
    return decoded;
  }));
}

Picture PictureLoader::Load(const QString& file, pictures::TwipSize box, double pixelRatio) {
  const Source source = SourceOf(file, box, pixelRatio);
  if (LastSource.Serves(source)) return Last;
  if (Prepared.Serves(source)) {
    const Decoded decoded = Watcher.future().result();
    if (decoded.Failure) std::rethrow_exception(decoded.Failure);
    Last = decoded.Result;
    LastSource = Prepared;
  } else {
    Last = pictures::LoadFittedPicture(file, box, pixelRatio);
    LastSource = source;
  }
  return Last;
}

}  // namespace veldrin::show
