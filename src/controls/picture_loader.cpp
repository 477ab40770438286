#include "controls/picture_loader.h"

#include <QFutureWatcher>
#include <QThreadPool>
#include <QtConcurrentRun>
#include <algorithm>

#include "base/failure.h"
#include "base/nice_thread.h"
#include "base/units.h"

namespace veldrin::controls {

using pictures::FittedSource;
using pictures::Picture;

namespace {

// At a time: what is asked for now needn't wait for what was asked for before.
constexpr size_t MostRunning = 2;

// The window paints by threads of Qt's, which go before.
constexpr int DecodersNice = 5;

// Only the program's end waits for it. Not Qt's own pool, for whose threads painting waits.
QThreadPool& Decoders() {
  static QThreadPool pool;
  return pool;
}

}  // namespace

PictureLoader::PictureLoader(pictures::PictureCache& cache, QWidget& box)
    : QObject(&box), Cache(cache), Box(box) {}

FittedSource PictureLoader::SourceNow(const QString& file) const {
  return pictures::SourceOf(file, {base::ToTwips(Box.width()), base::ToTwips(Box.height())},
                            Box.devicePixelRatioF());
}

void PictureLoader::Load(const QString& file) {
  Wanted.reset();
  if (file.isEmpty()) return;
  const FittedSource source = SourceNow(file);
  if (const Picture kept = Cache.Find(source); !kept.IsEmpty()) {
    Q_EMIT Loaded(file, kept);
  } else {
    Wanted = source;
    Start();
  }
}

void PictureLoader::Prepare(const QString& file) {
  Next.reset();
  if (file.isEmpty()) return;
  const FittedSource source = SourceNow(file);
  if (!Cache.Find(source).IsEmpty()) return;
  Next = source;
  Start();
}

void PictureLoader::Start() {
  const auto& source = Wanted ? Wanted : Next;
  if (!source || Running.size() >= MostRunning || std::ranges::count(Running, *source) != 0) return;
  Running.push_back(*source);
  Decode(*source);
}

void PictureLoader::Decode(const FittedSource& source) {
  auto* watcher = new QFutureWatcher<Picture>(this);
  connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, source] {
    watcher->deleteLater();
    Take(source, watcher->result());
  });
  watcher->setFuture(QtConcurrent::run(&Decoders(), [source] {
    base::BeNice(DecodersNice);
    Picture picture;
    base::EndSilently([&] { picture = LoadFittedPicture(source.File, source.Box, source.PixelRatio); });
    return picture;
  }));
}

void PictureLoader::Take(const FittedSource& source, const Picture& picture) {
  std::erase(Running, source);
  if (!picture.IsEmpty()) Cache.Keep(source, picture);
  if (Next == source) Next.reset();
  const bool wanted = Wanted == source;
  if (wanted) Wanted.reset();
  Start();
  if (wanted) Q_EMIT Loaded(source.File, picture);
  if (IsIdle()) Q_EMIT Idle();
}

}  // namespace veldrin::controls
