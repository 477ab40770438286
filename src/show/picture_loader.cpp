#include "show/picture_loader.h"

#include <QFileInfo>
#include <QtConcurrentRun>

#include "platform/failure.h"

namespace veldrin::show {

using platform::Picture;

PictureLoader::PictureLoader() {
  // A second one, so that a picture needn't wait for one that was given up.
  Pool.setMaxThreadCount(2);
  connect(&Watcher, &QFutureWatcherBase::finished, this, &PictureLoader::Ready);
}

PictureLoader::~PictureLoader() {
  ++Wanted;
  Pool.waitForDone();
}

PictureLoader::Source PictureLoader::SourceOf(const QString& file, catalogue::TwipSize box,
                                              double pixelRatio) {
  const QFileInfo info(file);
  return {file, box, pixelRatio, info.size(), info.lastModified()};
}

void PictureLoader::Prepare(const QString& file, catalogue::TwipSize box, double pixelRatio) {
  const Source source = file.isEmpty() ? Source{} : SourceOf(file, box, pixelRatio);
  if (source == Prepared) return;
  Prepared = source;
  const int number = ++Wanted;
  if (file.isEmpty()) return Watcher.setFuture(QFuture<std::optional<Picture>>());
  Watcher.setFuture(QtConcurrent::run(&Pool, [this, number, source] {
    std::optional<Picture> picture;
    platform::EndSilently([&] {
      if (Wanted == number) {
        picture = catalogue::LoadFittedPicture(source.File, source.Box, source.PixelRatio);
      }
    });
    return picture;
  }));
}

Picture PictureLoader::Load(const QString& file, catalogue::TwipSize box, double pixelRatio) {
  if (Prepared == SourceOf(file, box, pixelRatio)) {
    if (const auto picture = Watcher.future().result()) return *picture;
  }
  return catalogue::LoadFittedPicture(file, box, pixelRatio);
}

}  // namespace veldrin::show
