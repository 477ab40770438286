// Decodes the next picture of a show in the background.
#pragma once

#include <QDateTime>
#include <QFutureWatcher>
#include <QObject>
#include <atomic>
#include <exception>
#include <memory>

#include "pictures/fit.h"

namespace veldrin::show {

/// Both windows of a show have the same one, so that a picture that one of them has shown or prepared serves
/// the other. One picture is prepared at a time: what was prepared before and not taken is given up. A
/// decoding that nobody needs any longer comes to its end by itself; nothing waits for it.
class PictureLoader : public QObject {
  Q_OBJECT

 public:
  PictureLoader();
  ~PictureLoader() override;

  /// Begins to decode a file at the size that it has in a box; an empty name gives up the former one.
  void Prepare(const QString& file, pictures::TwipSize box, double pixelRatio);
  /// False while a picture is being prepared.
  bool IsReady() const { return Watcher.future().isFinished(); }
  /// A file's picture, as large at least as it is in the box. Taken from the one loaded last or prepared
  /// where that is the same and the file is still as it was; otherwise decoded now. Raises what LoadPicture
  /// raises, without another attempt for a picture that failed when it was prepared.
  pictures::Picture Load(const QString& file, pictures::TwipSize box, double pixelRatio);

 Q_SIGNALS:
  void Ready();

 private:
  /// What a decoded picture depends on.
  struct Source {
    QString File;
    qint64 Size = 0;
    QDateTime Changed;
    double Width = 0;  ///< of the box, in device units
    double Height = 0;
    /// Whether its picture will do for the other one's.
    bool Serves(const Source& other) const;
  };
  struct Decoded {
    pictures::Picture Result;
    std::exception_ptr Failure;
  };
  static Source SourceOf(const QString& file, pictures::TwipSize box, double pixelRatio);

  Source LastSource;
  pictures::Picture Last;
  Source Prepared;
  QFutureWatcher<Decoded> Watcher;
  /// The number of the last preparation. A decoding may outlive the loader.
  std::shared_ptr<std::atomic_int> Wanted = std::make_shared<std::atomic_int>(0);
};

}  // namespace veldrin::show
