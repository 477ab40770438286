// What of the image store isn't finished: copies that have no row yet, and the names of files whose rows are
// being written or deleted.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"

class QFile;

namespace veldrin::catalogue {

/// A directory within the image store for a command that stores or deletes photos. It is this user's and
/// machine's own: of two programs on one image store none meets the other's, not even where one machine is a
/// copy of the other, as long as the file system has locks. It goes with the object; after a kill
/// SweepStaging finds it.
class Staging {
 public:
  /// Begins with an empty directory. Raises 75 or 76 where none can be made.
  explicit Staging(const Paths& paths);
  ~Staging();
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  /// Where a copy grows: by its number, with the name's last extension, by which some formats are known.
  QString PlaceOf(int number, const QString& name) const;

  /// A file that has to go if a kill leaves it without a row.
  struct Unfinished {
    QString Name;    ///< its bare name in the image store
    QString Stands;  ///< where it stands now, when that isn't there yet
  };
  /// To be called before the files get their names, or before their rows go. On the disk when it returns. A
  /// file that isn't there isn't noted. Raises 61, 75 or 76.
  void NoteUnfinished(const std::vector<Unfinished>& files);

  /// The directory is left as it is, for a later sweep: what was noted couldn't be brought to an end.
  void Keep() { Kept = true; }

  class Lock;

 private:
  QString Directory;  ///< ends in a separator
  std::unique_ptr<Lock> Held;
  std::unique_ptr<QFile> Notes;
  bool Kept = false;
};

/// Brings to an end what a killed command of this user on this machine left: noted files that still are what
/// they were and whose photo has no row are deleted with their thumbnails, and its copies. Waits for no other
/// machine longer than the engine does; what can't be done now is left for the next start. Raises nothing.
void SweepStaging(const Paths& paths, engine::DBEngine& engine);

}  // namespace veldrin::catalogue
