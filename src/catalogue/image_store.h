// The files of a photo.
#pragma once

#include <QDateTime>
#include <QString>

#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "pictures/fit.h"

namespace veldrin::catalogue {

/// The box of a thumbnail: one cell of the thumbnail page, 169 by 129 pixels.
constexpr pictures::TwipSize ThumbnailBox{2535, 1935};

/// The bare name of a stored image: "17.jpg". It stays a bare name whatever the type is: one with a separator
/// or a null character, as only a strange catalogue has it, stands for no file.
QString ImageName(int photoId, const QString& imageType);
QString ImageFileName(const Paths& paths, int photoId, const QString& imageType);
/// Of the photo at a place of the list; empty for a place beyond it and a row that has gone. Raises what the
/// reading raises.
QString ImageFileAt(RecordList& list, const Paths& paths, int position);
QString ThumbFileName(const Paths& paths, int photoId);

/// Makes the thumbnail of a stored image, stores it and returns it; an empty picture where the image can't be
/// read. Where it can't be stored it is returned all the same. Every failure is passed over, and leaves no
/// file behind. Safe to call from any thread, for different photos.
pictures::Picture CreateThumbnail(const Paths& paths, int photoId, const QString& imageType,
                                  double pixelRatio);

/// The file's time stamp, to the second: local time, as a date of the catalogue has it. Raises 53 for a
/// missing file.
QDateTime GetFileDate(const QString& path);

/// All that follows the first "." of a file's bare name; empty where there is none.
QString GetFileExtension(const QString& name);

}  // namespace veldrin::catalogue
