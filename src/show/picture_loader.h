// Decodes the next picture of a show in the background.
#pragma once

#include <QDateTime>
#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>
#include <atomic>
#include <optional>

#include "catalogue/image_store.h"

namespace veldrin::show {

/// One picture at a time: what was prepared before and not taken is given up.
class PictureLoader : public QObject {
  Q_OBJECT

 public:
  PictureLoader();
  /// Waits for a decoding that has begun.
  ~PictureLoader() override;

  /// Begins to decode a file at the size that it has in a box; an empty name gives up the former one.
  void Prepare(const QString& file, catalogue::TwipSize box, double pixelRatio);
  /// False while a picture is being prepared.
  bool IsReady() const { return Watcher.future().isFinished(); }
  /// The picture that was prepared, if it is this one and the file is still as it was; otherwise it is
  /// decoded now. Raises what LoadPicture raises.
  platform::Picture Load(const QString& file, catalogue::TwipSize box, double pixelRatio);

 Q_SIGNALS:
  void Ready();

 private:
  /// What a decoded picture depends on.
  struct Source {
    QString File;
    catalogue::TwipSize Box;
    double PixelRatio = 0;
    qint64 Size = 0;
    QDateTime Changed;
    bool operator==(const Source&) const = default;
  };
  static Source SourceOf(const QString& file, catalogue::TwipSize box, double pixelRatio);

  QThreadPool Pool;
  std::atomic_int Wanted = 0;  ///< the number of the last preparation
  Source Prepared;
  QFutureWatcher<std::optional<platform::Picture>> Watcher;
};

}  // namespace veldrin::show
