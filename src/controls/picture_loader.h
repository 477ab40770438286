// Decodes the pictures of a view beside the window.
#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "pictures/picture_cache.h"

namespace veldrin::controls {

/// What is asked for last is what comes: a request that another one follows is given up, and never shown. A
/// decoding that nobody needs any longer comes to its end by itself; nothing waits for it.
class PictureLoader : public QObject {
  Q_OBJECT

 public:
  /// Pictures are fitted into the box, which owns the loader. The cache is the window's, and outlives it.
  PictureLoader(pictures::PictureCache& cache, QWidget& box);

  /// Asks for the file's picture: Loaded tells it, before the return where it is kept. An empty name gives
  /// up what was asked for.
  void Load(const QString& file);
  /// The picture that will probably be asked for next is decoded when nothing else is. An empty name gives
  /// the former one up.
  void Prepare(const QString& file);
  /// False while a picture that is asked for or prepared isn't there.
  bool IsIdle() const { return !Wanted && !Next; }

 Q_SIGNALS:
  /// As large at least as it is in the box; empty when the file can't be decoded.
  void Loaded(const QString& file, const veldrin::pictures::Picture& picture);
  void Idle();

 private:
  pictures::FittedSource SourceNow(const QString& file) const;
  void Start();
  void Decode(const pictures::FittedSource& source);
  void Take(const pictures::FittedSource& source, const pictures::Picture& picture);

  pictures::PictureCache& Cache;
  QWidget& Box;
  std::optional<pictures::FittedSource> Wanted;
  std::optional<pictures::FittedSource> Next;
  std::vector<pictures::FittedSource> Running;
};

}  // namespace veldrin::controls
