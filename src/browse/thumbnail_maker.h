// Makes missing thumbnails on other threads, in the order in which they are looked at.
#pragma once

#include <QObject>
#include <QThreadPool>
#include <deque>
#include <set>

#include "catalogue/paths.h"
#include "pictures/picture.h"

namespace veldrin::browse {

class ThumbnailMaker : public QObject {
  Q_OBJECT

 public:
  struct Wish {
    int PhotoID = 0;
    QString ImageType;
  };

  explicit ThumbnailMaker(const catalogue::Paths& paths);
  /// Waits for what has begun.
  ~ThumbnailMaker() override;

  /// From now on these are made, the first one first, and those before that have not begun are given up.
  /// `pixelRatio` is the screen's.
  void Want(std::deque<Wish> wishes, double pixelRatio);
  /// These are made when nothing is wanted, and only by what the machine has to spare; those before that have
  /// not begun are given up.
  void Spare(std::deque<Wish> wishes, double pixelRatio);

  /// What is under way counts for nothing: its numbers may be other photos' now.
  void Forget();

  /// Whether nothing is wanted.
  bool IsIdle() const { return Running.empty() && Wishes.empty(); }

 Q_SIGNALS:
  /// A thumbnail is there. It is empty for a photo without a readable image.
  void Made(int photoId, const veldrin::pictures::Picture& thumbnail);
  /// Threads have nothing to do, or will soon have.
  void HasTimeToSpare();

 private:
  void Start();
  void Make(const Wish& wish, QThreadPool& pool);
  void Take(int photoId, int round, const pictures::Picture& thumbnail);

  const catalogue::Paths& ThePaths;
  std::deque<Wish> Wishes;
  std::deque<Wish> SpareWishes;
  std::set<int> Running;
  std::set<int> SpareRunning;
  int Round = 0;  ///< counts what was forgotten
  double PixelRatio = 1;
  // Last: their end waits for the threads that use the other members.
  QThreadPool Pool;
  QThreadPool SparePool;
};

}  // namespace veldrin::browse
