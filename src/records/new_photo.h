// One picture file on its way into the image store.
#pragma once

#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>

#include "base/file_identity.h"
#include "catalogue/paths.h"
#include "desktop/file_copy.h"

namespace veldrin::records {

/// A photo that is being stored. Read may run on any thread, for different photos; the rest belongs to the
/// thread that writes the rows.
struct NewPhoto {
  QString Name;       ///< of the picture file, bare
  QString Source;     ///< its path
  QString ImageType;  ///< as the row and the stored file have it
  QString Temporary;  ///< where the copy stands until its row is written

  int PhotoID = 0;  ///< 0 until the photo has a number
  QDateTime Date;   ///< of the source; invalid when it can't be had
  bool IsRead = false;
  bool IsPicture = false;  ///< otherwise it gets a row without a file
  bool InPlace = false;    ///< the copy has its final name
  bool HasRow = false;
  QString Failure;  ///< why it can't be stored; empty while it can

  /// Reads the source, once: copies it, and looks whether the copy is a picture. No errors: the members tell.
  void Read();
  /// Waits until the copy is on the disk. For several photos this is quickest when all of them have been read
  /// before.
  void Flush();

  /// The bare name of the stored file; empty for what is no picture.
  QString StoredName() const;
  /// Gives the copy of a picture its final name. A file that stands there already is kept under another name.
  /// Raises 53, 61 or 75.
  void PutInPlace(const catalogue::Paths& paths);
  /// Takes the final name from the copy again, where the file of that name still is the copy, and gives it
  /// back to the file that had it.
  void TakeBack(const catalogue::Paths& paths);
  /// Deletes the source, unless it isn't what was read any more: Failure tells then.
  void RemoveSource();
  /// Deletes what stands at Temporary.
  void DropTemporary() const;

 private:
  std::unique_ptr<desktop::FileCopy> Copy;
  std::optional<base::FileIdentity> Identity;
  std::optional<base::FileState> ReadSource;
  QString Aside;  ///< where a file is kept that stood in the way
};

/// What the row of a file has for its type: all that follows the first point of the name, or, where that
/// doesn't fit the column, what follows the last one, as far as it does. A row and its file have to agree.
QString TypeToStore(const QString& name);

}  // namespace veldrin::records
