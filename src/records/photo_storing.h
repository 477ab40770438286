// The storing of new photos: their files, their rows and their places in a folder.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "catalogue/paths.h"
#include "controls/progress.h"
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
  /// Asked inside each transaction: whether the folder still is what the user sees. Where it isn't, nothing
  /// more is stored. May be empty.
  std::function<bool(engine::Database&)> FolderIsAsShown;
  /// How many photos share a flush of the tables. While one group's rows are written the next one's files are
  /// copied.
  int GroupSize = 64;
};

/// What became of a file of the batch.
struct StoredFile {
  QString Name;
  int PhotoID = 0;  ///< 0 where it wasn't stored
  /// Why it wasn't stored, or what of it wasn't done; empty where all went well.
  QString Failure;
};

/// The number of the next photo: the highest one plus one, 1 for an empty catalogue. For a photo that is
/// stored it has to be asked for inside the transaction. Raises 6 when there is no further number, and the
/// errors of the data engine.
int GetNextPhotoID(engine::Database& database);

/// Stores the files, in their order, under numbers that are consecutive but for those that another machine
/// takes meanwhile. A file that is no picture gets a row of the type "jpg" without a file; one that can't be
/// copied gets none. Raises nothing: what went wrong stands with the files.
///
/// Nothing is lost at any point where the run may break off: row and place are written together, when the
/// copy stands whole on the disk; a source goes when they are stored and the copy has its name, one that lies
/// in the image store itself never. No file that stands in the image store is overwritten.
/// `progress` counts the files; null where nobody waits. A stop ends the run after the files that are stored
/// already: those that weren't begun have neither number nor failure.
std::vector<StoredFile> StorePhotos(const catalogue::Paths& paths, engine::DBEngine& engine,
                                    const PhotoBatch& batch, controls::Progress* progress = nullptr);

}  // namespace veldrin::records
