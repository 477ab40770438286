// One picture file on its way into the image store.
#pragma once

#include <QDateTime>
#include <QString>
#include <memory>

#include "catalogue/paths.h"
#include "desktop/file_copy.h"

namespace veldrin::records {

/// A photo that is being stored. Read may run on any thread, for different photos; the rest belongs to the
/// thread that writes the rows.
struct NewPhoto {
  int PhotoID = 0;
  QString Source;     ///< the picture file's path
  QString ImageType;  ///< as the row will have it
  QString Temporary;  ///< where the copy stands until its row is written

  QDateTime Date;        ///< of the source; invalid when it can't be had
  bool Copied = false;   ///< all bytes of the source stand in the copy, at Temporary or in place
  bool Loaded = false;   ///< the source is a picture
  bool InPlace = false;  ///< the copy has its final name
  bool HasRow = false;

  /// Reads the source: copies it, and tries whether it is a picture. No errors: the members tell.
  void Read();
  /// Waits until the copy is on the disk. For several photos this is quickest when all of them have been read
  /// before.
  void Flush();

  /// Gives the copy of a picture its final name. A file that stands there already is kept under another name.
  /// Where that fails, Copied tells so.
  void PutInPlace(const catalogue::Paths& paths);
  /// Takes the final name from the copy again.
  void TakeBack(const catalogue::Paths& paths);
  /// Deletes what stands at Temporary.
  void DropTemporary() const;

 private:
  std::unique_ptr<desktop::FileCopy> Copy;
};

/// True when the file can't be loaded as a picture. The photo's number is not used.
bool CheckImageFile(const QString& path, int photoId);

/// The name in the image store, this user's and machine's own, under which the copy with the given number
/// grows.
QString TemporaryName(const catalogue::Paths& paths, int number);

}  // namespace veldrin::records
