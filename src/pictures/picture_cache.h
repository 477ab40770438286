// Pictures as they were drawn last, kept for the next look.
#pragma once

#include <QCache>
#include <QDateTime>

#include "pictures/fit.h"

namespace veldrin::pictures {

/// What a picture that is fitted into a box depends on.
struct FittedSource {
  QString File;
  qint64 Size = 0;
  QDateTime Changed;
  TwipSize Box;
  double PixelRatio = 1;

  bool operator==(const FittedSource&) const = default;
  /// Whether its picture will do for the other one's.
  bool Serves(const FittedSource& other) const;
};

/// The file as it is now.
FittedSource SourceOf(const QString& file, TwipSize box, double pixelRatio);

/// What a cache holds at most, in bytes: some thirty pictures of a large screen.
constexpr qsizetype MaxCachedBytes = 256'000'000;

/// Shared by the views of a window, for the thread of which it is made. Of each file one picture is kept, as
/// large as it was drawn last; the ones that nobody has looked at for the longest time give way.
class PictureCache {
 public:
  explicit PictureCache(qsizetype limit = MaxCachedBytes) : Kept(limit) {}

  /// Empty where none is kept that will do.
  Picture Find(const FittedSource& source) const;
  void Keep(const FittedSource& source, const Picture& picture);
  /// In bytes.
  qsizetype Size() const { return Kept.totalCost(); }

 private:
  struct Entry {
    FittedSource Source;
    Picture Result;
  };
  QCache<QString, Entry> Kept;
};

}  // namespace veldrin::pictures
