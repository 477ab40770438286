// The files of a photo, and the rule by which any picture is fitted into a box.
#pragma once

#include <QDateTime>
#include <QString>

#include "catalogue/paths.h"
#include "platform/picture.h"

namespace veldrin::catalogue {

/// A size in twips.
struct TwipSize {
  int Width = 0;
  int Height = 0;
  bool operator==(const TwipSize&) const = default;
};

/// The box of a thumbnail: one cell of the thumbnail page, 169 by 129 pixels.
constexpr TwipSize ThumbnailBox{2535, 1935};

QString ImageFileName(const Paths& paths, int photoId, const QString& imageType);
QString ThumbFileName(const Paths& paths, int photoId);

/// The size in twips at which a picture fills the box in one direction, its aspect ratio kept; a small
/// picture is enlarged. An empty picture raises 11, division by zero.
TwipSize FitToBox(const platform::Picture& picture, TwipSize box);
/// The same from a natural size in HIMETRIC.
TwipSize FitToBox(int himetricWidth, int himetricHeight, TwipSize box);

/// The margin in twips that centres a length in a box.
constexpr int Centre(int boxLength, int length) { return (boxLength - length) / 2; }

/// Loads a picture for drawing in a box: decoded no larger than the fitted size needs at `pixelRatio` device
/// pixels to a logical one. Raises what LoadPicture raises.
platform::Picture LoadPictureForBox(const QString& path, TwipSize box, double pixelRatio);

/// The same, and scaled to the fitted size, so that nothing is left to do for drawing it. Safe to call from
/// any thread.
platform::Picture LoadFittedPicture(const QString& path, TwipSize box, double pixelRatio);

/// Makes the thumbnail of a stored image. Every failure ends it silently, with no file left behind by the
/// failed step. Safe to call from any thread, for different photos.
void CreateThumbnail(const Paths& paths, int photoId, const QString& imageType, double pixelRatio);

/// The file's time stamp, to the second: local time, as a date of the catalogue has it. Raises 53 for a
/// missing file.
QDateTime GetFileDate(const QString& path);

/// All that follows the first "." of a file's bare name; empty where there is none.
QString GetFileExtension(const QString& name);

}  // namespace veldrin::catalogue
