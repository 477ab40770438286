// Sees to it that thumbnails are there before they are looked at.
#pragma once

#include <QTimer>

#include "browse/thumbnail_maker.h"
#include "catalogue/record_list.h"
#include "engine/dao/db_engine.h"

namespace veldrin::browse {

/// Those of the page that is looked at come first, then those of the pages beside it, and in the machine's
/// spare time those of the list from its current record on.
class ThumbnailSupply : public QObject {
  Q_OBJECT

 public:
  /// The references must outlive the object.
  ThumbnailSupply(catalogue::RecordList& data1, engine::DBEngine& engine, const catalogue::Paths& paths);

  /// The user looks at the page that begins at a place of the list; what is missing on it is wanted at once.
  void ShowPage(int start, std::deque<ThumbnailMaker::Wish> missing);
  /// The page is no longer looked at.
  void LeavePage();
  /// Whether what the page wants is there, and those beside it are prepared.
  bool IsComplete() const { return Maker.IsIdle() && !Painted.isActive(); }

  /// Device pixels to a logical one, on the finest screen: thumbnails are made once for all.
  static double PixelRatio();

 Q_SIGNALS:
  /// Empty for a photo without a readable image.
  void Made(int photoId, const veldrin::pictures::Picture& thumbnail);
  /// Photos of the page have come back changed from an outside program.
  void Returned();

 private:
  void Refreshed();
  void PagePainted();
  void WalkOn();
  bool TakeBackReturned() const;
  std::deque<ThumbnailMaker::Wish> MissingAt(int first, int count) const;

  catalogue::RecordList& Data1;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  ThumbnailMaker Maker;
  QTimer Painted;  ///< runs until the page is painted
  QTimer Walk;     ///< runs while the list is looked through
  int PageStart = 0;
  std::deque<ThumbnailMaker::Wish> OnPage;
  int WalkedTo = 0;
  int WalkEnd = 0;
};

}  // namespace veldrin::browse
