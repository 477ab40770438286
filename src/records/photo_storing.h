// The storing of new photos: their files, their rows and their places in a folder.
#pragma once

#include <QString>
#include <QStringList>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"

namespace veldrin::records {

struct PhotoBatch {
  QString Directory;  ///< where the picture files lie
  QStringList Names;  ///< their bare names, in the order of their numbers
  QString LinkKey;    ///< of the folder that receives the photos
  // Of all photos of the batch alike; an empty text is stored as Null.
  QString Title;
  QString Description;
  QString MadeBy;
  bool RemoveSources = false;
  /// How many photos share a flush of the tables. While one group's rows are written the next one's files are
  /// copied.
  int GroupSize = 64;
};

/// The highest number of a photo plus one; 1 for an empty catalogue. Raises 6 when there is no further
/// number, and the errors of the data engine.
int GetNextPhotoID(engine::DBEngine& engine, const catalogue::Paths& paths);

/// Stores the files under consecutive numbers and returns the first one, 0 when the catalogue can't be read.
/// Passes over every error and goes on: a copy that fails leaves a row without a file, a file that is no
/// picture a row of the type "jpg" without a file.
///
/// Nothing is lost at any point where the run may break off: a row is written when its file stands whole on
/// the disk, a source goes when its row does and when it could be copied; one that lies in the image store
/// itself never goes. No file that stands in the image store is overwritten. A number that another machine
/// has taken in the meantime is left to it, and that source stays.
int StorePhotos(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch);

}  // namespace veldrin::records
